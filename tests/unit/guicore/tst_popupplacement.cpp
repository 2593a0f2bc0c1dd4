#include "guicore/PopupPlacement.h"
#include "support/TestRegistry.h"

#include <QTest>

/// The side on which a pop-up opens. The screen has a bar of 20 pixels at its top.
class TestPopupPlacement : public QObject
{
    Q_OBJECT

private slots:
    void aPopupOpensWhereThereIsRoom_data();
    void aPopupOpensWhereThereIsRoom();
};

void TestPopupPlacement::aPopupOpensWhereThereIsRoom_data()
{
    QTest::addColumn<QRect>("anchor");
    QTest::addColumn<QSize>("popup");
    QTest::addColumn<QPoint>("corner");
    const QSize size(100, 60);
    QTest::newRow("below, left edges in line") << QRect(200, 100, 40, 24) << size << QPoint(200, 124);
    QTest::newRow("below, with no pixel to spare") << QRect(200, 516, 40, 24) << size << QPoint(200, 540);
    QTest::newRow("above, with one pixel too few") << QRect(200, 517, 40, 24) << size << QPoint(200, 457);
    QTest::newRow("pushed in from the right edge") << QRect(750, 100, 40, 24) << size << QPoint(700, 124);
    QTest::newRow("pushed in from the left edge") << QRect(-30, 100, 40, 24) << size << QPoint(0, 124);
    QTest::newRow("above leaves the bar alone") << QRect(200, 80, 40, 500) << size << QPoint(200, 20);
    QTest::newRow("to the right of a tall control") << QRect(200, 30, 40, 560) << size << QPoint(240, 30);
    QTest::newRow("to the left at the right edge") << QRect(750, 30, 40, 560) << size << QPoint(650, 30);
    QTest::newRow("beside a tall control, pushed up")
        << QRect(200, 30, 40, 560) << QSize(100, 575) << QPoint(240, 25);
    QTest::newRow("no side has room") << QRect(10, 30, 780, 560) << size << QPoint(10, 540);
    QTest::newRow("larger than the screen") << QRect(200, 100, 40, 24) << QSize(900, 700) << QPoint(0, 20);
    QTest::newRow("the control is below the screen") << QRect(200, 900, 40, 24) << size << QPoint(200, 540);
    QTest::newRow("the control is above the screen") << QRect(200, -300, 40, 24) << size << QPoint(200, 20);
}

void TestPopupPlacement::aPopupOpensWhereThereIsRoom()
{
    QFETCH(const QRect, anchor);
    QFETCH(const QSize, popup);
    QFETCH(const QPoint, corner);
    const QRect available(0, 20, 800, 580);
    QCOMPARE(PopupPlacement::Beside(anchor, popup, available), corner);
}

ZK_REGISTER_TEST(tst_popupplacement, TestPopupPlacement)
#include "tst_popupplacement.moc"
