#pragma once

#include "EditorExport.h"

#include <QHash>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>

class LXDocumentInterface;
class LexoUndoStack;
class MainWindow;
class QColor;
struct Picture;

/// The documents and their files: new, open, save and the question before a close.
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

    /// Saves to the document's file, or asks for one when it has none. False when cancelled or failed, and
    /// while a tool holds the document's lock.
    bool Save(LXDocumentInterface* document);

    /// Asks for a file and saves there; from then on it is the document's file.
    bool SaveAs(LXDocumentInterface* document);

    /// Saves there without a dialog for the name; from then on it is the document's file. The ending
    /// chooses the format. What the format can't hold is told before, and the user may cancel.
    bool SaveTo(LXDocumentInterface* document, const QString& path);

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
        QString acceptedLosses; // told in these words, and accepted
    };

    LXDocumentInterface* Show(LXDocumentInterface* document, const QString& path);
    LXDocumentInterface* FindOpen(const QString& path) const;
    void BringToFront(const LXDocumentInterface* document);
    LexoUndoStack* HistoryOf(const LXDocumentInterface* document) const;
    bool IsModified(const LXDocumentInterface* document) const;
    bool AskBeforeClose(LXDocumentInterface* document);
    QString AskForPath(const LXDocumentInterface* document);
    bool AcceptsLosses(LXDocumentInterface* document, const QString& path, const Picture& picture);
    void MarkSaved(LXDocumentInterface* document, const QString& path);
    bool IsBusy(const LXDocumentInterface* document); // and tells so
    void Tell(const QString& message);

    MainWindow* m_pWindow;
    QHash<const LXDocumentInterface*, Record> m_Records;
    bool m_bAllAnswered = false;
};
