#include "core/ZKCMSManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/MergedPartReader.h"
#include "gui/CameraView.h"
#include "gui/CameraView_p.h"
#include "gui/DisplayColors.h"
#include "gui/ShownColors.h"
#include "gui/TileReduction.h"

#include <QKeyEvent>
#include <QPainter>
#include <QtMath>

namespace {
constexpr int Notch = 120; ///< of a wheel, in eighths of a degree
constexpr int LongStep = 10;
constexpr double GridFromScale = 2;
constexpr double FullGridScale = 8;
constexpr double FaintGrid = 0.4; ///< strength of the grid where it begins
constexpr double MarkFromScale = 6;

/// The part of a picture; transparent where the picture doesn't reach. The caller holds its locker.
/// @param topLeft  of the picture on the canvas
QImage ReadPicture(const LXImage32* picture, const QPoint& topLeft, const QRect& docRect)
{
    QImage pixels(docRect.size(), QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::transparent);
    if (!picture) return pixels;
    const QRect part = docRect.translated(-topLeft) & picture->Rect();
    if (!part.isEmpty()) ReduceInto(*picture, 0, part, pixels, part.topLeft() + topLeft - docRect.topLeft());
    return pixels;
}

double GridStrength(double scale)
{
    const double way = (qMin(scale, FullGridScale) - GridFromScale) / (FullGridScale - GridFromScale);
    return FaintGrid + (1 - FaintGrid) * way;
}
} // namespace

CameraViewPrivate::CameraViewPrivate(CameraView* view) : m_pView(view)
{
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::DisplayChanged, this,
            &CameraViewPrivate::UpdateColors);
}

void CameraViewPrivate::SetSource(LXDocumentInterface* document, unsigned int id, const LXImage32& image)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = document;
    m_Id = id;
    m_Image = image;
    if (document) {
        connect(document, &QObject::destroyed, this, &CameraViewPrivate::Invalidate);
        connect(document, &LXDocumentInterface::ICCProfileChanged, this, &CameraViewPrivate::UpdateColors);
    }
    UpdateColors();
}

void CameraViewPrivate::SetScale(double scale)
{
    const double bounded = qBound(CameraView::MinScaleFactor, scale, CameraView::MaxScaleFactor);
    if (qIsNaN(scale) || bounded == m_Scale) return;
    m_Scale = bounded;
    Invalidate();
    emit m_pView->ScaleFactorChanged(bounded);
}

void CameraViewPrivate::MoveLookPoint(const QPoint& delta)
{
    const QRect canvas = Canvas();
    if (canvas.isEmpty()) return;
    const QPointF moved = LookPoint() + delta;
    m_pView->SetLookPoint(
        {qBound(0.0, moved.x(), double(canvas.right())), qBound(0.0, moved.y(), double(canvas.bottom()))});
}

void CameraViewPrivate::TakeWheel(int angleDelta)
{
    if (m_WheelRest * angleDelta < 0) m_WheelRest = 0;
    m_WheelRest += angleDelta;
    for (; m_WheelRest >= Notch; m_WheelRest -= Notch)
        SetScale(Magnifier::NextScale(m_Scale));
    for (; m_WheelRest <= -Notch; m_WheelRest += Notch)
        SetScale(Magnifier::FormerScale(m_Scale));
}

bool CameraViewPrivate::TakeKey(const QKeyEvent& event)
{
    if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
    const int step = event.modifiers() & Qt::ShiftModifier ? LongStep : 1;
    switch (event.key()) {
    case Qt::Key_Left: MoveLookPoint({-step, 0}); return true;
    case Qt::Key_Right: MoveLookPoint({step, 0}); return true;
    case Qt::Key_Up: MoveLookPoint({0, -step}); return true;
    case Qt::Key_Down: MoveLookPoint({0, step}); return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal: SetScale(Magnifier::NextScale(m_Scale)); return true;
    case Qt::Key_Minus: SetScale(Magnifier::FormerScale(m_Scale)); return true;
    default: return false;
    }
}

void CameraViewPrivate::Invalidate()
{
    m_bStale = true;
    m_pView->update();
}

void CameraViewPrivate::UpdateLook()
{
    m_Look = CanvasLook::ForSurround(m_pView->palette().color(QPalette::Dark));
    Invalidate();
}

void CameraViewPrivate::UpdateColors()
{
    m_ToScreen = ZKCMSManager::GetInstance()->ToDisplay(m_pDocument ? m_pDocument->GetICCProfile()
                                                                    : m_Image.m_Profile);
    Invalidate();
}

