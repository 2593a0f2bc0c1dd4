#include "Bystanders.h"
#include "PieceFixture.h"

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

void Compose(const PieceFixture& fixture)
{
    const LXDocumentLayerLockerForRead locker(fixture.document.get(), 0);
    QCOMPARE(fixture.document->GetLayerImage(0)->Rect(), fixture.document->GetLayerGeometry(0));
}
} // namespace

/// Pieces that move while others read the document. Clean under the thread sanitizer, and over before
/// the test's limit.
class TestPieceHammer : public QObject
{
    Q_OBJECT

private slots:
    void piecesMoveBesideReadersAndComposition();
};

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

ZK_REGISTER_TEST(tst_piecehammer, TestPieceHammer)
#include "tst_piecehammer.moc"
