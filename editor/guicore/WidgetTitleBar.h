#pragma once

#include <QPoint>
#include <QWidget>

#include <optional>

class QToolButton;

/// The bar at the top of a window that draws its own frame: the title of the window, which follows it, and a
/// button that closes it. A drag of the bar moves the window. Main thread only.
class WidgetTitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit WidgetTitleBar(QWidget* owner);

    void SetMovable(bool movable);

    bool IsMovable() const { return m_bMovable; }

    /// Wide enough for the whole title.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect TitlePlace() const;

    QWidget* m_pOwner;
    QToolButton* m_pClose;
    bool m_bMovable = true;
    std::optional<QPoint> m_Grip; ///< where the window is held, from its top left; only while it is dragged
};
