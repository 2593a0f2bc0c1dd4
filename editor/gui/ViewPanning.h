#pragma once

#include <QCursor>
#include <QObject>
#include <QPoint>

class QMouseEvent;
class ZKDocumentView;

/// Moves the picture under the hand: while Space is held and the left button drags, or while the middle
/// button drags. Owned by its view.
///
/// Space starts nothing while a button is held, so that no tool loses the end of its own drag; a drag of the
/// hand outlives the release of Space until its button goes up, for the same reason.
class ViewPanning : public QObject
{
    Q_OBJECT

public:
    explicit ViewPanning(ZKDocumentView* view);

    bool IsEnabled() const { return m_bEnabled; }

    void Enable(bool enable);

    bool IsAllowed() const { return m_bAllowed; }

    void Allow(bool allow);

    /// Called with each mouse event of the viewport: with a press before the scene gets it, with a release
    /// after that.
    void Press(const QMouseEvent* event);
    void Move(const QMouseEvent* event);
    void Release(const QMouseEvent* event);

private:
    void OnKeyPressed(int key);
    void OnKeyReleased(int key);
    bool IsTyping() const;

    ZKDocumentView* m_pView;
    QCursor m_ViewCursor; ///< from before panning
    QPoint m_LastPos;     ///< viewport coordinates
    Qt::MouseButton m_DragButton = Qt::NoButton;
    bool m_bEnabled = false;
    bool m_bAllowed = true;
    bool m_bKeyHeld = false;
};
