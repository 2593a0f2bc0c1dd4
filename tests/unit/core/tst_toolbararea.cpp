#include "core/ToolBarArea.h"
#include "core/ZKToolBarManager.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

class TestToolBarArea : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { ZKToolBarManager::Activate(nullptr); }

    void activateShowsOneBarInPlaceOfTheLast();
    void barsFromBeforeTheAreaStandInIt();
    void unknownBarIsTakenInByItsWindowTitle();
    void repeatedAddKeepsTheBarShown();
    void destroyedBarLeaves();
    void heightAndWidthStayCalm();
    void wideBarScrollsByTheWheelAndTheFocus();
    void buttonAtTheEdgeScrollsAWideBar();
    void windowIconIsThePictureOfTheBar();
    void withoutAnAreaNothingIsShown();
};

void TestToolBarArea::activateShowsOneBarInPlaceOfTheLast()
{
    ToolBarArea area;
    auto* first = new QWidget;
    auto* second = new QWidget;
    ZKToolBarManager::Add(first, "First");
    ZKToolBarManager::Add(second, "Second");
    QCOMPARE(first->accessibleName(), QString("First"));
    QVERIFY(first->isHidden() && second->isHidden());

    ZKToolBarManager::Activate(first);
    QVERIFY(!first->isHidden() && second->isHidden());
    ZKToolBarManager::Activate(second);
    QVERIFY(first->isHidden() && !second->isHidden());
    QCOMPARE(area.ShownBar(), second);
    ZKToolBarManager::Activate(nullptr);
    QVERIFY(first->isHidden() && second->isHidden());
    QCOMPARE(area.ShownBar(), nullptr);
}

void TestToolBarArea::barsFromBeforeTheAreaStandInIt()
{
    auto* bar = new QWidget;
    ZKToolBarManager::Add(bar, "Bar");
    ZKToolBarManager::Activate(bar);
    QVERIFY(bar->isHidden());
    ToolBarArea area;
    QVERIFY(area.isAncestorOf(bar));
    QVERIFY(!bar->isHidden());
}

void TestToolBarArea::unknownBarIsTakenInByItsWindowTitle()
{
    ToolBarArea area;
    auto* bar = new QWidget;
    bar->setWindowTitle("Bucket toolbar");
    ZKToolBarManager::Activate(bar);
    QVERIFY(area.isAncestorOf(bar));
    QCOMPARE(bar->accessibleName(), QString("Bucket toolbar"));
    QVERIFY(!bar->isHidden());
}

void TestToolBarArea::repeatedAddKeepsTheBarShown()
{
    ToolBarArea area;
    auto* bar = new QWidget;
    ZKToolBarManager::Activate(bar);
    ZKToolBarManager::Add(bar, "Bar");
    ZKToolBarManager::Add(nullptr, "None");
    QVERIFY(!bar->isHidden());
}

void TestToolBarArea::destroyedBarLeaves()
{
    ToolBarArea area;
    {
        QWidget bar;
        ZKToolBarManager::Activate(&bar);
    }
    QCOMPARE(area.ShownBar(), nullptr);
    ToolBarArea next;
    QCOMPARE(next.ShownBar(), nullptr);
}

void TestToolBarArea::heightAndWidthStayCalm()
{
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* area = new ToolBarArea(&window);
    layout->addWidget(area);
    window.resize(300, 100);
    window.show();

    auto* bar = new QWidget;
    bar->setFixedSize(2000, 30);
    ZKToolBarManager::Activate(bar);
    QTest::qWait(0);
    QCOMPARE(area->height(), ToolBarArea::Height);
    QCOMPARE(window.width(), 300);
    const QPoint center = bar->mapTo(area, bar->rect().center());
    QCOMPARE(center.y(), area->rect().center().y());
    ZKToolBarManager::Activate(nullptr);
    QTest::qWait(0);
    QCOMPARE(area->height(), ToolBarArea::Height);
}

void TestToolBarArea::wideBarScrollsByTheWheelAndTheFocus()
{
    ToolBarArea area;
    area.resize(300, ToolBarArea::Height);
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    auto* first = new QPushButton("first");
    auto* last = new QPushButton("last");
    for (QPushButton* button : {first, last}) {
        button->setFixedWidth(250);
        button->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(button);
    }
    ZKToolBarManager::Activate(bar);
    area.show();
    QApplication::setActiveWindow(&area);
    first->setFocus();
    const QPoint hidden = last->mapTo(&area, QPoint(last->width(), 0));
    QVERIFY(hidden.x() > area.width());

    QTest::keyClick(&area, Qt::Key_Tab);
    QVERIFY(last->hasFocus());
    QVERIFY(last->mapTo(&area, QPoint(last->width(), 0)).x() <= area.width());

    QWheelEvent back({150, 20}, area.mapToGlobal({150, 20}), {}, {0, 1200}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(area.viewport(), &back);
    QCOMPARE(last->mapTo(&area, QPoint(last->width(), 0)), hidden);
}

void TestToolBarArea::buttonAtTheEdgeScrollsAWideBar()
{
    ToolBarArea area;
    area.resize(300, ToolBarArea::Height);
    auto* more = area.findChild<QToolButton*>("moreOptions");
    auto* bar = new QWidget;
    bar->setFixedSize(400, 24);
    ZKToolBarManager::Activate(bar);
    area.show();
    QVERIFY(more->isVisible());
    const int start = bar->mapTo(&area, QPoint()).x();
    QTest::mouseClick(more, Qt::LeftButton);
    QVERIFY(bar->mapTo(&area, QPoint()).x() < start);
    QVERIFY(bar->mapTo(&area, QPoint(bar->width(), 0)).x() <= more->x());
    QTest::mouseClick(more, Qt::LeftButton);
    QCOMPARE(bar->mapTo(&area, QPoint()).x(), start);

    QTest::mouseClick(more, Qt::LeftButton);
    auto* other = new QWidget;
    other->setFixedSize(400, 24);
    ZKToolBarManager::Activate(other);
    QCOMPARE(other->mapTo(&area, QPoint()).x(), start);

    area.resize(600, ToolBarArea::Height);
    QVERIFY(!more->isVisible());
}

void TestToolBarArea::windowIconIsThePictureOfTheBar()
{
    ToolBarArea area;
    auto* picture = area.findChild<QLabel*>();
    QPixmap pixmap(40, 40);
    pixmap.fill(Qt::red);
    auto* with = new QWidget;
    with->setWindowIcon(pixmap);
    auto* without = new QWidget;

    ZKToolBarManager::Activate(with);
    QVERIFY(!picture->isHidden());
    QCOMPARE(picture->pixmap(Qt::ReturnByValue).toImage().pixelColor(20, 20), QColor(Qt::red));
    ZKToolBarManager::Activate(without);
    QVERIFY(picture->isHidden());
}

void TestToolBarArea::withoutAnAreaNothingIsShown()
{
    QWidget bar;
    ZKToolBarManager::Activate(&bar);
    QVERIFY(bar.isHidden());
    QVERIFY(ZKToolBarManager::GetInstance() != nullptr);
}

ZK_REGISTER_TEST(tst_toolbararea, TestToolBarArea)
#include "tst_toolbararea.moc"
