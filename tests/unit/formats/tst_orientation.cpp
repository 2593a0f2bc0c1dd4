#include "formats/Orientation.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QTransform>

class TestOrientation : public QObject
{
    Q_OBJECT

private slots:
    void letterFStandsUpright_data();
    void letterFStandsUpright();
    void largeImagesAreTurnedAcrossTiles_data();
    void largeImagesAreTurnedAcrossTiles();
};

namespace {
LXImage32 Draw(const QStringList& rows)
{
    LXImage32 image(rows.first().size(), rows.size());
    for (int y = 0; y < rows.size(); ++y) {
        for (int x = 0; x < rows[y].size(); ++x) {
            if (rows[y][x] == '#') image.SetColor(x, y, LXRGBA32i(0xFFFFFFFF));
        }
    }
    return image;
}

QStringList Rows(const LXImage32& image)
{
    QStringList rows;
    for (int y = 0; y < image.Height(); ++y) {
        QString row;
        for (int x = 0; x < image.Width(); ++x) {
            row += image.GetColor(x, y).value ? '#' : '.';
        }
        rows << row;
    }
    return rows;
}

/// The same by Qt: what the camera did to the picture, undone.
QImage TurnedByQt(const QImage& stored, int orientation)
{
    switch (orientation) {
    case 2: return stored.mirrored(true, false);
    case 3: return stored.mirrored(true, true);
    case 4: return stored.mirrored(false, true);
    case 5: return stored.mirrored(true, false).transformed(QTransform().rotate(-90));
    case 6: return stored.transformed(QTransform().rotate(90));
    case 7: return stored.mirrored(true, false).transformed(QTransform().rotate(90));
    case 8: return stored.transformed(QTransform().rotate(-90));
    default: return stored;
    }
}
} // namespace

void TestOrientation::letterFStandsUpright_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QStringList>("stored");

    // As the standard defines the numbers: where the first row and the first column of the stored picture
    // lie.
    QTest::newRow("1: row top, column left") << 1 << QStringList({"###", "#..", "##.", "#..", "#.."});
    QTest::newRow("2: row top, column right") << 2 << QStringList({"###", "..#", ".##", "..#", "..#"});
    QTest::newRow("3: row bottom, column right") << 3 << QStringList({"..#", "..#", ".##", "..#", "###"});
    QTest::newRow("4: row bottom, column left") << 4 << QStringList({"#..", "#..", "##.", "#..", "###"});
    QTest::newRow("5: row left, column top") << 5 << QStringList({"#####", "#.#..", "#...."});
    QTest::newRow("6: row right, column top") << 6 << QStringList({"#....", "#.#..", "#####"});
    QTest::newRow("7: row right, column bottom") << 7 << QStringList({"....#", "..#.#", "#####"});
    QTest::newRow("8: row left, column bottom") << 8 << QStringList({"#####", "..#.#", "....#"});
}

void TestOrientation::letterFStandsUpright()
{
    QFETCH(int, orientation);
    QFETCH(QStringList, stored);
    QCOMPARE(Rows(Orientation::MakeUpright(Draw(stored), orientation)),
             QStringList({"###", "#..", "##.", "#..", "#.."}));
}

void TestOrientation::largeImagesAreTurnedAcrossTiles_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QSize>("size");
    for (int orientation = 1; orientation <= 8; ++orientation) {
        for (const QSize& size : {QSize(1, 1), QSize(128, 127), QSize(130, 300), QSize(257, 129)}) {
            QTest::addRow("%d, %d x %d", orientation, size.width(), size.height()) << orientation << size;
        }
    }
}

void TestOrientation::largeImagesAreTurnedAcrossTiles()
{
    QFETCH(int, orientation);
    QFETCH(QSize, size);
    const QImage stored = PixelChecks::RandomImage(size, 5);
    const LXImage32 upright = Orientation::MakeUpright(PixelChecks::FromQImage(stored), orientation);
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(upright), TurnedByQt(stored, orientation)),
             QString());
}

ZK_REGISTER_TEST(tst_orientation, TestOrientation)
#include "tst_orientation.moc"
