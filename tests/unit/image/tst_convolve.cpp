#include "image/LXImage.h"
#include "image/LXImageConvoluteAlpha.h"
#include "support/ConvolveTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <random>

namespace {
/// The smoothing that the fill can uses.
std::vector<double> SmoothingKernel()
{
    std::vector<double> kernel{1, 1, 1,  1, 1, //
                               1, 4, 4,  4, 1, //
                               1, 4, 12, 4, 1, //
                               1, 4, 4,  4, 1, //
                               1, 1, 1,  1, 1};
    for (double& weight : kernel) {
        weight /= 60.0;
    }
    return kernel;
}

/// Falls from ring to ring, from the middle's 10 on, and adds up to 1.
std::vector<double> RingKernel(int reach)
{
    const double rings[] = {10, 4, 2, 1};
    std::vector<double> kernel;
    double sum = 0;
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            kernel.push_back(rings[std::max(std::abs(x), std::abs(y))]);
            sum += kernel.back();
        }
    }
    for (double& weight : kernel) {
        weight /= sum;
    }
    return kernel;
}
} // namespace

class TestConvolve : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithTheTwin_data();
    void agreesWithTheTwin();
    void colorStays();
    void firstWeightLooksLeftAndUp();
    void outsideCountsAsTheNearestPixel();
    void sumsAreRoundedAndKeptInRange();
    void halvesGoUpInEveryDirection();
    void uniformImagesStayShared();
    void copiesStay();
    void emptyKernelsAndImagesDoNothing();
};

void TestConvolve::agreesWithTheTwin_data()
{
    QTest::addColumn<QSize>("imageSize");
    QTest::addColumn<QSize>("kernelSize");
    const QSize images[] = {{1, 1}, {127, 127}, {128, 128}, {129, 129}, {130, 130}, {257, 386}, {300, 270}};
    const QSize kernels[] = {{5, 5}, {1, 3}, {4, 2}, {3, 3}, {7, 7}};
    for (const QSize& image : images) {
        for (const QSize& kernel : kernels) {
            QTest::addRow("%d x %d by %d x %d", image.width(), image.height(), kernel.width(),
                          kernel.height())
                << image << kernel;
        }
    }
}

void TestConvolve::agreesWithTheTwin()
{
    QFETCH(QSize, imageSize);
    QFETCH(QSize, kernelSize);
    std::mt19937 random(11);
    std::vector<double> kernel = SmoothingKernel();
    if (kernelSize.width() == kernelSize.height() && kernelSize != QSize(5, 5)) {
        kernel = RingKernel(kernelSize.width() / 2);
    } else if (kernelSize != QSize(5, 5)) {
        const int weights = kernelSize.width() * kernelSize.height();
        kernel.resize(static_cast<std::size_t>(weights));
        for (double& weight : kernel) {
            weight = (static_cast<double>(random() % 1000) - 300) / 1000;
        }
    }
    const PlainImage plain = TestImages::Random(imageSize.width(), imageSize.height(), random);
    LXImage32 image = TestImages::ToTiles(plain);
    LXImageConvoluteAlpha(kernel.data(), kernelSize)(image);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image),
                                    ConvolveTwin::ConvolveAlpha(plain, kernel, kernelSize)),
             QString());
}

void TestConvolve::colorStays()
{
    LXImage32 image(3, 3);
    image.Fill(LXRGBA32i(0x00112233));
    image.SetColor(1, 1, LXRGBA32i(0xFF445566));
    LXImageConvoluteAlpha(SmoothingKernel().data(), QSize(5, 5))(image);
    QCOMPARE(image.GetColor(0, 0).value & 0x00FFFFFFu, 0x00112233u);
    // 255 x 12 / 60 = 51, 255 x 4 / 60 = 17
    QCOMPARE(image.GetColor(1, 1).value, 0x33445566u);
    QCOMPARE(image.GetColor(0, 1).Alpha(), 17);
}

