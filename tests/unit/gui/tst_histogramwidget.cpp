#include "GuiFixture.h"

#include "gui/HistogramWidget.h"
#include "gui/HistogramWidget_p.h"
#include "image/LXImage.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>

using GuiFixture::MakeDocument;
using GuiFixture::MakeImage;

namespace {
constexpr int Limit = 10000; ///< milliseconds
/// Two widget pixels for each level, and the padding.
const QSize WidgetSize(512 + 8, 120);

/// 100 rows: the red of a column is its number, the green half of it, the blue 7.
QRgb ColorAt(int x, int)
{
    return qRgb(x, x / 2, 7);
}
} // namespace

/// The widget that counts levels.
class TestHistogramWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void allPixelsAreCounted();
    void channelsAreToldByTheirBits();
    void otherChannelsAreIgnored();
    void transparentPixelsDoNotCount();
    void changesAreCountedWhenAskedFor();
    void onlyWhatChangedIsCountedAnew();
    void hiddenItCountsNothing();
    void anotherDocumentBeginsAnew();
    void anotherCanvasIsCountedAnew();
    void aDocumentThatGoesLeavesNothing();
    void aDocumentThatGoesEndsADrag();
    void withoutADocumentNothingIsTold();
    void thePointerTellsOfItsLevel();
    void numbersFollowTheCountsUnderThePointer();
    void aDragChoosesARange();
    void aDragBackwardsChoosesTheSame();
    void aDragOverTheEdgeEndsWithTheLevels();
    void aClickChoosesAllLevels();
    void escapeEndsADragWhereItBegan();
    void keysMoveOverTheLevels();
    void keysChooseARange();
    void escapeChoosesAllLevels();
    void rangesAreBroughtIntoTheirOrder();
    void theFocusTakesItsLevelAlong();
    void levelsAreDrawnAsHighAsTheyAreFrequent();
    void levelsOutsideTheRangeAreDim();
    void failedCountingIsToldInThePlot();
    void longCountingShowsHowFarItIs();
    void smallChangesShowNoProgress();
    void itCanBeReachedAndHasAName();

private:
    bool WaitUntilCounted() const
    {
        return QTest::qWaitFor([this] { return !m_pHistogram->IsCounting(); }, Limit);
    }

    QPoint PointOf(int level) const
    {
        const QRect plot = HistogramWidgetPrivate::Get(m_pHistogram.get())->PlotRect();
        return {plot.left() + 2 * level + 1, plot.center().y()};
    }

    QColor ShownAt(int level, int y) const
    {
        return m_pHistogram->grab().toImage().pixelColor(PointOf(level).x(), y);
    }

    /// Its line is the first row of the plot, where nothing else is drawn at black.
    bool IsProgressShown() const
    {
        const QRect plot = HistogramWidgetPrivate::Get(m_pHistogram.get())->PlotRect();
        const QColor ink = m_pHistogram->palette().color(QPalette::Text);
        return m_pHistogram->grab().toImage().pixelColor(plot.topLeft()) == ink;
    }

    qint64 TakenTiles() const
    {
        return HistogramWidgetPrivate::Get(m_pHistogram.get())->Survey().TakenTiles();
    }

    static QVector<int> Take(QSignalSpy& spy)
    {
        QVector<int> numbers;
        for (const QVariant& number : spy.isEmpty() ? QVariantList() : spy.last())
            numbers.append(number.toInt());
        spy.clear();
        return numbers;
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<HistogramWidget> m_pHistogram;
    std::unique_ptr<QSignalSpy> m_pRange;
    std::unique_ptr<QSignalSpy> m_pCount;
    std::unique_ptr<QSignalSpy> m_pStats;
    std::unique_ptr<QSignalSpy> m_pNoStats;
};

