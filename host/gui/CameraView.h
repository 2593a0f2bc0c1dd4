#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

#include <QPointF>
#include <QWidget>

#include <memory>

class CameraViewPrivate;
class LXColorTransformBase;
class LXDocumentInterface;

/// A magnifying glass: the pixels round a point of a document or of an image, each as a square. Main thread
/// only.
///
/// The pixel that holds the point stands in the middle, with a mark round it where there is room.
/// Transparency shows as a checker, what lies outside the canvas in the neutral color of the surround. Pixels
/// are those of the moment of the last call that changed something here: whoever knows of a change of the
/// document calls RebuildView(). A document may go away at any time.
///
/// The wheel changes the scale, as do Plus and Minus on the keyboard, by steps that grow with it; the arrows
/// move the point by a pixel, with Shift by ten.
class ZK_HOST_EXPORT CameraView : public QWidget
{
    Q_OBJECT

public:
    static constexpr double MinScaleFactor = 1;
    static constexpr double MaxScaleFactor = 32;

    /// Lines between the pixels: they come with a scale of 2 and grow clearer up to 8.
    enum GridType
    {
        NoGrid = 0,
        StandardGrid = 1, ///< gray
        LightenGrid = 2,  ///< lightens what it crosses
        DarkenGrid = 3    ///< darkens it
    };

    explicit CameraView(QWidget* parent = nullptr);
    ~CameraView() override;

    /// Shows a layer of the document where it lies on the canvas, or the merged picture for id 0. A bad id
    /// shows an empty canvas, a null document nothing. The point stays.
    void SetDocument(LXDocumentInterface* document, unsigned int id = 0);
    /// Shows a picture in the place of a document; its pixels are counted from its top left. A null image
    /// shows nothing.
    void SetImage(const LXImage32& image);

    /// From the document's colors to those of the screen. With null, as at first, they go from the profile of
    /// the document, or of the image, to the screen's, whenever one of them changes.
    void SetColorTransform(const std::shared_ptr<const LXColorTransformBase>& transform);

    /// Widget pixels for each document pixel; 2 at first.
    double GetScaleFactor() const;
    int GetGridType() const;
    /// The middle of the canvas until a point is set.
    QPointF GetLookPoint() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    /// @param point  document pixels: pixel (x, y) covers x to x + 1. It may lie outside the canvas;
    ///               one that is no number is ignored.
    void SetLookPoint(const QPointF& point);
    /// Brought into MinScaleFactor and MaxScaleFactor.
    void SetScaleFactor(double factor);
    /// A number of GridType; any other means no grid.
    void SetGridType(int type);
    /// Shows the document's pixels of now.
    void RebuildView();

signals:
    /// There is another scale, whoever changed it.
    void ScaleFactorChanged(double factor);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    friend class CameraViewPrivate;
    std::unique_ptr<CameraViewPrivate> m_pPrivate;
};
