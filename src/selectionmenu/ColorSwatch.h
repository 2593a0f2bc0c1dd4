#pragma once

#include <QColor>
#include <QLabel>

/// A small square of one color that can be chosen, by the mouse, or by Space while it has the focus. Main
/// thread only.
class ColorSwatch : public QLabel
{
    Q_OBJECT

public:
    ColorSwatch(const QColor& color, QWidget* parent);

    /// The current one has a frame.
    void SetCurrent(bool current);

signals:
    void Chosen();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool m_bCurrent = false;
};