void TestHistogramWidget::init()
{
    m_pDocument = MakeDocument({256, 100}, &ColorAt);
    m_pHistogram = std::make_unique<HistogramWidget>();
    m_pRange = std::make_unique<QSignalSpy>(m_pHistogram.get(), &HistogramWidget::LevelRangeChanged);
    m_pCount = std::make_unique<QSignalSpy>(m_pHistogram.get(), &HistogramWidget::CountChanged);
    m_pStats = std::make_unique<QSignalSpy>(m_pHistogram.get(), &HistogramWidget::StatsChanged);
    m_pNoStats = std::make_unique<QSignalSpy>(m_pHistogram.get(), &HistogramWidget::StatsNoInfo);
    m_pHistogram->resize(WidgetSize);
    m_pHistogram->SetDocument(m_pDocument.get());
    m_pHistogram->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pHistogram.get()));
    QVERIFY(WaitUntilCounted());
    // The pointer of the test before may be here.
    InputDriver().Move(m_pHistogram.get(), QPoint(-20, -20));
    m_pStats->clear();
}

void TestHistogramWidget::cleanup()
{
    FaultSeams::Reset();
    m_pHistogram.reset();
    m_pDocument.reset();
}

void TestHistogramWidget::allPixelsAreCounted()
{
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 255}));
    QCOMPARE(Take(*m_pCount), QVector<int>({25600}));
    QVERIFY(m_pNoStats->count() > 0);
}

void TestHistogramWidget::channelsAreToldByTheirBits()
{
    // Level 7: 100 pixels in red, 200 in green, all in blue. Of the luminance 30 x + 59 (x / 2) + 127 (of
    // 100, to nearest) the columns 10 and 11 have level 7: 3 + 2.95 + 0.77 = 6.72 and 3.3 + 2.95 + 0.77.
    const QVector<QPair<int, int>> counts{{1, 100}, {2, 200},   {4, 25600}, {0, 200},
                                          {3, 150}, {5, 12850}, {6, 12900}, {7, 8633}};
    m_pHistogram->SetLevelRange(7, 7);
    for (const auto& [bits, count] : counts) {
        m_pHistogram->SetChannel(bits);
        QCOMPARE(m_pHistogram->GetChannel(), bits);
        QCOMPARE(Take(*m_pCount), QVector<int>({count}));
    }
}

void TestHistogramWidget::otherChannelsAreIgnored()
{
    m_pHistogram->SetChannel(2);
    for (const int channel : {-1, 8, 700}) {
        m_pHistogram->SetChannel(channel);
        QCOMPARE(m_pHistogram->GetChannel(), 2);
    }
}

void TestHistogramWidget::transparentPixelsDoNotCount()
{
    const auto half = MakeDocument({100, 100}, [](int x, int) { return x < 50 ? 0x00FFFFFFU : 0x40FFFFFFU; });
    m_pHistogram->SetDocument(half.get());
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pCount), QVector<int>({5000}));
}

void TestHistogramWidget::changesAreCountedWhenAskedFor()
{
    m_pHistogram->SetLevelRange(255, 255);
    m_pDocument->SetLayerImage(1, MakeImage({256, 100}, [](int, int) { return 0xFFFFFFFFU; }), {0, 0});
    m_pDocument->UpdateDocumentRect(QRect());
    QCoreApplication::processEvents();
    m_pCount->clear();
    QVERIFY(!m_pHistogram->IsCounting());
    m_pHistogram->RebuildHistogramm();
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pCount), QVector<int>({25600}));
}

void TestHistogramWidget::onlyWhatChangedIsCountedAnew()
{
    QCOMPARE(TakenTiles(), 2);
    m_pDocument->LayerImageChanged(1, QRect(140, 10, 5, 5));
    m_pHistogram->RebuildHistogramm();
    QVERIFY(WaitUntilCounted());
    QCOMPARE(TakenTiles(), 3);
    m_pHistogram->SetLevelRange(1, 255);
    m_pHistogram->SetLevelRange(0, 255);
    QCOMPARE(Take(*m_pCount), QVector<int>({25600}));
}

void TestHistogramWidget::hiddenItCountsNothing()
{
    m_pHistogram->hide();
    m_pDocument->UpdateDocumentRect(QRect());
    m_pHistogram->RebuildHistogramm();
    QCoreApplication::processEvents();
    QCOMPARE(TakenTiles(), 2);
    m_pHistogram->show();
    QVERIFY(WaitUntilCounted());
    QCOMPARE(TakenTiles(), 4);
}

void TestHistogramWidget::anotherDocumentBeginsAnew()
{
    m_pHistogram->SetLevelRange(10, 20);
    const auto other = MakeDocument({10, 10}, Qt::white);
    m_pHistogram->SetDocument(other.get());
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 255}));
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pCount), QVector<int>({100}));
}

