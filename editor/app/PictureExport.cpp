#include "app/PictureExport.h"

#include "app/FormatLimitSettings.h"
#include "app/PictureLosses.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "formats/DocumentFile.h"

#include <QDir>
#include <QFileInfo>

namespace {
struct DocumentReleaser
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using OwnedDocument = std::unique_ptr<LXDocumentInterface, DocumentReleaser>;

DocumentFile::ReadResult ReadOrMake(const CommandLine& line)
{
    if (line.newSize.isEmpty()) {
        return DocumentFile::Read(QFileInfo(line.files.first()).absoluteFilePath(),
                                  FormatLimitSettings::Read());
    }
    DocumentFile::ReadResult made;
    try {
        made.picture.image = LXImage32(line.newSize.width(), line.newSize.height());
        made.picture.image.Fill(LXRGBA32i(qRgba(255, 255, 255, 255)));
    } catch (const std::exception& error) {
        made.outcome = {PictureFile::Error::OutOfMemory, QString::fromUtf8(error.what())};
    }
    return made;
}
} // namespace

PictureFile::Outcome PictureExport::Run(const CommandLine& line, QString* losses)
{
    const PictureFile::Format format = PictureFile::FormatOfName(line.exportFile);
    if (!DocumentFile::CanWrite(line.exportFile)) {
        return {PictureFile::Error::UnknownFormat,
                tr("“%1” can't be written, since its ending names no known format. Choose a name that ends "
                   "in %2.")
                    .arg(QDir::toNativeSeparators(line.exportFile), QStringLiteral(".png"))};
    }

    const DocumentFile::ReadResult read = ReadOrMake(line);
    if (!read.outcome.IsOk()) return read.outcome;

    const OwnedDocument document(DocumentFile::MakeDocument(read, QString()));
    if (!document) {
        return {PictureFile::Error::OutOfMemory, tr("There is not enough memory for the picture.")};
    }
    const QString path = QFileInfo(line.exportFile).absoluteFilePath();
    if (format != PictureFile::Format::Unknown) {
        const Picture picture = PictureFile::TakePicture(document.get());
        *losses = (PictureLosses::OfContent(document.get(), picture, format) +
                   PictureLosses::OfNotes(document.get(), picture, format) +
                   PictureLosses::OfAids(document.get(), format))
                      .join('\n');
    }
    return DocumentFile::Write(path, document.get());
}
