#include "formats/FormatTable.h"
#include "formats/PictureFile.h"

#include <QCoreApplication>

namespace {
QString Patterns(const FormatEntry& entry)
{
    QStringList patterns;
    for (const QString& ending : entry.endings) {
        patterns << QStringLiteral("*.") + ending;
    }
    return patterns.join(QLatin1Char(' '));
}

/// One entry for each format.
QStringList FormatFilters()
{
    QStringList filters;
    for (const FormatEntry& entry : FormatTable()) {
        filters
            << QCoreApplication::translate("PictureFile", "%1 picture (%2)").arg(entry.name, Patterns(entry));
    }
    return filters;
}
} // namespace

QString PictureFile::OpenFilter()
{
    QStringList patterns;
    for (const FormatEntry& entry : FormatTable()) {
        patterns << Patterns(entry);
    }
    const QString all =
        QCoreApplication::translate("PictureFile", "All pictures (%1)").arg(patterns.join(QLatin1Char(' ')));
    const QString any = QCoreApplication::translate("PictureFile", "All files (*)");
    return (QStringList(all) + FormatFilters() + QStringList(any)).join(QStringLiteral(";;"));
}

QString PictureFile::SaveFilter()
{
    return FormatFilters().join(QStringLiteral(";;"));
}
