#pragma once

#include <QColor>
#include <QWidget>

/// Shows a color in a thin line, over a checker when it is translucent; nothing to press. Main thread only.
class ColorPatch : public QWidget
{
    Q_OBJECT

public:
    explicit ColorPatch(QWidget* parent = nullptr);

    QColor GetColor() const { return m_Color; }

    void SetColor(const QColor& color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_Color = Qt::black;
};
