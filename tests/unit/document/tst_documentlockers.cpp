#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

using namespace DocumentFixture;

namespace {
/// Whether another thread gets the layer's write locker.
bool CanBeWritten(LXDocumentInterface* document, unsigned int id)
{
    const auto writer =
        std::async(std::launch::async, [=] { const LXDocumentLayerLockerForWrite locker(document, id); });
    return writer.wait_for(std::chrono::milliseconds(50)) == std::future_status::ready;
}
} // namespace

class TestDocumentLockers : public QObject
{
    Q_OBJECT

private slots:
    void theDestructorGivesTheLockBack();
    void unlockAndRelockAreHarmlessTwice();
    void aLayerAndItsMaskAreOneLock();
    void layersAreLockedApart();
    void aLockerStaysWithItsLayerWhenRowsChange();
    void nullAndBadIdsLockNothing();
    void theSelectionIsReadByMany();
    void releaseWaitsForWorkers();
    void manyThreadsReadWriteAndLookAtThePicture();
};

void TestDocumentLockers::theDestructorGivesTheLockBack()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    std::future<void> writer;
    {
        const LXDocumentLayerLockerForRead locker(document.get(), 1);
        writer = std::async(std::launch::async,
                            [&] { const LXDocumentLayerLockerForWrite other(document.get(), 1); });
        QCOMPARE(writer.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    }
    QCOMPARE(writer.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

void TestDocumentLockers::unlockAndRelockAreHarmlessTwice()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    LXDocumentLayerLockerForWrite locker(document.get(), 1);
    locker.Relock();
    locker.Unlock();
    locker.Unlock();
    QVERIFY(CanBeWritten(document.get(), 1));
    locker.Relock();
    locker.Relock();
    locker.Unlock();
    QVERIFY(CanBeWritten(document.get(), 1));
}

void TestDocumentLockers::aLayerAndItsMaskAreOneLock()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    document->AddMask(1, true);
    std::future<void> job;
    {
        const LXDocumentLayerLockerForWrite locker(document.get(), 1);
        job = std::async(std::launch::async, [&] { document->SetMaskImage(1, LXImage32(3, 3), QPoint()); });
        QCOMPARE(job.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    }
    QCOMPARE(job.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 3, 3));
}

void TestDocumentLockers::layersAreLockedApart()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("one", LXImage32(10, 10), QPoint());
    document->AddLayer("two", LXImage32(10, 10), QPoint());
    const LXDocumentLayerLockerForWrite locker(document.get(), 1);
    QVERIFY(CanBeWritten(document.get(), 2));
}

void TestDocumentLockers::aLockerStaysWithItsLayerWhenRowsChange()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    LXDocumentLayerLockerForWrite locker(document.get(), 1);
    document->AddLayer("new top", LXImage32(10, 10), QPoint());
    QVERIFY(CanBeWritten(document.get(), 1));
    auto waiting = std::async(std::launch::async, [&] {
        const LXDocumentLayerLockerForRead other(document.get(), 2);
        return document->GetLayerGeometry(2);
    });
    QCOMPARE(waiting.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    locker.Unlock();
    QCOMPARE(waiting.get(), QRect(0, 0, 10, 10));
}

void TestDocumentLockers::nullAndBadIdsLockNothing()
{
    const OwnedDocument document = Make(QSize(10, 10));
    LXDocumentLayerLockerForRead reader(nullptr, 1);
    LXDocumentLayerLockerForWrite writer(document.get(), 7);
    LXDocumentSelectionLockerForRead selection(nullptr);
    reader.Unlock();
    writer.Relock();
    selection.Relock();
}

