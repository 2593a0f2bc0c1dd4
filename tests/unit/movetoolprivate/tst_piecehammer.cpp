#include "PieceFixture.h"
#include "ProbeObject.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using namespace DocumentFixture;
using Clock = std::chrono::steady_clock;

namespace {
#if defined(__SANITIZE_THREAD__)
/// The sanitizer can't see how Qt hands an event from thread to thread, so they wait until the threads end.
constexpr bool DeliversMeanwhile = false;
#else
constexpr bool DeliversMeanwhile = true;
#endif

/// How long the threads go on: a moment in the suite, longer for who asks with ZK_HAMMER_SECONDS.
Clock::time_point End()
{
    const int seconds = qEnvironmentVariableIntValue("ZK_HAMMER_SECONDS");
    return Clock::now() +
           (seconds > 0 ? std::chrono::milliseconds(seconds * 1000) : std::chrono::milliseconds(400));
}

constexpr PieceKind Kinds[] = {PieceKind::LayerCopy, PieceKind::MaskCopy, PieceKind::LayerCut,
                               PieceKind::MaskCut};

void LetSignalsIn()
{
    if (DeliversMeanwhile) QCoreApplication::sendPostedEvents();
}

/// What others do with a document while a piece floats above it, on threads of their own.
class Bystanders
{
public:
    explicit Bystanders(const LXDocumentInterface* document)
        : m_Reader([this, document] { Repeat([&] { Read(document); }); }),
          m_Copier([this, document] { Repeat([&] { Copy(document); }); })
    {}

    ~Bystanders()
    {
        m_bGoOn = false;
        m_Reader.join();
        m_Copier.join();
    }

    Q_DISABLE_COPY(Bystanders)

    int Rounds() const { return m_Rounds; }

    int Misfits() const { return m_Misfits; }

private:
    template <class Work>
    void Repeat(const Work& work)
    {
        while (m_bGoOn) {
            work();
            ++m_Rounds;
        }
    }

    void Read(const LXDocumentInterface* document)
    {
        const LXDocumentLayerLockerForRead locker(document, 1);
        const bool fits = document->GetLayerGeometry(1).size() == document->GetLayerImage(1)->Rect().size() &&
                          document->GetMaskGeometry(1).size() == document->GetMaskImage(1)->Rect().size();
        if (!fits) ++m_Misfits;
        const LXDocumentSelectionLockerForRead selection(document);
        if (document->GetSelectionGeometry().size() != document->GetSelectionMask().Rect().size())
            ++m_Misfits;
    }

    void Copy(const LXDocumentInterface* document)
    {
        LXDocumentInterface* copy = LXDocumentFactory::Instance()->Copy(document);
        if (copy->GetLayerGeometry(1).size() != copy->GetLayerImage(1)->Rect().size()) ++m_Misfits;
        LXDocumentFactory::Instance()->Release(copy);
    }

    std::atomic<bool> m_bGoOn{true};
    std::atomic<int> m_Rounds{0};
    std::atomic<int> m_Misfits{0};
    std::thread m_Reader;
    std::thread m_Copier;
};

void Compose(const PieceFixture& fixture)
{
    const LXDocumentLayerLockerForRead locker(fixture.document.get(), 0);
    QCOMPARE(fixture.document->GetLayerImage(0)->Rect(), fixture.document->GetLayerGeometry(0));
}
} // namespace

/// The engine and the pieces from several threads at once. Clean under the thread sanitizer, and over before
/// the test's limit.
class TestPieceHammer : public QObject
{
    Q_OBJECT

private slots:
    void theEngineMovesOneAtATime();
    void afterAFlushNothingMoves();
    void piecesMoveBesideReadersAndComposition();
    void enginesCarryPiecesBesideReadersAndComposition();
};

void TestPieceHammer::theEngineMovesOneAtATime()
{
    std::atomic<int> inside{0};
    std::atomic<int> collisions{0};
    auto* probe = new ProbeObject;
    CopyPasteThread engine(probe);
    probe->onMove = [&](const QPoint&) {
        if (++inside != 1) ++collisions;
        std::this_thread::yield();
        --inside;
        return true;
    };
    probe->onRefresh = [&] {
        if (++inside != 1) ++collisions;
        --inside;
    };
    const Clock::time_point end = End();
    std::vector<std::thread> callers;
    for (unsigned int seed = 0; seed < 4; ++seed) {
        callers.emplace_back([&engine, seed, end] {
            Random random(seed);
            while (Clock::now() < end) {
                const QPoint position(Pick(random, 0, 99), Pick(random, 0, 99));
                switch (Pick(random, 0, 5)) {
                case 0: engine.Move(position); break;
                case 1: engine.Flush(); break;
                case 2: engine.Refresh(); break;
                default: engine.PostMove(position);
                }
            }
        });
    }
    for (std::thread& caller : callers)
        caller.join();
    engine.Flush();
    QCOMPARE(collisions.load(), 0);
    QVERIFY(probe->Moves().size() > 10);
}