const QImage& CameraViewPrivate::Shown()
{
    const double ratio = m_pView->devicePixelRatioF();
    const QSize size = (QSizeF(m_pView->size()) * ratio).toSize();
    if (!m_bStale && m_Shown.size() == size) return m_Shown;
    try {
        m_Shown = Render();
    } catch (...) {
        // Without memory for the merged picture there is nothing to show; the document's view tells of it.
        m_Shown = QImage(size, QImage::Format_RGB32);
        m_Shown.fill(m_Look.surround);
    }
    m_Shown.setDevicePixelRatio(ratio);
    m_bStale = false;
    return m_Shown;
}

QImage CameraViewPrivate::Render() const
{
    const Magnifier glass = Glass();
    QImage image((QSizeF(m_pView->size()) * m_pView->devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    image.fill(m_Look.surround);
    if (!Canvas().isEmpty()) {
        PaintPixels(image, glass);
        PaintMark(image, glass);
    }
    return image;
}

QRect CameraViewPrivate::Canvas() const
{
    return m_pDocument ? QRect(QPoint(0, 0), m_pDocument->GetDocumentSize()) : m_Image.Rect();
}

QPointF CameraViewPrivate::LookPoint() const
{
    return m_LookPoint.value_or(QRectF(Canvas()).center());
}

Magnifier CameraViewPrivate::Glass() const
{
    const double ratio = m_pView->devicePixelRatioF();
    const QPointF point = LookPoint();
    return Magnifier({qFloor(point.x()), qFloor(point.y())}, m_Scale * ratio,
                     (QSizeF(m_pView->size()) * ratio).toSize());
}

QImage CameraViewPrivate::ReadPixels(const QRect& docRect) const
{
    QImage pixels = m_pDocument ? ReadDocument(docRect) : ReadPicture(&m_Image, QPoint(0, 0), docRect);
    if (m_pTransform) {
        ToShownColors(pixels, m_pTransform.get());
    } else {
        DisplayColors::Convert(m_ToScreen, pixels, pixels.rect());
    }
    return pixels;
}

QImage CameraViewPrivate::ReadDocument(const QRect& docRect) const
{
    if (m_Id == 0) {
        const MergedPartReader reader(m_pDocument, docRect);
        return ReadPicture(m_pDocument->GetLayerImage(0), QPoint(0, 0), docRect);
    }
    const LXDocumentLayerLockerForRead locker(m_pDocument, m_Id);
    return ReadPicture(m_pDocument->GetLayerImage(m_Id), m_pDocument->GetLayerGeometry(m_Id).topLeft(),
                       docRect);
}

void CameraViewPrivate::PaintPixels(QImage& image, const Magnifier& glass) const
{
    const QRect seen = glass.Seen() & Canvas();
    const QRect place = glass.Place(seen);
    if (place.isEmpty()) return;

    const double ratio = m_pView->devicePixelRatioF();
    QPainter painter(&image);
    painter.fillRect(
        glass.Place(Canvas()).adjusted(-qRound(ratio), -qRound(ratio), qRound(ratio), qRound(ratio)),
        m_Look.edge);
    painter.save();
    painter.scale(ratio, ratio);
    painter.setBrushOrigin(QPointF(place.topLeft()) / ratio);
    painter.fillRect(QRectF(QPointF(place.topLeft()) / ratio, QSizeF(place.size()) / ratio), m_Look.checker);
    painter.restore();
    painter.drawImage(0, 0, glass.Enlarge(ReadPixels(seen), seen.topLeft()));
    painter.end();

    if (m_GridType == CameraView::NoGrid || m_Scale < GridFromScale) return;
    MagnifierGrid grid;
    grid.kind = MagnifierGrid::Kind(m_GridType - CameraView::StandardGrid);
    grid.strength = GridStrength(m_Scale);
    grid.width = qMax(1, qRound(ratio));
    DrawGrid(image, glass, seen, grid);
}

/// Black inside white, on the pixels around, so that the pixel itself keeps its color.
void CameraViewPrivate::PaintMark(QImage& image, const Magnifier& glass) const
{
    const QPointF point = LookPoint();
    const QPoint pixel(qFloor(point.x()), qFloor(point.y()));
    if (m_Scale < MarkFromScale || !Canvas().contains(pixel)) return;
    const QRect place = glass.Place(QRect(pixel, QSize(1, 1)));
    const int width = qMax(1, qRound(m_pView->devicePixelRatioF()));
    QPainter painter(&image);
    for (const auto& [reach, color] : {std::pair(width, Qt::black), std::pair(2 * width, Qt::white)}) {
        const QRect outer = place.adjusted(-reach, -reach, reach, reach);
        const QRect inner = outer.adjusted(width, width, -width, -width);
        for (const QRect& side : QRegion(outer) - QRegion(inner))
            painter.fillRect(side, color);
    }
}
