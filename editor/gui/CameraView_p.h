#pragma once

#include "gui/CanvasPainter.h"
#include "gui/Magnifier.h"
#include "image/LXImage.h"
#include "image/ZKCMSTransform.h"

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QPointer>

#include <memory>
#include <optional>

class CameraView;
class LXColorTransformBase;
class LXDocumentInterface;
class QKeyEvent;

/// Where the pixels of a magnifying glass come from, and how they look. Main thread only.
class CameraViewPrivate : public QObject
{
    Q_OBJECT

public:
    explicit CameraViewPrivate(CameraView* view);

private:
    friend class CameraView;

    void SetSource(LXDocumentInterface* document, unsigned int id, const LXImage32& image);
    void SetScale(double scale);
    void MoveLookPoint(const QPoint& delta);
    void TakeWheel(int angleDelta);
    bool TakeKey(const QKeyEvent& event);

    /// What is shown has to be made anew before it is painted.
    void Invalidate();
    void UpdateLook();
    void UpdateColors();
    const QImage& Shown();
    QImage Render() const;

    QRect Canvas() const;
    QPointF LookPoint() const;
    Magnifier Glass() const;
    /// Of the part of the canvas; premultiplied, in the colors of the screen.
    QImage ReadPixels(const QRect& docRect) const;
    QImage ReadDocument(const QRect& docRect) const;
    void PaintPixels(QImage& image, const Magnifier& glass) const;
    void PaintMark(QImage& image, const Magnifier& glass) const;

    CameraView* m_pView;
    QPointer<LXDocumentInterface> m_pDocument;
    unsigned int m_Id = 0;
    LXImage32 m_Image;                                        ///< shown when there is no document
    std::shared_ptr<const LXColorTransformBase> m_pTransform; ///< null for the profiles' own
    ZKCMSTransform m_ToScreen;                                ///< from the source's profile
    std::optional<QPointF> m_LookPoint;
    double m_Scale = 2;
    int m_GridType = 0;
    int m_WheelRest = 0; ///< of wheels that turn by less than a notch
    CanvasLook m_Look;
    QImage m_Shown;
    bool m_bStale = true;
};
