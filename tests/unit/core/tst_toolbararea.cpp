#include "core/ToolBarArea.h"
#include "core/ZKToolBarManager.h"
#include "support/TestRegistry.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QTest>

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
    QCOMPARE(bar->parentWidget(), &area);
    QVERIFY(!bar->isHidden());
}

void TestToolBarArea::unknownBarIsTakenInByItsWindowTitle()
{
    ToolBarArea area;
    auto* bar = new QWidget;
    bar->setWindowTitle("Bucket toolbar");
    ZKToolBarManager::Activate(bar);
    QCOMPARE(bar->parentWidget(), &area);
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
    QCOMPARE(bar->geometry().center().y(), area->rect().center().y());
    ZKToolBarManager::Activate(nullptr);
    QTest::qWait(0);
    QCOMPARE(area->height(), ToolBarArea::Height);
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
