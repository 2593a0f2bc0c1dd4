#pragma once

#include "gui/CanvasPainter.h"
#include "gui/NavigatorPicture.h"
#include "gui/NavigatorPlace.h"

#include <QPointF>
#include <QRectF>

#include <optional>

class NavigatorWidget;
class QKeyEvent;
class QPainter;

/// What the person does with the frame of a navigator, and how it looks. Main thread only.
class NavigatorWidgetPrivate : public QObject
{
    Q_OBJECT

public:
    explicit NavigatorWidgetPrivate(NavigatorWidget* widget);

    static NavigatorWidgetPrivate* Get(const NavigatorWidget* widget);

    const PictureSurvey& Survey() const { return m_Picture.Survey(); }

    const NavigatorPlace& Place() const { return m_Place; }

private:
    friend class NavigatorWidget;

    enum class State
    {
        Idle,
        Pressed, ///< inside the frame; a release from here is a click
        Dragging
    };

    void SetViewRect(const QRectF& rect);
    void UpdatePlace();
    void UpdateLook();
    void UpdateCursor(const QPoint& pos);
    void OnPictureChanged(const QRect& docRect);

    void Press(const QPoint& pos);
    void Move(const QPoint& pos);
    void Release(const QPoint& pos);
    void AbortDrag();
    bool TakeKey(const QKeyEvent& event);
    /// @param center  document pixels
    void AskFor(const QPointF& center);

    void Paint(QPainter& painter) const;
    void PaintFrame(QPainter& painter) const;

    NavigatorWidget* m_pWidget;
    NavigatorPicture m_Picture;
    NavigatorPlace m_Place;
    CanvasLook m_Look;
    QRectF m_ViewRect; ///< document pixels
    State m_State = State::Idle;
    QPoint m_PressPos;            ///< widget pixels
    QPointF m_Grip;               ///< from the middle of the frame to where it is held, document pixels
    QPointF m_Former;             ///< the middle of the frame before the drag
    std::optional<QPoint> m_Told; ///< of this drag
};
