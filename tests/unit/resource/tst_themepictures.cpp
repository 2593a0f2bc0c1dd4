#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "resource/ThemeNames.h"
#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QTest>

namespace {
/// Every picture that a tool asks for, as it asks.
const char* const Names[] = {
    "add_sel.png",
    "angle_gradient.png",
    "bucket_cursor.png",
    "cancel_btn1.png",
    "circ_gradient.png",
    "commit_btn1.png",
    "crop_tool.png",
    "crop_tool_cursor.png",
    "deletecurrentpath.png",
    "draw_ellipse.png",
    "draw_line.png",
    "draw_polygon.png",
    "draw_rectangle.png",
    "draw_rounded_rectangle.png",
    "edit_text_cursor.png",
    "exclude_sel.png",
    "export_clipboard.png",
    "finger_cur.png",
    "gradient_cursor.png",
    "image_size_dialog_link1.png",
    "image_size_dialog_link2.png",
    "image_size_dialog_link3.png",
    "intersect_sel.png",
    "layers_white.png",
    "linear_gradient.png",
    "magic_ward_cursor.png",
    "magic_ward_delete_cursor.png",
    "magic_ward_minus_cursor.png",
    "magic_ward_plus_cursor.png",
    "move_tool.png",
    "move_tool_cursor.png",
    "path_pen.png",
    "pen.png",
    "pen_cursor.png",
    "pen_cursor_add.png",
    "picker.png",
    "picker_cursor.png",
    "picture.png",
    "rect_gradient.png",
    "replace_selection",
    "rotate_cursor.png",
    "ruler.png",
    "ruler_cursor.png",
    "sampler.png",
    "sampler_cursor.png",
    "shape_custom_cursor.png",
    "subtract_sel.png",
    "switch_arrows.png",
    "text_cursor.png",
    "text_cursor_editing.png",
    "tool-bar-bucket.png",
    "tool-bar-search.png",
    "tool-bar-text.png",
    "tool-bar-wand.png",
    "top-menu-file.png",
    "unite_sel.png",
    "zoom-cursor.png",
    "zoom_in.png",
    "zoom_out.png",
};

/// How many pixels are more there than not.
int Inked(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
    }
    return count;
}

struct HotSpot
{
    QString picture;
    int side;
    QPoint point;
};

/// The rows of the table beside the drawings.
QVector<HotSpot> ReadHotSpots()
{
    QVector<HotSpot> spots;
    QFile file(QStringLiteral(ZK_THEME_SOURCES "/README.md"));
    if (!file.open(QIODevice::ReadOnly)) return spots;
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (const QString& line : lines) {
        const QStringList cells = line.split('|', Qt::SkipEmptyParts);
        if (cells.size() != 4 || cells[1].toInt() == 0) continue;
        spots.append({cells[0].trimmed(), cells[1].toInt(), {cells[2].toInt(), cells[3].toInt()}});
    }
    return spots;
}

/// Ink, black or that of a look; white is the halo's.
bool IsDrawn(QRgb pixel)
{
    return qAlpha(pixel) > 150 && qGray(pixel) < 128;
}
} // namespace

/// The pictures that tools ask for by name.
class TestThemePictures : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void everyPictureIsThere_data();
    void everyPictureIsThere();
    void aNameWithoutAnEndingIsFound();
    void everyCursorPointsWithSomethingDrawn_data();
    void everyCursorPointsWithSomethingDrawn();
    void everyCursorHasAHotSpot();
};

void TestThemePictures::cleanup()
{
    QDir::setSearchPaths("theme", {});
}

void TestThemePictures::everyPictureIsThere_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : Names)
        QTest::newRow(name) << QString("theme:") + name;
}

void TestThemePictures::everyPictureIsThere()
{
    QFETCH(const QString, name);
    for (const Theme::Look look : {Theme::Look::Dark, Theme::Look::Light}) {
        Theme::Apply(look, ResourceFolder::Path());
        QVERIFY(!QPixmap(name).isNull());
        for (const int ratio : {1, 2}) {
            const QImage image = ZKIconHelper::ThemePixmap(name, ratio).toImage();
            QCOMPARE(image.size(), QSize(24, 24) * ratio);
            // A line through half the picture, at least; and never a block.
            const int inked = Inked(image) / (ratio * ratio);
            QVERIFY2(inked >= 20 && inked <= 300, qPrintable(QString::number(inked)));
        }
        const QIcon icon = ZKIconHelper::DisabledIcon(name);
        QVERIFY(Inked(icon.pixmap(16, 16).toImage()) >= 10);
        QCOMPARE(Inked(icon.pixmap(24, 24, QIcon::Disabled).toImage()), 0);
    }
}

void TestThemePictures::aNameWithoutAnEndingIsFound()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    QCOMPARE(ZKIconHelper::ThemePixmap("theme:picker", 2).toImage(),
             ZKIconHelper::ThemePixmap("theme:picker.png", 2).toImage());
    QVERIFY(ZKIconHelper::DisabledIcon(QString("theme:no_such_picture")).isNull());
    QVERIFY(ZKIconHelper::ThemePixmap("theme:no_such_picture").isNull());
}

void TestThemePictures::everyCursorPointsWithSomethingDrawn_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QPoint>("point");
    const QVector<HotSpot> spots = ReadHotSpots();
    QVERIFY(spots.size() > 20);
    for (const HotSpot& spot : spots) {
        const QString size = spot.side == 24 ? QString() : QString("-%1").arg(spot.side);
        QTest::newRow(qPrintable(spot.picture)) << spot.picture + size + ".png" << spot.point;
    }
}

void TestThemePictures::everyCursorPointsWithSomethingDrawn()
{
    QFETCH(const QString, file);
    QFETCH(const QPoint, point);
    // The light look has the dark ink, where an icon is the pointer.
    const QImage image(ResourceFolder::Path() + "/theme/light/" + file);
    QVERIFY(!image.isNull());
    const QRect near = QRect(point - QPoint(1, 1), QSize(3, 3)) & image.rect();
    bool isDrawn = false;
    for (int y = near.top(); y <= near.bottom(); ++y) {
        for (int x = near.left(); x <= near.right(); ++x)
            isDrawn = isDrawn || IsDrawn(image.pixel(x, y));
    }
    QVERIFY(isDrawn);
}

void TestThemePictures::everyCursorHasAHotSpot()
{
    QStringList known;
    for (const HotSpot& spot : ReadHotSpots())
        known.append(spot.picture);
    int cursors = 0;
    for (const QString& file : QDir(ZK_THEME_SOURCES).entryList({"*.svg"}, QDir::Files)) {
        const QString name = file.chopped(4);
        if (!ThemeNames::IsCursor(name)) continue;
        QVERIFY2(known.contains(name), qPrintable(name));
        ++cursors;
    }
    QVERIFY(cursors > 15);
}

ZK_REGISTER_TEST(tst_themepictures, TestThemePictures)
#include "tst_themepictures.moc"
