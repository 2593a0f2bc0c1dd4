// What file dialogs offer.

#include "formats/DocumentFile.h"
#include "formats/FormatTable.h"
#include "formats/OraFile.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace {
QString Tr(const char* text)
{
    return QCoreApplication::translate("PictureFile", text);
}

QString Patterns(const FormatEntry& entry)
{
    QStringList patterns;
    for (const QString& ending : entry.endings) {
        patterns << QStringLiteral("*.") + ending;
    }
    return patterns.join(QLatin1Char(' '));
}

QString OwnPattern()
{
    return QStringLiteral("*.") + OraFile::Ending();
}

/// One entry for each flat format that the wanted direction has.
QStringList FlatFilters(bool isForWriting)
{
    QStringList filters;
    for (const FormatEntry& entry : FormatTable()) {
        if (isForWriting && !entry.encode) continue;
        filters << Tr("%1 picture (%2)").arg(entry.name, Patterns(entry));
    }
    return filters;
}
} // namespace

QString PictureFile::SaveFilter()
{
    return FlatFilters(true).join(QStringLiteral(";;"));
}

QString DocumentFile::OpenFilter()
{
    QStringList patterns{OwnPattern()};
    for (const FormatEntry& entry : FormatTable()) {
        patterns << Patterns(entry);
    }
    const QString all = Tr("All pictures (%1)").arg(patterns.join(QLatin1Char(' ')));
    const QStringList filters =
        QStringList{all, OwnFilter()} + FlatFilters(false) + QStringList(Tr("All files (*)"));
    return filters.join(QStringLiteral(";;"));
}

QString DocumentFile::OwnFilter()
{
    return Tr("OpenRaster picture with layers (%1)").arg(OwnPattern());
}

QString DocumentFile::SaveFilter()
{
    return OwnFilter() + QStringLiteral(";;") + PictureFile::SaveFilter();
}

QString DocumentFile::EndingOfFilter(const QString& filter)
{
    static const QRegularExpression firstEnding(QStringLiteral("\\*\\.(\\w+)"));
    return firstEnding.match(filter).captured(1);
}
