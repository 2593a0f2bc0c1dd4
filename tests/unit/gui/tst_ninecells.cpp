#include "gui/LXAnchorSelection.h"
#include "gui/NineCells.h"
#include "gui/TransformationCenterPointControl.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using Anchor = LXAnchorSelection;
using CenterPoint = TransformationCenterPointControl;

namespace {
QPoint MiddleOf(int cell, const QWidget& widget)
{
    return NineCells::RectOf(cell, widget.rect()).center();
}

/// What a cell shows: the direction of its arrow by where its ink lies, "x y" of the half with the head, or
/// "full" for the square, or nothing.
QString ShownIn(int cell, Anchor& anchor)
{
    const QImage image = anchor.grab().toImage();
    // The last column and row are the frame's.
    const QRect rect = NineCells::RectOf(cell, anchor.rect().adjusted(0, 0, -1, -1));
    const QRgb ground = image.pixel(rect.topLeft() + QPoint(3, 3));
    const QRect inside = rect.adjusted(2, 2, -2, -2);
    int across = 0;
    int down = 0;
    int inked = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (image.pixel(x, y) == ground) continue;
            ++inked;
            across += 2 * x - inside.left() - inside.right();
            down += 2 * y - inside.top() - inside.bottom();
        }
    }
    if (inked == 0) return QString();
    if (inked > 120) return QStringLiteral("full");
    // The barbs pull the weight to their end.
    const auto sign = [inked](int sum) { return 2 * sum > inked ? 1 : (2 * sum < -inked ? -1 : 0); };
    return QStringLiteral("%1 %2").arg(sign(across)).arg(sign(down));
}

QStringList Shown(Anchor& anchor)
{
    QStringList all;
    for (int cell = 0; cell < NineCells::Count; ++cell)
        all << ShownIn(cell, anchor);
    return all;
}
} // namespace

/// The two controls of nine cells, with real input.
class TestNineCells : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase();

    void theCellsFillTheArea();
    void arrowKeysStopAtTheBorder();
    void theAnchorStartsInTheMiddle();
    void aClickChoosesTheAnchor();
    void keysMoveTheAnchor();
    void arrowsPointOutwardAndInward();
    void arrowsStandBesideTheAnchorOnly();
    void theAnchorTellsItsPlace();
    void theCenterPointIsSmallAndStartsUnlit();
    void onlyThePersonIsSignalled();
    void theLitSquareSignalsNothing();
    void keysChooseTheCenterPoint();
    void otherKeysAreLeftToTheWindow();
    void whatIsOffTakesNoClick();
};

void TestNineCells::initTestCase()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    qRegisterMetaType<CenterPoint::ControlState>();
}

void TestNineCells::theCellsFillTheArea()
{
    for (const QRect& area : {QRect(0, 0, 40, 40), QRect(5, 7, 86, 85), QRect(1, 1, 3, 3)}) {
        QVector<int> counts(NineCells::Count);
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const int cell = NineCells::At(QPoint(x, y), area);
                QVERIFY(cell >= 0);
                ++counts[cell];
            }
        }
        QVERIFY(!counts.contains(0));
        QCOMPARE(NineCells::At(area.topLeft() - QPoint(1, 0), area), -1);
        QCOMPARE(NineCells::At(area.bottomRight() + QPoint(0, 1), area), -1);
    }
    QCOMPARE(NineCells::At(QPoint(39, 0), QRect(0, 0, 40, 40)), 2);
    QCOMPARE(NineCells::At(QPoint(0, 39), QRect(0, 0, 40, 40)), 6);
}

