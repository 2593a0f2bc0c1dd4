#pragma once

#include "LXViewToolBase.h"
#include "ToolWork.h"

#include "fillcan/BlendShortcuts.h"
#include "fillcan/FillJob.h"
#include "gui/PatternSelectWidget.h"

#include <QEvent>
#include <QFutureWatcher>
#include <QItemSelection>
#include <QKeySequence>
#include <QPointer>
#include <QToolButton>

#include <memory>

class FillCanProgress;

namespace Ui {
class FillCanToolBar;
class FillCanToolWidget;
} // namespace Ui

/// The fill can: a click floods the area under it, in the current layer or in its mask, with the foreground
/// color or a pattern. The option bar and the panel show the same options.
///
/// A click starts a job on a worker (FillJob) and takes the document's lock; the job's end pushes the command
/// and gives the lock back. Main thread only.
class FillCanPrivate : public LXViewToolBase
{
    Q_OBJECT

public:
    explicit FillCanPrivate(QObject* parent);

    /// Waits for a job that still runs and drops its result.
    ~FillCanPrivate() override;

    void SaveSettings() override;
    void LoadSettings() override;
    QList<QAction*> GetMenuActions() override;
    QList<QAction*> GetToolBarActions() override;
    MainMenuEntries GetMainMenuEntries() override;

    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void OnEnter(QEvent* event) override;
    QWidget* GetToolWidget() override;
    QWidget* GetToolBar() override;
    LToolBoxButton* GetToolBoxButton() override;
    int GetToolBoxPosition() override;
    void CreateToolBar() override;
    void CreateToolBoxButton() override;
    void CreateToolWidget() override;
    QCursor GetCursor() override;
    void timerEvent(QTimerEvent* event) override;

private slots:
    void ActivateSlot(bool active);
    void DocumentViewChangedSlot(IDocumentView* oldView, IDocumentView* newView);
    void OnMousePressSlot(QPointF scenePos, Qt::MouseButtons buttons);
    void ShowPatternSelectMenu(bool show);
    void FillModeChanged(int index);
    void PatternChanged(int index);
    void PatternDoubleClicked(int index);
    void OnShortcutActivated(QKeySequence key, int id);
    void OnJobReady(int index);
    void OnJobFinished();
    void OnCurrentLayerSelChanged(QItemSelection selected, QItemSelection deselected);

private:
    /// What a click would paint on.
    enum class Target
    {
        None = -1,
        Paintable = 0,
        Locked = 10,
        NotPixels = 20,
    };

    Target CheckTarget() const;
    void JoinForms();
    void FillPatterns();
    void FollowPatternSelect(QEvent::Type type);
    bool IsPatternButtonUnderMouse() const;
    FillJobData MakeJobData(const QPointF& scenePos) const;
    QBrush MakeBrush(const QColor& color) const;
    QFuture<FillJobResult> StartJob(const QPointF& scenePos);
    void StartWork(const QFuture<FillJobResult>& job);
    bool PushResult(const FillJobResult& result);
    void ShowFailure();
    void FinishJobNow();
    void DropJob();
    void ForgetJob();
    void StopWaitTimer();

    QList<QAction*> m_ToolBarActions;
    MainMenuEntries m_MenuEntries;
    QPointer<QWidget> m_pToolWidget;
    QPointer<LToolBoxButton> m_pToolBoxButton;
    QPointer<QWidget> m_pToolBar;
    std::unique_ptr<Ui::FillCanToolBar> m_ToolBarUi;
    std::unique_ptr<Ui::FillCanToolWidget> m_ToolWidgetUi;
    QPointer<QToolButton> m_pSelectPatternBtn;
    QPointer<PatternSelectWidget> m_pPatternSelect;
    BlendShortcuts m_BlendShortcuts;
    QFutureWatcher<FillJobResult>* m_pWatcher;
    int m_WaitTimer = -1;
    FillCanProgress* m_pProgress = nullptr;
    ToolWork m_Work;
    bool m_bResultPending = false;
    QMetaObject::Connection m_LayerSelection;
    QMetaObject::Connection m_DocumentClose;
};
