#include "core/ZKApplication.h"
#include "gui/ColorWells.h"
#include "gui/LXOperationProgressDlg.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/PatternSelectWidget.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

/// The panels beside the picture, and the small dialogs of tools.
class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void toolPanelShowsTheLastAdded();
    void toolPanelTakesNullAndRepetitions();
    void toolPanelForgetsADeletedWidget();
    void toolPanelLeavesWidgetsAlive();

    void wellsFollowTheColors();
    void keysSwapAndResetTheColors();

    void progressClampsToItsRange();
    void progressWithoutListenerCannotBeCancelled();
    void progressIsCancelledOnceAndStays();
    void progressClosesFromInside();

    void patternsAreListedAndChosen();
    void patternKeysMoveAndTake();
    void patternDoubleClickIsTold();
    void brokenPatternKeepsItsPlace();
};

namespace {
QString WritePattern(const QTemporaryDir& folder, const QString& name, const QColor& color)
{
    QImage image(6, 4, QImage::Format_RGB32);
    image.fill(color);
    QString path = folder.filePath(name);
    image.save(path);
    return path;
}
} // namespace

void TestPanels::toolPanelShowsTheLastAdded()
{
    LXToolWidgetManager manager;
    QWidget first, second;
    QSignalSpy changed(&manager, &LXToolWidgetManager::CurrentWidgetChanged);
    manager.show();
    manager.AddWidget(&first);
    QCOMPARE(manager.GetCurrentWidget(), &first);
    QVERIFY(first.isVisible());
    manager.AddWidget(&second);
    QVERIFY(second.isVisible() && !first.isVisible());
    manager.RemoveWidget(&second);
    QCOMPARE(manager.GetCurrentWidget(), &first);
    QVERIFY(first.isVisible() && !second.isVisible());
    manager.RemoveWidget(&first);
    QVERIFY(!manager.GetCurrentWidget());
    QCOMPARE(changed.count(), 4);
}

void TestPanels::toolPanelTakesNullAndRepetitions()
{
    LXToolWidgetManager manager;
    QWidget panel, other;
    manager.AddWidget(nullptr);
    manager.RemoveWidget(nullptr);
    manager.RemoveWidget(&other);
    manager.AddWidget(&panel);
    QSignalSpy changed(&manager, &LXToolWidgetManager::CurrentWidgetChanged);
    manager.AddWidget(&panel);
    QCOMPARE(changed.count(), 0);
    manager.RemoveWidget(&panel);
    manager.RemoveWidget(&panel);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!manager.GetCurrentWidget());
}

void TestPanels::toolPanelForgetsADeletedWidget()
{
    LXToolWidgetManager manager;
    QWidget first;
    auto second = std::make_unique<QWidget>();
    manager.AddWidget(&first);
    manager.AddWidget(second.get());
    second.reset();
    QCoreApplication::processEvents();
    QCOMPARE(manager.GetCurrentWidget(), &first);
}

void TestPanels::toolPanelLeavesWidgetsAlive()
{
    QWidget panel;
    {
        LXToolWidgetManager manager;
        manager.AddWidget(&panel);
    }
    QVERIFY(!panel.parent());
}

void TestPanels::wellsFollowTheColors()
{
    ColorWells::Reset();
    ColorWells wells;
    ZKApplication::SetForeground(QColor(10, 200, 30));
    const QImage shown = wells.grab().toImage();
    QCOMPARE(shown.pixelColor(16, 28), QColor(10, 200, 30));
    QCOMPARE(shown.pixelColor(33, 50), QColor(Qt::white));
    ColorWells::Reset();
}

void TestPanels::keysSwapAndResetTheColors()
{
    ZKApplication::SetForeground(Qt::red);
    ZKApplication::SetBackground(Qt::blue);
    ColorWells wells;
    wells.show();
    QVERIFY(QTest::qWaitForWindowActive(&wells));
    QTest::keyClick(&wells, Qt::Key_X);
    QCOMPARE(ZKApplication::GetForeground(), QColor(Qt::blue));
    QCOMPARE(ZKApplication::GetBackground(), QColor(Qt::red));
    QTest::keyClick(&wells, Qt::Key_D);
    QCOMPARE(ZKApplication::GetForeground(), QColor(Qt::black));
    QCOMPARE(ZKApplication::GetBackground(), QColor(Qt::white));
}

