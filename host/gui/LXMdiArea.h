#pragma once

#include "ZKHostExport.h"

#include <QMdiArea>

#include <memory>

class LXDocumentInterface;
class LXMdiAreaPrivate;
class LXMdiSubWindow;
class QMainWindow;

/// Where the windows of documents live: tabs at first, or frames (QMdiArea::setViewMode). Main thread only.
///
/// A document closes in this order: `WantToClose` of the area and of the document; who then still holds the
/// document's lock has refused; the person is asked whether to save, if there is something to save;
/// `AboutToClose` of both; the view's `AboutDestroy`; `SubWindowActivated` with the next window or null. The
/// window that closes lives until after that.
class ZK_HOST_EXPORT LXMdiArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit LXMdiArea(QWidget* parent = nullptr);
    ~LXMdiArea() override;

    /// The window that holds the document area, the parent of message boxes; null while there is none.
    static QMainWindow* MainWindow();
    /// A name for a copy of the document: "name copy", or "name copy 2" and so on while another open
    /// document has it. Empty for null.
    static QString MakeDefaultCopyName(LXDocumentInterface* document);

    /// The window whose activation was told last; null for none.
    LXMdiSubWindow* GetActiveWindow() const;
    /// All windows of documents, in the order of the tabs.
    QList<LXMdiSubWindow*> GetWindows() const;

signals:
    /// Another window came to the front; null after the last one closed. Not sent when the main window only
    /// loses the focus.
    void SubWindowActivated(LXMdiSubWindow* window);
    void WantToClose(LXDocumentInterface* document);
    void AboutToClose(LXDocumentInterface* document);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class LXMdiAreaPrivate;
    std::unique_ptr<LXMdiAreaPrivate> m_pPrivate;
};