void TestConvolve::firstWeightLooksLeftAndUp()
{
    const std::vector<double> kernel{1, 0, 0, 0, 0, 0, 0, 0, 0};
    LXImage32 image(5, 5);
    image.SetColor(2, 2, LXRGBA32i(0xC8000000));
    LXImageConvoluteAlpha(kernel.data(), QSize(3, 3))(image);
    QCOMPARE(image.GetColor(3, 3).Alpha(), 200);
    QCOMPARE(image.GetColor(2, 2).Alpha(), 0);
}

void TestConvolve::outsideCountsAsTheNearestPixel()
{
    const std::vector<double> average(9, 1.0 / 9);
    LXImage32 image(2, 2);
    image.SetColor(0, 0, LXRGBA32i(0x5A000000));
    LXImageConvoluteAlpha(average.data(), QSize(3, 3))(image);
    // The corner meets itself four times, its neighbour twice, the opposite corner once.
    QCOMPARE(image.GetColor(0, 0).Alpha(), 40);
    QCOMPARE(image.GetColor(1, 0).Alpha(), 20);
    QCOMPARE(image.GetColor(1, 1).Alpha(), 10);
}

/// Two whole pixels in the outer ring, which weighs a sixtieth each: 2 x 255 / 60 = 8.5.
void TestConvolve::halvesGoUpInEveryDirection()
{
    const std::vector<double> weights{1, 1, 1, 1, 1, 1, 4, 4, 4, 1, 1, 4, 12,
                                      4, 1, 1, 4, 4, 4, 1, 1, 1, 1, 1, 1};
    std::vector<double> kernel;
    kernel.reserve(weights.size());
    for (const double weight : weights) {
        kernel.push_back(weight / 60.0);
    }
    const QPoint ring[] = {{2, 2}, {6, 2}, {2, 6}, {6, 6}, {4, 2}, {4, 6}, {2, 4}, {6, 4}, {3, 2}, {6, 5}};
    for (const QPoint& first : ring) {
        for (const QPoint& second : ring) {
            if (first == second) continue;
            LXImage32 image(9, 9);
            image.SetColor(first.x(), first.y(), LXRGBA32i(0xFF000000));
            image.SetColor(second.x(), second.y(), LXRGBA32i(0xFF000000));
            LXImageConvoluteAlpha(kernel.data(), QSize(5, 5))(image);
            QCOMPARE(image.GetColor(4, 4).Alpha(), 9);
        }
    }
}

void TestConvolve::sumsAreRoundedAndKeptInRange()
{
    const auto convolved = [](double weight, quint32 alpha) {
        LXImage32 image(1, 1);
        image.SetColor(0, 0, LXRGBA32i(alpha << 24));
        LXImageConvoluteAlpha(&weight, QSize(1, 1))(image);
        return image.GetColor(0, 0).Alpha();
    };
    QCOMPARE(convolved(0.5, 3), 2);
    QCOMPARE(convolved(0.25, 5), 1);
    QCOMPARE(convolved(3.0, 200), 255);
    QCOMPARE(convolved(-1.0, 200), 0);
}

void TestConvolve::uniformImagesStayShared()
{
    LXImage32 image(384, 256);
    image.Fill(LXRGBA32i(0xFF000000));
    const LXImage32 before = image;
    LXImageConvoluteAlpha(SmoothingKernel().data(), QSize(5, 5))(image);
    QVERIFY(image.m_Tiles == before.m_Tiles);
}

void TestConvolve::copiesStay()
{
    std::mt19937 random(12);
    LXImage32 image = TestImages::ToTiles(TestImages::Random(130, 130, random));
    const LXImage32 copy = image;
    const PlainImage before = TestImages::ToPlain(copy);
    LXImageConvoluteAlpha(SmoothingKernel().data(), QSize(5, 5))(image);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(copy), before), QString());
}

void TestConvolve::emptyKernelsAndImagesDoNothing()
{
    LXImage32 null;
    LXImageConvoluteAlpha(SmoothingKernel().data(), QSize(5, 5))(null);
    QVERIFY(null.IsNull());
    LXImage32 image(3, 3);
    image.Fill(LXRGBA32i(0x80000000));
    LXImageConvoluteAlpha(nullptr, QSize())(image);
    QCOMPARE(image.GetColor(1, 1).Alpha(), 128);
}

ZK_REGISTER_TEST(tst_convolve, TestConvolve)
#include "tst_convolve.moc"
