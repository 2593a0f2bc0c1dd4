#include "gui/ClipboardPanel.h"
#include "gui/LayersWidget.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListView>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTest>
#include <QToolButton>

namespace {
void AppendRow(QStandardItemModel& model, const QString& name)
{
    model.appendRow({new QStandardItem, new QStandardItem(name), new QStandardItem("12:00:00\n4 bytes"),
                     new QStandardItem("ARGB32\nCopied")});
}
} // namespace

class TestClipboardPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withoutAListThePanelSaysSo();
    void anEmptyListSaysSo();
    void rowsShowInTheListsOwnSelection();
    void theRowThatIsCopiedAgainComesIntoSight();
    void aClickChoosesTheRow();
    void everyActionHasAButton();
    void theListIsTakenAway();
    void aListThatWasThereBeforeIsShown();

private:
    QListView* List() const { return m_pPanel->findChild<QListView*>("m_pList"); }

    bool ShowsList() const
    {
        return m_pPanel->findChild<QStackedWidget*>("m_pPages")->currentWidget() == List();
    }

    void HandOver() { m_pLayers->setClipboardModel(&m_Model, &m_Selection, {&m_First, &m_Second}); }

    QStandardItemModel m_Model;
    QItemSelectionModel m_Selection{&m_Model};
    QAction m_First{"Delete from clipboard", nullptr};
    QAction m_Second{"Copy to system clipboard", nullptr};
    std::unique_ptr<LayersWidget> m_pLayers;
    std::unique_ptr<ClipboardPanel> m_pPanel;
};

void TestClipboardPanel::init()
{
    m_pLayers = std::make_unique<LayersWidget>();
    m_pPanel = std::make_unique<ClipboardPanel>(m_pLayers.get());
    m_pPanel->resize(260, 240);
    m_pPanel->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pPanel.get()));
}

void TestClipboardPanel::cleanup()
{
    m_pLayers->setClipboardModel(nullptr, nullptr, {});
    m_pPanel.reset();
    m_pLayers.reset();
    m_Model.clear();
}

void TestClipboardPanel::withoutAListThePanelSaysSo()
{
    QVERIFY(!ShowsList());
    QVERIFY(m_pPanel->findChild<QLabel*>("m_pEmptyLbl")->isVisible());
    QVERIFY(m_pPanel->findChildren<QToolButton*>().isEmpty());
}

void TestClipboardPanel::anEmptyListSaysSo()
{
    HandOver();
    QVERIFY(!ShowsList());
    AppendRow(m_Model, "Untitled 1");
    QVERIFY(ShowsList());
    m_Model.removeRow(0);
    QVERIFY(!ShowsList());
}

void TestClipboardPanel::rowsShowInTheListsOwnSelection()
{
    HandOver();
    AppendRow(m_Model, "Untitled 1");
    AppendRow(m_Model, "Untitled 2");
    QCOMPARE(List()->selectionModel(), &m_Selection);
    m_Selection.setCurrentIndex(m_Model.index(1, 0),
                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QCOMPARE(List()->currentIndex().row(), 1);
    // All of the row is seen without scrolling sideways.
    QTRY_VERIFY(List()->visualRect(m_Model.index(1, 0)).width() > 0);
    QVERIFY(List()->visualRect(m_Model.index(1, 0)).right() <= List()->viewport()->width());
}

void TestClipboardPanel::theRowThatIsCopiedAgainComesIntoSight()
{
    HandOver();
    for (int i = 0; i < 40; ++i)
        AppendRow(m_Model, QString("Untitled %1").arg(i));
    const QModelIndex first = m_Model.index(0, 0);
    QTRY_VERIFY(!List()->viewport()->rect().intersects(List()->visualRect(first)));
    // Chosen by its owner, who tells nobody of the current row.
    m_Selection.select(first, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QVERIFY(List()->viewport()->rect().contains(List()->visualRect(first).center()));
}

void TestClipboardPanel::aClickChoosesTheRow()
{
    HandOver();
    AppendRow(m_Model, "Untitled 1");
    AppendRow(m_Model, "Untitled 2");
    InputDriver input;
    input.Click(List()->viewport(), List()->visualRect(m_Model.index(0, 0)).center());
    QCOMPARE(m_Selection.currentIndex().row(), 0);
    QCOMPARE(m_Selection.selectedIndexes().size(), 1);
}

void TestClipboardPanel::everyActionHasAButton()
{
    HandOver();
    const QList<QToolButton*> buttons = m_pPanel->findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(buttons[0]->defaultAction(), &m_First);
    QCOMPARE(buttons[1]->accessibleName(), QString("Copy to system clipboard"));
    m_Second.setEnabled(false);
    QVERIFY(!buttons[1]->isEnabled());
    m_Second.setEnabled(true);
}

void TestClipboardPanel::theListIsTakenAway()
{
    HandOver();
    AppendRow(m_Model, "Untitled 1");
    m_pLayers->setClipboardModel(nullptr, nullptr, {});
    QVERIFY(!ShowsList());
    QVERIFY(!List()->model());
    QVERIFY(m_pPanel->findChildren<QToolButton*>().isEmpty());
    QVERIFY(!m_pLayers->GetClipboardModel());
}

void TestClipboardPanel::aListThatWasThereBeforeIsShown()
{
    HandOver();
    AppendRow(m_Model, "Untitled 1");
    m_pPanel = std::make_unique<ClipboardPanel>(m_pLayers.get());
    QVERIFY(ShowsList());
    QCOMPARE(List()->model(), &m_Model);
}

ZK_REGISTER_TEST(tst_clipboardpanel, TestClipboardPanel)
#include "tst_clipboardpanel.moc"
