#pragma once

#include "EditorExport.h"

#include "formats/FileProgress.h"
#include "formats/FormatLimits.h"
#include "formats/Picture.h"

#include <QString>

class LXDocumentInterface;

/// Flat pictures in files: which formats there are, and the roads from a file to a document and back.
///
/// To open: `ReadPicture` on a worker, then `MakeDocument` on the main thread. To save: `TakePicture` on the
/// main thread, then `WritePicture` on a worker. Nothing here throws.
namespace PictureFile {
enum class Format
{
    Unknown,
    Png,
    Jpeg,
    Tiff,
    Webp,
    Bmp,
    Gif, ///< only read
};

enum class Error
{
    None,
    Cancelled,     ///< the one who waited said so; needs no message
    Missing,       ///< no such file
    NotAllowed,    ///< the file, or the folder it stands in, can't be read or written
    UnknownFormat, ///< no picture of a format we know
    Broken,        ///< it is of a known format, but damaged or cut off
    TooLarge,      ///< beyond the limits, or beyond what the format can hold
    OutOfMemory,
    WriteFailed, ///< such as a full disk; an older file of that name is as it was
};

/// How an operation ended. `message` is for the user: what happened, to which file, and what to do; empty
/// for `None` and `Cancelled`.
struct Outcome
{
    Error error = Error::None;
    QString message;

    bool IsOk() const { return error == Error::None; }
};

struct ReadResult
{
    Outcome outcome;
    Format format = Format::Unknown;
    Picture picture; ///< null image unless the outcome is good
};

struct WriteOptions
{
    int jpegQuality = 92; ///< 1 to 100
};

/// Reads a picture; the content tells the format, whatever the ending. An Exif orientation is applied to
/// the pixels and says "upright" afterwards. On any failure no tile stays behind. Any thread.
ZK_EDITOR_EXPORT ReadResult ReadPicture(const QString& path, const FormatLimits& limits = {},
                                        const FileProgress& progress = {});

/// A new document with the picture as its one layer; the caller releases it. Null when the
/// memory doesn't suffice. Main thread.
/// @param name  of the document; the layer is called "Background"
ZK_EDITOR_EXPORT LXDocumentInterface* MakeDocument(const Picture& picture, const QString& name);

/// What saving the document flat would write: the merged picture and what belongs to it, sharing tiles with
/// the document. The image is null when the memory doesn't suffice, which WritePicture() tells. Main thread.
ZK_EDITOR_EXPORT Picture TakePicture(const LXDocumentInterface* document);

/// Writes the picture. The file appears, or changes, only when all of it is written; until then and on any
/// failure an older file of that name stays as it was, and nothing else is left in the folder. Formats
/// without alpha get the picture on white. Any thread.
ZK_EDITOR_EXPORT Outcome WritePicture(const QString& path, Format format, const Picture& picture,
                                      const WriteOptions& options = {}, const FileProgress& progress = {});

/// The format that the path's ending names, in any case; Unknown for others and for none. Any thread.
ZK_EDITOR_EXPORT Format FormatOfName(const QString& path);

/// Some formats can only be read. False for Unknown. Any thread.
ZK_EDITOR_EXPORT bool CanWrite(Format format);

/// Whether transparency survives saving; if not, the user is told before.
ZK_EDITOR_EXPORT bool KeepsAlpha(Format format);
/// Whether the colors of pixels survive saving that are wholly transparent.
ZK_EDITOR_EXPORT bool KeepsColorUnderAlpha0(Format format);

/// Whether color profiles survive saving.
ZK_EDITOR_EXPORT bool KeepsProfile(Format format);
/// Whether this one does: some formats can't hold every profile. True for none.
ZK_EDITOR_EXPORT bool KeepsProfile(Format format, const QByteArray& iccProfile);

/// Whether what the camera noted (Exif) survives saving. True for a picture without it.
ZK_EDITOR_EXPORT bool KeepsExif(Format format, const Picture& picture);

/// The pixels per inch that come back when the picture is saved; 0 where none do.
ZK_EDITOR_EXPORT double SavedResolution(Format format, const Picture& picture);

/// "PNG", "JPEG"; empty for Unknown.
ZK_EDITOR_EXPORT QString FormatName(Format format);

/// The ending that a file of the format gets by itself, without a dot; empty for Unknown.
ZK_EDITOR_EXPORT QString DefaultEnding(Format format);

/// Filters for file dialogs, entries parted by ";;": the formats that can be written.
ZK_EDITOR_EXPORT QString SaveFilter();
} // namespace PictureFile
