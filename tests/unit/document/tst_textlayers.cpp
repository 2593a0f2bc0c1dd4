#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXImageHelper.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QMatrix4x4>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace DocumentFixture;

namespace {
constexpr unsigned int TextId = 1;
constexpr unsigned int RasterId = 2;

/// A white canvas of 200 x 120 with "Word" on it.
OwnedDocument MakeDocument()
{
    OwnedDocument document = Make(QSize(200, 120));
    document->AddLayer("ground", Filled(QSize(200, 120), 0xFFFFFFFF), QPoint());
    document->AddTextLayer("Text Layer", QPointF(20, 80));
    document->SetTextFont(TextId, TextFixture::Font(40));
    document->SetText(TextId, "Word");
    return document;
}

LXImage32 Merged(LXDocumentInterface* document)
{
    const LXDocumentLayerLockerForRead locker(document, 0);
    return *document->GetLayerImage(0);
}

/// How many pixels aren't white.
int InkIn(LXDocumentInterface* document, const QRect& rect)
{
    const LXImage32 merged = Merged(document);
    int ink = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (merged.GetColor(x, y).value != 0xFFFFFFFF) ++ink;
        }
    }
    return ink;
}

bool SharesTiles(const LXImage32& a, const LXImage32& b)
{
    return a.m_Tiles == b.m_Tiles;
}

QTransform MatrixOf(LXDocumentInterface* document)
{
    return document->GetModel()->GetTextLayerTransformation(0);
}
} // namespace

class TestTextLayers : public QObject
{
    Q_OBJECT

private slots:
    void aNewTextLayerIsEmptyAndBlack();
    void everyChangeShowsInTheMergedPicture();
    void everySetterTellsWhatChanged();
    void aValueThatIsThereAlreadyDoesNothing();
    void valuesOutOfRangeAreBroughtIn();
    void layersOfOtherKindsHaveNoText();
    void movingTheLayerMovesTheTextAndKeepsItsPixels();
    void aMatrixThatMovesByWholePixelsKeepsThem();
    void aMatrixThatTurnsDrawsAnew();
    void anImpossibleMatrixIsIgnored();
    void moveToolsOffsetAndMatrixTogetherMoveOnce();
    void aTextFromFarAwayIsWholeWhenItComesBack();
    void theBoxHoldsTheText();
    void theCaretIsTold();
    void theCaretStaysWithItsTextWhenRowsChange();
    void theCaretGoesWithItsText();
    void aCopyOfTheDocumentHasTheText();
    void theHelperDrawsThroughATransformAndKeepsTheText();
    void theHelperCanHaveHardEdges();
    void theHelperRefusesOtherLayers();
};

void TestTextLayers::aNewTextLayerIsEmptyAndBlack()
{
    const OwnedDocument document = Make(QSize(100, 80));
    QCOMPARE(document->AddTextLayer("Text Layer", QPointF(12.5, 30)), 1U);
    QCOMPARE(document->GetLayerKind(1), LayerKind::Text);
    QCOMPARE(document->GetModel()->GetName(0), QString("Text Layer"));
    QCOMPARE(document->GetText(1), QString());
    QCOMPARE(document->GetTextBrush(1), QBrush(Qt::black));
    QCOMPARE(document->GetTextPosition(1), QPointF(12.5, 30));
    QCOMPARE(document->GetTextStyle(1), 0);
    QCOMPARE(document->GetTextRenderMode(1), 1);
    QVERIFY(document->GetTextLayerMatrix(1).isIdentity());
    QVERIFY(document->GetLayerImage(1)->IsNull());
    QVERIFY(!document->IsLayerEditable(1));
    // At the bottom, below what is there.
    QCOMPARE(document->AddTextLayer("lower", QPointF(), 9), 2U);
}

