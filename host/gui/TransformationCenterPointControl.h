#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class TransformationCenterPointControlPrivate;

/// Nine squares, 40 x 40 pixels in all, of which one may be lit: the point of a box that stays while the box
/// is transformed. Chosen by a click or the arrow keys. Main thread only.
class ZK_HOST_EXPORT TransformationCenterPointControl : public QWidget
{
    Q_OBJECT

public:
    /// The squares in reading order.
    enum ControlState
    {
        None = 0, ///< no square is lit: the point lies somewhere else
        TopLeft = 1,
        Top = 2,
        TopRight = 3,
        Left = 4,
        Center = 5,
        Right = 6,
        BottomLeft = 7,
        Bottom = 8,
        BottomRight = 9,
    };
    Q_ENUM(ControlState)

    explicit TransformationCenterPointControl(QWidget* parent = nullptr);
    ~TransformationCenterPointControl() override;

    /// None at first.
    ControlState GetState() const;
    /// Sends no signal.
    void SetState(ControlState state);

signals:
    /// The person has chosen another square.
    void StateChanged(TransformationCenterPointControl::ControlState state);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Choose(int cell);

    std::unique_ptr<TransformationCenterPointControlPrivate> m_pPrivate;
};
