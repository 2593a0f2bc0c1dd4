#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QDir>
#include <QImage>
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
