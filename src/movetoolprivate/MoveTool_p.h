#pragma once

#include "movetoolprivate/MoveFrame.h"
#include "movetoolprivate/MoveTargets.h"
#include "movetoolprivate/MoveViewState.h"

#include "gui/LXShortcut.h"

#include <QAction>
#include <QCursor>
#include <QItemSelection>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <map>
#include <memory>

class CopyPasteThread;
class IDocumentView;
class LToolBoxButton;
class LToolBoxWidget;
class LXDocumentInterface;
class LXDocumentModel;
class LXDragGuide;
class LexoUndoStack;
class QGraphicsSceneMouseEvent;
class ZKActivateAction;
class ZKDocumentView;
class ZKToolBarManager;

namespace Ui {
class MoveToolBar;
} // namespace Ui

/// The move tool. A drag moves whole layers and masks, or, from a selected pixel on, lifts the pixels under
/// the selection and carries them about. What is lifted stays floating after the release, one record for each
/// view, until anything else happens to the document; then it becomes one step of the history. Keys move the
/// selection and its pixels whichever tool is active, and Ctrl makes this tool active for as long as it is
/// held.
///
/// A drag holds the document lock and the view lock from the press to the release. Main thread only; what
/// floats is moved by a worker of its own (CopyPasteThread).
class MoveToolPrivate : public QObject
{
    Q_OBJECT

public:
    /// What a drag moves; decided by the press.
    enum class State
    {
        NoSelection = 0,   ///< selected layers and masks
        WithSelection = 1, ///< the same, and the selection with them
        Cut = 2,           ///< the pixels under the selection
        Copy = 3,          ///< a copy of them
        Path = 4,
    };

    explicit MoveToolPrivate(QObject* parent);

    /// Ends what is under way; what floats is put down first.
    ~MoveToolPrivate() override;

    /// False, and nothing changes, when somebody holds the view lock at the activation.
    bool Activate(bool active);

    bool IsActive() const { return m_bActive; }

    ZKActivateAction* GetActivateAction() const { return m_pActivateAction; }

    void SetToolBox(LToolBoxWidget* toolBox);
    void SetToolBarManager(ZKToolBarManager* manager);
    void SaveSettings();
    void LoadSettings();

    /// Ends a drag in the old view; what floats there goes on floating. False when the tool is active and
    /// somebody holds the lock of the new view, which is then left alone.
    bool SetDocumentView(IDocumentView* view);

    /// What floats in a view; null for nothing. Valid until the next event.
    const MoveViewState* GetRecord(const ZKDocumentView* view) const;

    /// What the next drags move in place of layers: a sub path, until the tool is deactivated. Both -1 for
    /// none.
    void SetPathPair(int path, int subPath) { m_PathPair = {path, subPath}; }

    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    void KeyPressEvent(int key);
    void KeyReleaseEvent(int key);
    void ToolButtonPressed(LToolBoxButton* button);
    void OnExplicitlyActivated(bool checked);
    void OnImplicitlyActivated(bool checked);

    void OnSelectionMoveLeft();
    void OnSelectionMove10Left();
    void OnSelectionMoveRight();
    void OnSelectionMove10Right();
    void OnSelectionMoveTop();
    void OnSelectionMove10Top();
    void OnSelectionMoveBottom();
    void OnSelectionMove10Bottom();
    void OnSelectionCopyMoveLeft();
    void OnSelectionCopyMove10Left();
    void OnSelectionCopyMoveRight();
    void OnSelectionCopyMove10Right();
    void OnSelectionCopyMoveTop();
    void OnSelectionCopyMove10Top();
    void OnSelectionCopyMoveBottom();
    void OnSelectionCopyMove10Bottom();

    void OnDocumentLocked();
    void OnDocumentUnlocked();
    void OnAboutHistoryIndexChanged();
    void OnAboutRequesAdditionalLayer(uint layerID);
    void OnAboutRequesAdditionalMask(uint layerID);
    void OnAboutDocumentViewDestroyed(ZKDocumentView* view);
    void OnAboutSelectionMove();
    void OnUnexpectedException(CopyPasteThread* thread);
    void OnUnexpectedError(CopyPasteThread* thread);
    void OnMaskSelectionChanged(bool selected);
    void OnSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void OnShowTransformControls(bool show);
    void OnLayerPositionChanged(uint id, const QPoint& offset);
    void OnLayerDataChanged(uint id);
    void OnPanningEnabled(bool enabled);

private:
    using PathIDs = MoveViewState::PathIDs;

    // A drag is never left alone.
    bool IsAllowChange() { return !m_bDragging; }

    // Forms and settings.
    void CreateToolBar();
    void CreateToolButton();

