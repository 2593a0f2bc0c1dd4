#include "GuiFixture.h"

#include "document/LXDocumentInterface.h"
#include "gui/HistoryModel.h"
#include "gui/HistoryPanel.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "support/Settle.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QTest>
#include <QTimer>

/// The list of the history's states.
class TestHistoryPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theListBeginsWithTheStateBeforeAllSteps();
    void stepsStandInOrderAndTheLastIsCurrent();
    void undoneStepsAreMarkedAndStay();
    void aClickGoesBackAndForth();
    void theKeysGoStepByStep();
    void theCleanStateIsMarked();
    void theCleanMarkGoesWithItsState();
    void rowsThatGoChooseNothing();
    void aMacroIsOneRow();
    void anOpenStepIsTheLastRow();
    void goingToTheOpenStepChangesNothing();
    void forgottenStepsAreTold();
    void theMemoryOfTheStepsIsTold();
    void aLockedDocumentCantBeChanged();
    void aStepThatFailsLeavesTheListRight();
    void letsGoOfAViewThatGoes();

private:
    QListView* List() const { return m_pPanel->findChild<QListView*>("m_pList"); }

    void Push(const QString& text, qint64 cost = 0);

    /// The rows, undone ones in brackets, the clean one with a star, the current one with an arrow.
    QStringList Rows() const;

    void ClickRow(int row) const
    {
        const QRect place = List()->visualRect(List()->model()->index(row, 0));
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    }

    int m_Value = 0; ///< what the commands count
    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<LexoUndoStack> m_pHistory;
    std::unique_ptr<ZKDocumentView> m_pView;
    std::unique_ptr<HistoryPanel> m_pPanel;
};

namespace {
/// Counts up and down.
class CountCommand : public LexoCommand
{
public:
    CountCommand(const QString& text, int* value, qint64 cost) : m_pValue(value), m_Cost(cost)
    {
        setText(text);
    }

    void redo() override { ++*m_pValue; }

    void undo() override
    {
        if (text() == QLatin1String("Stuck")) throw std::bad_alloc();
        --*m_pValue;
    }

    void RedoExecute(LexoCommandData*) override {}

    void UndoExecute(LexoCommandData*) override {}

    qint64 GetMemoryCost() const override { return m_Cost; }

protected:
    bool AcceptsData(const LexoCommandData*) const override { return false; }

private:
    int* m_pValue;
    qint64 m_Cost;
};
} // namespace

void TestHistoryPanel::Push(const QString& text, qint64 cost)
{
    m_pHistory->push(new CountCommand(text, &m_Value, cost));
}

QStringList TestHistoryPanel::Rows() const
{
    SettleEvents();
    QStringList rows;
    const QAbstractItemModel* model = List()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        QString text = index.data().toString();
        if (!index.data(HistoryModel::IsDoneRole).toBool()) text = '(' + text + ')';
        if (index.data(HistoryModel::IsCleanRole).toBool()) text += '*';
        if (List()->selectionModel()->isSelected(index)) text = '>' + text;
        rows << text;
    }
    return rows;
}

void TestHistoryPanel::init()
{
    QLocale::setDefault(QLocale::c());
    m_Value = 0;
    m_pDocument = GuiFixture::MakeDocument({16, 16});
    m_pHistory = std::make_unique<LexoUndoStack>();
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel = std::make_unique<HistoryPanel>();
    m_pPanel->resize(260, 300);
    m_pPanel->SetView(m_pView.get());
    m_pPanel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pPanel.get()));
}

void TestHistoryPanel::cleanup()
{
    m_pPanel.reset();
    m_pView.reset();
    m_pHistory.reset();
    m_pDocument.reset();
}

void TestHistoryPanel::theListBeginsWithTheStateBeforeAllSteps()
{
    QCOMPARE(Rows(), QStringList{">Start*"});
}

void TestHistoryPanel::stepsStandInOrderAndTheLastIsCurrent()
{
    Push("Fill");
    Push("Move");
    QCOMPARE(Rows(), (QStringList{"Start*", "Fill", ">Move"}));
}

void TestHistoryPanel::undoneStepsAreMarkedAndStay()
{
    Push("Fill");
    Push("Move");
    m_pHistory->undo();
    QCOMPARE(Rows(), (QStringList{"Start*", ">Fill", "(Move)"}));
    Push("Crop");
    QCOMPARE(Rows(), (QStringList{"Start*", "Fill", ">Crop"}));
}

void TestHistoryPanel::aClickGoesBackAndForth()
{
    for (const char* text : {"A", "B", "C"})
        Push(text);
    ClickRow(1);
    QCOMPARE(m_Value, 1);
    QCOMPARE(Rows(), (QStringList{"Start*", ">A", "(B)", "(C)"}));
    ClickRow(0);
    QCOMPARE(m_Value, 0);
    ClickRow(3);
    QCOMPARE(m_Value, 3);
    QCOMPARE(Rows(), (QStringList{"Start*", "A", "B", ">C"}));
}

void TestHistoryPanel::theKeysGoStepByStep()
{
    Push("A");
    Push("B");
    SettleEvents();
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Up);
    QCOMPARE(m_Value, 1);
    QTest::keyClick(List(), Qt::Key_Home);
    QCOMPARE(m_Value, 0);
    QTest::keyClick(List(), Qt::Key_Down);
    QCOMPARE(m_Value, 1);
}

