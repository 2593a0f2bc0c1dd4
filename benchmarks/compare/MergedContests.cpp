#include "MergedContests.h"

#include "Contest.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/MergedPartReader.h"
#include "image/BlendMode.h"
#include "image/LXImage.h"

#include <QRect>

#include <iterator>
#include <memory>
#include <random>
#include <vector>

namespace {
constexpr int Side = 10000;
constexpr QRect Changed(4321, 5432, 1000, 1000);

struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

/// Noise of a few tiles in random order: 100 megapixels that neither are alike nor fill the memory.
LXImage32 Noise(unsigned int seed)
{
    constexpr int kinds = 13;
    std::mt19937 random(seed);
    std::vector<LXTilePointer> tiles;
    for (int kind = 0; kind < kinds; ++kind) {
        LXTilePointer tile(new LXTile);
        const LXTileWriter<LXRGBA32i> writer(tile);
        for (int i = 0; i < 128 * 128; ++i) {
            writer.Pixels()[i] = LXRGBA32i(static_cast<quint32>(random()));
        }
        tiles.push_back(tile);
    }
    LXImage32 image(Side, Side);
    for (LXTilePointer& tile : image.m_Tiles) {
        tile = tiles[random() % kinds];
    }
    return image;
}

std::shared_ptr<LXDocumentInterface> MakeDocument()
{
    std::shared_ptr<LXDocumentInterface> document(
        LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32), Release());
    document->SetDocumentSize(QSize(Side, Side));
    const unsigned int modes[] = {BlendMode::Normal, BlendMode::Multiply, BlendMode::Screen,
                                  BlendMode::Overlay, BlendMode::SoftLight};
    for (unsigned int i = 0; i < std::size(modes); ++i) {
        const unsigned int id = document->AddLayer(QString::number(i), Noise(i), QPoint(0, 0));
        document->GetModel()->SetBlendMode(0, modes[i]);
        if (i == 0) continue;
        document->AddMask(id, true);
        document->SetMaskImage(id, Noise(100 + i), QPoint(0, 0));
    }
    return document;
}

void Recompose(const std::shared_ptr<LXDocumentInterface>& document, const QRect& changed)
{
    document->UpdateDocumentRect(changed);
    const MergedPartReader reader(document.get(), QRect(0, 0, Side, Side));
}
} // namespace

void MergedContests::Run(int threads)
{
    Contest contest;
    contest.name =
        QStringLiteral("merged picture of 100 Mpixel, 5 layers, 1000 x 1000 changed, to all of it");
    if (!Contests::IsWanted(contest.name)) return;
    const std::shared_ptr<LXDocumentInterface> document = MakeDocument();
    contest.goal = 50;
    contest.pixels = qint64(Changed.width()) * Changed.height();
    contest.bytes = contest.pixels * 4 * 10; // five layers and four masks are read, one picture is written
    contest.ours = [document] { Recompose(document, Changed); };
    contest.other = [document](int) { Recompose(document, QRect(0, 0, Side, Side)); };
    Recompose(document, QRect(0, 0, Side, Side));
    Contests::Run(contest, threads);
}
