#pragma once

#include "MainMenuEntry.h"
#include "selectionmenu/SelectionAlignment.h"

#include <QAction>
#include <QItemSelection>
#include <QMenu>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class IDocumentView;
class LXDocumentInterface;
class LexoCommand;
class LexoUndoStack;
class QItemSelectionModel;
class ZKDocumentView;

/// The commands of the selection menu: everything, nothing, the inverse, the selection's place on the canvas,
/// and which layers are selected. Each is one undoable step, or one change of the selected rows.
/// Main thread only.
class SelectionMenuToolPrivate : public QObject
{
    Q_OBJECT

public:
    explicit SelectionMenuToolPrivate(QObject* parent = nullptr);
    ~SelectionMenuToolPrivate() override;

    /// Follows another view, or none for null; true always.
    bool SetDocumentView(IDocumentView* view);

    QList<QAction*> GetMenuActions() const { return {}; }

    QList<QAction*> GetToolBarActions() const { return {}; }

    MainMenuEntries GetMainMenuEntries() const { return m_Entries; }

public slots:
    void SelectAll();
    void Deselect();
    void InvertSelection();
    void DocumentSelectionChanged();
    void DocumentLocked();
    void DocumentUnlocked();
    void DocumentViewLocked();
    void DocumentViewUnlocked();
    void AlignCenter();
    void AlignHorizontalCenter();
    void AlignVerticalCenter();
    void AlignLeft();
    void AlignRight();
    void AlignTop();
    void AlignBottom();
    void OnAllLayers();
    void OnDeselectLayers();
    void OnBlockLayerOrder(bool blocked);
    void OnLayersSelectionChanged(QItemSelection selected, QItemSelection deselected);

private:
    using Slot = void (SelectionMenuToolPrivate::*)();
    using MakeCommand = std::function<std::unique_ptr<LexoCommand>(LXDocumentInterface*)>;

    void AddEntries();
    QAction* AddAction(const QString& text, const QString& toolTip, const QKeySequence& key, Slot slot);
    void Place(int position, QAction* action);

    LXDocumentInterface* GetDocument() const;
    ZKDocumentView* GetView() const;
    LexoUndoStack* GetHistory() const;
    QItemSelectionModel* GetLayerSelection() const;

    void ConnectView(ZKDocumentView* view);
    void DisconnectView();
    void OnViewStateChanged(quint64 oldState, quint64 newState);
    bool IsViewLocked() const;
    void DisableSelectionActions();
    void UpdateLayerActions();

    /// Puts one change of the selection into the history, under the wait cursor. Failures are reported, and
    /// the selection stays as it was.
    void ChangeSelection(const QString& text, const MakeCommand& makeCommand);
    bool HasSelection() const;
    void Align(SelectionAlignment alignment, const QString& text);

    IDocumentView* m_pDocumentView = nullptr;
    /// The view whose signals are connected, which may be gone before the next one is handed over.
    QPointer<ZKDocumentView> m_pConnectedView;

    QAction* m_pSelectAll = nullptr;
    QAction* m_pDeselect = nullptr;
    QAction* m_pInvert = nullptr;
    std::unique_ptr<QMenu> m_pArrange;
    QAction* m_pAllLayers = nullptr;
    QAction* m_pDeselectLayers = nullptr;
    MainMenuEntries m_Entries;
};
