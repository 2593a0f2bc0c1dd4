#include "guicore/LexoListView.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

/// A list of five previews that pops up below a button.
class TestListView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itOpensBelowTheControlWithTheFocus();
    void itIsAsLargeAsItsItems();
    void manyItemsAreScrolledTo();
    void aClickPicksAndCloses();
    void arrowsAndEnterPick_data();
    void arrowsAndEnterPick();
    void escapePicksNothing();
    void aPressOutsidePicksNothingAndDoesNothingElse();
    void anItemThatIsOffIsNotPicked();
    void enterWithoutACurrentItemLeavesItOpen();

private:
    QPoint MiddleOf(int row) const { return m_pList->visualRect(m_Model->index(row, 0)).center(); }

    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pAnchor = nullptr;
    std::unique_ptr<QStandardItemModel> m_Model;
    std::unique_ptr<LexoListView> m_pList;
};

void TestListView::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pWindow->setGeometry(50, 40, 300, 200);
    m_pAnchor = new QPushButton("Shape", m_pWindow.get());
    m_pAnchor->setGeometry(20, 20, 80, 24);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));

    m_Model = std::make_unique<QStandardItemModel>();
    for (int row = 0; row < 5; ++row) {
        QPixmap picture(48, 48);
        picture.fill(QColor(row * 50, 0, 0));
        m_Model->appendRow(new QStandardItem(picture, QString("Item %1").arg(row)));
    }
    m_pList = std::make_unique<LexoListView>(m_pWindow.get());
    m_pList->setModel(m_Model.get());
}

void TestListView::cleanup()
{
    m_pList.reset();
    m_Model.reset();
    m_pWindow.reset();
}

void TestListView::itOpensBelowTheControlWithTheFocus()
{
    m_pList->PopUp(m_pAnchor);
    QCOMPARE(m_pList->geometry().topLeft(), m_pAnchor->mapToGlobal(QPoint(0, 24)));
    QVERIFY(m_pList->hasFocus());
}

void TestListView::itIsAsLargeAsItsItems()
{
    m_pList->PopUp(m_pAnchor);
    // Four in the first row, one below; nothing is cut and nothing scrolls.
    QCOMPARE(MiddleOf(3).y(), MiddleOf(0).y());
    QCOMPARE(MiddleOf(4).x(), MiddleOf(0).x());
    QVERIFY(MiddleOf(4).y() > MiddleOf(0).y());
    for (int row = 0; row < 5; ++row)
        QVERIFY(m_pList->viewport()->rect().contains(m_pList->visualRect(m_Model->index(row, 0))));

    m_pList->close();
    m_Model->setRowCount(2);
    const int wide = m_pList->width();
    m_pList->PopUp(m_pAnchor);
    QVERIFY(m_pList->width() < wide);
    QCOMPARE(MiddleOf(1).y(), MiddleOf(0).y());
}

void TestListView::manyItemsAreScrolledTo()
{
    for (int row = 5; row < 40; ++row)
        m_Model->appendRow(new QStandardItem(QString("Item %1").arg(row)));
    m_pList->setCurrentIndex(m_Model->index(39, 0));
    m_pList->PopUp(m_pAnchor);
    QVERIFY(m_pList->height() < m_pList->screen()->availableGeometry().height());
    QCOMPARE(MiddleOf(3).y(), MiddleOf(0).y());
    QVERIFY(m_pList->viewport()->rect().contains(MiddleOf(39)));
}

void TestListView::aClickPicksAndCloses()
{
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    InputDriver().Click(m_pList->viewport(), MiddleOf(3));
    QCOMPARE(picked.count(), 1);
    QCOMPARE(picked[0][0].toModelIndex().row(), 3);
    QCOMPARE(m_pList->currentIndex().row(), 3);
    QVERIFY(!m_pList->isVisible());
}

void TestListView::arrowsAndEnterPick_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void TestListView::arrowsAndEnterPick()
{
    QFETCH(const int, key);
    m_pList->setCurrentIndex(m_Model->index(0, 0));
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    InputDriver input;
    input.Key(Qt::Key_Right);
    input.Key(Qt::Key_Right);
    input.Key(key);
    QCOMPARE(picked.count(), 1);
    QCOMPARE(picked[0][0].toModelIndex().row(), 2);
    QVERIFY(!m_pList->isVisible());
}

void TestListView::escapePicksNothing()
{
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    InputDriver().Key(Qt::Key_Escape);
    QVERIFY(!m_pList->isVisible());
    QCOMPARE(picked.count(), 0);
}

void TestListView::aPressOutsidePicksNothingAndDoesNothingElse()
{
    // Only a window system that grabs the mouse hands the press on; this is what forbids it.
    QVERIFY(m_pList->testAttribute(Qt::WA_NoMouseReplay));
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    const QSignalSpy clicked(m_pAnchor, &QPushButton::clicked);
    InputDriver().Click(m_pAnchor);
    QVERIFY(!m_pList->isVisible());
    QCOMPARE(picked.count(), 0);
    QCOMPARE(clicked.count(), 0);
}

void TestListView::anItemThatIsOffIsNotPicked()
{
    m_Model->item(1)->setEnabled(false);
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    InputDriver().Click(m_pList->viewport(), MiddleOf(1));
    QVERIFY(m_pList->isVisible());
    QCOMPARE(picked.count(), 0);
}

void TestListView::enterWithoutACurrentItemLeavesItOpen()
{
    m_Model->clear();
    m_pList->PopUp(m_pAnchor);
    const QSignalSpy picked(m_pList.get(), &LexoListView::Picked);
    InputDriver().Key(Qt::Key_Return);
    QVERIFY(m_pList->isVisible());
    QCOMPARE(picked.count(), 0);
}

ZK_REGISTER_TEST(tst_listview, TestListView)
#include "tst_listview.moc"
