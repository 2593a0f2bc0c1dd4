#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class LXWidgetPrivate;

/// The base of panels and of pop-ups with a form. Main thread only.
///
/// Inside a layout or a dock it is a plain widget. As a window of its own it has no frame of the window
/// system but draws one: a thin line, a bar with the window's title and a button that closes it, and a grip
/// in its lower right corner. What is turned off here comes back when it is turned on; all of it is on at
/// first. A pop-up is made with `Qt::Popup`; a press outside and Escape close it.
class ZK_HOST_EXPORT LXWidget : public QWidget
{
    Q_OBJECT

public:
    explicit LXWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    ~LXWidget() override;

    /// The bar with the title. Without one only the window system can move the window.
    void SetTitleBarVisible(bool visible);
    bool IsTitleBarVisible() const;

    /// Whether a person may give the window another size. When not, it always has the size of its contents.
    void SetResizable(bool resizable);
    bool IsResizable() const;

    /// Whether a person may move the window by its title bar.
    void SetTitleMovable(bool movable);
    bool IsTitleMovable() const;

    /// What the contents want, and as wide as the title.
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<LXWidgetPrivate> m_pPrivate;
};
