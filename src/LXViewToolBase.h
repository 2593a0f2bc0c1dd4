#pragma once

#include "MainMenuEntry.h"
#include "ToolLocks.h"

#include "gui/ZKDocumentView.h"

#include <QCursor>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QSize>

class IDocumentView;
class LToolBoxButton;
class LToolBoxWidget;
class LXDocumentInterface;
class LXDocumentModel;
class LXToolWidgetManager;
class LayersWidget;
class LexoUndoStack;
class QAction;
class QEvent;
class QGraphicsScene;
class QGraphicsSceneMouseEvent;
class QWidget;
class ZKActivateAction;
class ZKToolBarManager;

/// The base of every tool that works on the current document view. It owns the tool's activation, follows
/// the current view, turns the events of the view's scene into virtual calls and signals while the tool is
/// active, keeps the tool's cursor on the view, and holds the two locks around a change.
/// Scene positions are document pixels. Main thread only.
class LXViewToolBase : public QObject
{
    Q_OBJECT

public:
    /// @param filterAlways  the scene's events come while there is a view, whether the tool is active or not:
    /// for tools that are panels.
    LXViewToolBase(QObject* parent, bool filterAlways);

    /// Gives both locks back.
    ~LXViewToolBase() override;

    virtual void SetToolBox(LToolBoxWidget* toolBox);
    virtual void SetToolBarManager(ZKToolBarManager* manager);

    virtual void SetToolWidgetManager(LXToolWidgetManager*) {}

    virtual void SetLayersWidget(LayersWidget* layersWidget);

    virtual void SaveSettings() {}

    virtual void LoadSettings() {}

    virtual quint64 GetDocumentViewState();

    virtual QList<QAction*> GetMenuActions() { return {}; }

    virtual QList<QAction*> GetToolBarActions() { return {}; }

    virtual MainMenuEntries GetMainMenuEntries() { return {}; }

    /// Makes the tool's action, panel, bar and button. Called once, by the adapter.
    virtual void Init(QObject* parent);

protected:
    /// The mouse came into the view or left it. A null event stands for a mouse that is found there when the
    /// tool becomes active or inactive.
    virtual void OnEnter(QEvent*) {}

    virtual void OnLeave(QEvent*) {}

    /// Events of the scene while the tool hears them. The base sends the signals of the same names.
    virtual void OnSceneMouseMove(QGraphicsSceneMouseEvent* event);
    virtual void OnSceneMousePress(QGraphicsSceneMouseEvent* event);
    virtual void OnSceneMouseRelease(QGraphicsSceneMouseEvent* event);

    virtual void OnSceneMouseDoubleClick(QGraphicsSceneMouseEvent*) {}

    /// The tool's panel, option bar and tool-box button; null for none.
    virtual QWidget* GetToolWidget() { return nullptr; }

    virtual QWidget* GetToolBar() { return nullptr; }

    virtual LToolBoxButton* GetToolBoxButton() { return nullptr; }

    /// The button's place in the tool box; -1 for none.
    virtual int GetToolBoxPosition() = 0;

    /// Shows the tool's panel and bar and presses its button in, or takes them back.
    virtual void UpdateToolUi(bool checked);

    virtual void OnToolBoxButtonPressed(LToolBoxButton* button);

    virtual void CreateToolBar() = 0;
    virtual void CreateToolBoxButton() = 0;
    virtual void CreateToolWidget() = 0;

    /// The cursor of the tool in its present mode.
    virtual QCursor GetCursor() = 0;

    /// The tool's veto against being left.
    virtual bool AllowDeactivate() { return true; }

public:
    /// False when the change was refused: by the view lock at activation, by the tool's veto at deactivation.
    bool Activate(bool active);

    /// Follows another view, or none for null; true always.
    bool SetDocumentView(IDocumentView* view);

    /// @param widget  the editor's main widget; not owned.
    void SetMainWidget(QWidget* widget);

    bool IsActive() const { return m_bActive; }

    ZKActivateAction* GetActivateAction() const { return m_pActivateAction; }

    IDocumentView* GetDocumentView() const { return m_pDocumentView; }

    ZKDocumentView* GetView() const { return m_pView; }

    /// What belongs to the current view; null without one.
    LXDocumentInterface* GetDocument() const;
    LXDocumentModel* GetModel() const;
    LexoUndoStack* GetHistory() const;
    QGraphicsScene* GetScene() const;