void TestTextLayers::everyChangeShowsInTheMergedPicture()
{
    const OwnedDocument document = MakeDocument();
    const QRect all = document->GetLayerGeometry(0);
    const int ink = InkIn(document.get(), all);
    QVERIFY(ink > 300);
    QCOMPARE(InkIn(document.get(), document->GetLayerGeometry(TextId)), ink);

    document->SetText(TextId, "W");
    QVERIFY(InkIn(document.get(), all) < ink / 2);
    document->SetText(TextId, "Word");
    QCOMPARE(InkIn(document.get(), all), ink);
    document->SetTextFont(TextId, TextFixture::Font(20));
    QVERIFY(InkIn(document.get(), all) < ink / 2);
    document->SetTextFont(TextId, TextFixture::Font(40));
    document->SetTextPosition(TextId, QPointF(20, 60));
    QCOMPARE(InkIn(document.get(), all), ink);
    QCOMPARE(InkIn(document.get(), QRect(0, 62, 200, 50)), 0);
    document->SetTextBrush(TextId, Qt::white);
    QCOMPARE(InkIn(document.get(), all), 0);
}

void TestTextLayers::everySetterTellsWhatChanged()
{
    const OwnedDocument document = MakeDocument();
    QSignalSpy data(document.get(), &LXDocumentInterface::LayerDataChanged);
    QSignalSpy font(document.get(), &LXDocumentInterface::LayerFontChanged);
    QSignalSpy brush(document.get(), &LXDocumentInterface::LayerBrushChanged);
    QSignalSpy bend(document.get(), &LXDocumentInterface::LayerTextDeformationChanged);
    QSignalSpy modelFont(document->GetModel(), &LXDocumentModel::LayerFontChanged);
    const auto told = [&] {
        const QList<int> counts{data.count(), font.count(), brush.count(), bend.count()};
        data.clear(), font.clear(), brush.clear(), bend.clear();
        return counts;
    };
    document->SetText(TextId, "Other");
    QCOMPARE(told(), (QList<int>{1, 0, 0, 0}));
    document->SetTextFont(TextId, TextFixture::Font(30));
    QCOMPARE(font.value(0).value(0).toUInt(), TextId);
    QCOMPARE(told(), (QList<int>{1, 1, 0, 0}));
    QCOMPARE(modelFont.count(), 1);
    document->SetTextBrush(TextId, Qt::red);
    QCOMPARE(told(), (QList<int>{1, 0, 1, 0}));
    document->SetTextStyle(TextId, 1);
    document->SetTextOrientation(TextId, 1);
    document->SetTextBend(TextId, 20);
    document->SetTextHDistortion(TextId, 30);
    document->SetTextVDistortion(TextId, 40);
    QCOMPARE(told(), (QList<int>{5, 0, 0, 5}));
    document->SetTextPosition(TextId, QPointF(1, 2));
    document->SetTextRenderMode(TextId, 0);
    QCOMPARE(told(), (QList<int>{2, 0, 0, 0}));
}

void TestTextLayers::aValueThatIsThereAlreadyDoesNothing()
{
    const OwnedDocument document = MakeDocument();
    SignalLog log(document.get());
    document->SetText(TextId, document->GetText(TextId));
    document->SetTextFont(TextId, document->GetTextFont(TextId));
    document->SetTextBrush(TextId, document->GetTextBrush(TextId));
    document->SetTextBend(TextId, 0);
    document->SetTextLayerTransformation(TextId, QMatrix4x4());
    QCOMPARE(log.Take(), QStringList());
}

void TestTextLayers::valuesOutOfRangeAreBroughtIn()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextStyle(TextId, 7);
    QCOMPARE(document->GetTextStyle(TextId), 1);
    document->SetTextOrientation(TextId, -1);
    QCOMPARE(document->GetTextOrientation(TextId), 0);
    document->SetTextBend(TextId, 1000);
    QCOMPARE(document->GetTextBend(TextId), 100.0);
    document->SetTextHDistortion(TextId, std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(document->GetTextHDistortion(TextId), 0.0);
    document->SetTextRenderMode(TextId, 5);
    QCOMPARE(document->GetTextRenderMode(TextId), 1);
    document->SetTextPosition(TextId, QPointF(std::numeric_limits<double>::infinity(), 0));
    QCOMPARE(document->GetTextPosition(TextId), QPointF(20, 80));
}

