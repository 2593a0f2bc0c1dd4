#include "core/ZKCMSManager.h"
#include "guicore/LXColorComboBox.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

/// The combo box of colors, and the one that it builds on.
class TestColorComboBox : public QObject
{
    Q_OBJECT

private slots:
    void rowsShowAndTellTheirColors();
    void rowsFollowTheScreenAndTellTheirOwn();
    void aColorIsFoundByAllFourChannels();
    void aColorOfAnotherModelIsFound();
    void theSameColorTwiceIsFoundFirst();
    void noColorIsNoRow();
    void arrowsGoThroughTheColors();
    void theListIsAsWideAsItsLongestRow();
    void theListKeepsAMinimumThatItWasGiven();
    void theListStaysInsideTheScreen();
    void theListOfABoxThatIsWrittenInIsAsWide();
};

void TestColorComboBox::rowsShowAndTellTheirColors()
{
    LXColorComboBox box;
    box.AddColor(QColor(255, 0, 0));
    box.AddColor(QColor(0, 16, 255, 128));
    QCOMPARE(box.count(), 2);
    QCOMPARE(box.itemText(0), QString("#FF0000"));
    QCOMPARE(box.itemText(1), QString("#800010FF"));
    QCOMPARE(box.GetColor(0), QColor(255, 0, 0));
    QCOMPARE(box.GetColor(1), QColor(0, 16, 255, 128));
    const QImage icon = box.itemIcon(0).pixmap(box.iconSize()).toImage();
    QCOMPARE(icon.pixelColor(icon.rect().center()), QColor(255, 0, 0));
}

void TestColorComboBox::rowsFollowTheScreenAndTellTheirOwn()
{
    const QColor color(200, 90, 40);
    QColor shown = color;
    ZKCMSTransform(ZKCMSProfile::SRGB(), IccProfiles::AdobeRgb())(shown);
    QVERIFY(shown.rgb() != color.rgb());

    LXColorComboBox box;
    const auto middleOf = [&box](int row) {
        const QImage icon = box.itemIcon(row).pixmap(box.iconSize()).toImage();
        return QColor(icon.pixel(icon.rect().center())).name();
    };
    box.AddColor(color);
    ZKCMSManager::GetInstance()->SetDisplay(IccProfiles::AdobeRgb(), {});
    box.AddColor(color);
    QCOMPARE(middleOf(0), shown.name());
    QCOMPARE(middleOf(1), shown.name());
    QCOMPARE(box.itemText(1), QString("#C85A28"));
    QCOMPARE(box.FindColor(color), 0);
    QCOMPARE(box.GetColor(1), color);

    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
    QCOMPARE(middleOf(0), color.name());
}

void TestColorComboBox::aColorIsFoundByAllFourChannels()
{
    LXColorComboBox box;
    box.AddColor(QColor(1, 2, 3));
    box.AddColor(QColor(1, 2, 4));
    box.AddColor(QColor(1, 2, 3, 0));
    QCOMPARE(box.FindColor(QColor(1, 2, 3)), 0);
    QCOMPARE(box.FindColor(QColor(1, 2, 4)), 1);
    QCOMPARE(box.FindColor(QColor(1, 2, 3, 0)), 2);
    QCOMPARE(box.FindColor(QColor(1, 2, 3, 254)), -1);
    QCOMPARE(box.FindColor(QColor(9, 2, 3)), -1);
}

void TestColorComboBox::aColorOfAnotherModelIsFound()
{
    LXColorComboBox box;
    box.AddColor(QColor(255, 0, 0));
    QVERIFY(QColor::fromHsv(0, 255, 255) != QColor(255, 0, 0));
    QCOMPARE(box.FindColor(QColor::fromHsv(0, 255, 255)), 0);
}

void TestColorComboBox::theSameColorTwiceIsFoundFirst()
{
    LXColorComboBox box;
    box.AddColor(Qt::white);
    box.AddColor(Qt::black);
    box.AddColor(Qt::black);
    QCOMPARE(box.count(), 3);
    QCOMPARE(box.FindColor(Qt::black), 1);
}

void TestColorComboBox::noColorIsNoRow()
{
    LXColorComboBox box;
    box.AddColor(QColor());
    QCOMPARE(box.count(), 0);
    box.AddColor(Qt::black);
    QCOMPARE(box.FindColor(QColor()), -1);
    QVERIFY(!box.GetColor(-1).isValid());
    QVERIFY(!box.GetColor(1).isValid());
}

void TestColorComboBox::arrowsGoThroughTheColors()
{
    LXColorComboBox box;
    for (int gray = 0; gray < 3; ++gray)
        box.AddColor(QColor(gray, gray, gray));
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.setFocus();
    const QSignalSpy activated(&box, qOverload<int>(&QComboBox::activated));
    InputDriver input;
    input.Key(Qt::Key_Down);
    input.Key(Qt::Key_Down);
    input.Key(Qt::Key_Down);
    QCOMPARE(box.currentIndex(), 2);
    QCOMPARE(activated.count(), 2);
}

void TestColorComboBox::theListIsAsWideAsItsLongestRow()
{
    LXCommonComboBox box;
    box.addItems({"short", "a row that is a good deal longer than the box is wide"});
    box.setFixedWidth(60);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    InputDriver().Click(&box);
    QVERIFY(box.view()->isVisible());
    QVERIFY(box.view()->viewport()->width() >= box.view()->sizeHintForColumn(0));
    QVERIFY(box.view()->viewport()->width() > 200);
    QCOMPARE(box.width(), 60);
    box.hidePopup();
}

void TestColorComboBox::theListKeepsAMinimumThatItWasGiven()
{
    LXCommonComboBox box;
    box.addItem("a");
    box.view()->setMinimumWidth(140);
    box.setFixedWidth(60);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.showPopup();
    QVERIFY(box.view()->width() >= 140);
    box.hidePopup();
}

void TestColorComboBox::theListStaysInsideTheScreen()
{
    LXCommonComboBox box;
    box.addItem("a row that is a good deal longer than the box is wide");
    box.setFixedWidth(60);
    const QRect available = box.screen()->availableGeometry();
    box.move(available.right() - 60, available.top() + 10);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.showPopup();
    const QWidget* list = box.view()->window();
    QVERIFY(list->width() > 200);
    QVERIFY(available.contains(list->geometry()));
    box.hidePopup();
}

void TestColorComboBox::theListOfABoxThatIsWrittenInIsAsWide()
{
    // The style makes the list of such a box no wider than the box.
    LXCommonComboBox box;
    box.setEditable(true);
    box.addItems({"short", "a row that is a good deal longer than the box is wide"});
    box.setFixedWidth(60);
    const QRect available = box.screen()->availableGeometry();
    box.move(available.right() - 60, available.top() + 10);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.showPopup();
    QVERIFY(box.view()->viewport()->width() >= box.view()->sizeHintForColumn(0));
    QVERIFY(available.contains(box.view()->window()->geometry()));
    box.hidePopup();
}

ZK_REGISTER_TEST(tst_colorcombobox, TestColorComboBox)
#include "tst_colorcombobox.moc"
