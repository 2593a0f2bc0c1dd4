#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXImageHelper.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QCoreApplication>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;
using GuiFixture::OwnedDocument;

namespace {

/// An empty text on a white canvas: all that is dark is the caret.
OwnedDocument MakeWithText()
{
    OwnedDocument document = MakeDocument({120, 90});
    document->AddTextLayer("Text Layer", QPointF(40, 60));
    document->SetTextFont(1, TextFixture::Font(30));
    return document;
}

QLineF CaretOf(LXDocumentInterface* document, int index)
{
    LXImageHelper helper;
    helper.InitHelper(document, 1);
    QLineF vertical;
    QPolygonF underline;
    helper.GetVerticalAndUnderLine(index, &vertical, &underline);
    return vertical;
}

bool IsDark(const QColor& color)
{
    return color.lightness() < 90;
}
} // namespace

/// The caret of a text in a view.
class TestTextCaret : public QObject
{
    Q_OBJECT

private slots:
    void itStandsBeforeTheNextLetterAtAnyScale();
    void itGoesWhenItIsHidden();
    void itMovesWithTheLayer();
    void onlyItsPlaceIsRepainted();
};

void TestTextCaret::itStandsBeforeTheNextLetterAtAnyScale()
{
    const auto document = MakeWithText();
    const auto view = ShowView(document);
    document->SetTextCaret(1, 0, true);
    for (const double scale : {1.0, 3.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QImage shown = Shown(*view);
        const QPointF middle = CaretOf(document.get(), 0).pointAt(0.5);
        const QPoint at = view->mapFromScene(middle);
        int dark = 0;
        for (int x = at.x() - 2; x <= at.x() + 2; ++x)
            dark += IsDark(shown.pixelColor(x, at.y())) ? 1 : 0;
        QVERIFY2(dark >= 1 && dark <= 3, qPrintable(QString::number(dark)));
        COMPARE_COLORS(shown.pixelColor(at.x() + 10, at.y()), QColor(Qt::white));
    }
}

void TestTextCaret::itGoesWhenItIsHidden()
{
    const auto document = MakeWithText();
    const auto view = ShowView(document);
    const QImage before = Shown(*view);
    document->SetTextCaret(1, 0, true);
    QVERIFY(Shown(*view) != before);
    document->SetTextCaret(1, 0, false);
    QCOMPARE(Shown(*view), before);
}

void TestTextCaret::itMovesWithTheLayer()
{
    const auto document = MakeWithText();
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    document->SetTextCaret(1, 0, true);
    const QPoint old = view->mapFromScene(CaretOf(document.get(), 0).pointAt(0.5));
    document->SetLayerOffset(1, document->GetLayerGeometry(1).topLeft() + QPoint(30, 5));
    const QPoint place = view->mapFromScene(CaretOf(document.get(), 0).pointAt(0.5));
    QCOMPARE(place - old, QPoint(30, 5));
    const QImage shown = Shown(*view);
    COMPARE_COLORS(shown.pixelColor(old), QColor(Qt::white));
    QVERIFY(IsDark(shown.pixelColor(place)) || IsDark(shown.pixelColor(place - QPoint(1, 0))));
}

void TestTextCaret::onlyItsPlaceIsRepainted()
{
    const auto document = MakeWithText();
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Shown(*view);
    PaintedRegion painted(view->viewport());
    document->SetTextCaret(1, 0, true);
    QCoreApplication::processEvents();
    const QRect area = painted.m_Region.boundingRect();
    QVERIFY(!area.isEmpty());
    QVERIFY2(area.width() <= 20 && area.height() <= 60,
             qPrintable(QString("%1 x %2").arg(area.width()).arg(area.height())));
}

ZK_REGISTER_TEST(tst_textcaret, TestTextCaret)
#include "tst_textcaret.moc"