void TestNineCells::arrowKeysStopAtTheBorder()
{
    QCOMPARE(NineCells::Next(4, Qt::Key_Left), 3);
    QCOMPARE(NineCells::Next(4, Qt::Key_Right), 5);
    QCOMPARE(NineCells::Next(4, Qt::Key_Up), 1);
    QCOMPARE(NineCells::Next(4, Qt::Key_Down), 7);
    QCOMPARE(NineCells::Next(0, Qt::Key_Left), 0);
    QCOMPARE(NineCells::Next(0, Qt::Key_Up), 0);
    QCOMPARE(NineCells::Next(8, Qt::Key_Right), 8);
    QCOMPARE(NineCells::Next(8, Qt::Key_Down), 8);
    QCOMPARE(NineCells::Next(2, Qt::Key_Right), 2);
    QCOMPARE(NineCells::Next(4, Qt::Key_A), -1);
}

void TestNineCells::theAnchorStartsInTheMiddle()
{
    QCOMPARE(Anchor().GetState(), Anchor::Center);
}

void TestNineCells::aClickChoosesTheAnchor()
{
    Anchor anchor;
    anchor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&anchor));
    InputDriver input;
    for (int cell = 0; cell < NineCells::Count; ++cell) {
        input.Click(&anchor, MiddleOf(cell, anchor));
        QCOMPARE(int(anchor.GetState()), cell);
    }
    input.Click(&anchor, MiddleOf(2, anchor), Qt::RightButton);
    QCOMPARE(anchor.GetState(), Anchor::BottomRight);
}

void TestNineCells::keysMoveTheAnchor()
{
    Anchor anchor;
    anchor.show();
    anchor.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&anchor));
    InputDriver input;
    input.Key(Qt::Key_Left);
    QCOMPARE(anchor.GetState(), Anchor::Left);
    input.Key(Qt::Key_Up);
    input.Key(Qt::Key_Up);
    QCOMPARE(anchor.GetState(), Anchor::TopLeft);
    input.Key(Qt::Key_Right);
    QCOMPARE(anchor.GetState(), Anchor::Top);
    input.Key(Qt::Key_Down);
    QCOMPARE(anchor.GetState(), Anchor::Center);
}

void TestNineCells::arrowsPointOutwardAndInward()
{
    Anchor anchor;
    anchor.resize(anchor.sizeHint());
    QCOMPARE(Shown(anchor),
             QStringList({"-1 -1", "0 -1", "1 -1", "-1 0", "full", "1 0", "-1 1", "0 1", "1 1"}));
    anchor.ShrinkHorizontal(true);
    QCOMPARE(Shown(anchor),
             QStringList({"1 -1", "0 -1", "-1 -1", "1 0", "full", "-1 0", "1 1", "0 1", "-1 1"}));
    anchor.ShrinkVertical(true);
    QCOMPARE(Shown(anchor),
             QStringList({"1 1", "0 1", "-1 1", "1 0", "full", "-1 0", "1 -1", "0 -1", "-1 -1"}));
    anchor.ShrinkHorizontal(false);
    QCOMPARE(ShownIn(0, anchor), QString("-1 1"));
}

void TestNineCells::arrowsStandBesideTheAnchorOnly()
{
    Anchor anchor;
    anchor.resize(anchor.sizeHint());
    anchor.SetState(Anchor::TopLeft);
    QCOMPARE(Shown(anchor), QStringList({"full", "1 0", "", "0 1", "1 1", "", "", "", ""}));
    anchor.SetState(Anchor::Right);
    QCOMPARE(Shown(anchor), QStringList({"", "-1 -1", "0 -1", "", "-1 0", "full", "", "-1 1", "0 1"}));
}

void TestNineCells::theAnchorTellsItsPlace()
{
    Anchor anchor;
    QVERIFY(!anchor.accessibleName().isEmpty());
    QCOMPARE(anchor.accessibleDescription(), QString("Center"));
    anchor.SetState(Anchor::BottomLeft);
    QCOMPARE(anchor.accessibleDescription(), QString("Bottom left"));
    CenterPoint control;
    QVERIFY(!control.accessibleName().isEmpty());
    control.SetState(CenterPoint::TopRight);
    QCOMPARE(control.accessibleDescription(), QString("Top right"));
}

