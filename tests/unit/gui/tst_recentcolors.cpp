#include "core/ZKApplication.h"
#include "gui/RecentColors.h"
#include "gui/RecentColorsView.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

/// The colors that were chosen last, in the settings and in their row.
class TestRecentColors : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theLatestComesFirst();
    void aColorIsKeptOnce();
    void theOldestGivesWay();
    void theAlphaIsKept();
    void whatIsNoColorInTheSettingsIsLeftOut();
    void aClickPicksAColor();
    void arrowsPickColors();
    void theFocusAlonePicksNothing();
    void theSameColorCanBePickedAgain();
    void markingPicksNothing();
    void anEmptyRowIsOffAndSaysWhy();
    void allColorsHaveRoom();
};

namespace {
const QLatin1String Key("ColorDialog/Recent");
const QList<QColor> Three{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};

QPoint MiddleOf(const RecentColorsView& view, int row)
{
    return view.visualItemRect(view.item(row)).center();
}
} // namespace

void TestRecentColors::init()
{
    ZKApplication::SetUserValue(Key, QStringList());
}

void TestRecentColors::theLatestComesFirst()
{
    QVERIFY(RecentColors::Read().isEmpty());
    RecentColors::Add(Three[0]);
    RecentColors::Add(Three[1]);
    QCOMPARE(RecentColors::Read(), (QList<QColor>{Three[1], Three[0]}));
}

void TestRecentColors::aColorIsKeptOnce()
{
    QCOMPARE(RecentColors::WithFirst(Three, QColor::fromHsv(240, 255, 255)).size(), 3);
    QCOMPARE(RecentColors::WithFirst(Three, Three[2]), (QList<QColor>{Three[2], Three[0], Three[1]}));
}

void TestRecentColors::theOldestGivesWay()
{
    for (int gray = 0; gray < RecentColors::Most + 3; ++gray)
        RecentColors::Add(QColor(gray, gray, gray));
    const QList<QColor> colors = RecentColors::Read();
    QCOMPARE(colors.size(), 16);
    QCOMPARE(colors.first(), QColor(18, 18, 18));
    QCOMPARE(colors.last(), QColor(3, 3, 3));
}

void TestRecentColors::theAlphaIsKept()
{
    RecentColors::Add(QColor(1, 2, 3, 4));
    RecentColors::Add(QColor(1, 2, 3));
    RecentColors::Add(QColor());
    QCOMPARE(RecentColors::Read(), (QList<QColor>{QColor(1, 2, 3), QColor(1, 2, 3, 4)}));
}

void TestRecentColors::whatIsNoColorInTheSettingsIsLeftOut()
{
    ZKApplication::SetUserValue(Key, QStringList{"#FF0000FF", "rubbish", "", "#FF00FF00"});
    QCOMPARE(RecentColors::Read(), (QList<QColor>{QColor(0, 0, 255), QColor(0, 255, 0)}));
    ZKApplication::SetUserValue(Key, 7);
    QVERIFY(RecentColors::Read().isEmpty());
}

void TestRecentColors::aClickPicksAColor()
{
    RecentColorsView view;
    view.SetColors(Three);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    const QSignalSpy picked(&view, &RecentColorsView::Picked);
    InputDriver().Click(view.viewport(), MiddleOf(view, 2));
    QVERIFY(!picked.isEmpty());
    QCOMPARE(picked.last()[0].value<QColor>(), Three[2]);
}

void TestRecentColors::arrowsPickColors()
{
    RecentColorsView view;
    view.SetColors(Three);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    view.setFocus();
    const QSignalSpy picked(&view, &RecentColorsView::Picked);
    InputDriver input;
    input.Key(Qt::Key_Right);
    input.Key(Qt::Key_Right);
    QCOMPARE(picked.last()[0].value<QColor>(), Three[2]);
    input.Key(Qt::Key_Left);
    QCOMPARE(picked.last()[0].value<QColor>(), Three[1]);
}

void TestRecentColors::theFocusAlonePicksNothing()
{
    RecentColorsView view;
    const QSignalSpy picked(&view, &RecentColorsView::Picked);
    view.SetColors(Three);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    view.clearFocus();
    view.setFocus(Qt::TabFocusReason);
    QVERIFY(view.hasFocus());
    QCOMPARE(picked.count(), 0);
}

void TestRecentColors::theSameColorCanBePickedAgain()
{
    RecentColorsView view;
    view.SetColors(Three);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    InputDriver input;
    input.Click(view.viewport(), MiddleOf(view, 1));
    const QSignalSpy picked(&view, &RecentColorsView::Picked);
    input.Click(view.viewport(), MiddleOf(view, 1));
    QCOMPARE(picked.count(), 1);
}

void TestRecentColors::markingPicksNothing()
{
    RecentColorsView view;
    view.SetColors(Three);
    const QSignalSpy picked(&view, &RecentColorsView::Picked);
    view.Mark(Three[1]);
    QCOMPARE(view.selectedItems(), QList<QListWidgetItem*>{view.item(1)});
    view.Mark(QColor(9, 9, 9));
    QVERIFY(view.selectedItems().isEmpty());
    QCOMPARE(picked.count(), 0);
}

void TestRecentColors::anEmptyRowIsOffAndSaysWhy()
{
    RecentColorsView view;
    view.SetColors({});
    QVERIFY(!view.isEnabled());
    QCOMPARE(view.toolTip(), QString("No color has been chosen yet"));
    view.SetColors(Three);
    QVERIFY(view.isEnabled());
    QVERIFY(view.toolTip().isEmpty());
}

void TestRecentColors::allColorsHaveRoom()
{
    QList<QColor> colors;
    for (int gray = 0; gray < RecentColors::Most; ++gray)
        colors.append(QColor(gray, gray, gray));
    RecentColorsView view;
    view.SetColors(colors);
    view.resize(view.sizeHint());
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    for (int row = 0; row < RecentColors::Most; ++row)
        QVERIFY(view.viewport()->rect().contains(view.visualItemRect(view.item(row))));
}

ZK_REGISTER_TEST(tst_recentcolors, TestRecentColors)
#include "tst_recentcolors.moc"
