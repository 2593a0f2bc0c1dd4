#pragma once

#include <QAbstractSlider>
#include <QColor>

/// A strip from black below to a hue and saturation at full value above, with a mark on the chosen value: 0
/// to 255, which is the highest of the three channels. Main thread only.
///
/// A press or a drag chooses what lies under the pointer. The arrow keys step by 1, Page Up and Page Down by
/// 16, Home and End go to the ends.
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

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRect Inside() const;
    void PickAt(int y);

    QColor m_Brightest = Qt::white;
};
