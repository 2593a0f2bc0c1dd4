#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

class TestIconHelper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void cleanup() { QDir::setSearchPaths("theme", {}); }

    void pictureFollowsTheRatio();
    void pictureWithoutDenseFormIsTaken();
    void missingPictureIsNull();
    void iconHasAFaintDisabledForm();
    void selectedFormIsNotTinted();
    void iconTakesEverySize();
    void iconIsShrunkButNeverBlownUp();
    void iconChangesWithTheLook();
    void iconIsDrawnInThePixelsOfADenseScreen();
    void pixmapKeepsItsRatio();
    void nullPixmapGivesANullIcon();

private:
    void Draw(const QString& name, int size, const QColor& color) const
    {
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(color);
        QVERIFY(image.save(m_Dir.filePath(name)));
    }

    QTemporaryDir m_Dir;
};

void TestIconHelper::initTestCase()
{
    Draw("fill.png", 24, Qt::red);
    Draw("fill@2x.png", 48, Qt::green);
    Draw("fill-16.png", 16, Qt::blue);
    Draw("fill-40.png", 40, Qt::yellow);
    Draw("plain.png", 24, Qt::red);
}

void TestIconHelper::init()
{
    QDir::setSearchPaths("theme", {m_Dir.path()});
}

void TestIconHelper::pictureFollowsTheRatio()
{
    const QPixmap single = ZKIconHelper::ThemePixmap("theme:fill.png", 1);
    QCOMPARE(single.size(), QSize(24, 24));
    QCOMPARE(single.devicePixelRatio(), 1.0);
    for (const qreal ratio : {1.5, 2.0, 3.0}) {
        const QPixmap dense = ZKIconHelper::ThemePixmap("theme:fill.png", ratio);
        QCOMPARE(dense.size(), QSize(48, 48));
        QCOMPARE(dense.devicePixelRatio(), 2.0);
    }
    QCOMPARE(ZKIconHelper::ThemePixmap("theme:fill.png").size(), QSize(24, 24));
}

void TestIconHelper::pictureWithoutDenseFormIsTaken()
{
    const QPixmap pixmap = ZKIconHelper::ThemePixmap("theme:plain.png", 2);
    QCOMPARE(pixmap.size(), QSize(24, 24));
    QCOMPARE(pixmap.devicePixelRatio(), 1.0);
}

void TestIconHelper::missingPictureIsNull()
{
    QVERIFY(ZKIconHelper::ThemePixmap("theme:none.png").isNull());
    QVERIFY(ZKIconHelper::DisabledIcon(QString("theme:none.png")).isNull());
}

void TestIconHelper::iconHasAFaintDisabledForm()
{
    const QIcon icon = ZKIconHelper::DisabledIcon(QString("theme:fill.png"));
    const QImage normal = icon.pixmap(24, QIcon::Normal).toImage();
    const QImage disabled = icon.pixmap(24, QIcon::Disabled).toImage();
    QCOMPARE(normal.pixelColor(12, 12).alpha(), 255);
    QCOMPARE(disabled.size(), normal.size());
    QVERIFY(disabled.pixelColor(12, 12).alpha() > 50);
    QVERIFY(disabled.pixelColor(12, 12).alpha() < 130);
    QCOMPARE(disabled.pixelColor(12, 12).red(), 255);
}

void TestIconHelper::selectedFormIsNotTinted()
{
    const QIcon icon = ZKIconHelper::DisabledIcon(QString("theme:fill.png"));
    QCOMPARE(icon.pixmap(24, QIcon::Selected).toImage(), icon.pixmap(24, QIcon::Normal).toImage());
}

void TestIconHelper::iconTakesEverySize()
{
    const QIcon icon = ZKIconHelper::DisabledIcon(QString("theme:fill.png"));
    QCOMPARE(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::blue));
    QCOMPARE(icon.pixmap(24).toImage().pixelColor(8, 8), QColor(Qt::red));
    QCOMPARE(icon.pixmap(40).toImage().pixelColor(8, 8), QColor(Qt::yellow));
    QCOMPARE(icon.pixmap(48).toImage().pixelColor(8, 8), QColor(Qt::green));
}

void TestIconHelper::iconIsShrunkButNeverBlownUp()
{
    const QIcon icon = ZKIconHelper::DisabledIcon(QString("theme:fill.png"));
    QCOMPARE(icon.pixmap(36).size(), QSize(36, 36));
    QCOMPARE(icon.pixmap(36).toImage().pixelColor(8, 8), QColor(Qt::yellow));
    QCOMPARE(icon.pixmap(100).size(), QSize(48, 48));
    QCOMPARE(icon.actualSize({100, 100}), QSize(48, 48));
    QCOMPARE(icon.actualSize({36, 40}), QSize(36, 36));
}

void TestIconHelper::iconChangesWithTheLook()
{
    const QIcon icon = ZKIconHelper::DisabledIcon(QString("theme:fill.png"));
    QCOMPARE(icon.pixmap(24).toImage().pixelColor(8, 8), QColor(Qt::red));

    const QTemporaryDir other;
    QImage image(24, 24, QImage::Format_ARGB32);
    image.fill(Qt::magenta);
    QVERIFY(image.save(other.filePath("fill.png")));
    QDir::setSearchPaths("theme", {other.path()});
    QCOMPARE(icon.pixmap(24).toImage().pixelColor(8, 8), QColor(Qt::magenta));
}

void TestIconHelper::iconIsDrawnInThePixelsOfADenseScreen()
{
    QImage canvas(60, 60, QImage::Format_ARGB32);
    canvas.setDevicePixelRatio(2);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    ZKIconHelper::DisabledIcon(QString("theme:fill.png")).paint(&painter, QRect(3, 3, 24, 24));
    painter.end();
    QCOMPARE(canvas.pixelColor(5, 5), QColor(Qt::white));
    QCOMPARE(canvas.pixelColor(6, 6), QColor(Qt::green)); // of the picture with 48 pixels
    QCOMPARE(canvas.pixelColor(53, 53), QColor(Qt::green));
    QCOMPARE(canvas.pixelColor(54, 54), QColor(Qt::white));
}

void TestIconHelper::pixmapKeepsItsRatio()
{
    QPixmap pixmap(48, 48);
    pixmap.fill(Qt::red);
    pixmap.setDevicePixelRatio(2);
    const QIcon icon = ZKIconHelper::DisabledIcon(pixmap);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
        const QList<QSize> sizes = icon.availableSizes(mode);
        QCOMPARE(sizes, QList<QSize>({{48, 48}}));
    }
    QCOMPARE(icon.pixmap(48, QIcon::Disabled).toImage().pixelColor(40, 40).red(), 255);
    QVERIFY(icon.pixmap(48, QIcon::Disabled).toImage().pixelColor(40, 40).alpha() < 130);
}

void TestIconHelper::nullPixmapGivesANullIcon()
{
    QVERIFY(ZKIconHelper::DisabledIcon(QPixmap()).isNull());
}

ZK_REGISTER_TEST(tst_iconhelper, TestIconHelper)
#include "tst_iconhelper.moc"
