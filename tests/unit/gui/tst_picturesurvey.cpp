#include "GuiFixture.h"

#include "gui/PictureSurvey.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <condition_variable>
#include <mutex>

using GuiFixture::MakeDocument;
using GuiFixture::MakeImage;

namespace {
constexpr int Limit = 10000; ///< milliseconds

/// A worker that stands still at its first tile until it is let go.
class Gate
{
public:
    void Pass()
    {
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_bReached = true;
        m_Changed.notify_all();
        m_Changed.wait(lock, [this] { return m_bOpen; });
    }

    void WaitUntilReached()
    {
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_Changed.wait_for(lock, std::chrono::milliseconds(Limit), [this] { return m_bReached; });
    }

    void Open()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_bOpen = true;
        m_Changed.notify_all();
    }

private:
    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    bool m_bReached = false;
    bool m_bOpen = false;
};
} // namespace

/// How changed tiles of a picture come to a worker.
class TestPictureSurvey : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void allOfThePictureIsDelivered();
    void onlyChangedTilesAreDeliveredAgain();
    void whoAsksBeforeTheChangeIsNotedIsHeard();
    void changesThatNobodyAsksForWait();
    void pixelsAreThoseOfTheMoment();
    void theWorkerIsAnotherThread();
    void whatIsNotSeenIsNotWorkedOn();
    void anotherDocumentAbandonsWhatIsUnderWay();
    void aDocumentThatGoesAbandonsWhatIsUnderWay();
    void anotherCanvasBeginsAnew();
    void failedTilesComeAgainWhenAskedFor_data();
    void failedTilesComeAgainWhenAskedFor();
    void aPictureThatCannotBeComposedIsTold_data();
    void aPictureThatCannotBeComposedIsTold();
    void itMayGoWhileTheWorkerRuns();
    void withoutADocumentNothingHappens();
    void theShareGrowsToAll();
    void theBeginIsToldOnceAfterEachRest();

private:
    /// Notes the delivered tiles.
    PictureSurvey::Work Noting()
    {
        return [this](const PictureSurvey::Batch& batch) -> PictureSurvey::Delivery {
            return [this, tiles = batch.tiles] {
                for (const QPoint& tile : tiles)
                    m_Delivered.append(tile);
            };
        };
    }

    PictureSurvey::Work Stopping(Gate& gate)
    {
        return [this, &gate](const PictureSurvey::Batch& batch) {
            gate.Pass();
            return Noting()(batch);
        };
    }

    bool WaitUntilFinished()
    {
        QSignalSpy finished(m_pSurvey.get(), &PictureSurvey::Finished);
        return finished.wait(Limit);
    }

    QVector<QPoint> Delivered()
    {
        std::sort(m_Delivered.begin(), m_Delivered.end(), [](const QPoint& a, const QPoint& b) {
            return std::pair(a.y(), a.x()) < std::pair(b.y(), b.x());
        });
        return std::exchange(m_Delivered, {});
    }

    void Paint(const QRect& rect) { m_pDocument->LayerImageChanged(1, rect); }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<PictureSurvey> m_pSurvey;
    QVector<QPoint> m_Delivered;
};

void TestPictureSurvey::init()
{
    m_pDocument = MakeDocument({300, 200}, Qt::red);
    m_pSurvey = std::make_unique<PictureSurvey>(nullptr);
    m_pSurvey->SetSeen(true);
    m_Delivered.clear();
}

void TestPictureSurvey::cleanup()
{
    FaultSeams::Reset();
    m_pSurvey.reset();
    m_pDocument.reset();
}

void TestPictureSurvey::allOfThePictureIsDelivered()
{
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(m_pSurvey->IsUnderWay());
    QVERIFY(WaitUntilFinished());
    QVERIFY(!m_pSurvey->IsUnderWay());
    QCOMPARE(Delivered(), QVector<QPoint>({{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}}));
    QCOMPARE(m_pSurvey->TakenTiles(), 6);
}

void TestPictureSurvey::onlyChangedTilesAreDeliveredAgain()
{
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(WaitUntilFinished());
    Delivered();
    Paint(QRect(120, 130, 10, 10));
    m_pSurvey->Ask();
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered(), QVector<QPoint>({{0, 1}, {1, 1}}));
    Paint(QRect(299, 0, 1, 1));
    Paint(QRect(-50, -50, 51, 51));
    m_pSurvey->Ask();
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered(), QVector<QPoint>({{0, 0}, {2, 0}}));
}

