#include "clipboardprivate/LXClipboardPasteToMask.h"
#include "clipboardprivate/LXClipboardPasteToMaskBySelection.h"

#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <mutex>

using ClipboardPixels::Placed;

namespace {
constexpr bool Reveals = true;
constexpr bool Hides = false;

const QString FirstPass = QStringLiteral("Prepare conversion");
const QString SecondPass = QStringLiteral("Mask conversion");

/// What the worker says, heard on the worker.
class Listener
{
public:
    explicit Listener(MaskPasteProgress& progress)
    {
        QObject::connect(
            &progress, &MaskPasteProgress::ConversionLabel, &progress,
            [this](const QString& label) { Note(label); }, Qt::DirectConnection);
        QObject::connect(
            &progress, &MaskPasteProgress::ConversionProgressRange, &progress,
            [this](int minimum, int maximum) { Note(QString("%1-%2").arg(minimum).arg(maximum)); },
            Qt::DirectConnection);
        QObject::connect(
            &progress, &MaskPasteProgress::ConversionPosition, &progress,
            [this](int position) { Note(QString::number(position)); }, Qt::DirectConnection);
    }

    QStringList GetLines()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Lines;
    }

private:
    void Note(const QString& line)
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Lines.append(line);
    }

    std::mutex m_Mutex;
    QStringList m_Lines;
};

/// Cancels on the worker, after the second tile of a pass.
void CancelInPass(MaskPasteProgress& progress, const QString& pass)
{
    auto current = std::make_shared<QString>();
    QObject::connect(
        &progress, &MaskPasteProgress::ConversionLabel, &progress,
        [current](const QString& label) { *current = label; }, Qt::DirectConnection);
    QObject::connect(
        &progress, &MaskPasteProgress::ConversionPosition, &progress,
        [&progress, current, pass](int position) {
            if (*current == pass && position == 2) progress.OnCancel();
        },
        Qt::DirectConnection);
}

PlainImage RandomMask(int width, int height, std::mt19937& random)
{
    PlainImage mask = TestImages::Random(width, height, random);
    for (LXRGBA32i& pixel : mask.pixels)
        pixel = LXRGBA32i(pixel.value & 0xFF000000u);
    return mask;
}

int Lightness(LXRGBA32i color)
{
    const int most = std::max(color.Red(), std::max(color.Green(), color.Blue()));
    const int least = std::min(color.Red(), std::min(color.Green(), color.Blue()));
    return (most + least) / 2;
}

/// The rule for one pixel, in whole numbers.
int Painted(LXRGBA32i item, int old, int coverage)
{
    const int full = (Lightness(item) * item.Alpha() + (255 - item.Alpha()) * old) / 255;
    return (full * coverage + (255 - coverage) * old) / 255;
}
} // namespace

/// Pasting a picture into a mask, without a document.
class TestMaskPaste : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyPixelFollowsTheRule();
    void everyPixelFollowsTheRuleThroughASoftSelection();
    void theMaskItselfStaysAsItWas();
    void aLargerItemYieldsTheIntersectionOnly();
    void whatDoesNotMeetYieldsNothing();
    void theProgressTellsBothPasses();
    void theDialogShowsWhatTheWorkerTells();
    void cancelledWorkAnswersSo_data();
    void cancelledWorkAnswersSo();
    void aFailureComesOutOnTheMainThread();

private:
    std::mt19937 m_Random{11};
    PlainImage m_PlainItem;
    PlainImage m_PlainMask;
    PlainImage m_PlainSelection;
    Placed m_Item;
    Placed m_Mask;
    Placed m_Selection;
};

void TestMaskPaste::init()
{
    // Nothing lies on the others' grids of tiles, and all reach over tiles.
    m_PlainItem = TestImages::Random(260, 150, m_Random);
    m_PlainMask = RandomMask(300, 300, m_Random);
    m_PlainSelection = RandomMask(170, 200, m_Random);
    m_Item = {TestImages::ToTiles(m_PlainItem), QPoint(37, 21)};
    m_Mask = {TestImages::ToTiles(m_PlainMask), QPoint(-10, -20)};
    m_Selection = {TestImages::ToTiles(m_PlainSelection), QPoint(37, 21)};
}

void TestMaskPaste::cleanup()
{
    FaultSeams::Reset();
}

void TestMaskPaste::everyPixelFollowsTheRule()
{
    LXClipboardPasteToMask progress(m_Item, m_Mask, Hides, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCOMPARE(progress.GetResultRect(), QRect(37, 21, 253, 150));

    PlainImage expected(253, 150);
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const int old = m_PlainMask.At(x + 47, y + 41).Alpha();
            expected.At(x, y) = LXRGBA32i(quint32(Painted(m_PlainItem.At(x, y), old, 255)) << 24);
        }
    }
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(progress.GetResult()), expected), QString());
}