void TestHistogramWidget::anotherCanvasIsCountedAnew()
{
    m_pDocument->SetDocumentSize({128, 10});
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pCount), QVector<int>({1280}));
}

void TestHistogramWidget::aDocumentThatGoesLeavesNothing()
{
    InputDriver input;
    input.Move(m_pHistogram.get(), PointOf(7));
    m_pDocument->UpdateDocumentRect(QRect());
    m_pHistogram->RebuildHistogramm();
    m_pNoStats->clear();
    m_pDocument.reset();
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pCount), QVector<int>({0}));
    QCOMPARE(m_pNoStats->count(), 1);
}

void TestHistogramWidget::aDocumentThatGoesEndsADrag()
{
    m_pHistogram->SetLevelRange(3, 4);
    InputDriver input;
    input.Press(m_pHistogram.get(), PointOf(20));
    input.Move(m_pHistogram.get(), PointOf(29));
    m_pDocument.reset();
    QCOMPARE(Take(*m_pRange), QVector<int>({3, 4}));
    input.Move(m_pHistogram.get(), PointOf(60));
    input.Release(m_pHistogram.get(), PointOf(60));
    QCOMPARE(m_pRange->count(), 0);
}

void TestHistogramWidget::withoutADocumentNothingIsTold()
{
    m_pHistogram->SetDocument(nullptr);
    m_pHistogram->RebuildHistogramm();
    m_pHistogram->setFocus();
    m_pRange->clear();
    m_pStats->clear();
    InputDriver input;
    input.Drag(m_pHistogram.get(), {PointOf(10), PointOf(60)});
    input.Key(Qt::Key_Right);
    QCOMPARE(m_pRange->count(), 0);
    QCOMPARE(m_pStats->count(), 0);
}

void TestHistogramWidget::thePointerTellsOfItsLevel()
{
    m_pHistogram->SetChannel(2);
    InputDriver input;
    input.Move(m_pHistogram.get(), PointOf(7));
    QCOMPARE(Take(*m_pStats), QVector<int>({200, 7}));
    input.Move(m_pHistogram.get(), PointOf(200));
    QCOMPARE(Take(*m_pStats), QVector<int>({0, 200}));
    m_pNoStats->clear();
    input.Move(m_pHistogram.get(), QPoint(-20, -20));
    QCOMPARE(m_pNoStats->count(), 1);
}

void TestHistogramWidget::numbersFollowTheCountsUnderThePointer()
{
    m_pHistogram->SetChannel(1);
    InputDriver input;
    input.Move(m_pHistogram.get(), PointOf(255));
    m_pDocument->SetLayerImage(1, MakeImage({256, 100}, [](int, int) { return 0xFFFFFFFFU; }), {0, 0});
    m_pDocument->UpdateDocumentRect(QRect());
    m_pHistogram->RebuildHistogramm();
    QVERIFY(WaitUntilCounted());
    QCOMPARE(Take(*m_pStats), QVector<int>({25600, 255}));
}

void TestHistogramWidget::aDragChoosesARange()
{
    m_pHistogram->SetChannel(1);
    InputDriver().Drag(m_pHistogram.get(), {PointOf(20), PointOf(29)});
    QCOMPARE(m_pHistogram->GetFirstLevel(), 20);
    QCOMPARE(m_pHistogram->GetLastLevel(), 29);
    QCOMPARE(Take(*m_pRange), QVector<int>({20, 29}));
    QCOMPARE(Take(*m_pCount), QVector<int>({1000}));
}

void TestHistogramWidget::aDragBackwardsChoosesTheSame()
{
    InputDriver().Drag(m_pHistogram.get(), {PointOf(29), PointOf(20)});
    QCOMPARE(Take(*m_pRange), QVector<int>({20, 29}));
}

void TestHistogramWidget::aDragOverTheEdgeEndsWithTheLevels()
{
    InputDriver input;
    input.Drag(m_pHistogram.get(), {PointOf(250), QPoint(WidgetSize.width() - 1, 4)});
    QCOMPARE(Take(*m_pRange), QVector<int>({250, 255}));
    input.Drag(m_pHistogram.get(), {PointOf(5), QPoint(0, 4)});
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 5}));
}

