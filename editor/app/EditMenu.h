#pragma once

#include <QObject>
#include <QPointer>

class LXDocumentInterface;
class LexoUndoStack;
class MainWindow;
class PreferencesUse;
class QAction;
class ZKDocumentView;

/// The entries of the menu "Edit", which follow the active document: its history for "Undo" and "Redo", its
/// selection for "Select All", the one command on selections that every program has here under Ctrl+A (all
/// others stand in the menu "Selection"); and "Preferences". Main thread only.
class EditMenu : public QObject
{
    Q_OBJECT

public:
    EditMenu(MainWindow* window, PreferencesUse* preferences);

private:
    void AddHistoryEntries();
    void AddSelectionEntries();
    void AddPreferences(PreferencesUse* preferences);
    void Follow(ZKDocumentView* view);
    void Step(void (LexoUndoStack::*step)());
    void SelectAll();
    void UpdateActions();
    void UpdateSelectionActions();

    MainWindow* m_pWindow;
    QPointer<LexoUndoStack> m_pHistory;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pUndo;
    QAction* m_pRedo;
    QAction* m_pSelectAll;
};
