#include "document/LXColorInfoHelper.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXSelectionMaskHelper.h"
#include "support/DocumentFixture.h"
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
constexpr unsigned int LayerCount = 3;

#if defined(__SANITIZE_THREAD__)
/// The sanitizer can't see how Qt hands an event from thread to thread, so they wait until the threads end.
constexpr bool DeliversMeanwhile = false;
#else
constexpr bool DeliversMeanwhile = true;
#endif

/// How long the threads go on: a moment in the suite, longer for who asks with ZK_HAMMER_SECONDS.
std::chrono::milliseconds Duration()
{
    const int seconds = qEnvironmentVariableIntValue("ZK_HAMMER_SECONDS");
    return seconds > 0 ? std::chrono::seconds(seconds) : std::chrono::milliseconds(700);
}

OwnedDocument MakeBusy(Random& random)
{
    OwnedDocument document = Make(QSize(300, 200));
    for (unsigned int id = 1; id <= LayerCount; ++id) {
        document->AddLayer("layer", Noise(random, QSize(200, 150)), QPoint(static_cast<int>(id) * 20, 10));
        document->AddMask(1, true);
    }
    for (unsigned int id = 1; id <= LayerCount; ++id) {
        document->CreateAdditionalLayer(id);
        *document->GetAdditionalLayerImage(id) = Noise(random, QSize(60, 60));
        document->ShowAdditionalLayer(id);
        document->CreateAdditionalMask(id);
        *document->GetAdditionalMaskImage(id) = Noise(random, QSize(60, 60));
        document->ShowAdditionalMask(id);
    }
    document->SetSelectionMask(MaskNoise(random, QSize(100, 80)), QPoint(10, 10));
    return document;
}

/// What workers do with a document, one thing at a time. All that is read must fit together: sizes under a
/// locker, the mask and where it lies.
class Worker
{
public:
    Worker(LXDocumentInterface* document, unsigned int seed) : m_pDocument(document), m_Random(seed) {}

    void RunUntil(Clock::time_point end)
    {
        while (Clock::now() < end) {
            DoSomething();
            ++m_Rounds;
        }
    }

    int Rounds() const { return m_Rounds; }

    int Misfits() const { return m_Misfits; }

private:
    void DoSomething()
    {
        switch (Pick(m_Random, 0, 13)) {
        case 0: return ReadLayer();
        case 1: return PaintLayer();
        case 2: return ReadSelection();
        case 3: return m_pDocument->SetSelectionMask(MaskNoise(m_Random, QSize(90, 70)), Place());
        case 4: return m_pDocument->MoveToSelection(Place());
        case 5: return m_pDocument->SetLayerImage(Id(), Noise(m_Random, QSize(150, 120)), Place());
        case 6: return m_pDocument->SetMaskImage(Id(), MaskNoise(m_Random, QSize(150, 120)), Place());
        case 7: return m_pDocument->SetLayerMaskOffset(Id(), Place(), Place());
        case 8: return MoveOverlays();
        case 9: return LookAtThePicture();
        case 10: return CopyDocument();
        case 11: return AskForGeometry();
        case 12: return Lift();
        default: return m_pDocument->UpdateDocumentRect(QRect());
        }
    }

    unsigned int Id() { return static_cast<unsigned int>(Pick(m_Random, 1, LayerCount)); }

    QPoint Place() { return QPoint(Pick(m_Random, -40, 250), Pick(m_Random, -40, 150)); }

    void Expect(bool fits)
    {
        if (!fits) ++m_Misfits;
    }

    void ReadLayer()
    {
        const unsigned int id = Id();
        const LXDocumentLayerLockerForRead locker(m_pDocument, id);
        Expect(m_pDocument->GetLayerGeometry(id).size() == m_pDocument->GetLayerImage(id)->Rect().size());
        Expect(m_pDocument->GetMaskGeometry(id).size() == m_pDocument->GetMaskImage(id)->Rect().size());
        m_Sum += m_pDocument->GetLayerImage(id)->GetColor(5, 5).value;
        m_Sum += m_pDocument->GetAdditionalLayerImage(id)->GetColor(5, 5).value;
    }

    void PaintLayer()
    {
        const unsigned int id = Id();
        const LXDocumentLayerLockerForRead reader(m_pDocument, id);
        LXDocumentLayerLockerForWrite locker(m_pDocument, id);
        DrawImage(*m_pDocument->GetLayerImage(id), BlendMode::Normal, QPoint(3, 3),
                  Noise(m_Random, QSize(20, 20)), 1.0, false);
        m_pDocument->GetAdditionalMaskImage(id)->SetColor(1, 1, LXRGBA32i(0xFF404040));
        locker.Unlock();
        m_pDocument->LayerImageChanged(id, QRect());
    }

    void ReadSelection()
    {
        const LXDocumentSelectionLockerForRead locker(m_pDocument);
        Expect(m_pDocument->HasSelection());
        Expect(m_pDocument->GetSelectionGeometry().size() == m_pDocument->GetSelectionMask().Rect().size());
        Expect(m_pDocument->GetSelectionGeometry().contains(m_pDocument->GetSelectionBoundingRect()));
        Expect(m_pDocument->GetSelectionMaskOffset() == m_pDocument->GetSelectionGeometry().topLeft());
    }

