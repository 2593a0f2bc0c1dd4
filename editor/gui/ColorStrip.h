#pragma once

#include <QAbstractSlider>
#include <QColor>

#include <optional>

/// A strip from black below to a hue and saturation at full value above, with a mark on the chosen value: 0
/// to 255, which is the highest of the three channels. Main thread only.
///
/// A press or a drag chooses what lies under the pointer; Escape ends a drag with the value from before the
/// press. The arrow keys step by 1, Page Up and Page Down by 16, Home and End go to the ends.
class ColorStrip : public QAbstractSlider
{
    Q_OBJECT

public:
    explicit ColorStrip(QWidget* parent = nullptr);

    /// What stands at the upper end.
    void SetBrightest(const QColor& color);

    /// The row of pixels that shows the value, in this widget.
    int PlaceOf(int value) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// Before the press chooses something.
    void DragBegan();
    /// Escape was pressed. Who keeps more than the value brings back what was there when the drag began; the
    /// value itself goes back after this.
    void DragCancelled();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QRect Inside() const;
    void PickAt(int y);

    QColor m_Brightest = Qt::white;
    std::optional<int> m_Former; ///< the value from before the drag that is under way
};
