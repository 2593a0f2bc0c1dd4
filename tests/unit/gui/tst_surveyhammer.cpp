#include "GuiFixture.h"

#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "gui/LevelSurvey.h"
#include "gui/NavigatorPicture.h"
#include "image/LXImage.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

namespace {
constexpr int Rounds = 60;
constexpr int Workers = 3;
const QSize Size(300, 200);

/// All tiles of the picture of the moment.
PictureSurvey::Batch Snapshot(const LXDocumentInterface* document)
{
    PictureSurvey::Batch batch;
    const LXDocumentLayerLockerForRead locker(document, 0);
    batch.picture = *document->GetLayerImage(0);
    for (int row = 0; row < int(batch.picture.m_TilesY); ++row) {
        for (int column = 0; column < int(batch.picture.m_TilesX); ++column)
            batch.tiles.emplace_back(column, row);
    }
    return batch;
}

void Fill(LXDocumentInterface* document, quint32 color)
{
    {
        const LXDocumentLayerLockerForWrite locker(document, 1);
        document->GetLayerImage(1)->Fill(LXRGBA32i(color));
    }
    document->LayerImageChanged(1, QRect());
}

/// The only level of red in all tiles; -1 when there are several.
int OnlyRed(const std::vector<LevelSurvey::TileCounts>& tiles)
{
    LevelCounts::Sum sum;
    for (const auto& tile : tiles) {
        if (tile) sum.Add(*tile);
    }
    const auto& red = sum.Of(LevelCounts::Red);
    for (int level = 0; level < int(red.size()); ++level) {
        if (red[std::size_t(level)] == qint64(Size.width()) * Size.height()) return level;
    }
    return -1;
}
} // namespace

/// Snapshots of a picture are counted and reduced by several threads while the picture goes on changing.
class TestSurveyHammer : public QObject
{
    Q_OBJECT

private slots:
    void snapshotsKeepTheirPixelsWhileThePictureChanges();
};

void TestSurveyHammer::snapshotsKeepTheirPixelsWhileThePictureChanges()
{
    const auto document = GuiFixture::MakeDocument(Size, QColor(0, 0, 0));
    std::atomic<int> wrong{0};
    for (int round = 1; round <= Rounds; ++round) {
        Fill(document.get(), 0xFF000000U | quint32(round) << 16);
        const PictureSurvey::Batch batch = Snapshot(document.get());
        std::vector<std::thread> workers;
        workers.reserve(Workers);
        for (int i = 0; i < Workers; ++i) {
            workers.emplace_back([&wrong, batch, round] {
                if (OnlyRed(LevelSurvey::Count(batch)) != round) ++wrong;
                for (const auto& [place, image] : NavigatorPicture::Reduce(batch, 3, nullptr)) {
                    if (qRed(image.pixel(image.width() - 1, 0)) != round) ++wrong;
                }
            });
        }
        // The next pixels are written and composed while the last ones are read.
        Fill(document.get(), 0xFFFFFFFFU);
        static_cast<void>(Snapshot(document.get()));
        for (std::thread& worker : workers)
            worker.join();
    }
    QCOMPARE(wrong.load(), 0);
}

ZK_REGISTER_TEST(tst_surveyhammer, TestSurveyHammer)
#include "tst_surveyhammer.moc"