void TestDocumentLockers::theSelectionIsReadByMany()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(1, 1));
    std::future<void> writer;
    {
        const LXDocumentSelectionLockerForRead mine(document.get());
        auto reader = std::async(std::launch::async, [&] {
            const LXDocumentSelectionLockerForRead other(document.get());
            return document->GetSelectionMask().Width();
        });
        QCOMPARE(reader.get(), 4);
        writer = std::async(std::launch::async,
                            [&] { document->SetSelectionMask(Filled(QSize(9, 9), 0xFF000000), QPoint()); });
        QCOMPARE(writer.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
        QCOMPARE(document->GetSelectionMask().Width(), 4);
    }
    QCOMPARE(writer.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    QCOMPARE(document->GetSelectionMask().Width(), 9);
}

void TestDocumentLockers::releaseWaitsForWorkers()
{
    OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFF123456), QPoint());
    std::promise<void> isReading;
    std::atomic<bool> isDone{false};
    const LXDocumentInterface* shown = document.get();
    std::thread worker([&, shown] {
        const LXDocumentLayerLockerForRead locker(shown, 1);
        isReading.set_value();
        // Long enough for the main thread to get to its release meanwhile.
        int wrong = 0;
        for (int i = 0; i < 20000; ++i) {
            if (shown->GetLayerImage(1)->GetColor(3, 3).value != 0xFF123456) ++wrong;
        }
        isDone = wrong == 0;
    });
    isReading.get_future().wait();
    document.reset();
    QVERIFY(isDone);
    worker.join();
}

/// Each layer is always of one color when a writer gives it back; readers of layers and of the picture must
/// never see a mixture. Clean under the thread sanitizer.
void TestDocumentLockers::manyThreadsReadWriteAndLookAtThePicture()
{
    constexpr int rounds = 60;
    const QSize size(200, 150);
    const OwnedDocument document = Make(size);
    document->AddLayer("low", Filled(size, 0xFF000001), QPoint());
    document->AddLayer("high", Filled(QSize(100, 100), 0xFF000001), QPoint(20, 20));
    std::atomic<int> mixtures{0};

    const auto isUniform = [](const LXImage32& image, const QRect& rect) {
        const quint32 first = image.GetColor(rect.left(), rect.top()).value;
        return image.GetColor(rect.right(), rect.bottom()).value == first &&
               image.GetColor(rect.center().x(), rect.center().y()).value == first;
    };
    const auto write = [&](unsigned int id) {
        for (int round = 0; round < rounds; ++round) {
            LXDocumentLayerLockerForRead reader(document.get(), id);
            {
                const LXDocumentLayerLockerForWrite writer(document.get(), id);
                LXImage32& image = *document->GetLayerImage(id);
                for (int y = 0; y < image.Height(); y += image.Height() - 1) {
                    image.SetColor(0, y, LXRGBA32i(static_cast<quint32>(round)));
                }
                image.Fill(LXRGBA32i(0xFF000000 | static_cast<quint32>(round)));
            }
            if (!isUniform(*document->GetLayerImage(id), document->GetLayerImage(id)->Rect())) ++mixtures;
            reader.Unlock();
            document->LayerImageChanged(id, QRect());
        }
    };
    const auto look = [&] {
        for (int round = 0; round < rounds; ++round) {
            const LXDocumentLayerLockerForRead merged(document.get(), 0);
            const LXImage32& picture = *document->GetLayerImage(0);
            if (!isUniform(picture, QRect(20, 20, 100, 100))) ++mixtures;
            const LXDocumentLayerLockerForRead below(document.get(), 2);
            if (!isUniform(*document->GetLayerImage(2), QRect(QPoint(), size))) ++mixtures;
        }
    };
    std::vector<std::thread> threads;
    threads.emplace_back(write, 1u);
    threads.emplace_back(write, 1u);
    threads.emplace_back(write, 2u);
    threads.emplace_back(look);
    threads.emplace_back(look);
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(mixtures.load(), 0);

    const LXDocumentLayerLockerForRead merged(document.get(), 0);
    QCOMPARE(document->GetLayerImage(0)->GetColor(50, 50).value, 0xFF000000u | (rounds - 1));
    QCOMPARE(document->GetLayerImage(0)->GetColor(199, 149).value, 0xFF000000u | (rounds - 1));
}

ZK_REGISTER_TEST(tst_documentlockers, TestDocumentLockers)
#include "tst_documentlockers.moc"
