#pragma once

#include <QObject>
#include <QPointer>

class LexoUndoStack;
class MainWindow;
class QAction;
class ZKDocumentView;

/// The entries "Undo" and "Redo" of the menu "Edit", which follow the history of the active document.
/// Main thread only.
class EditMenu : public QObject
{
    Q_OBJECT

public:
    explicit EditMenu(MainWindow* window);

private:
    void Follow(ZKDocumentView* view);
    void Step(void (LexoUndoStack::*step)());
    void UpdateActions();

    MainWindow* m_pWindow;
    QPointer<LexoUndoStack> m_pHistory;
    QAction* m_pUndo;
    QAction* m_pRedo;
};
