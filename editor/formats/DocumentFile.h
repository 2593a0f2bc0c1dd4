#pragma once

#include "EditorExport.h"

#include "formats/FileProgress.h"
#include "formats/FormatLimits.h"
#include "formats/OraContent.h"
#include "formats/Picture.h"
#include "formats/PictureFile.h"

#include <QString>

class LXDocumentInterface;

/// Any file that can be opened: the editor's own and flat pictures alike. `Read` on a worker, then
/// `MakeDocument` on the main thread. Nothing here throws.
namespace DocumentFile {
struct ReadResult
{
    PictureFile::Outcome outcome;
    bool hasLayers = false; ///< it is the editor's own: `content` holds it; else `picture` does
    OraContent content;
    Picture picture;
    QString notice; ///< what of the file is shown otherwise than its author meant; may be empty
};

/// The content tells the format, whatever the ending. Any thread.
ZK_EDITOR_EXPORT ReadResult Read(const QString& path, const FormatLimits& limits = {},
                                 const FileProgress& progress = {});

/// The caller releases the document. Null when the memory doesn't suffice. Main thread.
ZK_EDITOR_EXPORT LXDocumentInterface* MakeDocument(const ReadResult& result, const QString& name);

/// Whether the path's ending, in any case, names a format that can be written. Any thread.
ZK_EDITOR_EXPORT bool CanWrite(const QString& path);

/// Writes the document as it is, in the format that the path's ending names; what a flat one can't hold is
/// dropped. Waits until it is done. Main thread.
ZK_EDITOR_EXPORT PictureFile::Outcome Write(const QString& path, const LXDocumentInterface* document);

/// Filters for file dialogs, entries parted by ";;": all that can be opened; the editor's own format; that
/// and the flat ones.
ZK_EDITOR_EXPORT QString OpenFilter();
ZK_EDITOR_EXPORT QString OwnFilter();
ZK_EDITOR_EXPORT QString SaveFilter();

/// The ending that a name gets by itself under an entry of these filters, without a dot; empty for "all".
ZK_EDITOR_EXPORT QString EndingOfFilter(const QString& filter);
} // namespace DocumentFile
