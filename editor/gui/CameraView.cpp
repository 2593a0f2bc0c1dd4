#include "gui/CameraView.h"

#include "document/LXColorTransformBase.h"
#include "gui/CameraView_p.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QtMath>

namespace {
constexpr QSize UsualSize(248, 180);
constexpr QSize LeastSize(72, 56);
constexpr double Farthest = 1e6; ///< from the canvas' top left, document pixels: beside any canvas
} // namespace

CameraView::CameraView(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<CameraViewPrivate>(this))
{
    setAccessibleName(tr("Magnifier"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_pPrivate->UpdateLook();
}

CameraView::~CameraView() = default;

void CameraView::SetDocument(LXDocumentInterface* document, unsigned int id)
{
    m_pPrivate->SetSource(document, id, LXImage32());
}

void CameraView::SetImage(const LXImage32& image)
{
    m_pPrivate->SetSource(nullptr, 0, image);
}

void CameraView::SetColorTransform(const std::shared_ptr<const LXColorTransformBase>& transform)
{
    m_pPrivate->m_pTransform = transform;
    m_pPrivate->Invalidate();
}

double CameraView::GetScaleFactor() const
{
    return m_pPrivate->m_Scale;
}

int CameraView::GetGridType() const
{
    return m_pPrivate->m_GridType;
}

QPointF CameraView::GetLookPoint() const
{
    return m_pPrivate->LookPoint();
}

QSize CameraView::sizeHint() const
{
    return UsualSize;
}

QSize CameraView::minimumSizeHint() const
{
    return LeastSize;
}

void CameraView::SetLookPoint(const QPointF& point)
{
    if (!qIsFinite(point.x()) || !qIsFinite(point.y())) return;
    m_pPrivate->m_LookPoint = {qBound(-Farthest, point.x(), Farthest),
                               qBound(-Farthest, point.y(), Farthest)};
    m_pPrivate->Invalidate();
}

void CameraView::SetScaleFactor(double factor)
{
    m_pPrivate->SetScale(factor);
}

void CameraView::SetGridType(int type)
{
    m_pPrivate->m_GridType = type >= StandardGrid && type <= DarkenGrid ? type : NoGrid;
    m_pPrivate->Invalidate();
}

void CameraView::RebuildView()
{
    m_pPrivate->Invalidate();
}

void CameraView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawImage(0, 0, m_pPrivate->Shown());
    if (!hasFocus()) return;
    painter.setPen(palette().color(QPalette::Link));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CameraView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) m_pPrivate->UpdateLook();
}

void CameraView::wheelEvent(QWheelEvent* event)
{
    m_pPrivate->TakeWheel(event->angleDelta().y());
    event->accept();
}

void CameraView::keyPressEvent(QKeyEvent* event)
{
    if (!m_pPrivate->TakeKey(*event)) QWidget::keyPressEvent(event);
}

void CameraView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void CameraView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}
