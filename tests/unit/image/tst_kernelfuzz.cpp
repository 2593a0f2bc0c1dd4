#include "image/LXBlend.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/LXImageConvoluteAlpha.h"
#include "image/LXTransform.h"
#include "image/SimilarKernels.h"
#include "support/BlendTwin.h"
#include "support/ConvolveTwin.h"
#include "support/FillTwin.h"
#include "support/GradientTwin.h"
#include "support/PathTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "support/TransformTwin.h"

#include <QBrush>
#include <QConicalGradient>
#include <QElapsedTimer>
#include <QImage>
#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <QTest>
#include <QTransform>

#include <hwy/cache_control.h>
#include <hwy/targets.h>

#include <array>
#include <cmath>
#include <random>

namespace {
const std::vector<unsigned int> AllModes{0,  3,  5,  6,  8,  12, 13, 14, 15, 16,
                                         17, 18, 19, 20, 21, 22, 23, 64, 91, 92};

/// How long each instruction set is tried: a moment, or as long as the environment asks.
qint64 MillisecondsASet()
{
    constexpr qint64 moment = 400;
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("ZK_FUZZ_SECONDS", &isNumber);
    return isNumber ? qint64(1000) * seconds : moment;
}
} // namespace

/// Random work for the kernels beside their slow twins, with every instruction set of the machine in turn.
/// ZK_FUZZ_SECONDS=150 tries each for so long instead of a moment; QTEST_FUNCTION_TIMEOUT, in milliseconds,
/// must then leave time for all of them.
class TestKernelFuzz : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { UseOnly(0); }

    void everyInstructionSetAgreesWithTheTwins_data();
    void everyInstructionSetAgreesWithTheTwins();

private:
    /// 0: whatever the machine has.
    static void UseOnly(qint64 target)
    {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().DeInit();
    }

    int Below(int end) { return static_cast<int>(m_Random() % static_cast<unsigned>(end)); }

    QSize RandomSize() { return QSize(1 + Below(300), 1 + Below(300)); }

    /// Over several tiles.
    QSize LargeSize() { return QSize(200 + Below(101), 200 + Below(101)); }

    /// Small enough for the slow twins, but over several tiles on one axis.
    QSize RandomStrip()
    {
        const QSize strip(100 + Below(200), 1 + Below(20));
        return Below(2) == 0 ? strip : strip.transposed();
    }

    QRect RandomRect() { return QRect(Below(200) - 40, Below(200) - 40, 1 + Below(280), 1 + Below(280)); }

    PlainImage RandomPicture(const QSize& size);
    QString TryBlend();
    QString TryFill();
    QString TryConvolution();
    QString TryTransform();
    QString TryNearest();
    QString TryScaledPart();
    QString TryPath();
    QString TryRow();
    QString TryGradient();

    QBrush RandomGradient();

    std::mt19937 m_Random;
};

void TestKernelFuzz::everyInstructionSetAgreesWithTheTwins_data()
{
    QTest::addColumn<qint64>("target");
    for (const int64_t target : hwy::SupportedAndGeneratedTargets()) {
        QTest::addRow("%s", hwy::TargetName(target)) << qint64(target);
    }
}

void TestKernelFuzz::everyInstructionSetAgreesWithTheTwins()
{
    QFETCH(qint64, target);
    UseOnly(target);
    const auto firstSeed = static_cast<unsigned>(qEnvironmentVariableIntValue("ZK_FUZZ_SEED"));
    QElapsedTimer timer;
    timer.start();
    for (unsigned int seed = firstSeed; seed < firstSeed + 3 || timer.elapsed() < MillisecondsASet();
         ++seed) {
        m_Random.seed(seed);
        for (QString (TestKernelFuzz::*attempt)() :
             {&TestKernelFuzz::TryBlend, &TestKernelFuzz::TryFill, &TestKernelFuzz::TryConvolution,
              &TestKernelFuzz::TryTransform, &TestKernelFuzz::TryNearest, &TestKernelFuzz::TryScaledPart,
              &TestKernelFuzz::TryPath, &TestKernelFuzz::TryGradient, &TestKernelFuzz::TryRow}) {
            const QString difference = (this->*attempt)();
            QVERIFY2(difference.isEmpty(),
                     qPrintable(QStringLiteral("seed %1, %2").arg(seed).arg(difference)));
        }
    }
}