void TestPieceHammer::afterAFlushNothingMoves()
{
    std::atomic<int> begun{0};
    std::atomic<int> ended{0};
    auto* probe = new ProbeObject;
    CopyPasteThread engine(probe);
    probe->onMove = [&](const QPoint&) {
        ++begun;
        std::this_thread::yield();
        ++ended;
        return true;
    };
    const Clock::time_point end = End();
    int flushes = 0;
    for (int x = 0; Clock::now() < end; ++x) {
        // Sometimes the worker has taken the event out already, sometimes it is in the middle of it.
        engine.PostMove(QPoint(x, 0));
        for (int i = x % 8; i > 0; --i)
            std::this_thread::yield();
        engine.Flush();
        const int before = begun;
        QCOMPARE(ended.load(), before);
        for (int i = 0; i < 4; ++i)
            std::this_thread::yield();
        QCOMPARE(begun.load(), before);
        ++flushes;
    }
    QVERIFY(flushes > 10);
}

void TestPieceHammer::piecesMoveBesideReadersAndComposition()
{
    Random random(1);
    PieceFixture fixture(QSize(300, 200));
    fixture.FillWithNoise(random);
    const QStringList before = fixture.Describe();
    const Clock::time_point end = End();
    int pieces = 0;
    {
        const Bystanders bystanders(fixture.document.get());
        for (; Clock::now() < end || pieces < 8; ++pieces) {
            const auto piece = PieceFixture::MakePiece(Kinds[pieces % 4]);
            QVERIFY(piece->Begin(fixture.view.get(), 1));
            std::atomic<bool> isMoving{true};
            std::thread worker([&piece, &isMoving, pieces] {
                Random steps(static_cast<unsigned int>(pieces));
                for (int step = 0; step < 20; ++step)
                    piece->Move(QPoint(Pick(steps, -40, 250), Pick(steps, -40, 150)));
                isMoving = false;
            });
            while (isMoving) {
                Compose(fixture);
                LetSignalsIn();
            }
            worker.join();
            QVERIFY(pieces % 3 == 0 ? piece->Cancel() : piece->Commit(&fixture.history));
        }
        QCOMPARE(bystanders.Misfits(), 0);
        QVERIFY(bystanders.Rounds() > 0);
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    while (fixture.history.canUndo())
        fixture.history.undo();
    QCOMPARE(fixture.Describe(), before);
}

void TestPieceHammer::enginesCarryPiecesBesideReadersAndComposition()
{
    Random random(2);
    PieceFixture fixture(QSize(300, 200));
    fixture.FillWithNoise(random);
    const QStringList before = fixture.Describe();
    const Clock::time_point end = End();
    int pieces = 0;
    {
        const Bystanders bystanders(fixture.document.get());
        for (; Clock::now() < end || pieces < 8; ++pieces) {
            CopyPasteThread engine(PieceFixture::MakePiece(Kinds[pieces % 4]).release());
            QVERIFY(engine.Begin(fixture.view.get(), 1));
            for (int step = 0; step < 20; ++step) {
                engine.PostMove(QPoint(Pick(random, -40, 250), Pick(random, -40, 150)));
                Compose(fixture);
                LetSignalsIn();
            }
            const QPoint last(Pick(random, -40, 250), Pick(random, -40, 150));
            QVERIFY(engine.Move(last));
            engine.Flush();
            QCOMPARE(fixture.document->GetSelectionMaskOffset(), last);
            QVERIFY(pieces % 3 == 0 ? engine.Cancel() : engine.Commit(&fixture.history));
        }
        QCOMPARE(bystanders.Misfits(), 0);
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    while (fixture.history.canUndo())
        fixture.history.undo();
    QCOMPARE(fixture.Describe(), before);
}

ZK_REGISTER_TEST(tst_piecehammer, TestPieceHammer)
#include "tst_piecehammer.moc"
