#include "FillContests.h"

#include "Contest.h"
#include "Pictures.h"

#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/LXImageConvoluteAlpha.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <functional>
#include <memory>

namespace {
const LXRGBA32i Tolerance(0x20202020);
const LXRGBA32i Black(0xFF000000);

/// Clouds so soft that most of them are similar, with discs that aren't.
QImage PaleNoise(int side)
{
    QImage picture = Pictures::SmoothNoise(side, true);
    for (int y = 0; y < side; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::transform(row, row + side, row,
                       [](QRgb color) { return 0xFF808080 + ((color >> 3) & 0x1F1F1F); });
    }
    return picture;
}

using MakePicture = std::function<QImage()>;

/// What a contest of fills works on, in both halves' own form.
struct Ground
{
    QImage picture;
    LXImage32 tiles;
    LXImage32 mask;
    cv::Mat matrix;
    cv::Mat similar;
    cv::Mat labels;
    QRect bounds;
    QPoint seed{1, 1};
};

std::shared_ptr<Ground> MakeGround(const QImage& picture)
{
    auto ground = std::make_shared<Ground>();
    ground->picture = picture;
    ConvertImage(picture, ground->tiles);
    ground->matrix = cv::Mat(picture.height(), picture.width(), CV_8UC4, ground->picture.bits(),
                             static_cast<std::size_t>(picture.bytesPerLine()));
    return ground;
}

void FindSimilar(Ground& ground)
{
    const QRgb seed = ground.picture.pixel(ground.seed);
    const auto bound = [&](int shift, int way) {
        const int value = static_cast<int>((seed >> shift) & 0xFF);
        return std::clamp(value + way * 0x20, 0, 255);
    };
    cv::inRange(ground.matrix, cv::Scalar(bound(0, -1), bound(8, -1), bound(16, -1), bound(24, -1)),
                cv::Scalar(bound(0, 1), bound(8, 1), bound(16, 1), bound(24, 1)), ground.similar);
}

void OtherFlood(Ground& ground)
{
    FindSimilar(ground);
    cv::Rect bounds;
    cv::floodFill(ground.similar, cv::Point(ground.seed.x(), ground.seed.y()), 128, &bounds, 0, 0, 4);
}

void OtherComponents(Ground& ground)
{
    FindSimilar(ground);
    cv::connectedComponents(ground.similar, ground.labels, 4, CV_32S);
}

Contest MakeContest(const QString& name, double goal, const Ground& ground)
{
    Contest contest;
    contest.name = name;
    contest.goal = goal;
    contest.pixels = qint64(ground.picture.width()) * ground.picture.height();
    contest.bytes = contest.pixels * 4;
    return contest;
}

/// Goes on from the seed until a region reaches over most of the picture: at random a seed may lie in a
/// closed cell.
void SeekWideRegion(Ground& ground)
{
    QRect bounds;
    for (; ground.seed.x() < ground.tiles.Width(); ground.seed.rx()++) {
        ground.mask = LXImage32(ground.tiles.Width(), ground.tiles.Height());
        LXFloodFillHelper::FloodFill(ground.tiles, ground.mask, ground.seed, Tolerance, Black, &bounds);
        if (ground.picture.pixel(ground.seed) == 0xFFFFFFFF && bounds.width() > ground.tiles.Width() / 2)
            return;
    }
}

/// How much of the picture the region is, in words.
QString RegionShare(Ground& ground)
{
    ground.mask = LXImage32(ground.tiles.Width(), ground.tiles.Height());
    LXFloodFillHelper::FloodFill(ground.tiles, ground.mask, ground.seed, Tolerance, Black, nullptr);
    QImage filled;
    ConvertImage(ground.mask, filled);
    qint64 count = 0;
    for (int y = 0; y < filled.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(filled.constScanLine(y));
        count += std::count(row, row + filled.width(), Black.value);
    }
    return QStringLiteral(" (%1 % filled)").arg(100 * count / (qint64(filled.width()) * filled.height()));
}

void RunFlood(const QString& name, double goal, const MakePicture& makePicture, const QPoint& seed,
              int threads, bool asComponents)
{
    if (!Contests::IsWanted(name)) return;
    const auto ground = MakeGround(makePicture());
    ground->seed = seed;
    if (name.contains(QLatin1String("percolation"))) SeekWideRegion(*ground);
    Contest contest = MakeContest(name + RegionShare(*ground), goal, *ground);
    contest.prepare = [ground] { ground->mask = LXImage32(ground->tiles.Width(), ground->tiles.Height()); };
    contest.ours = [ground] {
        LXFloodFillHelper::FloodFill(ground->tiles, ground->mask, ground->seed, Tolerance, Black,
                                     &ground->bounds);
    };
    contest.other = [ground, asComponents](int count) {
        cv::setNumThreads(count);
        asComponents ? OtherComponents(*ground) : OtherFlood(*ground);
    };
    Contests::Run(contest, threads);
}

void RunRange(const QString& name, double goal, const MakePicture& makePicture, int threads)
{
    if (!Contests::IsWanted(name)) return;
    const auto ground = MakeGround(makePicture());
    Contest contest = MakeContest(name, goal, *ground);
    contest.prepare = [ground] { ground->mask = LXImage32(ground->tiles.Width(), ground->tiles.Height()); };
    contest.ours = [ground] {
        LXFloodFillHelper::ColorRangeFill(ground->tiles, ground->mask, ground->seed, Tolerance, Black,
                                          &ground->bounds);
    };
    contest.other = [ground](int count) {
        cv::setNumThreads(count);
        FindSimilar(*ground);
        const cv::Rect bounds = cv::boundingRect(ground->similar);
        ground->bounds = QRect(bounds.x, bounds.y, bounds.width, bounds.height);
    };
    Contests::Run(contest, threads);
}

void RunConvolution(const QString& name, double goal, const MakePicture& makePicture, int threads)
{
    if (!Contests::IsWanted(name)) return;
    const auto ground = MakeGround(makePicture());
    constexpr double n = 60.0;
    const std::vector<double> kernel{1 / n, 1 / n, 1 / n, 1 / n,  1 / n, 1 / n, 4 / n, 4 / n, 4 / n,
                                     1 / n, 1 / n, 4 / n, 12 / n, 4 / n, 1 / n, 1 / n, 4 / n, 4 / n,
                                     4 / n, 1 / n, 1 / n, 1 / n,  1 / n, 1 / n, 1 / n};
    Contest contest = MakeContest(name, goal, *ground);
    contest.bytes *= 2;
    contest.prepare = [ground] {
        ground->mask = ground->tiles;
        for (LXTilePointer& tile : ground->mask.m_Tiles) {
            DetachTile(tile);
        }
    };
    contest.ours = [ground, kernel] { LXImageConvoluteAlpha(kernel.data(), QSize(5, 5))(ground->mask); };
    const cv::Mat weights = cv::Mat(kernel, true).reshape(1, 5);
    contest.other = [ground, weights](int count) {
        cv::setNumThreads(count);
        cv::Mat alpha;
        cv::extractChannel(ground->matrix, alpha, 3);
        cv::filter2D(alpha, ground->similar, -1, weights, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        cv::insertChannel(ground->similar, ground->matrix, 3);
    };
    Contests::Run(contest, threads);
}
} // namespace

void FillContests::Run(int side, int threads)
{
    const bool isAlone = threads == 1;
    const auto percolation = [side] { return Pictures::Percolation(side); };
    const auto maze = [side] { return Pictures::Maze(side); };
    const auto photo = [side] { return Pictures::Photo(side); };
    const double floodGoal = isAlone ? 2.5 : 4;
    RunFlood(
        QStringLiteral("flood fill, flat"), floodGoal, [side] { return Pictures::Flat(side); }, QPoint(1, 1),
        threads, false);
    RunFlood(
        QStringLiteral("flood fill, smooth noise"), floodGoal, [side] { return PaleNoise(side); },
        QPoint(1, 1), threads, false);
    RunFlood(QStringLiteral("flood fill, photo"), floodGoal, photo, QPoint(side / 2, side / 20), threads,
             false);
    const double narrowGoal = isAlone ? 1.3 : 1.0;
    RunFlood(QStringLiteral("flood fill, percolation"), narrowGoal, percolation, QPoint(1, 1), threads,
             !isAlone);
    RunFlood(QStringLiteral("flood fill, maze"), narrowGoal, maze, QPoint(1, 1), threads, !isAlone);
    const double rangeGoal = isAlone ? 1.5 : 2.5;
    RunRange(
        QStringLiteral("color range, smooth noise"), rangeGoal,
        [side] { return Pictures::SmoothNoise(side, true); }, threads);
    RunRange(QStringLiteral("color range, percolation"), rangeGoal, percolation, threads);
    RunRange(QStringLiteral("color range, photo"), rangeGoal, photo, threads);
    const double convolutionGoal = isAlone ? 3.5 : 6;
    RunConvolution(
        QStringLiteral("convolution 5 x 5 of alpha, smooth noise"), convolutionGoal,
        [side] { return Pictures::SmoothNoise(side, false); }, threads);
}
