#pragma once

#include "EditorExport.h"

#include "gui/ZKDocumentView.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>

class EmptyPage;
class LXDocumentInterface;
class LXMdiArea;
class QDockWidget;
class RecentFiles;
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

    /// Of the active document window; null without one.
    ZKDocumentView* GetActiveView() const;
    LXDocumentInterface* GetActiveDocument() const;

    /// Asked when the window is to close; false keeps it open.
    void SetCloseQuestion(std::function<bool()> question) { m_CloseQuestion = std::move(question); }

    /// Opens or leaves the full screen; the panels stay.
    void SetFullScreen(bool fullScreen);

signals:
    /// Another document window is the active one, or none (null).
    void ActiveViewChanged(ZKDocumentView* view);

    /// Files were dropped anywhere on the window.
    void FilesDropped(const QStringList& paths);

    /// After the window was closed.
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildToolBox();
    void BuildOptionBar();
    void BuildPanels();
    QDockWidget* AddPanel(const QString& name, const QString& title, QWidget* content);
    void BuildCenter(RecentFiles* recentFiles);
    void RestorePlace();
    void StorePlace() const;
    void FollowActiveView();
    void UpdateTitle();

    LXMdiArea* m_pArea = nullptr;
    EmptyPage* m_pEmptyPage = nullptr;
    StatusReadout* m_pStatus = nullptr;
    QPointer<ZKDocumentView> m_pView; // the one that was followed last
    std::function<bool()> m_CloseQuestion;
};
