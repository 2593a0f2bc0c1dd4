#include "magicwand/WandFill.h"

#include "support/TestRegistry.h"

#include <QMap>
#include <QTest>

class TestWandFill : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatHangsTogetherIsFound();
    void notContiguousEverySimilarPixelIsFound();
    void eachChannelMayDifferByTheTolerance();
    void alphaCountsLikeAColor();
    void aPicturePartlyOutsideIsCutToTheCanvas();
    void theSeedIsADocumentPixel();
    void besideThePictureTheCanvasIsTransparent();
    void withoutAPictureTheWholeCanvasIsAlike();
    void aSeedOutsideTheCanvasFindsNothing();
    void thePictureIsNotChanged();
};

namespace {
LXImage32 Draw(const QStringList& rows)
{
    const QMap<QChar, QRgb> colors{{'.', 0}, {'w', 0xFFFFFFFF}, {'k', 0xFF000000}, {'g', 0xFFDFDFDF}};
    LXImage32 image(rows.first().size(), rows.size());
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            image.SetColor(x, y, LXRGBA32i(colors.value(rows[y][x])));
        }
    }
    return image;
}

WandFillData DataFor(const QStringList& rows, const QPoint& seed)
{
    WandFillData data;
    data.picture = Draw(rows);
    data.geometry = data.picture.Rect();
    data.documentSize = data.geometry.size();
    data.seed = seed;
    data.tolerance = 0;
    return data;
}

// The offset, then the coverage as rows; '?' for what is neither nothing nor all.
QStringList Show(const WandFillResult& result)
{
    QStringList rows{QString("%1 %2").arg(result.offset.x()).arg(result.offset.y())};
    for (int y = 0; y < result.mask.Height(); ++y) {
        QString row;
        for (int x = 0; x < result.mask.Width(); ++x) {
            const quint32 value = result.mask.GetColor(x, y).value;
            row += value == 0xFF000000 ? '#' : (value == 0 ? '.' : '?');
        }
        rows.append(row);
    }
    return rows;
}
} // namespace

void TestWandFill::onlyWhatHangsTogetherIsFound()
{
    // The corners touch by their tips only, which doesn't hang together.
    const WandFillData data = DataFor({"kkkkk", "kwwkk", "kwkww", "kkkkw"}, {1, 1});
    QCOMPARE(Show(FillByWand(data)), QStringList({"1 1", "##", "#."}));
}

void TestWandFill::notContiguousEverySimilarPixelIsFound()
{
    WandFillData data = DataFor({"kkkkk", "kwwkk", "kwkww", "kkkkw"}, {1, 1});
    data.contiguous = false;
    QCOMPARE(Show(FillByWand(data)), QStringList({"1 1", "##..", "#.##", "...#"}));
}

void TestWandFill::eachChannelMayDifferByTheTolerance()
{
    // 255 - 223 = 32
    WandFillData data = DataFor({"wgk"}, {0, 0});
    data.tolerance = 32;
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "##"}));
    data.tolerance = 31;
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "#"}));
    data.tolerance = 255;
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "###"}));
}

void TestWandFill::alphaCountsLikeAColor()
{
    // Transparent black beside opaque black.
    WandFillData data = DataFor({"k.k"}, {0, 0});
    data.tolerance = 254;
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "#"}));
}

void TestWandFill::aPicturePartlyOutsideIsCutToTheCanvas()
{
    WandFillData data = DataFor({"wwww", "wwww", "wwww"}, {0, 0});
    data.geometry.moveTopLeft({-2, -1});
    data.documentSize = {4, 4};
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "##", "##"}));

    data.geometry.moveTopLeft({3, 2});
    data.seed = QPoint(3, 2);
    QCOMPARE(Show(FillByWand(data)), QStringList({"3 2", "#", "#"}));
}

void TestWandFill::theSeedIsADocumentPixel()
{
    WandFillData data = DataFor({"wk", "kk"}, {2, 1});
    data.geometry.moveTopLeft({2, 1});
    data.documentSize = {5, 4};
    QCOMPARE(Show(FillByWand(data)), QStringList({"2 1", "#"}));
}

void TestWandFill::besideThePictureTheCanvasIsTransparent()
{
    WandFillData data = DataFor({"w"}, {0, 0});
    data.geometry.moveTopLeft({1, 0});
    data.documentSize = {3, 1};
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "#"}));
    data.contiguous = false;
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "#.#"}));

    data.geometry.moveTopLeft({9, 9});
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "###"}));
}

void TestWandFill::withoutAPictureTheWholeCanvasIsAlike()
{
    WandFillData data;
    data.documentSize = {2, 2};
    data.seed = QPoint(1, 1);
    QCOMPARE(Show(FillByWand(data)), QStringList({"0 0", "##", "##"}));
}

void TestWandFill::aSeedOutsideTheCanvasFindsNothing()
{
    for (const QPoint& seed : {QPoint(-1, 0), QPoint(0, -1), QPoint(2, 0), QPoint(0, 1)}) {
        const WandFillResult result = FillByWand(DataFor({"ww"}, seed));
        QVERIFY(result.mask.IsNull());
        QCOMPARE(result.offset, QPoint());
    }
}

void TestWandFill::thePictureIsNotChanged()
{
    const WandFillData data = DataFor({"wwk", "wwk"}, {0, 0});
    FillByWand(data);
    QCOMPARE(data.picture.GetColor(0, 0).value, 0xFFFFFFFFu);
    QCOMPARE(data.picture.GetColor(2, 1).value, 0xFF000000u);
}

ZK_REGISTER_TEST(tst_wandfill, TestWandFill)

#include "tst_wandfill.moc"