void TestTextLayers::layersOfOtherKindsHaveNoText()
{
    const OwnedDocument document = MakeDocument();
    SignalLog log(document.get());
    for (const unsigned int id : {0U, RasterId, 9U}) {
        document->SetText(id, "no");
        document->SetTextBend(id, 50);
        document->SetTextLayerTransformation(id, QMatrix4x4(QTransform::fromScale(2, 2)));
        document->SetTextCaret(id, 0, true);
        QCOMPARE(document->GetText(id), QString());
        QCOMPARE(document->GetTextBox(id), QRectF());
    }
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(LXDocumentInterfacePrivate::Get(document.get())->CaretId(), 0U);
}

void TestTextLayers::movingTheLayerMovesTheTextAndKeepsItsPixels()
{
    const OwnedDocument document = MakeDocument();
    const LXImage32 before = *document->GetLayerImage(TextId);
    const QRect rect = document->GetLayerGeometry(TextId);
    const QRectF box = document->GetTextBox(TextId);
    Merged(document.get());
    QSignalSpy moved(document->GetModel(), &LXDocumentModel::LayerPositionChanged);
    document->SetLayerOffset(TextId, rect.topLeft() + QPoint(30, -7));
    QCOMPARE(moved.count(), 1);
    QCOMPARE(document->GetLayerGeometry(TextId), rect.translated(30, -7));
    QVERIFY(SharesTiles(*document->GetLayerImage(TextId), before));
    QCOMPARE(document->GetTextBox(TextId), box.translated(30, -7));
    QCOMPARE(MatrixOf(document.get()), QTransform::fromTranslate(30, -7));
    // Typed on, it stays where it is.
    document->SetText(TextId, "Words");
    QCOMPARE(document->GetLayerGeometry(TextId).topLeft(), rect.topLeft() + QPoint(30, -7));
    QVERIFY(InkIn(document.get(), rect.translated(30, -7)) > 300);
}

void TestTextLayers::aMatrixThatMovesByWholePixelsKeepsThem()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(20)));
    const QTransform turned = MatrixOf(document.get());
    const LXImage32 before = *document->GetLayerImage(TextId);
    const QRect rect = document->GetLayerGeometry(TextId);
    document->SetTextLayerTransformation(TextId, QMatrix4x4(turned * QTransform::fromTranslate(11, 23)));
    QVERIFY(SharesTiles(*document->GetLayerImage(TextId), before));
    QCOMPARE(document->GetLayerGeometry(TextId), rect.translated(11, 23));
    // Exactly, although the matrix came in single precision.
    QCOMPARE(MatrixOf(document.get()).dx(), turned.dx() + 11);
    QCOMPARE(MatrixOf(document.get()).m12(), turned.m12());
}

void TestTextLayers::aMatrixThatTurnsDrawsAnew()
{
    const OwnedDocument document = MakeDocument();
    const QRect rect = document->GetLayerGeometry(TextId);
    // By 90 degrees about the origin: what lay right of it lies below.
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().translate(120, 0).rotate(90)));
    const QRect turned = document->GetLayerGeometry(TextId);
    QVERIFY(qAbs(turned.width() - rect.height()) <= 1);
    QVERIFY(qAbs(turned.height() - rect.width()) <= 1);
    QVERIFY(qAbs(turned.top() - rect.left()) <= 1);
    QVERIFY(InkIn(document.get(), turned & document->GetLayerGeometry(0)) > 300);
}

void TestTextLayers::anImpossibleMatrixIsIgnored()
{
    const OwnedDocument document = MakeDocument();
    SignalLog log(document.get());
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform::fromScale(0, 1)));
    QMatrix4x4 noNumber;
    noNumber(0, 3) = std::numeric_limits<float>::quiet_NaN();
    document->SetTextLayerTransformation(TextId, noNumber);
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(document->GetTextLayerMatrix(TextId).isIdentity());
}

