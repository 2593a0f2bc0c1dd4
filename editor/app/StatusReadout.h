#pragma once

#include <QPointer>
#include <QStatusBar>

class QLabel;
class QMenu;
class QTimer;
class QToolButton;
class ZKDocumentView;

/// The status bar: the tool's hint at the left; at the right the pointer's position, the color under it, the
/// picture's size, the zoom of the active view, and the memory that all pictures take. Main thread only.
class StatusReadout : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusReadout(QWidget* parent = nullptr);

    /// Follows this view from now on; null empties the read-outs.
    void SetView(ZKDocumentView* view);

    void SetHint(const QString& hint);

    /// What a press on the zoom opens.
    void SetZoomMenu(QMenu* menu);

private:
    void MovePointer(const QPointF& scenePos);
    void LosePointer();
    void UpdatePointer();
    void ShowColor(const QColor& color);
    void UpdateSize();
    void UpdateZoom();
    void UpdateMemory();

    QPointer<ZKDocumentView> m_pView;
    QPointF m_ScenePos;
    bool m_bPointerInside = false;
    QTimer* m_pPointerTimer;
    QLabel* m_pHint;
    QLabel* m_pPosition;
    QLabel* m_pSwatch;
    QLabel* m_pColor;
    QLabel* m_pSize;
    QToolButton* m_pZoom;
    QLabel* m_pMemory;
};
