#include "app/SelectionPreview.h"
#include "support/TestRegistry.h"

#include <QTest>

using Kind = SelectionModify::Kind;

namespace {
const QRect Canvas(0, 0, 1200, 1200);
constexpr int Small = 3;  // done at once on a canvas of that size
constexpr int Large = 40; // takes a worker

/// Squares of 50 all over the canvas, so that no tile is of one value.
PlacedMask Squares()
{
    PlacedMask placed{LXImage32(Canvas.width(), Canvas.height()), QPoint()};
    LXImage32 square(50, 50);
    square.Fill(LXRGBA32i(0xFF000000));
    for (int y = 0; y < Canvas.height(); y += 100) {
        for (int x = 0; x < Canvas.width(); x += 100)
            BlendOn(square, square.Rect(), BlendMode::Source, placed.mask, QRect(x, y, 50, 50), 1.0, false);
    }
    return placed;
}

QRect Expected(Kind kind, int radius)
{
    return SelectionModify::Modified(Squares(), Canvas, kind, radius).Rect();
}

/// What a preview said.
class Answers : public QObject
{
public:
    explicit Answers(SelectionPreview& preview)
    {
        connect(&preview, &SelectionPreview::Ready, this,
                [this](const PlacedMask& made) { rects.append(made.Rect()); });
    }

    QList<QRect> rects;
};
} // namespace

/// Changed selections, made while somebody turns a knob.
class TestSelectionPreview : public QObject
{
    Q_OBJECT

private slots:
    void smallWorkIsDoneAtOnce();
    void largeWorkIsDoneBesideTheLoop();
    void onlyTheNewestRadiusIsAnswered();
    void smallWorkOvertakesLargeWork();
    void theSameRadiusAgainIsAnsweredOnce();
    void goingBackToTheFirstRadiusAnswersThatOne();
    void whatIsStoppedIsNotAnswered();
    void aPreviewMayGoWhileItsWorkerRuns();
};

void TestSelectionPreview::smallWorkIsDoneAtOnce()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    preview.Request(Small);
    QVERIFY(!preview.IsUnderWay());
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, Small)});
}

void TestSelectionPreview::largeWorkIsDoneBesideTheLoop()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Feather, nullptr);
    const Answers answers(preview);
    preview.Request(Large);
    QVERIFY(preview.IsUnderWay());
    QCOMPARE(answers.rects.size(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Feather, Large)});
}

void TestSelectionPreview::onlyTheNewestRadiusIsAnswered()
{
    // Each radius leaves another rectangle.
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    for (const int radius : {22, 21, 20, 10})
        preview.Request(radius);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, 10)});
}

void TestSelectionPreview::smallWorkOvertakesLargeWork()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    preview.Request(20);
    preview.Request(Small);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, Small)});
    // The worker's end is no answer.
    QTest::qWait(0);
    preview.Request(20);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, (QList<QRect>{Expected(Kind::Shrink, Small), Expected(Kind::Shrink, 20)}));
}

void TestSelectionPreview::theSameRadiusAgainIsAnsweredOnce()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    preview.Request(20);
    preview.Request(20);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, 20)});
}

void TestSelectionPreview::goingBackToTheFirstRadiusAnswersThatOne()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    for (const int radius : {20, 15, 20})
        preview.Request(radius);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, 20)});
}

void TestSelectionPreview::whatIsStoppedIsNotAnswered()
{
    SelectionPreview preview(Squares(), Canvas, Kind::Shrink, nullptr);
    const Answers answers(preview);
    preview.Request(20);
    preview.Stop();
    QVERIFY(!preview.IsUnderWay());
    preview.Request(15);
    QTRY_VERIFY_WITH_TIMEOUT(!preview.IsUnderWay(), 60000);
    QCOMPARE(answers.rects, QList<QRect>{Expected(Kind::Shrink, 15)});
}

void TestSelectionPreview::aPreviewMayGoWhileItsWorkerRuns()
{
    QList<QRect> rects;
    {
        SelectionPreview preview(Squares(), Canvas, Kind::Smooth, nullptr);
        connect(&preview, &SelectionPreview::Ready, this,
                [&rects](const PlacedMask& made) { rects.append(made.Rect()); });
        preview.Request(Large);
    }
    QCoreApplication::processEvents();
    QCOMPARE(rects, QList<QRect>());
}

ZK_REGISTER_TEST(tst_selectionpreview, TestSelectionPreview)
#include "tst_selectionpreview.moc"
