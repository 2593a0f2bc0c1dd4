#pragma once

#include "EditorExport.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class HistoryModel;
class LaterUpdate;
class ZKDocumentView;

namespace Ui {
class HistoryPanel;
}

/// The panel of the current document's steps: what was done, what was undone, which state is on the disk, and
/// the memory that all of it holds. Going to a row undoes or redoes up to there. While a tool holds the
/// document nothing can be chosen. Main thread only.
class ZK_EDITOR_EXPORT HistoryPanel : public QWidget
{
    Q_OBJECT

public:
    explicit HistoryPanel(QWidget* parent = nullptr);
    ~HistoryPanel() override;

    /// Shows the history of this view; null shows that there is none. The panel lets go of the view by
    /// itself before it goes away.
    void SetView(ZKDocumentView* view);

    QSize sizeHint() const override;

private:
    bool MayWork() const;
    void GoTo(const QModelIndex& index);
    void FollowHistory();
    void ShowState();
    void UpdateLock();

    std::unique_ptr<Ui::HistoryPanel> m_pUi;
    HistoryModel* m_pModel;
    LaterUpdate* m_pLater;
    LaterUpdate* m_pLockLater;
    QPointer<ZKDocumentView> m_pView;
    bool m_bUpdating = false;  ///< rows come and go, which may take the current one along
    bool m_bFollowing = false; ///< the selection follows the history, not the other way round
};