void TestHistoryPanel::theCleanStateIsMarked()
{
    Push("A");
    m_pHistory->setClean();
    Push("B");
    QCOMPARE(Rows(), (QStringList{"Start", "A*", ">B"}));
    m_pHistory->undo();
    m_pHistory->undo();
    QCOMPARE(Rows(), (QStringList{">Start", "(A)*", "(B)"}));
    m_pHistory->resetClean();
    QCOMPARE(Rows(), (QStringList{">Start", "(A)", "(B)"}));
}

void TestHistoryPanel::theCleanMarkGoesWithItsState()
{
    Push("A");
    m_pHistory->setClean();
    m_pHistory->undo();
    Push("B");
    QCOMPARE(Rows(), (QStringList{"Start", ">B"}));
}

void TestHistoryPanel::rowsThatGoChooseNothing()
{
    for (const char* text : {"A", "B", "C"})
        Push(text);
    QCOMPARE(Rows(), (QStringList{"Start*", "A", "B", ">C"}));
    m_pHistory->undo();
    m_pHistory->undo();
    // C's row goes, which the list still holds for the current one.
    m_pHistory->pushDelayed(new CountCommand("Opacity", &m_Value, 0));
    QVERIFY(m_pHistory->isDelayedOpen());
    QCOMPARE(Rows(), (QStringList{"Start*", "A", ">Opacity"}));
    QVERIFY(m_pHistory->isDelayedOpen());
}

void TestHistoryPanel::aMacroIsOneRow()
{
    m_pHistory->beginMacro("Cut");
    Push("Erase");
    Push("Add layer");
    m_pHistory->endMacro();
    QCOMPARE(Rows(), (QStringList{"Start*", ">Cut"}));
}

void TestHistoryPanel::anOpenStepIsTheLastRow()
{
    Push("A");
    Push("B");
    m_pHistory->undo();
    m_pHistory->pushDelayed(new CountCommand("Opacity", &m_Value, 0));
    QCOMPARE(Rows(), (QStringList{"Start*", "A", ">Opacity"}));
    m_pHistory->commit();
    QCOMPARE(Rows(), (QStringList{"Start*", "A", ">Opacity"}));
}

void TestHistoryPanel::goingToTheOpenStepChangesNothing()
{
    Push("A");
    m_pHistory->pushDelayed(new CountCommand("Opacity", &m_Value, 0));
    ClickRow(2);
    QVERIFY(m_pHistory->isDelayedOpen());
    ClickRow(1);
    QVERIFY(!m_pHistory->isDelayedOpen());
    QCOMPARE(Rows(), (QStringList{"Start*", ">A", "(Opacity)"}));
}

void TestHistoryPanel::forgottenStepsAreTold()
{
    for (const char* text : {"A", "B", "C"})
        Push(text);
    m_pHistory->setStepLimit(2);
    QCOMPARE(Rows(), (QStringList{"Earlier steps", "B", ">C"}));
    m_pHistory->clear();
    QCOMPARE(Rows(), QStringList{">Start"});
}

void TestHistoryPanel::theMemoryOfTheStepsIsTold()
{
    const auto* memory = m_pPanel->findChild<QLabel*>("m_pMemoryValueLbl");
    QCOMPARE(memory->text(), QString("0 bytes"));
    Push("A", 3 * 1024 * 1024);
    Push("B", 512 * 1024);
    SettleEvents();
    QCOMPARE(memory->text(), QString("3.5 MB"));
    m_pHistory->undo();
    Push("C", 0);
    SettleEvents();
    QCOMPARE(memory->text(), QString("3.0 MB"));
}

void TestHistoryPanel::aLockedDocumentCantBeChanged()
{
    Push("A");
    SettleEvents();
    QVERIFY(m_pDocument->Lock());
    QTRY_VERIFY(!List()->isEnabled());
    QVERIFY(!List()->toolTip().isEmpty());
    // What comes by another way is refused as well.
    List()->selectionModel()->setCurrentIndex(List()->model()->index(0, 0),
                                              QItemSelectionModel::ClearAndSelect);
    QCOMPARE(m_Value, 1);
    QCOMPARE(Rows(), (QStringList{"Start*", ">A"}));
    QVERIFY(m_pDocument->Unlock());
    QTRY_VERIFY(List()->isEnabled());
    ClickRow(0);
    QCOMPARE(m_Value, 0);
}

void TestHistoryPanel::aStepThatFailsLeavesTheListRight()
{
    for (const char* text : {"A", "Stuck", "C"})
        Push(text);
    SettleEvents();
    QStringList told;
    QTimer reader;
    connect(&reader, &QTimer::timeout, this, [&told] {
        auto* box = qobject_cast<LXMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        told << box->GetText();
        box->reject();
    });
    reader.start(1);
    List()->setCurrentIndex(List()->model()->index(0, 0));
    QTRY_COMPARE(told.size(), 1);
    QVERIFY2(told.first().contains("not enough memory"), qPrintable(told.first()));
    QCOMPARE(m_pHistory->index(), 2);
    QCOMPARE(Rows(), (QStringList{"Start*", "A", ">Stuck", "(C)"}));
}

void TestHistoryPanel::letsGoOfAViewThatGoes()
{
    Push("A");
    m_pView.reset();
    QCOMPARE(Rows(), QStringList());
    QVERIFY(!List()->isVisible());
    m_pHistory.reset();
    QCOMPARE(m_pPanel->findChild<QLabel*>("m_pMemoryValueLbl")->text(), QString());
}

ZK_REGISTER_TEST(tst_historypanel, TestHistoryPanel)
#include "tst_historypanel.moc"