void TestMaskPaste::everyPixelFollowsTheRuleThroughASoftSelection()
{
    LXClipboardPasteToMaskBySelection progress(m_Item, m_Mask, m_Selection, Reveals, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCOMPARE(progress.GetResultRect(), QRect(37, 21, 170, 150));

    PlainImage expected(170, 150);
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const int old = m_PlainMask.At(x + 47, y + 41).Alpha();
            const int value = Painted(m_PlainItem.At(x, y), old, m_PlainSelection.At(x, y).Alpha());
            expected.At(x, y) = LXRGBA32i(quint32(value) << 24);
        }
    }
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(progress.GetResult()), expected), QString());
}

void TestMaskPaste::theMaskItselfStaysAsItWas()
{
    LXClipboardPasteToMask progress(m_Item, m_Mask, Reveals, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(m_Mask.image), m_PlainMask), QString());
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(m_Item.image), m_PlainItem), QString());
}

void TestMaskPaste::aLargerItemYieldsTheIntersectionOnly()
{
    const Placed small{LXImage32(30, 20), QPoint(100, 50)};
    LXClipboardPasteToMask progress(m_Item, small, Hides, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCOMPARE(progress.GetResultRect(), QRect(100, 50, 30, 20));
    QCOMPARE(progress.GetResult().Rect(), QRect(0, 0, 30, 20));
}

void TestMaskPaste::whatDoesNotMeetYieldsNothing()
{
    const Placed far{m_Item.image, QPoint(5000, 5000)};
    LXClipboardPasteToMask progress(far, m_Mask, Reveals, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QVERIFY(progress.GetResult().IsNull());
    QVERIFY(progress.GetResultRect().isEmpty());
}

void TestMaskPaste::theProgressTellsBothPasses()
{
    // 253 x 150 pixels are two columns and two rows of tiles.
    LXClipboardPasteToMask progress(m_Item, m_Mask, Hides, nullptr);
    Listener listener(progress);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCOMPARE(listener.GetLines(), (QStringList{FirstPass, "0-4", "0", "1", "2", "3", "4", SecondPass, "0-4",
                                               "0", "1", "2", "3", "4"}));
}

void TestMaskPaste::theDialogShowsWhatTheWorkerTells()
{
    LXClipboardPasteToMask progress(m_Item, m_Mask, Hides, nullptr);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QCoreApplication::processEvents();
    QStringList shown;
    const QList<QLabel*> labels = progress.findChildren<QLabel*>();
    for (const QLabel* label : labels)
        shown.append(label->text());
    QVERIFY2(shown.contains(SecondPass), qPrintable(shown.join('|')));
    QCOMPARE(progress.GetProgressMaximum(), 4);
    QCOMPARE(progress.GetProgressPos(), 4);
}

void TestMaskPaste::cancelledWorkAnswersSo_data()
{
    QTest::addColumn<QString>("pass");
    QTest::addColumn<bool>("bySelection");
    QTest::newRow("in the first pass") << FirstPass << false;
    QTest::newRow("in the second pass") << SecondPass << false;
    QTest::newRow("in the first pass, with a selection") << FirstPass << true;
    QTest::newRow("in the second pass, with a selection") << SecondPass << true;
}

void TestMaskPaste::cancelledWorkAnswersSo()
{
    QFETCH(QString, pass);
    QFETCH(bool, bySelection);

    std::unique_ptr<MaskPasteProgress> progress;
    if (bySelection) {
        progress = std::make_unique<LXClipboardPasteToMaskBySelection>(m_Item, m_Mask, m_Selection, Reveals,
                                                                       nullptr);
    } else {
        progress = std::make_unique<LXClipboardPasteToMask>(m_Item, m_Mask, Reveals, nullptr);
    }
    CancelInPass(*progress, pass);
    Listener listener(*progress);
    QCOMPARE(progress->Execute(), 0);
    progress->WaitForFinished();
    // The pass ended with the tile that was under way.
    const QStringList lines = listener.GetLines();
    QVERIFY(lines.contains(pass));
    QCOMPARE(lines.mid(lines.indexOf(pass) + 1, 4), (QStringList{"0-4", "0", "1", "2"}));
    QCOMPARE(lines.count("3"), pass == SecondPass ? 1 : 0);
    QCOMPARE(lines.contains(SecondPass), pass == SecondPass);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(m_Mask.image), m_PlainMask), QString());
}

void TestMaskPaste::aFailureComesOutOnTheMainThread()
{
    LXClipboardPasteToMask progress(m_Item, m_Mask, Reveals, nullptr);
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 3);
    QCOMPARE(progress.Execute(), 1);
    progress.WaitForFinished();
    QVERIFY_EXCEPTION_THROWN(progress.RethrowFailure(), std::bad_alloc);
}

ZK_REGISTER_TEST(tst_maskpaste, TestMaskPaste)
#include "tst_maskpaste.moc"
