#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

class Editor;
class QAction;
class QDialog;
class QWidget;

/// Pictures of everything that the program can show: the window in its states, every menu, panel and dialog,
/// in both looks, at the scale of the screen. For looking at all of it together. Main thread only.
class ZK_EDITOR_EXPORT Screenshots
{
    Q_DECLARE_TR_FUNCTIONS(Screenshots)

public:
    /// Whether the environment sets the scale (QT_SCALE_FACTOR): then the pictures are taken at that one.
    static bool HasOwnScale();

    /// Starts this program once for each scale of the screen, since one process has one scale; the pictures
    /// go to "1x" and "2x" in the folder. False when one of them failed; the reason is on its error stream.
    static bool RunAtAllScales(const QString& folder);

    /// @param editor  started, without a document
    Screenshots(Editor& editor, const QString& folder);

    /// Takes all pictures into the folders "dark" and "light". Ends at the first one that can't be taken.
    bool Run();

    QString GetErrorText() const { return m_ErrorText; }

private:
    bool TakeInLook(const QString& look);
    bool TakeWindow();
    bool TakeWorkingWindow();
    bool TakeMenus();
    /// @param prefix  what the names of the files begin with; sub menus go on with the name of their menu
    bool TakeMenusOf(const QList<QAction*>& titles, const QString& prefix);
    bool TakePanels();
    bool FillClipboard();
    bool TakeLayerKinds();
    bool TakeDialogs();
    bool TakeGallery();
    bool TakeColorRange();
    bool TakeExport();
    bool TakeDialog(QDialog& dialog, const QString& name);
    bool Take(QWidget* widget, const QString& name);
    bool Fail(const QString& text);

    Editor& m_Editor;
    QString m_BaseFolder;
    QString m_Folder; ///< of the look that is being taken
    QString m_ErrorText;
};
