#include "app/SaveDialog.h"

#include "formats/DocumentFile.h"
#include "formats/OraFile.h"

#include <QFileDialog>
#include <QFileInfo>

namespace {
/// Whether both endings mean the same format, as "jpg" and "jpeg" do.
bool IsFor(const QString& filter, const QString& path)
{
    const QString example = QStringLiteral("x.") + DocumentFile::EndingOfFilter(filter);
    if (OraFile::IsNameOf(path)) return OraFile::IsNameOf(example);
    return PictureFile::FormatOfName(example) == PictureFile::FormatOfName(path) &&
           !OraFile::IsNameOf(example);
}
} // namespace

QString SaveDialog::Ask(QWidget* parent, const Question& question)
{
    QFileDialog dialog(parent, question.title, QFileInfo(question.suggestion).absolutePath(),
                       question.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto applyFilter = [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(DocumentFile::EndingOfFilter(filter));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, applyFilter);
    for (const QString& filter : dialog.nameFilters()) {
        if (IsFor(filter, question.suggestion)) dialog.selectNameFilter(filter);
    }
    applyFilter(dialog.selectedNameFilter());
    dialog.selectFile(QFileInfo(question.suggestion).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
