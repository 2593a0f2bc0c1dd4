#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class LXAnchorSelectionPrivate;

/// Nine cells, of which one is the anchor: where the old picture stays when the canvas changes its size.
/// Arrows around the anchor show which way the edges of the canvas go. Chosen by a click or the arrow keys.
/// Main thread only.
class ZK_HOST_EXPORT LXAnchorSelection : public QWidget
{
    Q_OBJECT

public:
    enum State
    {
        TopLeft = 0,
        Top = 1,
        TopRight = 2,
        Left = 3,
        Center = 4,
        Right = 5,
        BottomLeft = 6,
        Bottom = 7,
        BottomRight = 8,
    };
    Q_ENUM(State)

    explicit LXAnchorSelection(QWidget* parent = nullptr);
    ~LXAnchorSelection() override;

    /// Center at first.
    State GetState() const;
    void SetState(State state);

    QSize sizeHint() const override;

public slots:
    /// Whether the canvas becomes narrower: arrows point inward along that axis then, and outward otherwise,
    /// as they do at first.
    void ShrinkHorizontal(bool shrinks);
    /// The same for a lower canvas.
    void ShrinkVertical(bool shrinks);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::unique_ptr<LXAnchorSelectionPrivate> m_pPrivate;
};
