#pragma once

#include "EditorExport.h"

#include "formats/PictureFile.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>
#include <QStringList>

class LXDocumentInterface;
class LexoUndoStack;
class MainWindow;
class QColor;
class ZKDocumentView;

/// The documents and their files: new, open, save, export and the question before a close.
///
/// What goes wrong is told in a message box over the main window, and then nothing has changed.
/// Main thread only; decoding and writing run on a worker while the user waits.
class ZK_EDITOR_EXPORT DocumentFiles : public QObject
{
    Q_OBJECT

public:
    /// @param window  outlives this object
    explicit DocumentFiles(MainWindow* window);

    /// Opens a window with one layer of this size.
    /// @param background  color of all pixels; `Qt::transparent` leaves the layer empty.
    /// Null, after a message, when the picture is too large for the memory.
    LXDocumentInterface* New(const QSize& size, const QColor& background);

    /// Asks which files to open; empty when the user cancelled.
    QStringList AskForFiles();

    /// Opens a file in a window of its own; a file that is open already comes to the front.
    /// Null when it could not be read (told) or the user cancelled.
    LXDocumentInterface* Open(const QString& path);

    /// Saves to the document's file. Asks for one as SaveAs() when it has none, and when it has one that
    /// can't hold all of the picture any more. False when cancelled or failed, and while a tool holds the
    /// document's lock.
    bool Save(LXDocumentInterface* document);

    /// Asks for a file and saves there; from then on it is the document's file. Flat formats are offered only
    /// for a picture that fits into them.
    bool SaveAs(LXDocumentInterface* saved);

    /// Saves there without a dialog for the name; the ending chooses the format. From then on it is the
    /// document's file, unless it can't hold all of the picture: then this is an export.
    bool SaveTo(LXDocumentInterface* document, const QString& path);

    /// Asks for a flat file and writes a copy there.
    bool Export(LXDocumentInterface* exported);

    /// Writes a flat copy without a dialog for the name; the ending chooses the format. The document keeps
    /// its own file and stays as modified as it was. What the format can't hold is told before, and the user
    /// may cancel.
    bool ExportTo(LXDocumentInterface* exported, const QString& path);

    /// The document's file; empty when it has none.
    QString GetPath(const LXDocumentInterface* document) const;

    /// Closes as the close button of its window does. False when somebody refused.
    bool Close(LXDocumentInterface* document);

    /// Asks about every changed document, then closes all of them. False when the user cancelled, and then
    /// all are still open; or when a tool holds a document, and that one is.
    bool CloseAll();

signals:
    /// The file was opened or saved; it belongs into the list of recent files.
    void FileUsed(const QString& path);

private:
    struct Record
    {
        QString path;
        QString exportPath;     // of the last export
        QString acceptedLosses; // told in these words, and accepted
    };

    LXDocumentInterface* Show(LXDocumentInterface* document, const QString& path);
    LXDocumentInterface* FindOpen(const QString& path) const;
    void BringToFront(const LXDocumentInterface* document);
    ZKDocumentView* ViewOf(const LXDocumentInterface* document) const;
    LexoUndoStack* HistoryOf(const LXDocumentInterface* document) const;
    bool IsModified(const LXDocumentInterface* document) const;
    /// Whether it still has its window: while something is asked or written, it may be closed.
    bool IsOpen(const LXDocumentInterface* document) const;
    bool AskBeforeClose(LXDocumentInterface* asked);
    void SelectRows(const LXDocumentInterface* document, const QSet<int>& rows);
    QSet<int> SelectedRows(const LXDocumentInterface* document) const;
    QString SuggestedPath(const LXDocumentInterface* document, const QString& ending) const;
    bool SaveOwn(LXDocumentInterface* saved, const QString& path);
    bool SaveFlat(LXDocumentInterface* saved, const QString& path);
    bool WriteFlat(const QString& path, const Picture& picture);
    bool FitsInto(const LXDocumentInterface* document, PictureFile::Format format) const;
    bool AcceptsLosses(const LXDocumentInterface* document, const QStringList& content,
                       const QStringList& others);
    void MarkSaved(LXDocumentInterface* document, const QString& path);
    bool IsBusy(const LXDocumentInterface* document); // and tells so
    void Tell(const QString& message);
    bool TellUnknownEnding(const QString& path);           // always false
    bool TellFailure(const PictureFile::Outcome& outcome); // whether there was none

    MainWindow* m_pWindow;
    QHash<const LXDocumentInterface*, Record> m_Records;
    bool m_bAllAnswered = false;
};
