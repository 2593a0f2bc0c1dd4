#pragma once

#include "magicwand/WandFill.h"

#include "history/SelectionCommandData.h"

#include <QCursor>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QToolButton>

#include <memory>

class IDocumentView;
class LToolBoxButton;
class LToolBoxWidget;
class LXDocumentInterface;
class LexoAppKeyHook;
class LexoCommand;
class LexoUndoStack;
class QGraphicsSceneMouseEvent;
class ZKActivateAction;
class ZKToolBarManager;

namespace Ui {
class MWSelectionToolBar;
class MWToolWidget;
} // namespace Ui

/// The magic wand: a click selects the pixels that are like the clicked one. In the mode "Create new" a press
/// on a selected pixel begins a drag of the selection, and a click there removes it. Held keys change the
/// mode for as long as they are down.
///
/// A gesture holds the document lock and the view lock from the press to the release. Main thread only.
class MagicWandPrivate : public QObject
{
    Q_OBJECT

public:
    using LogicalOp = SelectionCommandData::LogicalOp;

    /// The rows of the mode combo.
    enum class SelectionOption
    {
        Replace = 0,
        Unite = 1,
        Subtract = 2,
        Intersect = 3,
    };

    explicit MagicWandPrivate(QObject* parent);

    /// Ends what is under way and gives everything back.
    ~MagicWandPrivate() override;

    /// False, and nothing changes, when somebody holds the view lock at the activation.
    bool Activate(bool active);

    bool IsActive() const { return m_bActive; }

    ZKActivateAction* GetActivateAction() const { return m_pActivateAction; }

    void SetToolBox(LToolBoxWidget* toolBox);
    void SetToolBarManager(ZKToolBarManager* manager);
    void SaveSettings();
    void LoadSettings();

    /// Ends a gesture in the old view; true always.
    bool SetDocumentView(IDocumentView* view);

    /// The menu of a right click on a document with a selection. It is empty until somebody fills it.
    QMenu* GetContextMenu() const { return m_pContextMenu.get(); }

    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    void intersectActivated(bool checked);
    void subtractActivated(bool checked);
    void uniteActivated(bool checked);
    void replaceActivated(bool checked);
    void activateGeometryOp(SelectionOption option);
    void activateGeometryOp(int row);
    void KeyPressed(int key);
    void KeyReleased(int key);
    void ToolButtonPressed(LToolBoxButton* button);
    void OnExplicitlyActivated(bool checked);
    void OnImplicitlyActivated(bool checked);
    /// @param action  what the button "Refine selection" does; null for nothing.
    void OnRefineRegistered(QAction* action);

private:
    bool AllowDeactivate() { return true; }

    // Forms, mode and keys.
    void CreateToolWidget();
    void CreateToolBar();
    void CreateToolButton();
    void SetBaseOp(LogicalOp op);
    void SetModifier(int key, bool down);
    void FollowModifiers();
    QCursor GetCursor() const;
    void RefreshCursor();
    void ShowCursor(const QCursor& cursor);

    // Activation and the current view.
    void FollowActionState();
    void Deactivate();
    void TakeView();
    void LeaveView();
    void TakeCursor();
    void GiveCursorBack();
    void OnPanningEnabled(bool enabled);

    // The gesture.
    void OnPress(const QGraphicsSceneMouseEvent* event);
    void OnMove(const QGraphicsSceneMouseEvent* event);
    void OnRelease(const QGraphicsSceneMouseEvent* event);
    void Hover(const QPointF& scenePos);
    bool IsOverSelected(const QPointF& scenePos) const;
    bool PopUpContextMenu(const QGraphicsSceneMouseEvent* event);
    void BeginGesture();
    bool RunClick(const QGraphicsSceneMouseEvent* event);
    void ArmDrag(const QPointF& scenePos);
    int LayerToCompare() const;
    void Fill(const QPointF& scenePos, unsigned int layerId);
    WandFillData ReadFillData(const QPointF& scenePos, unsigned int layerId) const;
    void WarnOfFaintSelection();
    void EndDragOrClick(const QPoint& releasePoint);
    void PushMove(const QPoint& delta);
    void RemoveSelection();
    void AbandonGesture();
    void GiveCaptureBack();
    bool LockDocument();
    void Unlock();

    LXDocumentInterface* GetDocument() const;
    LexoUndoStack* GetHistory() const;

    QPointer<QWidget> m_pToolBarWidget;
    QPointer<QWidget> m_pToolWidget;
    ZKActivateAction* m_pActivateAction;
    QPointer<LToolBoxButton> m_pToolButton;
    LToolBoxWidget* m_pToolBox = nullptr;
    LogicalOp m_Op = SelectionCommandData::Replace;
    LogicalOp m_BaseOp = SelectionCommandData::Replace; ///< the user's choice, without keys
    std::unique_ptr<Ui::MWToolWidget> m_ToolWidgetUi;
    std::unique_ptr<Ui::MWSelectionToolBar> m_ToolBarUi;
    Qt::KeyboardModifiers m_ModifierMask = Qt::NoModifier; ///< what m_Op follows
    IDocumentView* m_pDocumentView = nullptr;
    bool m_bActive = false;
    bool m_bHasCursor = false; ///< the view's own is in m_SavedCursor
    QCursor m_SavedCursor;
    LexoAppKeyHook* m_pKeyHook = nullptr;
    Qt::KeyboardModifiers m_Modifiers = Qt::NoModifier; ///< the keys that are down
    bool m_bSelectionDragArmed = false; ///< the pointer is over a selected pixel that a press would drag
    bool m_bSelectionPressed = false;   ///< such a press was made and isn't released yet
    bool m_bSelectionDragged = false;
    QPoint m_PressPoint;
    QPoint m_SelectionOrigin; ///< at the press
    bool m_bInputCaptured = false;
    QPointer<LXDocumentInterface> m_pLockedDocument;
    std::unique_ptr<QMenu> m_pContextMenu;
};
