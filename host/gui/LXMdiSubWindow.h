#pragma once

#include "ZKHostExport.h"

#include <QMdiSubWindow>

/// The window of a document in the document area: a tab, or a frame. Its title is the document's name, with
/// a mark while the document is modified. Closing it closes the document. Main thread only.
class ZK_HOST_EXPORT LXMdiSubWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    /// @param widget  what the window shows and owns from now on; a ZKDocumentWidget for a document
    explicit LXMdiSubWindow(QWidget* widget, QWidget* parent = nullptr);
    ~LXMdiSubWindow() override;

    /// The window's content; tools cast it to ZKDocumentWidget.
    QWidget* GetWidget() const;

protected:
    /// Asks LXMdiArea, which may refuse.
    void closeEvent(QCloseEvent* event) override;
    /// Tab leaves the window: the document is one stop on the way through the main window.
    bool focusNextPrevChild(bool next) override;

private:
    void UpdateTitle();
};