/// All random, or some colors only so that regions form, or opaque.
PlainImage TestKernelFuzz::RandomPicture(const QSize& size)
{
    PlainImage picture = TestImages::Random(size.width(), size.height(), m_Random);
    const int kind = Below(4);
    for (LXRGBA32i& pixel : picture.pixels) {
        if (kind == 1) pixel.bytes[3] = 255;
        if (kind == 2) pixel.value = m_Random() % 3 == 0 ? 0xFF808080 : 0xFF101010;
        if (kind == 3 && m_Random() % 4 != 0) pixel.value = 0;
    }
    return picture;
}

QString TestKernelFuzz::TryBlend()
{
    const unsigned int mode = AllModes[static_cast<std::size_t>(Below(static_cast<int>(AllModes.size())))];
    const double opacity = Below(3) == 0 ? 1.0 : Below(1001) / 1000.0;
    const bool keepAlpha = Below(2) == 0;
    const bool isMasked = Below(2) == 0;
    const PlainImage source = RandomPicture(RandomSize());
    const PlainImage mask = RandomPicture(RandomSize());
    PlainImage expected = RandomPicture(RandomSize());
    LXImage32 actual = TestImages::ToTiles(expected);
    const QRect from = RandomRect();
    const QRect to = RandomRect();
    const QRect through = RandomRect();
    if (isMasked) {
        BlendMaskOn(TestImages::ToTiles(source), from, mode, actual, to, opacity, TestImages::ToTiles(mask),
                    through, keepAlpha, false);
        BlendTwin::Blend(source, from, mode, expected, to, opacity, keepAlpha, {&mask, through});
    } else {
        BlendOn(TestImages::ToTiles(source), from, mode, actual, to, opacity, keepAlpha);
        BlendTwin::Blend(source, from, mode, expected, to, opacity, keepAlpha);
    }
    const QString difference = TestImages::Difference(TestImages::ToPlain(actual), expected);
    return difference.isEmpty()
               ? difference
               : QStringLiteral("mode %1, opacity %2: %3").arg(mode).arg(opacity).arg(difference);
}

QString TestKernelFuzz::TryFill()
{
    const PlainImage source = RandomPicture(RandomSize());
    const bool isBlank = Below(2) == 0;
    const QSize size = RandomSize();
    PlainImage expected = isBlank ? PlainImage(size.width(), size.height()) : RandomPicture(size);
    const QPoint seed(Below(std::min(source.width, expected.width)),
                      Below(std::min(source.height, expected.height)));
    const LXRGBA32i tolerance(Below(2) == 0 ? 0U : static_cast<quint32>(m_Random()));
    const LXRGBA32i fill(static_cast<quint32>(m_Random()));
    const bool isRange = Below(2) == 0;
    LXImage32 actual = isBlank ? LXImage32(size.width(), size.height()) : TestImages::ToTiles(expected);
    QRect actualBounds;
    QRect bounds;
    if (isRange) {
        LXFloodFillHelper::ColorRangeFill(TestImages::ToTiles(source), actual, seed, tolerance, fill,
                                          &actualBounds);
        bounds = FillTwin::ColorRangeFill(source, expected, seed, tolerance, fill);
    } else {
        LXFloodFillHelper::FloodFill(TestImages::ToTiles(source), actual, seed, tolerance, fill,
                                     &actualBounds);
        bounds = FillTwin::FloodFill(source, expected, seed, tolerance, fill);
    }
    if (actualBounds != bounds) return QStringLiteral("the bounds of a fill differ");
    return TestImages::Difference(TestImages::ToPlain(actual), expected);
}

QString TestKernelFuzz::TryConvolution()
{
    const std::vector<double> soft{1, 1, 1, 1, 1, 1, 4, 4, 4, 1, 1, 4, 12,
                                   4, 1, 1, 4, 4, 4, 1, 1, 1, 1, 1, 1};
    std::vector<double> kernel;
    QSize size(5, 5);
    const int kind = Below(3);
    if (kind == 0) {
        for (const double weight : soft) {
            kernel.push_back(weight / 60.0);
        }
    } else if (kind == 1) {
        const int side = 1 + 2 * Below(4);
        const int weights = side * side;
        size = QSize(side, side);
        kernel.assign(static_cast<std::size_t>(weights), 1.0 / weights);
    } else {
        size = QSize(1 + Below(4), 1 + Below(4));
        for (int i = 0; i < size.width() * size.height(); ++i) {
            kernel.push_back((Below(200) - 60) / 301.0);
        }
    }
    const PlainImage picture = RandomPicture(RandomSize());
    LXImage32 actual = TestImages::ToTiles(picture);
    LXImageConvoluteAlpha(kernel.data(), size)(actual);
    return TestImages::Difference(TestImages::ToPlain(actual),
                                  ConvolveTwin::ConvolveAlpha(picture, kernel, size));
}