void TestHistogramWidget::aClickChoosesAllLevels()
{
    InputDriver input;
    m_pHistogram->SetLevelRange(3, 4);
    input.Press(m_pHistogram.get(), PointOf(100));
    QCOMPARE(Take(*m_pRange), QVector<int>({3, 4}));
    input.Release(m_pHistogram.get(), PointOf(100));
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 255}));
}

void TestHistogramWidget::escapeEndsADragWhereItBegan()
{
    m_pHistogram->SetLevelRange(3, 4);
    InputDriver input;
    input.Press(m_pHistogram.get(), PointOf(20));
    input.Move(m_pHistogram.get(), PointOf(29));
    input.Key(Qt::Key_Escape);
    QCOMPARE(Take(*m_pRange), QVector<int>({3, 4}));
    input.Move(m_pHistogram.get(), PointOf(60));
    input.Release(m_pHistogram.get(), PointOf(60));
    QCOMPARE(m_pRange->count(), 0);
}

void TestHistogramWidget::keysMoveOverTheLevels()
{
    m_pHistogram->SetChannel(1);
    m_pHistogram->setFocus();
    InputDriver input;
    const QVector<QPair<int, int>> levels{{Qt::Key_Right, 0},   {Qt::Key_Right, 1},      {Qt::Key_Left, 0},
                                          {Qt::Key_Left, 0},    {Qt::Key_PageUp, 16},    {Qt::Key_End, 255},
                                          {Qt::Key_Right, 255}, {Qt::Key_PageDown, 239}, {Qt::Key_Home, 0}};
    int before = -1;
    for (const auto& [key, level] : levels) {
        input.Key(key);
        QCOMPARE(Take(*m_pStats), level == before ? QVector<int>() : QVector<int>({100, level}));
        before = level;
    }
    QCOMPARE(m_pHistogram->accessibleDescription(), QString("Level 0: 100 pixels"));
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 255}));
}

void TestHistogramWidget::keysChooseARange()
{
    m_pHistogram->setFocus();
    InputDriver input;
    input.Key(Qt::Key_PageUp);
    input.Key(Qt::Key_Right, Qt::ShiftModifier);
    input.Key(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(Take(*m_pRange), QVector<int>({16, 18}));
    input.Key(Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 16}));
    // Without Shift the range stays, and the next one begins where the level is.
    input.Key(Qt::Key_PageUp);
    QCOMPARE(m_pRange->count(), 0);
    input.Key(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(Take(*m_pRange), QVector<int>({15, 16}));
}

void TestHistogramWidget::escapeChoosesAllLevels()
{
    m_pHistogram->setFocus();
    m_pHistogram->SetLevelRange(3, 4);
    InputDriver().Key(Qt::Key_Escape);
    QCOMPARE(Take(*m_pRange), QVector<int>({0, 255}));
}

void TestHistogramWidget::rangesAreBroughtIntoTheirOrder()
{
    m_pHistogram->SetLevelRange(300, -5);
    QCOMPARE(m_pHistogram->GetFirstLevel(), 0);
    QCOMPARE(m_pHistogram->GetLastLevel(), 255);
    m_pHistogram->SetLevelRange(9, 5);
    QCOMPARE(Take(*m_pRange), QVector<int>({5, 9}));
}

void TestHistogramWidget::theFocusTakesItsLevelAlong()
{
    m_pHistogram->setFocus();
    InputDriver().Key(Qt::Key_End);
    m_pNoStats->clear();
    m_pHistogram->clearFocus();
    QCOMPARE(m_pNoStats->count(), 1);
}

void TestHistogramWidget::levelsAreDrawnAsHighAsTheyAreFrequent()
{
    const auto two = MakeDocument({30, 10}, [](int x, int) { return x < 20 ? 0xFF505050U : 0xFFA0A0A0U; });
    m_pHistogram->SetDocument(two.get());
    m_pHistogram->SetChannel(0);
    QVERIFY(WaitUntilCounted());
    const QColor ground = m_pHistogram->palette().color(QPalette::Base);
    const QRect plot = HistogramWidgetPrivate::Get(m_pHistogram.get())->PlotRect();
    QVERIFY(ShownAt(0x50, plot.top()) != ground);
    QCOMPARE(ShownAt(0xA0, plot.center().y() - 4), ground);
    QVERIFY(ShownAt(0xA0, plot.center().y() + 4) != ground);
    QCOMPARE(ShownAt(0x51, plot.bottom()), ground);
}

