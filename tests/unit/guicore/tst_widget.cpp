#include "guicore/LXWidget.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QSizeGrip>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

/// A panel or a pop-up with a frame of its own.
class TestWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aWindowHasATitleAndAGrip();
    void theTitleFollowsTheWindow();
    void theContentsHaveTheFocusFirst();
    void withoutATitleBarTheContentsBeginAtTheTop();
    void insideALayoutItIsAPlainWidget();
    void theFrameComesBackWhenItLeavesALayout();
    void aDragOfTheTitleMovesTheWindow();
    void aTitleThatIsNotMovableStays();
    void theGripResizes();
    void withoutResizingTheWindowHasTheSizeOfItsContents();
    void contentsPlacedByHandKeepTheSizeOfTheWindow();
    void theButtonCloses_data();
    void theButtonCloses();
    void aPopupClosesOnAPressOutside();
    void escapeClosesAPopup();
    void aFrameOfTheWindowSystemIsNotDoubled();

private:
    QWidget* TitleBar() const { return m_pWidget->findChild<QToolButton*>()->parentWidget(); }

    QSizeGrip* Grip() const { return m_pWidget->findChild<QSizeGrip*>(); }

    void Show();

    std::unique_ptr<LXWidget> m_pWidget;
    QPushButton* m_pContents = nullptr;
};

void TestWidget::init()
{
    m_pWidget = std::make_unique<LXWidget>();
    m_pWidget->setWindowTitle("Pen options");
    auto* layout = new QVBoxLayout(m_pWidget.get());
    layout->setContentsMargins(0, 0, 0, 0);
    m_pContents = new QPushButton("Rubber band");
    m_pContents->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    layout->addWidget(m_pContents);
}

void TestWidget::cleanup()
{
    m_pWidget.reset();
}

void TestWidget::Show()
{
    m_pWidget->setGeometry(100, 80, 200, 150);
    m_pWidget->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWidget.get()));
}

void TestWidget::aWindowHasATitleAndAGrip()
{
    Show();
    QVERIFY(m_pWidget->IsTitleBarVisible() && m_pWidget->IsResizable() && m_pWidget->IsTitleMovable());
    QVERIFY(TitleBar()->isVisible());
    QVERIFY(Grip()->isVisible());
    // One pixel of line on each side, and the contents below the bar.
    QCOMPARE(TitleBar()->geometry(), QRect(1, 1, 198, TitleBar()->height()));
    QCOMPARE(m_pContents->geometry(), QRect(QPoint(1, 1 + TitleBar()->height()), QPoint(198, 148)));
    QCOMPARE(Grip()->geometry().bottomRight(), QPoint(198, 148));
}

void TestWidget::theTitleFollowsTheWindow()
{
    m_pWidget->SetResizable(false);
    Show();
    const QImage before = TitleBar()->grab().toImage();
    m_pWidget->setWindowTitle("The options of the pen, told at great length");
    QCoreApplication::processEvents();
    QVERIFY(TitleBar()->grab().toImage() != before);
    const int length = TitleBar()->fontMetrics().horizontalAdvance(m_pWidget->windowTitle());
    QVERIFY(TitleBar()->width() > length);
}

void TestWidget::theContentsHaveTheFocusFirst()
{
    Show();
    QVERIFY(m_pContents->hasFocus());
}

void TestWidget::withoutATitleBarTheContentsBeginAtTheTop()
{
    Show();
    m_pWidget->SetTitleBarVisible(false);
    QCoreApplication::processEvents();
    QVERIFY(!m_pWidget->IsTitleBarVisible());
    QVERIFY(!TitleBar()->isVisible());
    QCOMPARE(m_pContents->geometry(), QRect(1, 1, 198, 148));

    m_pWidget->SetTitleBarVisible(true);
    QCoreApplication::processEvents();
    QVERIFY(TitleBar()->isVisible());
    QCOMPARE(m_pContents->geometry().top(), TitleBar()->geometry().bottom() + 1);
}

void TestWidget::insideALayoutItIsAPlainWidget()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(m_pWidget.get());
    window.resize(200, 150);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(m_pWidget->isVisible() && !m_pWidget->isWindow());
    QVERIFY(!TitleBar()->isVisible());
    QVERIFY(!Grip()->isVisible());
    QCOMPARE(m_pContents->geometry(), m_pWidget->rect());
    m_pWidget->setParent(nullptr);
}

void TestWidget::theFrameComesBackWhenItLeavesALayout()
{
    QWidget window;
    m_pWidget->setParent(&window);
    window.show();
    m_pWidget->setParent(nullptr);
    Show();
    QVERIFY(TitleBar()->isVisible());
    QVERIFY(Grip()->isVisible());
    QVERIFY(m_pContents->y() > TitleBar()->height());
}

