#include "BlendContests.h"

#include "Contest.h"
#include "Pictures.h"

#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"

#include <QPainter>

#include <functional>
#include <memory>

namespace {
struct Stack
{
    QImage source;
    QImage ground;
    QImage painted;
    LXImage32 sourceTiles;
    LXImage32 groundTiles;
    LXImage32 blended;
};

void DetachAll(LXImage32& image)
{
    for (LXTilePointer& tile : image.m_Tiles) {
        DetachTile(tile);
    }
}

std::shared_ptr<Stack> MakeStack(int side, bool isGroundOpaque)
{
    auto stack = std::make_shared<Stack>();
    stack->source = Pictures::SmoothNoise(side, false).mirrored();
    stack->ground = Pictures::SmoothNoise(side, isGroundOpaque);
    ConvertImage(stack->source, stack->sourceTiles);
    ConvertImage(stack->ground, stack->groundTiles);
    stack->blended = stack->groundTiles;
    DetachAll(stack->blended);
    stack->painted = stack->ground.copy();
    return stack;
}

void RunBlend(const QString& name, double goal, const std::function<std::shared_ptr<Stack>()>& makeStack,
              unsigned int mode, double opacity, int threads)
{
    if (!Contests::IsWanted(name)) return;
    const std::shared_ptr<Stack> stack = makeStack();
    Contest contest;
    contest.name = name;
    contest.goal = goal;
    contest.pixels = qint64(stack->source.width()) * stack->source.height();
    contest.bytes = contest.pixels * 12;
    contest.ours = [stack, mode, opacity] {
        BlendOn(stack->sourceTiles, stack->sourceTiles.Rect(), mode, stack->blended, stack->blended.Rect(),
                opacity, false);
    };
    contest.other = [stack, mode, opacity](int count) {
        uchar* const bits = stack->painted.bits();
        Contests::InBands(count, stack->painted.height(), [&](int top, int bottom) {
            QImage band(bits + qsizetype(top) * stack->painted.bytesPerLine(), stack->painted.width(),
                        bottom - top, QImage::Format_ARGB32);
            QPainter painter(&band);
            painter.setCompositionMode(static_cast<QPainter::CompositionMode>(mode));
            painter.setOpacity(opacity);
            painter.drawImage(0, -top, stack->source);
        });
    };
    Contests::Run(contest, threads);
}
} // namespace

void BlendContests::Run(int side, int threads)
{
    for (const bool isOpaque : {true, false}) {
        const std::function<std::shared_ptr<Stack>()> stack = [side, isOpaque,
                                                               made = std::shared_ptr<Stack>()]() mutable {
            if (!made) made = MakeStack(side, isOpaque);
            return made;
        };
        const QString ground = isOpaque ? QStringLiteral(" on opaque") : QStringLiteral(" on translucent");
        RunBlend(QStringLiteral("source-over 0.7") + ground, 1.2, stack, BlendMode::Normal, 0.7, threads);
        RunBlend(QStringLiteral("multiply") + ground, 2.5, stack, BlendMode::Multiply, 1.0, threads);
        RunBlend(QStringLiteral("screen") + ground, 2.5, stack, BlendMode::Screen, 1.0, threads);
        RunBlend(QStringLiteral("overlay") + ground, 2.5, stack, BlendMode::Overlay, 1.0, threads);
        RunBlend(QStringLiteral("darken") + ground, 2.5, stack, BlendMode::Darken, 1.0, threads);
        RunBlend(QStringLiteral("color dodge") + ground, 2.5, stack, BlendMode::ColorDodge, 1.0, threads);
        RunBlend(QStringLiteral("color burn") + ground, 2.5, stack, BlendMode::ColorBurn, 1.0, threads);
        RunBlend(QStringLiteral("hard light") + ground, 2.5, stack, BlendMode::HardLight, 1.0, threads);
        RunBlend(QStringLiteral("difference") + ground, 2.5, stack, BlendMode::Difference, 1.0, threads);
        RunBlend(QStringLiteral("exclusion") + ground, 2.5, stack, BlendMode::Exclusion, 1.0, threads);
        RunBlend(QStringLiteral("addition") + ground, 2.5, stack, BlendMode::Addition, 1.0, threads);
        RunBlend(QStringLiteral("soft light") + ground, 5, stack, BlendMode::SoftLight, 1.0, threads);
    }
}