void TestNineCells::theCenterPointIsSmallAndStartsUnlit()
{
    CenterPoint control;
    control.show();
    QCOMPARE(control.size(), QSize(40, 40));
    QCOMPARE(control.GetState(), CenterPoint::None);
    const QImage unlit = control.grab().toImage();
    control.SetState(CenterPoint::Right);
    const QImage lit = control.grab().toImage();
    for (int cell = 0; cell < NineCells::Count; ++cell) {
        const QPoint middle = MiddleOf(cell, control);
        QCOMPARE(lit.pixel(middle) != unlit.pixel(middle), cell == 5);
    }
}

void TestNineCells::onlyThePersonIsSignalled()
{
    CenterPoint control;
    control.show();
    QVERIFY(QTest::qWaitForWindowExposed(&control));
    QSignalSpy changed(&control, &CenterPoint::StateChanged);
    control.SetState(CenterPoint::Left);
    QCOMPARE(changed.count(), 0);
    InputDriver input;
    for (int cell = 0; cell < NineCells::Count; ++cell) {
        input.Click(&control, MiddleOf(cell, control));
        QCOMPARE(int(control.GetState()), cell + 1);
        QCOMPARE(changed.count(), cell + 1);
        QCOMPARE(changed.last().first().value<CenterPoint::ControlState>(), control.GetState());
    }
    input.Click(&control, MiddleOf(0, control), Qt::RightButton);
    QCOMPARE(control.GetState(), CenterPoint::BottomRight);
}

void TestNineCells::theLitSquareSignalsNothing()
{
    CenterPoint control;
    control.show();
    QVERIFY(QTest::qWaitForWindowExposed(&control));
    control.SetState(CenterPoint::Center);
    QSignalSpy changed(&control, &CenterPoint::StateChanged);
    InputDriver input;
    input.Click(&control, MiddleOf(4, control));
    QCOMPARE(changed.count(), 0);
    // The point was dragged away, and comes back.
    control.SetState(CenterPoint::None);
    input.Click(&control, MiddleOf(4, control));
    QCOMPARE(changed.count(), 1);
}

void TestNineCells::keysChooseTheCenterPoint()
{
    CenterPoint control;
    control.show();
    control.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&control));
    QSignalSpy changed(&control, &CenterPoint::StateChanged);
    InputDriver input;
    input.Key(Qt::Key_Up);
    QCOMPARE(control.GetState(), CenterPoint::Center);
    input.Key(Qt::Key_Up);
    QCOMPARE(control.GetState(), CenterPoint::Top);
    QCOMPARE(changed.count(), 2);
    input.Key(Qt::Key_Up);
    QCOMPARE(changed.count(), 2);
}

void TestNineCells::otherKeysAreLeftToTheWindow()
{
    class Window : public QWidget
    {
    public:
        void keyPressEvent(QKeyEvent* event) override { keys << event->key(); }

        QList<int> keys;
    };

    Window window;
    auto* layout = new QVBoxLayout(&window);
    auto* anchor = new Anchor;
    auto* control = new CenterPoint;
    layout->addWidget(anchor);
    layout->addWidget(control);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    InputDriver input;
    anchor->setFocus();
    input.Key(Qt::Key_Return);
    input.Key(Qt::Key_Tab);
    QVERIFY(control->hasFocus());
    input.Key(Qt::Key_Escape);
    input.Key(Qt::Key_Left);
    QCOMPARE(window.keys, QList<int>({Qt::Key_Return, Qt::Key_Escape}));
}

void TestNineCells::whatIsOffTakesNoClick()
{
    CenterPoint control;
    control.setEnabled(false);
    control.show();
    QVERIFY(QTest::qWaitForWindowExposed(&control));
    QSignalSpy changed(&control, &CenterPoint::StateChanged);
    InputDriver input;
    input.Click(&control, MiddleOf(4, control));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(control.GetState(), CenterPoint::None);
}

ZK_REGISTER_TEST(tst_ninecells, TestNineCells)
#include "tst_ninecells.moc"
