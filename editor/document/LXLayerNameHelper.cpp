#include "document/LXLayerNameHelper.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"

#include <QCoreApplication>

namespace {
bool IsTaken(const LXDocumentModel& model, const QString& name)
{
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.GetName(row) == name) return true;
    }
    return false;
}

QString NewName(const LXDocumentModel& model)
{
    const QString pattern = QCoreApplication::translate("LXLayerNameHelper", "Layer %1");
    int number = 1;
    while (IsTaken(model, pattern.arg(number)))
        ++number;
    return pattern.arg(number);
}

QString CopyName(const LXDocumentModel& model, const QString& of)
{
    QString first = QCoreApplication::translate("LXLayerNameHelper", "%1 copy").arg(of);
    if (!IsTaken(model, first)) return first;
    int number = 2;
    while (IsTaken(model, first + ' ' + QString::number(number)))
        ++number;
    return first + ' ' + QString::number(number);
}
} // namespace

QString LXLayerNameHelper::MakeDefaultName(const LXDocumentInterface* document, MakeMode mode,
                                           unsigned int id)
{
    if (!document) return QString();
    const LXDocumentModel& model = *document->GetModel();
    const bool isCopy = mode == Copy && id > 0 && id <= static_cast<unsigned int>(model.rowCount());
    return isCopy ? CopyName(model, model.GetName(static_cast<int>(id) - 1)) : NewName(model);
}
