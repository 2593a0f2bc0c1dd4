#pragma once

#include "GuiFixture.h"

#include "gui/ZKDocumentView.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QRegion>

/// What the tests of views share.
namespace ViewFixture {
/// A view that is on the screen; null, after a failure, when it doesn't get there.
std::unique_ptr<ZKDocumentView> ShowView(const GuiFixture::OwnedDocument& document,
                                         const QSize& size = {400, 300});

QImage Shown(ZKDocumentView& view);
/// The color shown in the middle of a document pixel.
QColor ShownAt(ZKDocumentView& view, int x, int y);

/// The document point under a viewport point, unrounded.
QPointF PointAt(const ZKDocumentView& view, const QPointF& viewPos);
/// The middle of the viewport.
QPointF Middle(const ZKDocumentView& view);

/// Unites what is painted of a widget.
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget* widget);

    bool eventFilter(QObject* watched, QEvent* event) override;

    QRegion m_Region;
};
} // namespace ViewFixture

#define COMPARE_COLORS(actual, expected) QCOMPARE(GuiFixture::Hex(actual), GuiFixture::Hex(expected))
#define COMPARE_POINTS(actual, expected, tolerance)                                                          \
    do {                                                                                                     \
        const QPointF distance = (actual) - (expected);                                                      \
        QVERIFY2(distance.manhattanLength() <= (tolerance),                                                  \
                 qPrintable(QString("%1, %2").arg(distance.x()).arg(distance.y())));                         \
    } while (false)
