#pragma once

#include <QRect>
#include <QWidget>

#include <optional>
#include <utility>

/// A field of all hues from left to right and all saturations from below to above, at full value, with a mark
/// on the chosen one. Main thread only.
///
/// A press or a drag chooses what lies under the pointer; Escape ends a drag with what was chosen before the
/// press. Left and Right step the hue by a degree, Up and
/// Down the saturation by a hundredth, ten times as far with Shift; Home and End go to the ends of the hues,
/// Page Up and Page Down to pure and to gray.
class ColorField : public QWidget
{
    Q_OBJECT

public:
    explicit ColorField(QWidget* parent = nullptr);

    /// Moves the mark; no signal. Degrees from 0 to below 360, and 0 to 1.
    void SetHueSaturation(double hue, double saturation);

    double GetHue() const { return m_Hue; }

    double GetSaturation() const { return m_Saturation; }

    /// The middle of the pixel that shows it, in this widget. The last column is a hue of 359 degrees.
    QPoint PlaceOf(double hue, double saturation) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// By a person.
    void Picked(double hue, double saturation);
    /// Before the press chooses something.
    void DragBegan();
    /// Escape was pressed. Who keeps more than hue and saturation brings back what was there when the drag
    /// began; the mark itself goes back after this.
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
    void PickAt(const QPoint& pos);
    void Pick(double hue, double saturation);
    void CancelDrag();

    double m_Hue = 0;
    double m_Saturation = 0;
    std::optional<std::pair<double, double>> m_Former; ///< from before the drag that is under way
};
