#pragma once

#include "EditorExport.h"

#include "gui/ZKDocumentView.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>

class AdjustmentPanel;
class EmptyPage;
class HistoryPanel;
class LXDocumentInterface;
class LXMdiArea;
class LaterUpdate;
class PanelArea;
class PathsWidget;
class QMimeData;
class RecentFiles;
class SamplesWidget;
class StatusReadout;

/// The window around the documents: tool box at the left, menu bar and option bar on top, panels at the
/// right, status bar below, and in the middle the documents or, without one, the empty page.
///
/// It only arranges the parts and follows the active document; what the menus do stands in FileMenu,
/// EditMenu and ViewMenu. Main thread only.
class ZK_EDITOR_EXPORT MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(RecentFiles* recentFiles);
    ~MainWindow() override;

    LXMdiArea* GetDocumentArea() const { return m_pArea; }

    EmptyPage* GetEmptyPage() const { return m_pEmptyPage; }

    PanelArea* GetPanels() const { return m_pPanels; }

    StatusReadout* GetStatus() const { return m_pStatus; }

    /// Of the active document window; null without one.
    ZKDocumentView* GetActiveView() const;
    LXDocumentInterface* GetActiveDocument() const;

    /// Asked when the window is to close; false keeps it open.
    void SetCloseQuestion(std::function<bool()> question) { m_CloseQuestion = std::move(question); }

    /// Opens or leaves the full screen; the panels stay.
    void SetFullScreen(bool fullScreen);

    /// Puts size and panels back to what they are at a first start.
    void ResetLayout();

    /// The local files among what is dragged; empty when there are none.
    static QStringList LocalFiles(const QMimeData* content);

signals:
    /// Another document window is the active one, or none (null).
    void ActiveViewChanged(ZKDocumentView* view);

    /// The full screen was entered or left, by whomever.
    void FullScreenChanged(bool fullScreen);

    /// Files were dropped on the window beside the canvas.
    void FilesDropped(const QStringList& paths);

    /// Files or pictures were dropped on the active view.
    void DroppedOnCanvas(const QMimeData* content, QPointF scenePos);

    /// The window came to a screen, or to another one.
    void ScreenChanged();

    /// After the window was closed.
    void Closed();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildToolBox();
    void BuildOptionBar();
    void BuildPanels();
    void BuildCenter(RecentFiles* recentFiles);
    void RestorePlace();
    void StorePlace() const;
    void FollowActiveView();
    void UpdateTitle();
    /// The active view, when the point of the window lies in it.
    ZKDocumentView* ViewAt(const QPoint& pos) const;

    LXMdiArea* m_pArea = nullptr;
    EmptyPage* m_pEmptyPage = nullptr;
    LaterUpdate* m_pLaterTitle;
    StatusReadout* m_pStatus = nullptr;
    PanelArea* m_pPanels = nullptr;
    HistoryPanel* m_pHistoryPanel = nullptr;
    PathsWidget* m_pPathsPanel = nullptr;
    SamplesWidget* m_pSamplesPanel = nullptr;
    AdjustmentPanel* m_pAdjustmentPanel = nullptr;
    QPointer<ZKDocumentView> m_pView; // the one that was followed last
    std::function<bool()> m_CloseQuestion;
};
