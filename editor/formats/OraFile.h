#pragma once

#include "EditorExport.h"

#include "formats/FileProgress.h"
#include "formats/FormatLimits.h"
#include "formats/OraContent.h"
#include "formats/PictureFile.h"

#include <QString>

class LXDocumentInterface;

/// OpenRaster files: the editor's own format, which keeps everything of a document.
///
/// To open: `Read` on a worker, then `MakeDocument` on the main thread. To save: `TakeContent` on the main
/// thread, then `Write` on a worker. Nothing here throws.
namespace OraFile {
struct ReadResult
{
    PictureFile::Outcome outcome;
    OraContent content; ///< without layers unless the outcome is good
    QString notice;     ///< what of the file is shown otherwise than its author meant; may be empty
};

/// "ora", the ending of such files, and the ending that the copy of the version before has.
ZK_EDITOR_EXPORT QString Ending();
ZK_EDITOR_EXPORT QString BackupPath(const QString& path);

/// Whether the path's ending, in any case, names the format. Any thread.
ZK_EDITOR_EXPORT bool IsNameOf(const QString& path);
/// Whether the file begins as archives do, whatever its ending. False for what can't be read. Any thread.
ZK_EDITOR_EXPORT bool HasContentOf(const QString& path);

/// On any failure no tile stays behind. No name inside the archive is ever used as a path. Any thread.
ZK_EDITOR_EXPORT ReadResult Read(const QString& path, const FormatLimits& limits = {},
                                 const FileProgress& progress = {});

/// The caller releases the document. Null when the memory doesn't suffice. Main thread.
ZK_EDITOR_EXPORT LXDocumentInterface* MakeDocument(const OraContent& content, const QString& name);

/// The size is empty when the memory doesn't suffice, which Write() tells. Main thread.
/// @param selectedRows  the layers that are selected in the view
ZK_EDITOR_EXPORT OraContent TakeContent(const LXDocumentInterface* document,
                                        const QSet<int>& selectedRows = {});

/// Writes the document. The file appears, or changes, only when all of it is written; until then and on any
/// failure an older file of that name stays as it was. An older file is kept as BackupPath(). Any thread.
ZK_EDITOR_EXPORT PictureFile::Outcome Write(const QString& path, const OraContent& content,
                                            const FileProgress& progress = {});
} // namespace OraFile
