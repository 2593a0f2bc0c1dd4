#include "history/PathCommands.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "document/LXPathsListModel.h"
#include "history/ColorSamplesCommand.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/InsertPathCommandData.h"
#include "history/PathCommand.h"
#include "history/PathOrderCommand.h"
#include "history/PathPropertyCommand.h"
#include "history/RemovePathCommandData.h"

#include <QCoreApplication>

namespace {
LexoCommand* Named(LexoCommand* command, const char* text)
{
    command->setText(QCoreApplication::translate("PathCommands", text));
    return command;
}

template <class Command, class Data>
LexoCommand* WithData(LXDocumentInterface* document, std::unique_ptr<Data> data, const char* text)
{
    auto* command = new Command(document);
    // A new command takes data of its kind.
    command->SetCommandData(data.release());
    return Named(command, text);
}
} // namespace

LexoCommand* PathCommands::Add(LXDocumentInterface* document, int row, const QString& name)
{
    auto data = std::make_unique<InsertPathCommandData>();
    data->SetPathIndex(row);
    data->SetPathName(name);
    return WithData<PathCommand>(document, std::move(data), QT_TRANSLATE_NOOP("PathCommands", "New path"));
}

LexoCommand* PathCommands::Remove(LXDocumentInterface* document, int row)
{
    auto data = std::make_unique<RemovePathCommandData>();
    data->SetPathIndex(row);
    return WithData<PathCommand>(document, std::move(data), QT_TRANSLATE_NOOP("PathCommands", "Delete path"));
}

LexoCommand* PathCommands::Move(LXDocumentInterface* document, int from, int to)
{
    return Named(new PathOrderCommand(document, from, to),
                 QT_TRANSLATE_NOOP("PathCommands", "Move path in the list"));
}

LexoCommand* PathCommands::Rename(LXDocumentInterface* document, int row, const QString& name)
{
    return Named(new PathPropertyCommand(document, row, PathProperty::Name, name),
                 QT_TRANSLATE_NOOP("PathCommands", "Rename path"));
}

LexoCommand* PathCommands::SetVisible(LXDocumentInterface* document, int row, bool visible)
{
    return Named(new PathPropertyCommand(document, row, PathProperty::Visible, visible),
                 visible ? QT_TRANSLATE_NOOP("PathCommands", "Show path")
                         : QT_TRANSLATE_NOOP("PathCommands", "Hide path"));
}

LexoCommand* PathCommands::RemoveSample(LXDocumentInterface* document, int row)
{
    auto data = std::make_unique<ColorSamplesCommandDataRemove>();
    data->SetSamplePoint(row, document->GetColorSamples()->GetPoint(row));
    return WithData<ColorSamplesCommand>(document, std::move(data),
                                         QT_TRANSLATE_NOOP("PathCommands", "Remove sample point"));
}

LexoCommand* PathCommands::ClearSamples(LXDocumentInterface* document)
{
    const LXColorSampleModel* samples = document->GetColorSamples();
    std::vector<QPoint> points;
    for (int row = 0; row < samples->rowCount(); ++row)
        points.push_back(samples->GetPoint(row));
    auto data = std::make_unique<ColorSamplesCommandDataClear>();
    data->SetData(points);
    return WithData<ColorSamplesCommand>(document, std::move(data),
                                         QT_TRANSLATE_NOOP("PathCommands", "Clear color samples"));
}