void TestPictureSurvey::whoAsksBeforeTheChangeIsNotedIsHeard()
{
    // Connected before the survey, so called before it.
    connect(m_pDocument.get(), &LXDocumentInterface::CompositionChanged, this, [this] { m_pSurvey->Ask(); });
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(WaitUntilFinished());
    Delivered();
    Paint(QRect(290, 190, 5, 5));
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered(), QVector<QPoint>({{2, 1}}));
    m_pDocument->disconnect(this);
}

void TestPictureSurvey::changesThatNobodyAsksForWait()
{
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(WaitUntilFinished());
    Delivered();
    Paint(QRect(0, 0, 5, 5));
    QCoreApplication::processEvents();
    QVERIFY(!m_pSurvey->IsUnderWay());
    QCOMPARE(m_pSurvey->TakenTiles(), 6);
}

void TestPictureSurvey::pixelsAreThoseOfTheMoment()
{
    QVector<QRgb> seen;
    m_pSurvey->Follow(
        m_pDocument.get(), [&seen](const PictureSurvey::Batch& batch) -> PictureSurvey::Delivery {
            return [&seen, color = batch.picture.GetColor(130, 5).value] { seen.append(color); };
        });
    QVERIFY(WaitUntilFinished());
    m_pDocument->SetLayerImage(1, MakeImage({300, 200}, [](int, int) { return qRgb(0, 0, 255); }), {0, 0});
    Paint(QRect(130, 0, 1, 1));
    m_pSurvey->Ask();
    QVERIFY(WaitUntilFinished());
    QCOMPARE(seen, QVector<QRgb>({qRgb(255, 0, 0), qRgb(0, 0, 255)}));
}

void TestPictureSurvey::theWorkerIsAnotherThread()
{
    QThread* worker = nullptr;
    QThread* receiver = nullptr;
    m_pSurvey->Follow(m_pDocument.get(), [&](const PictureSurvey::Batch&) -> PictureSurvey::Delivery {
        worker = QThread::currentThread();
        return [&] { receiver = QThread::currentThread(); };
    });
    QVERIFY(WaitUntilFinished());
    QVERIFY(worker != thread());
    QCOMPARE(receiver, thread());
}

void TestPictureSurvey::whatIsNotSeenIsNotWorkedOn()
{
    m_pSurvey->SetSeen(false);
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSurvey->TakenTiles(), 0);
    QVERIFY(m_pSurvey->IsUnderWay());
    m_pSurvey->SetSeen(true);
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered().size(), 6);
}

void TestPictureSurvey::anotherDocumentAbandonsWhatIsUnderWay()
{
    Gate gate;
    m_pSurvey->Follow(m_pDocument.get(), Stopping(gate));
    QCoreApplication::processEvents();
    gate.WaitUntilReached();
    const auto other = MakeDocument({10, 10}, Qt::blue);
    m_pSurvey->Follow(other.get(), Noting());
    const double share = m_pSurvey->DeliveredShare();
    gate.Open();
    QCOMPARE(share, 0.0);
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered(), QVector<QPoint>({{0, 0}}));
}

void TestPictureSurvey::aDocumentThatGoesAbandonsWhatIsUnderWay()
{
    Gate gate;
    m_pSurvey->Follow(m_pDocument.get(), Stopping(gate));
    QCoreApplication::processEvents();
    gate.WaitUntilReached();
    QSignalSpy restarted(m_pSurvey.get(), &PictureSurvey::Restarted);
    m_pDocument.reset();
    QCOMPARE(restarted.count(), 1);
    QVERIFY(!m_pSurvey->HasDocument());
    QVERIFY(m_pSurvey->GetCanvas().isEmpty());
    gate.Open();
    QTRY_VERIFY_WITH_TIMEOUT(!m_pSurvey->IsUnderWay(), Limit);
    QCOMPARE(Delivered(), QVector<QPoint>());
}

void TestPictureSurvey::anotherCanvasBeginsAnew()
{
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(WaitUntilFinished());
    Delivered();
    m_pDocument->SetDocumentSize({129, 20});
    QCOMPARE(m_pSurvey->GetCanvas(), QSize(129, 20));
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered(), QVector<QPoint>({{0, 0}, {1, 0}}));
}

void TestPictureSurvey::failedTilesComeAgainWhenAskedFor_data()
{
    QTest::addColumn<bool>("isStrange");
    QTest::newRow("no memory") << false;
    QTest::newRow("a strange failure") << true;
}