/// Turned, sheared, scaled and in perspective; colors may differ by a level, because kernels mix in float.
QString TestKernelFuzz::TryTransform()
{
    const PlainImage source = RandomPicture(Below(2) == 0 ? RandomSize() : LargeSize());
    const QSize size = Below(2) == 0 ? RandomSize() : LargeSize();
    const QPoint corner(Below(size.width() / 2 + 1), Below(size.height() / 2 + 1));
    const QRect clip = QRect(corner, RandomStrip()) & QRect(QPoint(0, 0), size);
    const bool isTurned = Below(4) != 0;
    const double angle = isTurned ? Below(3600) / 10.0 : 0;
    // What is shrunk takes several of the source's tiles.
    const double scale = 0.4 + Below(Below(2) == 0 ? 60 : 300) / 100.0;
    const bool isPerspective = Below(3) == 0;
    // Some pixel of the source comes into the part that is made.
    const QPointF to(clip.left() + Below(3 * clip.width()) / 3.0, clip.top() + Below(clip.height()));
    const QTransform tilt(1, 0, isPerspective ? (Below(100) - 30) / 20000.0 : 0, 0, 1,
                          isPerspective ? (Below(100) - 30) / 20000.0 : 0, 0, 0, 1);
    const QTransform transform = QTransform::fromTranslate(-Below(source.width), -Below(source.height)) *
                                 QTransform::fromScale(scale, scale * (1 + Below(3) * 0.3)) *
                                 QTransform().rotate(angle) * tilt *
                                 QTransform::fromTranslate(to.x(), to.y());
    const bool isCubic = Below(2) == 0;
    const auto method = isCubic ? TransformTwin::Method::Cubic : TransformTwin::Method::Linear;
    LXImage32 target(size.width(), size.height());
    const bool isMade = isCubic ? BicubicTransformImage(TestImages::ToTiles(source), transform, target, clip)
                                : TransformImage(TestImages::ToTiles(source), transform, target, clip);
    if (!isMade) return QStringLiteral("a transform was refused");
    const PlainImage expected = TransformTwin::Part(source, transform, clip, method);
    const PlainImage actual = TestImages::ToPlain(CopyPart(target, clip));
    const int difference = TransformTwin::LargestDifference(actual, expected);
    if (difference <= 1) return QString();
    return QStringLiteral(
               "a %1 transform of %2 x %3 to %4 x %5 by (%6 %7, %8 %9, %10 %11; %12 %13) differs by "
               "%14 levels")
               .arg(isCubic ? QStringLiteral("cubic") : QStringLiteral("linear"))
               .arg(source.width)
               .arg(source.height)
               .arg(size.width())
               .arg(size.height())
               .arg(transform.m11())
               .arg(transform.m12())
               .arg(transform.m21())
               .arg(transform.m22())
               .arg(transform.dx())
               .arg(transform.dy())
               .arg(transform.m13())
               .arg(transform.m23())
               .arg(difference) +
           TestImages::Difference(actual, expected);
}

/// Scaled, mirrored and turned, by numbers whose middles never fall between two source pixels.
QString TestKernelFuzz::TryNearest()
{
    const PlainImage source = RandomPicture(RandomSize());
    const QSize size(1 + Below(300), 1 + Below(300));
    const double scale = (0.1 + Below(300) / 100.0) * 1.00137;
    const double angle = Below(2) == 0 ? 0 : Below(3600) / 10.0;
    const QTransform transform =
        QTransform::fromScale(Below(4) == 0 ? -scale : scale, scale * (1 + Below(3) * 0.3)) *
        QTransform().rotate(angle) *
        QTransform::fromTranslate(Below(200) - 60.0 + 0.03141, Below(200) - 60.0 + 0.02718);
    LXImage32 target(size.width(), size.height());
    if (!NearestNeighbourTransformImage(TestImages::ToTiles(source), transform, target, QRect()))
        return QStringLiteral("a nearest transform was refused");
    const QString difference = TestImages::Difference(
        TestImages::ToPlain(target),
        TransformTwin::Transformed(source, transform, size, TransformTwin::Method::Nearest));
    return difference.isEmpty()
               ? difference
               : QStringLiteral("nearest at %1, %2 degrees: %3").arg(scale).arg(angle).arg(difference);
}

