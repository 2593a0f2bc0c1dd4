#include "formats/OraFile.h"

#include "formats/FileMessages.h"
#include "formats/OraReader.h"
#include "formats/OraWriter.h"
#include "formats/SafeFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <exception>

namespace {
using PictureFile::Error;

QString Tr(const char* text)
{
    return QCoreApplication::translate("OraFile", text);
}

FormatFailure ErrorOfName(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) return {Error::Missing, {}};
    if (!info.isFile()) return {Error::UnknownFormat, {}};
    if (!QFile(path).open(QIODevice::ReadOnly)) return {Error::NotAllowed, {}};
    return {};
}

/// Of layers, for a sentence.
QString NamesOf(const QStringList& layers)
{
    constexpr int mostNames = 3;
    constexpr int longestName = 40;
    QStringList names;
    for (const QString& layer : layers.mid(0, mostNames)) {
        const bool isLong = layer.size() > longestName;
        names << QStringLiteral("“%1”").arg(isLong ? layer.left(longestName) + QStringLiteral("…") : layer);
    }
    if (layers.size() > mostNames) names << QStringLiteral("…");
    return names.join(QStringLiteral(", "));
}

/// What can't be shown as its author meant it; such things are told once, at opening.
QString NoticeOf(const OraReader& reader)
{
    const OraStack& stack = reader.Stack();
    QStringList notices;
    if (stack.hasGroups) notices << Tr("Layer groups were dissolved: their layers stand in the list.");
    if (stack.hasUnknownModes) {
        notices << Tr(
            "Layers with unknown blend modes are shown in mode Normal; the file keeps their modes.");
    }
    if (!reader.LostTextures().isEmpty()) {
        notices << Tr("The texture of a text is missing in the file, or is damaged. As soon as the text "
                      "changes, it "
                      "has a plain color: %1.")
                       .arg(NamesOf(reader.LostTextures()));
    }
    if (!reader.ProfileProblem().isEmpty()) notices << reader.ProfileProblem();
    return notices.join(' ');
}
} // namespace

QString OraFile::Ending()
{
    return QStringLiteral("ora");
}

QString OraFile::BackupPath(const QString& path)
{
    return path + '~';
}

bool OraFile::IsNameOf(const QString& path)
{
    return QFileInfo(path).suffix().compare(Ending(), Qt::CaseInsensitive) == 0;
}

bool OraFile::HasContentOf(const QString& path)
{
    // Anything else, a pipe say, would keep us waiting.
    if (!QFileInfo(path).isFile()) return false;
    QFile file(path);
    constexpr int markBytes = 4;
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray mark = file.read(markBytes);
    return mark == QByteArrayLiteral("PK\x03\x04") || mark == QByteArrayLiteral("PK\x05\x06");
}

OraFile::ReadResult OraFile::Read(const QString& path, const FormatLimits& limits,
                                  const FileProgress& progress)
{
    OraReader reader(limits, progress);
    FormatFailure failure = ErrorOfName(path);
    try {
        if (failure.IsNone()) failure = reader.Read(path);
    } catch (const std::exception&) {
        failure = {Error::OutOfMemory, {}};
    }
    ReadResult result;
    if (!failure.IsNone()) {
        result.outcome = {failure.error, FileMessages(path).OfReading(failure)};
        return result;
    }
    progress.Tell(1000);
    result.content = reader.Content();
    result.notice = NoticeOf(reader);
    return result;
}

PictureFile::Outcome OraFile::Write(const QString& path, const OraContent& content,
                                    const FileProgress& progress)
{
    const FileMessages messages(path);
    if (content.size.isEmpty()) return {Error::OutOfMemory, messages.OfWriting(Error::OutOfMemory, {})};

    SafeFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return {Error::NotAllowed, messages.OfWriting(Error::NotAllowed, file.GetReason())};
    }
    Error error = Error::None;
    try {
        error = OraWriter(file, content, progress).Write();
    } catch (const std::exception&) {
        error = Error::OutOfMemory;
    }
    if (error == Error::TooLarge) return {error, messages.OfTooLongList()};
    if (error != Error::None) return {error, messages.OfWriting(error, file.GetReason())};
    if (!file.FinishKeeping(BackupPath(file.GetTarget()))) {
        return {Error::WriteFailed, messages.OfWriting(Error::WriteFailed, file.GetReason())};
    }
    progress.Tell(1000);
    return {};
}