    /// In pixels; QSize() without a document.
    QSize GetDocumentSize() const;

    /// The id of the one selected layer; -1 when none or several are selected.
    int GetCurrentLayerId() const;

    /// The ids of the selected layers, in the order of the selection.
    QList<int> GetSelectedLayerIds() const;

    QWidget* GetMainWidget() const { return m_pMainWidget; }

    LayersWidget* GetLayersWidget() const { return m_pLayersWidget; }

    LToolBoxWidget* GetToolBox() const { return m_pToolBox; }

    /// Whether mouse move, press and release are kept from the tool while the view pans.
    bool IsSkippingWhilePanning() const { return m_bSkipWhilePanning; }

    /// @param process  true lets the tool have them.
    void SetSkipWhilePanning(bool process) { m_bSkipWhilePanning = !process; }

    /// Puts the tool's cursor on the view.
    void RefreshCursor();

    /// The document lock. True when this tool holds it afterwards; false without a document and when
    /// somebody else holds it.
    bool LockDocument();

    /// True when this tool doesn't hold the document lock afterwards.
    bool UnlockDocument();

    /// The view lock, which keeps other tools from becoming active; the results are as above.
    bool LockView();
    bool UnlockView();

    /// Switch all shortcuts of the program off and on, around text entry and drags; true always.
    bool DisableShortcuts();
    bool EnableShortcuts();

    bool eventFilter(QObject* object, QEvent* event) override;

signals:
    void OnActivate(bool active);

    /// After the tool took the new view.
    void OnDocumentViewChanged(IDocumentView* oldDocumentView, IDocumentView* newDocumentView);

    /// Before the tool leaves the old view: its last moment with it.
    void OnDocumentViewChange(IDocumentView* oldDocumentView, IDocumentView* newDocumentView);

    /// All buttons that are down, and then the one that changed.
    void OnMousePress(QPointF scenePos, Qt::MouseButtons buttons);
    void OnMousePress(QPointF scenePos, Qt::MouseButton button);
    void OnMouseMove(QPointF scenePos, Qt::MouseButtons buttons);
    void OnMouseRelease(QPointF scenePos, Qt::MouseButtons buttons);
    void OnMouseRelease(QPointF scenePos, Qt::MouseButton button);

    /// The view's state bits changed.
    void OnDocumentStateChanged(qulonglong oldState, qulonglong newState);
    void OnSetMainWidget();

    /// Before the panel is stored.
    void LayerWidgetChanged(LayersWidget* oldLW, LayersWidget* newLW);
    void CurrentDocumentLocked(bool locked);

    /// Of the scene.
    void FocusOut();
    void FocusIn();
    void Enter();
    void Leave();

    /// Of the view, while the tool is active.
    void PanningEnabled(bool enabled);

public slots:
    void ToolBoxButtonPressed(LToolBoxButton* button);
    void OnCurrentDocumentLocked();
    void OnCurrentDocumentUnlocked();
    void OnPanningEnabled(bool enabled);
    void OnExplicitlyActivated(bool checked);
    void OnImplicitlyActivated(bool checked);

protected:
    /// Whether the mouse is over the current view.
    bool IsMouseInView() const;

private:
    bool ActivateOnView();
    bool Deactivate();
    void DeactivateOnView();
    /// Remembers the cursor that the view had before the tool, and gives it back.
    void KeepCursor();
    void GiveCursorBack();
    void FollowActionState();
    void ChangeViewWhileActive(IDocumentView* view);
    void ChangeViewWhileInactive(IDocumentView* view);
    void RewireView(ZKDocumentView* view);
    void ConnectPanning();
    void DisconnectPanning();
    void InstallFilter(QGraphicsScene* scene);
    void RemoveFilter(QGraphicsScene* scene);
    void DeliverSceneEvent(QEvent* event);
    bool IsSkipped() const;

    ZKActivateAction* m_pActivateAction = nullptr;
    LToolBoxWidget* m_pToolBox = nullptr;
    IDocumentView* m_pDocumentView = nullptr;
    QPointer<ZKDocumentView> m_pView;
    QWidget* m_pMainWidget = nullptr;
    bool m_bActive = false;
    QCursor m_Cursor;
    ToolLocks m_Locks;
    LayersWidget* m_pLayersWidget = nullptr;
    bool m_bFilterAlways;
    bool m_bSkipWhilePanning = true;
};