void TestPictureSurvey::failedTilesComeAgainWhenAskedFor()
{
    QFETCH(const bool, isStrange);
    std::atomic<bool> fails{true};
    m_pSurvey->Follow(m_pDocument.get(), [&, isStrange](const PictureSurvey::Batch& batch) {
        if (fails.exchange(false)) {
            if (isStrange) throw FaultSeams::StrangeFailure();
            throw std::bad_alloc();
        }
        return Noting()(batch);
    });
    QSignalSpy failed(m_pSurvey.get(), &PictureSurvey::Failed);
    QVERIFY(failed.wait(Limit));
    QVERIFY(!m_pSurvey->IsUnderWay());
    QCOMPARE(Delivered().size(), 0);
    m_pSurvey->Ask();
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered().size(), 6);
}

void TestPictureSurvey::aPictureThatCannotBeComposedIsTold_data()
{
    QTest::addColumn<int>("tile");
    // Three tiles are composed together: those of the first row are good when the second one fails.
    for (const int tile : {1, 4, 6})
        QTest::addRow("tile %d", tile) << tile;
}

void TestPictureSurvey::aPictureThatCannotBeComposedIsTold()
{
    QFETCH(const int, tile);
    m_pDocument->AddLayer("Above", MakeImage({300, 200}, [](int x, int) { return qRgba(x, 0, 0, 128); }),
                          QPoint(0, 0));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, tile);
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QSignalSpy failed(m_pSurvey.get(), &PictureSurvey::Failed);
    QVERIFY(failed.wait(Limit));
    QVERIFY(!m_pSurvey->IsUnderWay());
    QCOMPARE(m_pSurvey->DeliveredShare(), 0.0);
    m_pSurvey->Ask();
    QVERIFY(WaitUntilFinished());
    QCOMPARE(Delivered().size(), 6);
}

void TestPictureSurvey::itMayGoWhileTheWorkerRuns()
{
    Gate gate;
    m_pSurvey->Follow(m_pDocument.get(), Stopping(gate));
    QCoreApplication::processEvents();
    gate.WaitUntilReached();
    gate.Open();
    m_pSurvey.reset();
    QCoreApplication::processEvents();
    QCOMPARE(Delivered(), QVector<QPoint>());
}

void TestPictureSurvey::withoutADocumentNothingHappens()
{
    m_pSurvey->Follow(nullptr, Noting());
    m_pSurvey->Ask();
    QVERIFY(!m_pSurvey->IsUnderWay());
    QCOMPARE(m_pSurvey->DeliveredShare(), 1.0);
    QCoreApplication::processEvents();
    QCOMPARE(m_pSurvey->TakenTiles(), 0);
}

void TestPictureSurvey::theShareGrowsToAll()
{
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QCOMPARE(m_pSurvey->DeliveredShare(), 0.0);
    QVERIFY(WaitUntilFinished());
    QCOMPARE(m_pSurvey->DeliveredShare(), 1.0);
    Paint(QRect(0, 0, 129, 10));
    QVERIFY(qAbs(m_pSurvey->DeliveredShare() - 4.0 / 6) < 1e-9);
}

void TestPictureSurvey::theBeginIsToldOnceAfterEachRest()
{
    QSignalSpy began(m_pSurvey.get(), &PictureSurvey::Began);
    m_pSurvey->Follow(m_pDocument.get(), Noting());
    QVERIFY(!m_pSurvey->IsAtWork());
    QVERIFY(WaitUntilFinished());
    QVERIFY(!m_pSurvey->IsAtWork());
    QCOMPARE(began.count(), 1);
    Paint(QRect(0, 0, 5, 5));
    m_pSurvey->Ask();
    QVERIFY(!m_pSurvey->IsAtWork());
    QVERIFY(WaitUntilFinished());
    QCOMPARE(began.count(), 2);

    Gate gate;
    m_pSurvey->Follow(m_pDocument.get(), Stopping(gate));
    QCoreApplication::processEvents();
    gate.WaitUntilReached();
    const bool isAtWork = m_pSurvey->IsAtWork();
    m_pSurvey->SetSeen(false);
    const bool isAtWorkUnseen = m_pSurvey->IsAtWork();
    m_pSurvey->SetSeen(true);
    gate.Open();
    QVERIFY(isAtWork);
    // Unseen it rests, although the worker was still to end.
    QVERIFY(!isAtWorkUnseen);
    QVERIFY(WaitUntilFinished());
    QCOMPARE(began.count(), 4);
}

ZK_REGISTER_TEST(tst_picturesurvey, TestPictureSurvey)
#include "tst_picturesurvey.moc"