void TestHistogramWidget::levelsOutsideTheRangeAreDim()
{
    m_pHistogram->SetChannel(1);
    const int y = HistogramWidgetPrivate::Get(m_pHistogram.get())->PlotRect().bottom() - 2;
    const QColor bright = ShownAt(50, y);
    m_pHistogram->SetLevelRange(100, 200);
    QVERIFY(ShownAt(50, y) != bright);
    QVERIFY(ShownAt(220, y) != bright);
    QCOMPARE(ShownAt(150, y), bright);
}

void TestHistogramWidget::failedCountingIsToldInThePlot()
{
    const QImage counted = m_pHistogram->grab().toImage();
    m_pDocument->AddLayer("Above", MakeImage({256, 100}, [](int, int) { return 0x80FFFFFFU; }), QPoint(0, 0));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    m_pHistogram->RebuildHistogramm();
    QVERIFY(WaitUntilCounted());
    FaultSeams::Reset();
    const QImage failed = m_pHistogram->grab().toImage();
    QVERIFY(failed != counted);
    m_pHistogram->RebuildHistogramm();
    QVERIFY(WaitUntilCounted());
    QVERIFY(m_pHistogram->grab().toImage() != failed);
    // Half of white over anything is brighter than half.
    m_pHistogram->SetLevelRange(0, 127);
    QCOMPARE(Take(*m_pCount), QVector<int>({0}));
    m_pHistogram->SetLevelRange(128, 255);
    QCOMPARE(Take(*m_pCount), QVector<int>({25600}));
}

void TestHistogramWidget::longCountingShowsHowFarItIs()
{
    qint64 now = 0;
    HistogramWidgetPrivate::Get(m_pHistogram.get())->SetClock([&now] { return now; });
    // More tiles than are counted at a time, so the first numbers come when there is more to come.
    const auto large = MakeDocument({2600, 1300}, qRgb(50, 50, 50));
    QVector<QPair<qint64, bool>> seen;
    connect(m_pHistogram.get(), &HistogramWidget::CountChanged, this, [&](int pixels) {
        if (pixels == 0 || pixels == 2600 * 1300 || !seen.isEmpty()) return;
        for (const qint64 passed : {999, 1000}) {
            now += passed - now;
            seen.append({now, IsProgressShown()});
        }
    });
    m_pHistogram->SetDocument(large.get());
    QVERIFY(!IsProgressShown());
    QVERIFY(WaitUntilCounted());
    QCOMPARE(seen, (QVector<QPair<qint64, bool>>{{999, false}, {1000, true}}));
    QVERIFY(!IsProgressShown());
}

void TestHistogramWidget::smallChangesShowNoProgress()
{
    qint64 now = 0;
    HistogramWidgetPrivate::Get(m_pHistogram.get())->SetClock([&now] { return now; });
    m_pHistogram->SetDocument(m_pDocument.get());
    QVERIFY(WaitUntilCounted());
    now = 60000;
    m_pDocument->LayerImageChanged(1, QRect(10, 10, 5, 5));
    m_pHistogram->RebuildHistogramm();
    // Asked for, and nothing else happened.
    QVERIFY(m_pHistogram->IsCounting());
    QVERIFY(!IsProgressShown());
    QVERIFY(WaitUntilCounted());
    // What waited while nobody saw it begins when it is seen.
    m_pHistogram->hide();
    m_pDocument->LayerImageChanged(1, QRect(10, 10, 5, 5));
    m_pHistogram->RebuildHistogramm();
    now = 120000;
    m_pHistogram->show();
    QVERIFY(!IsProgressShown());
    QVERIFY(WaitUntilCounted());
}

void TestHistogramWidget::itCanBeReachedAndHasAName()
{
    QCOMPARE(m_pHistogram->accessibleName(), QString("Histogram"));
    QVERIFY(m_pHistogram->focusPolicy() & Qt::TabFocus);
}

ZK_REGISTER_TEST(tst_histogramwidget, TestHistogramWidget)
#include "tst_histogramwidget.moc"
