#pragma once

#include <QAbstractButton>
#include <QColor>

/// A small square that shows a color. Main thread only.
class ColorWell : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ColorWell(QWidget* parent = nullptr);

    QColor GetColor() const { return m_Color; }

    void SetColor(const QColor& color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_Color = Qt::black;
};