/// A drag sets the offset and hands over the matrix of the press, moved: both say the same.
void TestTextLayers::moveToolsOffsetAndMatrixTogetherMoveOnce()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(10).scale(1.3, 1)));
    const QRect rect = document->GetLayerGeometry(TextId);
    const QTransform pressed = MatrixOf(document.get());
    for (const QPoint& delta : {QPoint(5, 5), QPoint(40, -12), QPoint(0, 0), QPoint(-3, 8)}) {
        document->SetLayerOffset(TextId, rect.topLeft() + delta);
        document->SetTextLayerTransformation(
            TextId, QMatrix4x4(pressed * QTransform::fromTranslate(delta.x(), delta.y())));
        QCOMPARE(document->GetLayerGeometry(TextId), rect.translated(delta));
        QCOMPARE(MatrixOf(document.get()), pressed * QTransform::fromTranslate(delta.x(), delta.y()));
    }
}

void TestTextLayers::aTextFromFarAwayIsWholeWhenItComesBack()
{
    const OwnedDocument document = MakeDocument();
    const QRect rect = document->GetLayerGeometry(TextId);
    const quint64 before = Checksum(*document->GetLayerImage(TextId));
    document->SetTextPosition(TextId, QPointF(20 + 1e6, 80));
    QVERIFY(document->GetLayerImage(TextId)->IsNull());
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform::fromTranslate(-1e6, 0)));
    QCOMPARE(document->GetLayerGeometry(TextId), rect);
    QCOMPARE(Checksum(*document->GetLayerImage(TextId)), before);
    // Half of it lay beyond what is drawn.
    document->SetLayerOffset(TextId, QPoint(1390 - rect.width() / 2, rect.top()));
    document->SetTextBrush(TextId, Qt::red);
    document->SetTextBrush(TextId, Qt::black);
    document->SetLayerOffset(TextId, rect.topLeft());
    QCOMPARE(document->GetLayerGeometry(TextId), rect);
    QCOMPARE(Checksum(*document->GetLayerImage(TextId)), before);
}

void TestTextLayers::theBoxHoldsTheText()
{
    const OwnedDocument document = MakeDocument();
    const QRectF box = document->GetTextBox(TextId);
    QVERIFY(box.contains(QRectF(document->GetLayerGeometry(TextId)).adjusted(1, 1, -1, -1)));
    QVERIFY(box.contains(QPointF(25, 75)));
    QVERIFY(!box.contains(QPointF(10, 75)));
}

void TestTextLayers::theCaretIsTold()
{
    const OwnedDocument document = MakeDocument();
    QSignalSpy told(document.get(), &LXDocumentInterface::TextCaretChanged);
    document->SetTextCaret(TextId, 2, true);
    QCOMPARE(told.takeFirst().value(0).toUInt(), TextId);
    // It moves with the letters.
    document->SetText(TextId, "iiii");
    QCOMPARE(told.takeFirst().value(0).toUInt(), TextId);
    document->SetTextCaret(TextId, 2, false);
    QCOMPARE(told.takeFirst().value(0).toUInt(), 0U);
    document->SetText(TextId, "m");
    QCOMPARE(told.count(), 0);
}

void TestTextLayers::theCaretStaysWithItsTextWhenRowsChange()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextCaret(TextId, 2, true);
    document->AddLayer("above", Filled(QSize(2, 2), 0xFF000000), QPoint());
    QSignalSpy told(document.get(), &LXDocumentInterface::TextCaretChanged);
    document->SetText(TextId + 1, "iiii");
    QCOMPARE(told.takeFirst().value(0).toUInt(), TextId + 1);
    document->GetModel()->MoveLayer(1, 2);
    document->SetText(TextId + 2, "mm");
    QCOMPARE(told.takeFirst().value(0).toUInt(), TextId + 2);
    document->RemoveLayer(1);
    QCOMPARE(LXDocumentInterfacePrivate::Get(document.get())->CaretId(), TextId + 1);
    QCOMPARE(told.count(), 0);
}

/// Else it would stand in the text below, which has the number now.
void TestTextLayers::theCaretGoesWithItsText()
{
    const OwnedDocument document = MakeDocument();
    document->AddTextLayer("Text Layer", QPointF(30, 30));
    document->SetTextCaret(1, 0, true);
    QSignalSpy told(document.get(), &LXDocumentInterface::TextCaretChanged);
    document->RemoveLayer(1);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.takeFirst().value(0).toUInt(), 0U);
    document->SetText(1, "next");
    QCOMPARE(told.count(), 0);
}