    // Activation, the current view, and the frame.
    void Deactivate();
    void TakeView();
    void LeaveView();
    void TakeCursor();
    void GiveCursorBack();
    void FollowDocument(LXDocumentInterface* document);
    void UpdateFrame();
    void UpdateFrameControl();

    // A drag.
    void OnPress(const QGraphicsSceneMouseEvent* event);
    void OnMove(const QGraphicsSceneMouseEvent* event);
    void OnRelease(const QGraphicsSceneMouseEvent* event);
    bool IsDocumentInOtherHands() const;
    int TestLocks() const;
    void TellLock(int code);
    bool AllowsByLocks(int row);
    bool StartDrag();
    State StateForPress() const;
    bool IsOnSelectedPixel(const QPointF& scenePos) const;
    bool StartFloating();
    bool StartPath();
    bool StartOffsets();
    void StepTo(const QPointF& scenePos);
    QPoint DragDelta() const;
    QPoint PiecePosition() const;
    void MoveOffsets(const QPoint& delta);
    void EndDrag();
    void PushMove();
    bool SettlePiece();
    void UpdateThumbnails();
    void AbandonDrag();
    void EndLostGesture();
    void GiveDragBack();
    bool GiveCaptureBack();
    void LockDocument();
    void UnlockDocument();
    void LeaveTemporaryTurn();

    // Keys.
    void CreateShortcuts();
    void EnableShortcuts(bool enable);
    void MoveByKey(const QPoint& direction, int step);
    void CopyByKey(const QPoint& direction, int step);
    bool CanMoveByKey() const;
    QPoint KeyDelta(const QPoint& direction, int step) const;
    void MovePixels(const QPoint& delta, bool copy);
    bool AllowsPixels(int row);
    void MoveSelectionAlone(const QPoint& delta);
    void TakeTemporaryTurn();
    void LandByKey();

    // Records.
    template <class Condition>
    MoveViewState* FindRecord(const Condition& condition) const;
    MoveViewState* CurrentRecord() const;
    bool Fits(const MoveViewState& record, unsigned int layerID, bool copy) const;
    bool MakeFloating(unsigned int layerID, bool copy);
    bool MakeFloatingPath();
    MoveViewState& AddRecord(std::unique_ptr<CopyPasteThread> thread);
    void Listen(const MoveViewState& record);
    void StopListening(const MoveViewState& record);
    void BeginOwnMove(MoveViewState& record);
    void EndOwnMove(MoveViewState& record);
    std::unique_ptr<MoveViewState> TakeRecord(const MoveViewState& record);
    bool LandRecord(const MoveViewState& record);
    bool LandAll();
    void CancelPiece(MoveViewState& record);
    void DeleteThreadsLater();
    LXDocumentInterface* SenderDocument() const;

    LXDocumentInterface* GetDocument() const;
    LXDocumentModel* GetModel() const;
    ZKDocumentView* GetView() const;
    LexoUndoStack* GetHistory() const;
    QList<int> SelectedRows() const;

    std::unique_ptr<QMenu> m_pMenu;
    bool m_bActive = false;
    IDocumentView* m_pDocumentView = nullptr;
    QCursor m_SavedCursor;     ///< of the view, from before this tool set its own
    bool m_bHasCursor = false; ///< whether it did
    bool m_bDragging = false;
    QPointF m_PressPos;
    QPointF m_Way; ///< of the drag, as far as it has come from there
    std::unique_ptr<LXDragGuide> m_pGuide;
    MoveTargets m_Targets;
    QPoint m_SelectionOffset; ///< at the press
    QPointer<LXDocumentInterface> m_pLockedDocument;
    ZKActivateAction* m_pActivateAction;
    LToolBoxWidget* m_pToolBox = nullptr;
    QPointer<LToolBoxButton> m_pToolButton;
    int m_LockCode = 0; ///< what a press was refused for; told at the release
    State m_State = State::NoSelection;
    QRect m_FrameRect;                       ///< around what moves, at the press
    QList<QPointer<LXShortcut>> m_Shortcuts; ///< in the main window
    std::map<const ZKDocumentView*, std::unique_ptr<MoveViewState>> m_Views;
    PathIDs m_PathPair = MoveViewState::NoPaths(); ///< path and sub path, when a path is to be moved
    QPointer<QWidget> m_pToolBar;
    std::unique_ptr<Ui::MoveToolBar> m_ToolBarUi;
    QPointer<LXDocumentInterface> m_pFollowed; ///< the document whose lock the shortcuts follow
    MoveFrame m_Frame;
    QPointF m_FrameItemPos; ///< at the press
};
