#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView_p.h"
#include "image/LXImage.h"
#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

namespace {
// Half of white and half of red.
const QColor Tinted(255, 127, 127);

LXImage32 Mask(int width, int height, quint32 color = 0xFF000000)
{
    LXImage32 mask(width, height);
    mask.Fill(LXRGBA32i(color));
    return mask;
}

void ShowTint(const ZKDocumentView& view, bool show)
{
    ZKDocumentViewPrivate::Get(&view)->ShowSelectionTint(show);
}
} // namespace

/// The film over what is not selected.
class TestSelectionTint : public QObject
{
    Q_OBJECT

private slots:
    void whatIsNotSelectedIsTinted();
    void softSelectionsAreTintedSoftly();
    void theTintEndsWithTheCanvas();
    void withoutASelectionNothingIsTinted();
    void theTintComesAndGoesWithTheSelection();
    void anotherSelectionMovesTheTint();
    void smallChangesRepaintOnlyTheirPart();
    void itIsOffUntilItIsWanted();
};

void TestSelectionTint::whatIsNotSelectedIsTinted()
{
    const auto document = MakeDocument({64, 48});
    document->SetSelectionMask(Mask(20, 20), QPoint(10, 10));
    const auto view = ShowView(document);
    ShowTint(*view, true);
    for (const double scale : {1.0, 3.0}) {
        view->Zoom(scale, Middle(*view), false);
        COMPARE_COLORS(ShownAt(*view, 20, 20), QColor(Qt::white));
        COMPARE_COLORS(ShownAt(*view, 5, 20), Tinted);
        COMPARE_COLORS(ShownAt(*view, 20, 35), Tinted);
    }
}

void TestSelectionTint::softSelectionsAreTintedSoftly()
{
    const auto document = MakeDocument({64, 48});
    document->SetSelectionMask(Mask(20, 20, 0x40000000), QPoint(10, 10));
    const auto view = ShowView(document);
    ShowTint(*view, true);
    // (255 - 64) * 128 / 255 = 95.9 of red.
    COMPARE_COLORS(ShownAt(*view, 20, 20), QColor(255, 159, 159));
}

void TestSelectionTint::theTintEndsWithTheCanvas()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QColor before = ShownAt(*view, 70, 20);
    document->SetSelectionMask(Mask(20, 20), QPoint(10, 10));
    ShowTint(*view, true);
    COMPARE_COLORS(ShownAt(*view, 70, 20), before);
    COMPARE_COLORS(ShownAt(*view, 63, 20), Tinted);
}

void TestSelectionTint::withoutASelectionNothingIsTinted()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    ShowTint(*view, true);
    COMPARE_COLORS(ShownAt(*view, 20, 20), QColor(Qt::white));
}

void TestSelectionTint::theTintComesAndGoesWithTheSelection()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    ShowTint(*view, true);
    QCoreApplication::processEvents();
    PaintedRegion painted(view->viewport());
    document->SetSelectionMask(Mask(4, 4), QPoint(10, 10));
    QCoreApplication::processEvents();
    QVERIFY(painted.m_Region.contains(view->mapFromScene(QPointF(60, 40))));
    COMPARE_COLORS(ShownAt(*view, 60, 40), Tinted);

    painted.m_Region = QRegion();
    document->SetSelectionMask(LXImage32(), QPoint());
    QCoreApplication::processEvents();
    QVERIFY(painted.m_Region.contains(view->mapFromScene(QPointF(60, 40))));
    COMPARE_COLORS(ShownAt(*view, 60, 40), QColor(Qt::white));
}

void TestSelectionTint::anotherSelectionMovesTheTint()
{
    const auto document = MakeDocument({64, 48});
    document->SetSelectionMask(Mask(10, 10), QPoint(5, 5));
    const auto view = ShowView(document);
    ShowTint(*view, true);
    document->SetSelectionMask(Mask(10, 10), QPoint(30, 30));
    COMPARE_COLORS(ShownAt(*view, 10, 10), Tinted);
    COMPARE_COLORS(ShownAt(*view, 35, 35), QColor(Qt::white));
}

void TestSelectionTint::smallChangesRepaintOnlyTheirPart()
{
    const auto document = MakeDocument({200, 200});
    document->SetSelectionMask(Mask(10, 10), QPoint(5, 5));
    const auto view = ShowView(document);
    ShowTint(*view, true);
    QCoreApplication::processEvents();
    PaintedRegion painted(view->viewport());
    document->SetSelectionMask(Mask(12, 12), QPoint(5, 5));
    QCoreApplication::processEvents();
    QVERIFY(!painted.m_Region.isEmpty());
    QVERIFY(!painted.m_Region.contains(view->mapFromScene(QPointF(150, 150))));
}

void TestSelectionTint::itIsOffUntilItIsWanted()
{
    const auto document = MakeDocument({64, 48});
    document->SetSelectionMask(Mask(20, 20), QPoint(10, 10));
    const auto view = ShowView(document);
    COMPARE_COLORS(ShownAt(*view, 60, 40), QColor(Qt::white));
    ShowTint(*view, true);
    COMPARE_COLORS(ShownAt(*view, 60, 40), Tinted);
    ShowTint(*view, false);
    QVERIFY(!ZKDocumentViewPrivate::Get(view.get())->IsSelectionTintShown());
    COMPARE_COLORS(ShownAt(*view, 60, 40), QColor(Qt::white));
}

ZK_REGISTER_TEST(tst_selectiontint, TestSelectionTint)
#include "tst_selectiontint.moc"
