#include "ViewFixture.h"

#include <QPaintEvent>
#include <QTest>
#include <QtMath>

namespace ViewFixture {
std::unique_ptr<ZKDocumentView> ShowView(const GuiFixture::OwnedDocument& document, const QSize& size)
{
    auto view = std::make_unique<ZKDocumentView>(document.get(), nullptr);
    view->resize(size);
    view->show();
    if (!QTest::qWaitForWindowExposed(view.get())) return nullptr;
    return view;
}

QImage Shown(ZKDocumentView& view)
{
    return view.viewport()->grab().toImage();
}

QColor ShownAt(ZKDocumentView& view, int x, int y)
{
    const QPointF middle = view.viewportTransform().map(QPointF(x + 0.5, y + 0.5));
    return Shown(view).pixelColor(qFloor(middle.x()), qFloor(middle.y()));
}

QPointF PointAt(const ZKDocumentView& view, const QPointF& viewPos)
{
    return view.viewportTransform().inverted().map(viewPos);
}

QPointF Middle(const ZKDocumentView& view)
{
    return QPointF(view.viewport()->width(), view.viewport()->height()) / 2;
}

PaintedRegion::PaintedRegion(QWidget* widget)
{
    widget->installEventFilter(this);
}

bool PaintedRegion::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Paint) m_Region += static_cast<QPaintEvent*>(event)->region();
    return false;
}
} // namespace ViewFixture
