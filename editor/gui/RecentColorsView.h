#pragma once

#include <QColor>
#include <QListWidget>

/// The colors that were chosen last, in a row. The arrow keys and a click choose one. Main thread only.
class RecentColorsView : public QListWidget
{
    Q_OBJECT

public:
    explicit RecentColorsView(QWidget* parent = nullptr);

    /// Without any color the row is off and says why.
    void SetColors(const QList<QColor>& colors);

    /// Marks the first color of this kind, or none; no signal.
    void Mark(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// By a person.
    void Picked(const QColor& color);

private:
    void PickSelected();
};
