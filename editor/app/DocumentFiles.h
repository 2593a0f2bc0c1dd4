#pragma once

#include "EditorExport.h"

#include <QColor>
#include <QHash>
#include <QObject>
#include <QSize>
#include <QString>

class LXDocumentInterface;
class LXMdiSubWindow;
class MainWindow;

/// The documents and their files: new, open, save and the question before a close.
///
/// What goes wrong is told in a message box over the main window, and then nothing has changed.
/// Main thread only; decoding and writing run on a worker while the user waits.
class ZK_EDITOR_EXPORT DocumentFiles : public QObject
{
    Q_OBJECT

public:
    explicit DocumentFiles(MainWindow* window);
    ~DocumentFiles() override;

    /// Opens a window with one layer of this size.
    /// @param background  color of all pixels; `Qt::transparent` leaves the layer empty.
    /// Null, after a message, when the picture is too large for the memory.
    LXDocumentInterface* New(const QSize& size, const QColor& background);

    /// Opens a file in a window of its own; a file that is open already is brought to the front.
    /// Null when it could not be read (told) or the user cancelled.
    LXDocumentInterface* Open(const QString& path);

    /// Saves to the document's file, or asks for one when it has none. False when cancelled or failed.
    bool Save(LXDocumentInterface* document);

    /// Asks for a file and saves there; from then on it is the document's file.
    bool SaveAs(LXDocumentInterface* document);

    /// Saves there without a dialog and makes it the document's file. The ending chooses the format.
    bool SaveTo(LXDocumentInterface* document, const QString& path);

    /// The document's file; empty when it was never saved.
    QString GetPath(const LXDocumentInterface* document) const;

    /// Asks whether to save before a close; the documents area calls it for changed documents only.
    /// False: the document stays open.
    bool AskBeforeClose(LXDocumentInterface* document);

signals:
    /// The file was opened or saved; it belongs into the list of recent files.
    void FileUsed(const QString& path);

    /// A document's name, file or changed mark is another one now.
    void DocumentChanged(LXDocumentInterface* document);

private:
    LXDocumentInterface* Show(LXDocumentInterface* document, const QString& path);
    LXMdiSubWindow* WindowOf(const LXDocumentInterface* document) const;
    QString AskForPath(LXDocumentInterface* document);
    bool AcceptsLosses(LXDocumentInterface* document, const QString& path);
    void UpdateModifiedMark(LXDocumentInterface* document);

    MainWindow* m_pWindow;
    QHash<const LXDocumentInterface*, QString> m_Paths;
};
