#include "formats/DocumentFile.h"

#include "formats/OraFile.h"

DocumentFile::ReadResult DocumentFile::Read(const QString& path, const FormatLimits& limits,
                                            const FileProgress& progress)
{
    ReadResult result;
    result.hasLayers = OraFile::HasContentOf(path);
    if (result.hasLayers) {
        const OraFile::ReadResult read = OraFile::Read(path, limits, progress);
        result.outcome = read.outcome;
        result.content = read.content;
        result.notice = read.notice;
    } else {
        const PictureFile::ReadResult read = PictureFile::ReadPicture(path, limits, progress);
        result.outcome = read.outcome;
        result.picture = read.picture;
        result.notice = read.picture.profileProblem;
    }
    return result;
}

LXDocumentInterface* DocumentFile::MakeDocument(const ReadResult& result, const QString& name)
{
    return result.hasLayers ? OraFile::MakeDocument(result.content, name)
                            : PictureFile::MakeDocument(result.picture, name);
}

bool DocumentFile::CanWrite(const QString& path)
{
    return OraFile::IsNameOf(path) || PictureFile::CanWrite(PictureFile::FormatOfName(path));
}

PictureFile::Outcome DocumentFile::Write(const QString& path, const LXDocumentInterface* document)
{
    if (OraFile::IsNameOf(path)) return OraFile::Write(path, OraFile::TakeContent(document));
    return PictureFile::WritePicture(path, PictureFile::FormatOfName(path),
                                     PictureFile::TakePicture(document));
}