/// A part that lies inside the source, in both formats.
QString TestKernelFuzz::TryScaledPart()
{
    const PlainImage source = RandomPicture(Below(2) == 0 ? RandomSize() : LargeSize());
    const QPointF origin(Below(source.width * 10) / 10.0, Below(source.height * 10) / 10.0);
    const double scale = 0.1 + Below(300) / 100.0;
    const QSize size =
        RandomStrip().boundedTo(QSize(static_cast<int>(std::floor((source.width - origin.x()) * scale)),
                                      static_cast<int>(std::floor((source.height - origin.y()) * scale))));
    if (size.isEmpty()) return QString();

    const LXImage32 tiles = TestImages::ToTiles(source);
    QImage straight(size, QImage::Format_ARGB32);
    QImage premultiplied(size, QImage::Format_ARGB32_Premultiplied);
    if (!ScaleImage(tiles, origin, scale, straight) || !ScaleImage(tiles, origin, scale, premultiplied))
        return QStringLiteral("a part was refused");

    const QTransform transform =
        QTransform::fromTranslate(-origin.x(), -origin.y()) * QTransform::fromScale(scale, scale);
    const PlainImage expected =
        TransformTwin::Transformed(source, transform, size, TransformTwin::Method::Linear);
    PlainImage actual(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            actual.At(x, y) = LXRGBA32i(reinterpret_cast<const QRgb*>(straight.constScanLine(y))[x]);
            const LXRGBA32i product(reinterpret_cast<const QRgb*>(premultiplied.constScanLine(y))[x]);
            const LXRGBA32i color = expected.At(x, y);
            for (int channel = 0; channel < 3; ++channel) {
                // Color and alpha of the twin are rounded, by a half each, and so is the product.
                const double exact = color.bytes[channel] * color.Alpha() / 255.0;
                if (std::abs(product.bytes[channel] - exact) > 1.51)
                    return QStringLiteral("a premultiplied part is wrong at %1, %2").arg(x).arg(y);
            }
        }
    }
    const int difference = TransformTwin::LargestDifference(actual, expected);
    if (difference <= 1) return QString();
    return QStringLiteral("a part from %1, %2 at %3 differs by %4 levels")
        .arg(origin.x())
        .arg(origin.y())
        .arg(scale)
        .arg(difference);
}

/// Corners and curves; where the path's coverage is sure, the pixels must be exactly the twin's.
QString TestKernelFuzz::TryPath()
{
    const unsigned int mode = AllModes[static_cast<std::size_t>(Below(static_cast<int>(AllModes.size())))];
    const bool isAntialiased = mode == BlendMode::Source || mode == BlendMode::SourceIn;
    const PlainImage before = RandomPicture(QSize(1 + Below(150), 1 + Below(150)));
    const auto point = [this] {
        return QPointF(Below(20000) / 100.0 - 25.005, Below(20000) / 100.0 - 25.005);
    };
    QPainterPath path(point());
    for (int i = Below(9) + 1; i >= 0; --i) {
        // Curves end up between two middles that the twin's chords can't tell apart.
        if (isAntialiased && Below(4) == 0) {
            path.cubicTo(point(), point(), point());
        } else {
            path.lineTo(point());
        }
        if (Below(6) == 0) path.moveTo(point());
    }
    path.setFillRule(Below(2) == 0 ? Qt::OddEvenFill : Qt::WindingFill);
    const LXRGBA32i color(static_cast<quint32>(m_Random()) | (Below(2) == 0 ? 0xFF000000U : 0U));
    LXImage32 tiles = TestImages::ToTiles(before);
    FillPath(tiles, static_cast<int>(mode), path, QBrush(QColor::fromRgba(color.value)));

    const PlainImage actual = TestImages::ToPlain(tiles);
    const std::vector<double> coverage = PathTwin::Coverage(path, QSize(before.width, before.height));
    for (int y = 0; y < before.height; ++y) {
        for (int x = 0; x < before.width; ++x) {
            const double covered = coverage[before.Index(x, y)];
            const bool isOut = covered < 0.0001;
            if (!isOut && covered < 0.9999) continue;
            const LXRGBA32i target = before.At(x, y);
            const LXRGBA32i expected =
                isOut ? target : BlendTwin::BlendPixel(mode, target, color, 1.0, 255, false);
            if (actual.At(x, y) == expected) continue;
            return QStringLiteral("a path in mode %1 differs at %2, %3").arg(mode).arg(x).arg(y);
        }
    }
    return QString();
}