void TestPanels::progressClampsToItsRange()
{
    LXOperationProgressDlg dialog;
    dialog.SetProgressRange(0, 600);
    dialog.SetProgressPos(700);
    QCOMPARE(dialog.GetProgressPos(), 600);
    dialog.SetProgressPos(-1);
    QCOMPARE(dialog.GetProgressPos(), 0);
    QCOMPARE(dialog.GetProgressMaximum(), 600);
    dialog.SetProgressLabel("Fill can:");
    QCOMPARE(dialog.findChild<QProgressBar*>()->accessibleName(), QString("Fill can:"));
}

void TestPanels::progressWithoutListenerCannotBeCancelled()
{
    LXOperationProgressDlg dialog;
    dialog.show();
    QVERIFY(!dialog.findChild<QPushButton*>()->isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
}

void TestPanels::progressIsCancelledOnceAndStays()
{
    LXOperationProgressDlg dialog;
    int cancelled = 0;
    connect(&dialog, &LXOperationProgressDlg::Cancelled, this, [&] { ++cancelled; });
    dialog.show();
    QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(cancelled, 1);
    QVERIFY(dialog.isVisible());
}

void TestPanels::progressClosesFromInside()
{
    LXOperationProgressDlg dialog;
    QTimer::singleShot(0, &dialog, &QWidget::close);
    QCOMPARE(dialog.Exec(), 0);
    QVERIFY(!dialog.isVisible());
}

void TestPanels::patternsAreListedAndChosen()
{
    const QTemporaryDir folder;
    PatternSelectWidget patterns;
    QCOMPARE(patterns.GetPattern().style(), Qt::NoBrush);
    patterns.AddItem(WritePattern(folder, "red.png", Qt::red), "red.png");
    patterns.AddItem(WritePattern(folder, "blue.png", Qt::blue), "blue.png");
    QSignalSpy changed(&patterns, &PatternSelectWidget::CurrentItemChanged);
    patterns.SelectItem(1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].toInt(), 1);
    patterns.SelectItem(7);
    QCOMPARE(patterns.GetCurrentItem(), 1);
    QCOMPARE(patterns.GetItemImage(0).size(), QSize(6, 4));
    QCOMPARE(patterns.GetItemImage(0).toImage().pixelColor(0, 0), QColor(Qt::red));
    QVERIFY(patterns.GetItemImage(2).isNull());
    QCOMPARE(patterns.GetPattern().textureImage().pixelColor(3, 2), QColor(Qt::blue));
}

void TestPanels::patternKeysMoveAndTake()
{
    const QTemporaryDir folder;
    PatternSelectWidget patterns;
    for (const char* name : {"a.png", "b.png", "c.png"})
        patterns.AddItem(WritePattern(folder, name, Qt::red), name);
    patterns.SelectItem(0);
    patterns.show();
    patterns.setFocus();
    QSignalSpy taken(&patterns, &PatternSelectWidget::ItemDoubleClicked);
    auto* list = patterns.findChild<QListWidget*>();
    QTest::keyClick(list, Qt::Key_Right);
    QCOMPARE(patterns.GetCurrentItem(), 1);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(taken.count(), 1);
    QCOMPARE(taken[0][0].toInt(), 1);
    QTest::keyClick(list, Qt::Key_Escape);
    QVERIFY(!patterns.isVisible());
}

void TestPanels::patternDoubleClickIsTold()
{
    const QTemporaryDir folder;
    PatternSelectWidget patterns;
    patterns.AddItem(WritePattern(folder, "a.png", Qt::red), "a.png");
    patterns.show();
    QSignalSpy taken(&patterns, &PatternSelectWidget::ItemDoubleClicked);
    auto* list = patterns.findChild<QListWidget*>();
    const QPoint middle = list->visualItemRect(list->item(0)).center();
    InputDriver().DoubleClick(list->viewport(), middle);
    QCOMPARE(taken.count(), 1);
}

void TestPanels::brokenPatternKeepsItsPlace()
{
    const QTemporaryDir folder;
    PatternSelectWidget patterns;
    patterns.AddItem(folder.filePath("missing.png"), "missing.png");
    patterns.AddItem(WritePattern(folder, "a.png", Qt::red), "a.png");
    QCOMPARE(patterns.GetItemCount(), 2);
    patterns.SelectItem(0);
    QVERIFY(patterns.GetItemImage(0).isNull());
    QCOMPARE(patterns.GetPattern().style(), Qt::NoBrush);
}

ZK_REGISTER_TEST(tst_panels, TestPanels)
#include "tst_panels.moc"
