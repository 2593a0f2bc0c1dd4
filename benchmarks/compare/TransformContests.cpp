#include "TransformContests.h"

#include "Contest.h"
#include "Pictures.h"

#include "image/BorderScan.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/LXTransform.h"

#include <QTransform>

#include <opencv2/imgproc.hpp>

#include <functional>
#include <memory>

namespace {
using Function = bool (*)(const LXImage32&, const QTransform&, LXImage32&, const QRect&);

struct Scene
{
    QImage picture;
    LXImage32 tiles;
    LXImage32 made;
    cv::Mat matrix;
    cv::Mat other;
    QImage scaled;
    QRect content;
};

using SceneMaker = std::function<std::shared_ptr<Scene>()>;

std::shared_ptr<Scene> MakeScene(const QImage& picture)
{
    auto scene = std::make_shared<Scene>();
    scene->picture = picture;
    ConvertImage(picture, scene->tiles);
    scene->matrix = cv::Mat(picture.height(), picture.width(), CV_8UC4, scene->picture.bits(),
                            static_cast<std::size_t>(picture.bytesPerLine()));
    return scene;
}

cv::Mat ToMatrix(const QTransform& t)
{
    return (cv::Mat_<double>(3, 3) << t.m11(), t.m21(), t.m31(), t.m12(), t.m22(), t.m32(), t.m13(), t.m23(),
            t.m33());
}

Contest MakeContest(const QString& name, double goal, const std::shared_ptr<Scene>& scene, QSize size)
{
    Contest contest;
    contest.name = name;
    contest.goal = goal;
    contest.pixels = qint64(size.width()) * size.height();
    contest.bytes = (contest.pixels + qint64(scene->picture.width()) * scene->picture.height()) * 4;
    scene->made = LXImage32(size.width(), size.height());
    return contest;
}

void RunWarp(const QString& name, double goal, const SceneMaker& makeScene, const QTransform& transform,
             Function function, int flags, int threads)
{
    if (!Contests::IsWanted(name)) return;
    const std::shared_ptr<Scene> scene = makeScene();
    const QSize size = scene->picture.size();
    Contest contest = MakeContest(name, goal, scene, size);
    contest.ours = [=] { function(scene->tiles, transform, scene->made, QRect()); };
    contest.other = [=](int count) {
        cv::setNumThreads(count);
        const cv::Mat matrix = ToMatrix(transform);
        const cv::Size whole(size.width(), size.height());
        if (transform.isAffine()) {
            cv::warpAffine(scene->matrix, scene->other, matrix.rowRange(0, 2), whole, flags);
        } else {
            cv::warpPerspective(scene->matrix, scene->other, matrix, whole, flags);
        }
    };
    Contests::Run(contest, threads);
}

void RunResize(const QString& name, double goal, const SceneMaker& makeScene, int side, Function function,
               int flags, int threads)
{
    if (!Contests::IsWanted(name)) return;
    const std::shared_ptr<Scene> scene = makeScene();
    const double scale = double(side) / scene->picture.width();
    Contest contest = MakeContest(name, goal, scene, QSize(side, side));
    contest.ours = [=] { function(scene->tiles, QTransform::fromScale(scale, scale), scene->made, QRect()); };
    contest.other = [=](int count) {
        cv::setNumThreads(count);
        if (flags < 0) {
            scene->scaled =
                scene->picture.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        } else {
            cv::resize(scene->matrix, scene->other, cv::Size(side, side), 0, 0, flags);
        }
    };
    Contests::Run(contest, threads);
}

void RunBorder(int side, int threads)
{
    const QString name = QStringLiteral("border finding");
    if (!Contests::IsWanted(name)) return;
    QImage picture = Pictures::Flat(side);
    const int border = side / 10;
    for (int y = border; y < side - border; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::fill(row + border, row + side - border, 0xFF102030);
    }
    const auto scene = MakeScene(picture);
    Contest contest = MakeContest(name, 4, scene, picture.size());
    contest.bytes /= 2;
    contest.ours = [=] {
        scene->content = BorderScan::WithoutColor(scene->tiles, 15, LXRGBA32i(0xFF6080A0));
    };
    contest.other = [=](int count) {
        cv::setNumThreads(count);
        cv::inRange(scene->matrix, cv::Scalar(0xA0 - 15, 0x80 - 15, 0x60 - 15, 0),
                    cv::Scalar(0xA0 + 15, 0x80 + 15, 0x60 + 15, 255), scene->other);
        cv::bitwise_not(scene->other, scene->other);
        const cv::Rect found = cv::boundingRect(scene->other);
        scene->content = QRect(found.x, found.y, found.width, found.height);
    };
    Contests::Run(contest, threads);
}
} // namespace

void TransformContests::Run(int side, int threads)
{
    RunBorder(side, threads);
    const SceneMaker scene = [side, made = std::shared_ptr<Scene>()]() mutable {
        if (!made) made = MakeScene(Pictures::SmoothNoise(side, false));
        return made;
    };
    const double middle = side / 2.0;
    const QTransform turn = QTransform::fromTranslate(-middle, -middle) * QTransform().rotate(17) *
                            QTransform::fromTranslate(middle, middle);
    const QTransform perspective(1, 0.05, 0.1 / side, 0.02, 1, 0.05 / side, 0, 0, 1);
    RunWarp(QStringLiteral("rotation, bilinear"), 1.3, scene, turn, TransformImage, cv::INTER_LINEAR,
            threads);
    RunWarp(QStringLiteral("perspective, bilinear"), 1.5, scene, perspective, TransformImage,
            cv::INTER_LINEAR, threads);
    RunWarp(QStringLiteral("rotation, bicubic"), 1.5, scene, turn, BicubicTransformImage, cv::INTER_CUBIC,
            threads);
    const int small = side * 3000 / 8192;
    RunResize(QStringLiteral("resize, nearest"), 0.9, scene, small, NearestNeighbourTransformImage,
              cv::INTER_NEAREST, threads);
    RunResize(QStringLiteral("resize, bilinear (area-correct) to OpenCV's area"), 0.9, scene, small,
              TransformImage, cv::INTER_AREA, threads);
    RunResize(QStringLiteral("resize, bicubic"), 1.5, scene, small, BicubicTransformImage, cv::INTER_CUBIC,
              threads);
    RunResize(QStringLiteral("resize, area, to QImage smooth"), 1.0, scene, small, TransformImage, -1,
              threads);
}