    void MoveOverlays()
    {
        const unsigned int id = Id();
        m_pDocument->SetAdditionalLayerPosition(id, Place());
        m_pDocument->SetAdditionalMaskPosition(id, Place());
        m_pDocument->InvalidateAdditionalLayer(id, QRect(0, 0, 50, 50));
        m_pDocument->InvalidateAdditionalMask(id, QRect(0, 0, 50, 50));
        m_pDocument->AdditionalLayerDataChangedExternal(id, QRect(20, 20, 80, 80));
        Expect(m_pDocument->GetAdditionalLayerGeometry(id).size() == QSize(60, 60));
        Expect(m_pDocument->GetAdditionalMaskGeometry(id).size() == QSize(60, 60));
    }

    void LookAtThePicture()
    {
        const LXDocumentLayerLockerForRead locker(m_pDocument, 0);
        Expect(m_pDocument->GetLayerImage(0)->Rect() == m_pDocument->GetLayerGeometry(0));
        m_Sum += m_pDocument->GetLayerImage(0)->GetColor(50, 50).value;
        m_Sum += LXColorInfoHelper::AverageColor(m_pDocument, Id(), QPoint(9, 9), 3).rgba();
    }

    void CopyDocument()
    {
        LXDocumentInterface* copy = LXDocumentFactory::Instance()->Copy(m_pDocument);
        Expect(copy->GetLayerGeometry(LayerCount).size() == copy->GetLayerImage(LayerCount)->Rect().size());
        Expect(copy->GetSelectionGeometry().size() == copy->GetSelectionMask().Rect().size());
        LXDocumentFactory::Instance()->Release(copy);
    }

    void AskForGeometry()
    {
        const unsigned int id = Id();
        bool reveals = false;
        m_pDocument->GetMaskInverted(id, &reveals);
        Expect(reveals && m_pDocument->GetLayerKind(id) == 0 && m_pDocument->GetLayerLockFlags(id) == 0);
        Expect(m_pDocument->IsLayerEditable(id) && m_pDocument->GetDocumentSize() == QSize(300, 200));
    }

    void Lift()
    {
        const LXImage32 lifted = LXSelectionMaskHelper(m_pDocument).GetSelectionRGBA32iImage(Id());
        Expect(lifted.Width() <= 100 && lifted.Height() <= 80);
        Expect(LXSelectionMaskHelper::GetSelectionBoundRect(lifted).width() <= lifted.Width());
    }

    LXDocumentInterface* m_pDocument;
    Random m_Random;
    int m_Rounds = 0;
    int m_Misfits = 0;
    quint32 m_Sum = 0;
};
} // namespace

/// Everything that workers may call, from eight of them at once, beside the main thread that composes and
/// lets signals in. Clean under the thread sanitizer, and over before the test's limit.
class TestDocumentHammer : public QObject
{
    Q_OBJECT

private slots:
    void eightWorkersBesideComposition();
    void copiesWhileLayersComeAndGo();
};

void TestDocumentHammer::eightWorkersBesideComposition()
{
    Random random(5);
    const OwnedDocument document = MakeBusy(random);
    std::vector<Worker> workers;
    for (unsigned int seed = 0; seed < 8; ++seed) {
        workers.emplace_back(document.get(), seed);
    }
    const Clock::time_point end = Clock::now() + Duration();
    std::vector<std::thread> threads;
    threads.reserve(workers.size());
    for (Worker& worker : workers) {
        threads.emplace_back([&worker, end] { worker.RunUntil(end); });
    }
    int pictures = 0;
    while (Clock::now() < end) {
        const LXDocumentLayerLockerForRead locker(document.get(), 0);
        if (document->GetLayerImage(0)->Width() == 300) ++pictures;
        if (DeliversMeanwhile) QCoreApplication::sendPostedEvents();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QVERIFY(pictures > 0);
    int rounds = 0;
    for (const Worker& worker : workers) {
        QCOMPARE(worker.Misfits(), 0);
        QVERIFY(worker.Rounds() > 0);
        rounds += worker.Rounds();
    }
    qInfo("%d calls of workers beside %d pictures", rounds, pictures);

    // What is left is what a copy composes anew from the layers.
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    const LXDocumentLayerLockerForRead shown(document.get(), 0);
    const LXDocumentLayerLockerForRead anew(copy.get(), 0);
    QVERIFY(AreEqual(*document->GetLayerImage(0), *copy->GetLayerImage(0)));
}

void TestDocumentHammer::copiesWhileLayersComeAndGo()
{
    Random random(6);
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("stays", Filled(QSize(100, 100), 0xFF112233), QPoint());
    std::atomic<bool> goOn{true};
    std::atomic<int> misfits{0};
    const auto copying = [&] {
        while (goOn) {
            LXDocumentInterface* copy = LXDocumentFactory::Instance()->Copy(document.get());
            // The layer that stays is the last one, in one piece.
            const auto last = static_cast<unsigned int>(copy->GetModel()->rowCount());
            const bool isWhole = last >= 1 && copy->GetLayerImage(last)->Width() == 100 &&
                                 copy->GetLayerImage(last)->GetColor(99, 99).value == 0xFF112233;
            if (!isWhole || copy->GetDPI() < 72.0) ++misfits;
            LXDocumentFactory::Instance()->Release(copy);
        }
    };
    std::thread first(copying);
    std::thread second(copying);
    for (int round = 0; round < 200; ++round) {
        document->AddLayer("passes", Noise(random, QSize(30, 30)), QPoint());
        document->SetDocumentName(QString::number(round));
        document->SetDPI(72 + round);
        document->SetGuides({{Qt::Vertical, static_cast<double>(round)}});
        document->RemoveLayer(1);
    }
    goOn = false;
    first.join();
    second.join();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(misfits.load(), 0);
}

ZK_REGISTER_TEST(tst_documenthammer, TestDocumentHammer)
#include "tst_documenthammer.moc"