void TestWidget::aDragOfTheTitleMovesTheWindow()
{
    Show();
    const QPoint before = m_pWidget->pos();
    InputDriver input;
    const QPoint held(40, 10);
    input.Press(TitleBar(), held);
    // The bar moves along, so each position is told from where the bar is then.
    input.Move(TitleBar(), held + QPoint(30, 20));
    QCOMPARE(m_pWidget->pos(), before + QPoint(30, 20));
    input.Move(TitleBar(), held + QPoint(-5, 7));
    input.Release(TitleBar(), held);
    QCOMPARE(m_pWidget->pos(), before + QPoint(25, 27));

    input.Move(TitleBar(), held + QPoint(50, 50));
    QCOMPARE(m_pWidget->pos(), before + QPoint(25, 27));
}

void TestWidget::aTitleThatIsNotMovableStays()
{
    m_pWidget->SetTitleMovable(false);
    QVERIFY(!m_pWidget->IsTitleMovable());
    Show();
    const QPoint before = m_pWidget->pos();
    InputDriver().Drag(TitleBar(), {QPoint(40, 10), QPoint(70, 30)});
    QCOMPARE(m_pWidget->pos(), before);
}

void TestWidget::theGripResizes()
{
    Show();
    const QSize before = m_pWidget->size();
    InputDriver input;
    input.Press(Grip(), QPoint(6, 6));
    input.Move(Grip(), QPoint(26, 16));
    input.Release(Grip(), QPoint(6, 6));
    QCOMPARE(m_pWidget->size(), before + QSize(20, 10));
}

void TestWidget::withoutResizingTheWindowHasTheSizeOfItsContents()
{
    m_pWidget->SetResizable(false);
    Show();
    QVERIFY(!m_pWidget->IsResizable());
    QVERIFY(!Grip()->isVisible());
    QCOMPARE(m_pWidget->size(), m_pWidget->sizeHint());

    m_pContents->setMinimumSize(300, 100);
    QCoreApplication::processEvents();
    QCOMPARE(m_pWidget->size(), m_pWidget->sizeHint());
    QVERIFY(m_pWidget->width() >= 300);

    m_pContents->setMinimumSize(30, 10);
    QCoreApplication::processEvents();
    QCOMPARE(m_pWidget->size(), m_pWidget->sizeHint());
    QVERIFY(m_pWidget->width() < 300);
}

void TestWidget::contentsPlacedByHandKeepTheSizeOfTheWindow()
{
    LXWidget widget;
    QPushButton button("Rubber band", &widget);
    button.setGeometry(20, 30, 100, 24);
    widget.SetTitleBarVisible(false);
    widget.resize(200, 150);
    widget.SetResizable(false);
    widget.show();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    QCOMPARE(widget.size(), QSize(200, 150));
    widget.SetTitleBarVisible(true);
    widget.setWindowTitle("Pen options");
    QCOMPARE(widget.size(), QSize(200, 150));
}

void TestWidget::theButtonCloses_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by key") << true;
}

void TestWidget::theButtonCloses()
{
    QFETCH(const bool, byKey);
    Show();
    auto* close = m_pWidget->findChild<QToolButton*>();
    QCOMPARE(close->accessibleName(), QString("Close"));
    InputDriver input;
    if (byKey) {
        m_pContents->setFocus();
        input.Key(Qt::Key_Tab);
        QVERIFY(close->hasFocus());
        input.Key(Qt::Key_Space);
    } else {
        input.Click(close);
    }
    QVERIFY(!m_pWidget->isVisible());
}

void TestWidget::aPopupClosesOnAPressOutside()
{
    // Only a window system that grabs the mouse hands the press on; this is what forbids it.
    QVERIFY(m_pWidget->testAttribute(Qt::WA_NoMouseReplay));
    QPushButton other("Other");
    other.setGeometry(400, 300, 100, 50);
    other.show();
    m_pWidget->setWindowFlags(Qt::Popup);
    m_pWidget->setGeometry(100, 80, 200, 150);
    m_pWidget->show();
    QVERIFY(TitleBar()->isVisible());
    InputDriver().Click(m_pWidget.get(), QPoint(150, 120));
    QVERIFY(m_pWidget->isVisible());
    const QSignalSpy clicked(&other, &QPushButton::clicked);
    InputDriver().Click(&other);
    QVERIFY(!m_pWidget->isVisible());
    QCOMPARE(clicked.count(), 0);
}

void TestWidget::escapeClosesAPopup()
{
    m_pWidget->setWindowFlags(Qt::Popup);
    m_pWidget->show();
    InputDriver().Key(Qt::Key_Escape);
    QVERIFY(!m_pWidget->isVisible());
}

void TestWidget::aFrameOfTheWindowSystemIsNotDoubled()
{
    m_pWidget->setWindowFlags(Qt::Tool);
    m_pWidget->setGeometry(100, 80, 200, 150);
    m_pWidget->show();
    QVERIFY(!TitleBar()->isVisible());
    QVERIFY(!Grip()->isVisible());
    QCOMPARE(m_pContents->geometry(), m_pWidget->rect());
}

ZK_REGISTER_TEST(tst_widget, TestWidget)
#include "tst_widget.moc"
