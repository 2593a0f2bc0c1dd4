#include "selectionmenu/SelectionAlignment.h"

#include "support/TestRegistry.h"

#include <QTest>

Q_DECLARE_METATYPE(SelectionAlignment)

class TestSelectionAlignment : public QObject
{
    Q_OBJECT

private slots:
    void everyAlignment_data();
    void everyAlignment();
};

void TestSelectionAlignment::everyAlignment_data()
{
    using Alignment = SelectionAlignment;
    QTest::addColumn<SelectionAlignment>("alignment");
    QTest::addColumn<QRect>("selection");
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QPoint>("delta");

    const QRect box(10, 20, 5, 7); // to 14, 26
    const QSize canvas(101, 61);   // middle 50, 30
    QTest::newRow("center") << Alignment::Center << box << canvas << QPoint(38, 7);
    QTest::newRow("horizontal") << Alignment::HorizontalCenter << box << canvas << QPoint(38, 0);
    QTest::newRow("vertical") << Alignment::VerticalCenter << box << canvas << QPoint(0, 7);
    QTest::newRow("left") << Alignment::Left << box << canvas << QPoint(-10, 0);
    QTest::newRow("right") << Alignment::Right << box << canvas << QPoint(86, 0);
    QTest::newRow("top") << Alignment::Top << box << canvas << QPoint(0, -20);
    QTest::newRow("bottom") << Alignment::Bottom << box << canvas << QPoint(0, 34);

    QTest::newRow("even canvas, even box")
        << Alignment::Center << QRect(0, 0, 4, 4) << QSize(10, 10) << QPoint(3, 3);
    // 4 - (-3 + 0) / 2 = 4 + 1, where one division gives (9 + 3) / 2 = 6.
    QTest::newRow("a box left of the canvas truncates toward zero")
        << Alignment::Center << QRect(-3, -3, 4, 4) << QSize(10, 10) << QPoint(5, 5);
    // (9 - 1) / 2 - (0 + 3) / 2 = 4 - 1 = 3, where one division gives (8 - 3) / 2 = 2.
    QTest::newRow("odd canvas, even box: each side is truncated by itself")
        << Alignment::Center << QRect(0, 0, 4, 4) << QSize(9, 9) << QPoint(3, 3);
    QTest::newRow("centered already")
        << Alignment::Center << QRect(3, 3, 3, 3) << QSize(9, 9) << QPoint(0, 0);
    QTest::newRow("beyond the right edge")
        << Alignment::Right << QRect(95, 0, 20, 5) << QSize(100, 50) << QPoint(-15, 0);
}

void TestSelectionAlignment::everyAlignment()
{
    QFETCH(SelectionAlignment, alignment);
    QFETCH(QRect, selection);
    QFETCH(QSize, canvas);
    QTEST(AlignmentDelta(alignment, selection, canvas), "delta");
}

ZK_REGISTER_TEST(tst_selectionalignment, TestSelectionAlignment)
#include "tst_selectionalignment.moc"