QBrush TestKernelFuzz::RandomGradient()
{
    const auto point = [this] { return QPointF(Below(3000) / 10.0, Below(3000) / 10.0); };
    const auto finish = [this](auto gradient) {
        for (int i = 2 + Below(4); i > 0; --i) {
            gradient.setColorAt(Below(101) / 100.0, QColor::fromRgba(static_cast<QRgb>(m_Random())));
        }
        gradient.setSpread(static_cast<QGradient::Spread>(Below(3)));
        if (Below(2) == 0) gradient.setInterpolationMode(QGradient::ComponentInterpolation);
        QBrush brush(gradient);
        if (Below(3) == 0) {
            brush.setTransform(
                QTransform().translate(Below(50), Below(50)).rotate(Below(360)).scale(0.6, 1.7));
        }
        return brush;
    };
    switch (Below(3)) {
    case 0: return finish(QLinearGradient(point(), point()));
    case 1: return finish(QRadialGradient(point(), 1 + Below(3000) / 10.0));
    default: return finish(QConicalGradient(point(), Below(360)));
    }
}

QString TestKernelFuzz::TryGradient()
{
    const QBrush brush = RandomGradient();
    const QSize size(1 + Below(200), 1 + Below(200));
    LXImage32 tiles(size.width(), size.height());
    QPainterPath path;
    path.addRect(QRectF(QPointF(0, 0), size));
    FillPath(tiles, static_cast<int>(BlendMode::Source), path, brush);
    const PlainImage actual = TestImages::ToPlain(tiles);
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            if (GradientTwin::Allows(brush, x, y, actual.At(x, y))) continue;
            return QStringLiteral("a gradient of kind %1 and spread %2 is wrong at %3, %4: %5")
                .arg(brush.gradient()->type())
                .arg(brush.gradient()->spread())
                .arg(x)
                .arg(y)
                .arg(actual.At(x, y).value, 0, 16);
        }
    }
    return QString();
}

/// A row of a tile painted, made, and made past the caches.
QString TestKernelFuzz::TryRow()
{
    constexpr std::size_t side = TileWalk::TileSide;
    const LXRGBA32i before(static_cast<quint32>(m_Random()));
    const LXRGBA32i fill(static_cast<quint32>(m_Random()));
    RowBits row = 0;
    alignas(side * sizeof(LXRGBA32i)) std::array<LXRGBA32i, side> painted;
    alignas(side * sizeof(LXRGBA32i)) std::array<LXRGBA32i, side> made;
    alignas(side * sizeof(LXRGBA32i)) std::array<LXRGBA32i, side> streamed;
    for (int x = 0; x < TileWalk::TileSide; ++x) {
        if (Below(2) == 0) row |= TileBitsMath::Bit(x);
    }
    for (auto* const pixels : {&painted, &made, &streamed}) {
        pixels->fill(before);
    }
    SimilarKernels::PaintRow(row, fill, painted.data());
    SimilarKernels::MakeRow(row, fill, made.data());
    SimilarKernels::StreamRow(row, fill, streamed.data());
    hwy::FlushStream();
    for (std::size_t x = 0; x < side; ++x) {
        const bool isSet = (row & TileBitsMath::Bit(static_cast<int>(x))) != 0;
        if (painted[x] != (isSet ? fill : before))
            return QStringLiteral("a painted row is wrong at %1").arg(x);
        if (made[x] != (isSet ? fill : LXRGBA32i())) return QStringLiteral("a row is wrong at %1").arg(x);
        if (streamed[x] != made[x]) return QStringLiteral("a streamed row is wrong at %1").arg(x);
    }
    return QString();
}

ZK_REGISTER_TEST(tst_kernelfuzz, TestKernelFuzz)
#include "tst_kernelfuzz.moc"