void TestTextLayers::aCopyOfTheDocumentHasTheText()
{
    const OwnedDocument document = MakeDocument();
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    QCOMPARE(copy->GetText(TextId), QString("Word"));
    QVERIFY(SharesTiles(*copy->GetLayerImage(TextId), *document->GetLayerImage(TextId)));
    copy->SetText(TextId, "Other");
    QCOMPARE(document->GetText(TextId), QString("Word"));
}

/// From the layer's rectangle at the origin, as the transformation gives it.
void TestTextLayers::theHelperDrawsThroughATransformAndKeepsTheText()
{
    const OwnedDocument document = MakeDocument();
    const QRect rect = document->GetLayerGeometry(TextId);
    const quint64 before = Checksum(*document->GetLayerImage(TextId));
    LXImageHelper helper;
    QVERIFY(helper.InitHelper(document.get(), TextId));

    QRect drawn;
    QVERIFY(helper.drawImage(document.get(), TextId,
                             QTransform::fromScale(2, 2) * QTransform::fromTranslate(7, 9), &drawn));
    QCOMPARE(drawn, document->GetLayerGeometry(TextId));
    QVERIFY(qAbs(drawn.left() - 7) <= 1 && qAbs(drawn.top() - 9) <= 1);
    QVERIFY(qAbs(drawn.width() - 2 * rect.width()) <= 2);
    QVERIFY(document->GetTextLayerMatrix(TextId).isIdentity());
    // A second step starts from the text and not from what was drawn.
    LXImageHelper next;
    QVERIFY(next.InitHelper(document.get(), TextId));
    QVERIFY(next.drawImage(document.get(), TextId, QTransform::fromTranslate(rect.x(), rect.y())));
    QCOMPARE(document->GetLayerGeometry(TextId), rect);
    QCOMPARE(Checksum(*document->GetLayerImage(TextId)), before);
    // With the matrix that it names, the text looks as it was drawn.
    helper.drawImage(document.get(), TextId, QTransform().rotate(30));
    const quint64 turned = Checksum(*document->GetLayerImage(TextId));
    LXDocumentInterfacePrivate::Get(document.get())
        ->TransformText(TextId, helper.Transformed(QTransform().rotate(30)),
                        LXDocumentInterfacePrivate::Precision::Double);
    QCOMPARE(Checksum(*document->GetLayerImage(TextId)), turned);
}

void TestTextLayers::theHelperCanHaveHardEdges()
{
    const OwnedDocument document = MakeDocument();
    LXImageHelper helper;
    QVERIFY(helper.InitHelper(document.get(), TextId));
    helper.SetRenderMode(0);
    QVERIFY(helper.drawImage(document.get(), TextId, QTransform()));
    const LXImage32& image = *document->GetLayerImage(TextId);
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            const unsigned int alpha = image.GetColor(x, y).Alpha();
            QVERIFY(alpha == 0 || alpha == 255);
        }
    }
}

void TestTextLayers::theHelperRefusesOtherLayers()
{
    const OwnedDocument document = MakeDocument();
    LXImageHelper helper;
    QVERIFY(!helper.InitHelper(document.get(), RasterId));
    QVERIFY(!helper.InitHelper(document.get(), 0));
    QVERIFY(!helper.InitHelper(nullptr, TextId));
    QVERIFY(!helper.drawImage(document.get(), TextId, QTransform()));
    QCOMPARE(helper.FindSelectedChar(QPointF(50, 50)), 0);
    QVERIFY(helper.InitHelper(document.get(), TextId));
    QVERIFY(!helper.drawImage(document.get(), RasterId, QTransform()));
    QLineF caret;
    QPolygonF underline;
    helper.GetVerticalAndUnderLine(0, &caret, &underline);
    QCOMPARE(caret.x1(), 20.0);
    QVERIFY(caret.y1() < 60 && caret.y2() > 80);
    QCOMPARE(underline.first(), QPointF(20, 80));
    QCOMPARE(helper.FindSelectedChar(QPointF(19, 70)), 0);
    QCOMPARE(helper.FindSelectedChar(QPointF(190, 70)), 4);
}

ZK_REGISTER_TEST(tst_textlayers, TestTextLayers)
#include "tst_textlayers.moc"
