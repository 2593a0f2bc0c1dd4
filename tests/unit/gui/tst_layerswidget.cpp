#include "GuiFixture.h"

#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"
#include "image/LXImage.h"
#include "support/Settle.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

namespace {
/// Counts the events of one type that an object gets.
class EventCount : public QObject
{
public:
    EventCount(QObject* watched, QEvent::Type type) : m_Type(type) { watched->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == m_Type) ++m_Count;
        return false;
    }

    int Count() const { return m_Count; }

private:
    QEvent::Type m_Type;
    int m_Count = 0;
};
} // namespace

/// The list of layers, and what its controls do.
class TestLayersWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheViewsDocument();
    void letsGoOfAViewThatGoes();
    void followsAndSetsTheSelection();
    void pressOnTheEyeHidesTheLayer();
    void spaceHidesTheLayer();
    void pressOnThePicturesChoosesTheTarget();
    void nameIsEditedInPlace();
    void emptyNameIsRefused();

    void newLayerGoesAboveTheSelected();
    void newLayersHaveFreeNames();
    void deletingLeavesOneLayer();
    void severalLayersAreDeletedInOneStep();
    void maskIsDeletedWhileItIsTheTarget();
    void lockedLayerIsNotDeleted();
    void maskIsAddedOnce();
    void layersMoveUpAndDown();
    void blendingAndOpacityAreUndone();
    void controlsFollowTheLayer();
    void opacityWorksWithoutAHistory();

    void eachLockIsSetAlone_data();
    void eachLockIsSetAlone();
    void whatCantBeDoneSaysWhy();
    void nothingWorksWhileTheDocumentIsLocked();
    void aShortLockDoesNotFlicker();
    void theThumbnailFollowsThePicture();
    void blockedOrderKeepsTheRest();
    void theChoiceIsKeptUnderAToolAtWork();
    void nothingWorksWithoutAPicture();
    void severalSelectedLayersHaveNoSingleSettings();

private:
    QListView* List() const { return m_pPanel->findChild<QListView*>("m_pList"); }

    QToolButton* Button(const char* name) const { return m_pPanel->findChild<QToolButton*>(name); }

    void Click(const char* button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }

    LXDocumentModel* Model() const { return m_pDocument->GetModel(); }

    QStringList Names() const
    {
        QStringList names;
        const QAbstractItemModel* model = List()->model();
        for (int row = 0; model && row < model->rowCount(); ++row)
            names << model->index(row, 0).data().toString();
        return names;
    }

    QList<int> SelectedRows() const
    {
        QList<int> rows;
        const QModelIndexList selected = m_pView->GetLayerSelection()->selectedRows();
        for (const QModelIndex& index : selected)
            rows << index.row();
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void Select(int row) const
    {
        m_pView->GetLayerSelection()->setCurrentIndex(Model()->index(row),
                                                      QItemSelectionModel::ClearAndSelect);
    }

    /// Clicks so many pixels right of the row's left end.
    void ClickRow(int row, int left) const
    {
        const QRect rect = List()->visualRect(List()->model()->index(row, 0));
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(rect.left() + left, rect.center().y()));
    }

    QStringList History() const
    {
        QStringList texts;
        for (int i = 0; i < m_pHistory->index(); ++i)
            texts << m_pHistory->text(i);
        return texts;
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<LexoUndoStack> m_pHistory;
    std::unique_ptr<ZKDocumentView> m_pView;
    std::unique_ptr<LayersWidget> m_pPanel;
};

namespace {
constexpr int EyeX = 16;
constexpr int LayerX = 50;
constexpr int MaskX = 94;
constexpr int NameX = 180;
} // namespace

/// Rows: "Top" with a mask, "Background".
void TestLayersWidget::init()
{
    m_pDocument = GuiFixture::MakeDocument({64, 48});
    m_pDocument->AddLayer("Top", LXImage32(64, 48), {0, 0});
    m_pDocument->AddMask(1, true);
    m_pHistory = std::make_unique<LexoUndoStack>();
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel = std::make_unique<LayersWidget>();
    m_pPanel->resize(260, 300);
    m_pPanel->SetView(m_pView.get());
    m_pPanel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pPanel.get()));
}

void TestLayersWidget::cleanup()
{
    m_pPanel.reset();
    m_pView.reset();
    m_pHistory.reset();
    m_pDocument.reset();
}

void TestLayersWidget::showsTheViewsDocument()
{
    QCOMPARE(Names(), (QStringList{"Top", "Background"}));
    m_pDocument->AddLayer("New", LXImage32(64, 48), {0, 0});
    QCOMPARE(Names(), (QStringList{"New", "Top", "Background"}));
    m_pPanel->SetView(nullptr);
    QCOMPARE(Names(), QStringList());
    QVERIFY(!List()->isVisible());
    m_pPanel->SetView(m_pView.get());
    QCOMPARE(Names().size(), 3);
    QVERIFY(List()->isVisible());
}

void TestLayersWidget::letsGoOfAViewThatGoes()
{
    m_pView.reset();
    QCOMPARE(Names(), QStringList());
    QVERIFY(!Button("m_pAddBtn")->isEnabled());
}

void TestLayersWidget::followsAndSetsTheSelection()
{
    QCOMPARE(List()->selectionModel(), m_pView->GetLayerSelection());
    ClickRow(1, NameX);
    QCOMPARE(SelectedRows(), QList<int>{1});
    QCOMPARE(History(), QStringList());
}

void TestLayersWidget::pressOnTheEyeHidesTheLayer()
{
    ClickRow(1, EyeX);
    QVERIFY(!Model()->GetVisible(1));
    QCOMPARE(m_pHistory->count(), 1);
    ClickRow(1, NameX);
    QVERIFY(!Model()->GetVisible(1));
    ClickRow(1, EyeX);
    QVERIFY(Model()->GetVisible(1));
    m_pHistory->undo();
    QVERIFY(!Model()->GetVisible(1));
}

void TestLayersWidget::spaceHidesTheLayer()
{
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Space);
    QVERIFY(!Model()->GetVisible(0));
    QCOMPARE(SelectedRows(), QList<int>{0});
}

void TestLayersWidget::pressOnThePicturesChoosesTheTarget()
{
    ClickRow(0, MaskX);
    QVERIFY(Model()->GetMaskSelected(0));
    ClickRow(0, NameX);
    QVERIFY(Model()->GetMaskSelected(0));
    ClickRow(0, LayerX);
    QVERIFY(!Model()->GetMaskSelected(0));
    QCOMPARE(History(), QStringList());
}

void TestLayersWidget::nameIsEditedInPlace()
{
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = List()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QString("Top"));
    editor->setText(" Sky ");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(Names().first(), QString("Sky"));
    m_pHistory->undo();
    QCOMPARE(Names().first(), QString("Top"));
}

void TestLayersWidget::emptyNameIsRefused()
{
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = List()->findChild<QLineEdit*>();
    editor->setText("  ");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!List()->findChild<QLineEdit*>());
    QCOMPARE(Names().first(), QString("Top"));
    QCOMPARE(History(), QStringList());
}

void TestLayersWidget::newLayerGoesAboveTheSelected()
{
    Select(1);
    Click("m_pAddBtn");
    QCOMPARE(Names(), (QStringList{"Top", "Layer 1", "Background"}));
    QCOMPARE(SelectedRows(), QList<int>{1});
    QCOMPARE(m_pDocument->GetLayerGeometry(2), QRect(0, 0, 64, 48));
    QCOMPARE(History(), QStringList{"New layer"});
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"Top", "Background"}));
    QCOMPARE(SelectedRows(), QList<int>{1});
}

void TestLayersWidget::newLayersHaveFreeNames()
{
    Click("m_pAddBtn");
    Click("m_pAddBtn");
    QCOMPARE(Names(), (QStringList{"Layer 2", "Layer 1", "Top", "Background"}));
}

void TestLayersWidget::deletingLeavesOneLayer()
{
    Click("m_pDeleteBtn");
    QCOMPARE(Names(), QStringList{"Background"});
    QCOMPARE(SelectedRows(), QList<int>{0});
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled());
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"Top", "Background"}));
    QVERIFY(Button("m_pDeleteBtn")->isEnabled());
}

void TestLayersWidget::severalLayersAreDeletedInOneStep()
{
    Click("m_pAddBtn");
    m_pHistory->clear();
    Select(0);
    m_pView->GetLayerSelection()->select(Model()->index(2), QItemSelectionModel::Select);
    Click("m_pDeleteBtn");
    QCOMPARE(Names(), QStringList{"Top"});
    QCOMPARE(m_pHistory->count(), 1);
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"Layer 1", "Top", "Background"}));
}

void TestLayersWidget::maskIsDeletedWhileItIsTheTarget()
{
    Model()->SetMaskSelected(0, true);
    QCOMPARE(Button("m_pDeleteBtn")->toolTip(), QString("Delete the mask"));
    Click("m_pDeleteBtn");
    QVERIFY(!Model()->HasMask(0));
    QCOMPARE(Names().size(), 2);
    QCOMPARE(Button("m_pDeleteBtn")->toolTip(), QString("Delete the layer"));
    m_pHistory->undo();
    QVERIFY(Model()->HasMask(0));
}

void TestLayersWidget::lockedLayerIsNotDeleted()
{
    Click("m_pLockBtn");
    QCOMPARE(Model()->GetLockFlags(0), LayerLocks::All);
    QVERIFY(Button("m_pLockBtn")->isChecked());
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled());
    Click("m_pLockBtn");
    QCOMPARE(Model()->GetLockFlags(0), 0u);
    QVERIFY(Button("m_pDeleteBtn")->isEnabled());
    QCOMPARE(m_pHistory->count(), 2);
}

void TestLayersWidget::maskIsAddedOnce()
{
    QVERIFY(!Button("m_pMaskBtn")->isEnabled());
    Select(1);
    Click("m_pMaskBtn");
    QVERIFY(Model()->HasMask(1));
    QVERIFY(!Button("m_pMaskBtn")->isEnabled());
    m_pHistory->undo();
    QVERIFY(!Model()->HasMask(1));
}

void TestLayersWidget::layersMoveUpAndDown()
{
    QVERIFY(!Button("m_pUpBtn")->isEnabled());
    Click("m_pDownBtn");
    QCOMPARE(Names(), (QStringList{"Background", "Top"}));
    QCOMPARE(SelectedRows(), QList<int>{1});
    QVERIFY(!Button("m_pDownBtn")->isEnabled());
    Click("m_pUpBtn");
    QCOMPARE(Names(), (QStringList{"Top", "Background"}));
    QCOMPARE(SelectedRows(), QList<int>{0});
}

void TestLayersWidget::blendingAndOpacityAreUndone()
{
    auto* blending = m_pPanel->findChild<QComboBox*>("m_pBlendCmb");
    auto* opacity = m_pPanel->findChild<QSpinBox*>("m_pOpacitySpn");
    blending->setFocus();
    QTest::keyClick(blending, Qt::Key_Down);
    QCOMPARE(Model()->GetBlendMode(0), unsigned(BlendMode::Multiply));
    opacity->setFocus();
    opacity->selectAll();
    QTest::keyClicks(opacity, "40");
    QCOMPARE(Model()->GetOpacity(0), 1.0);
    QTest::keyClick(opacity, Qt::Key_Return);
    QCOMPARE(Model()->GetOpacity(0), 0.4);
    QCOMPARE(m_pHistory->count(), 2);
    m_pHistory->undo();
    QCOMPARE(Model()->GetOpacity(0), 1.0);
    QCOMPARE(opacity->value(), 100);
    m_pHistory->undo();
    QCOMPARE(Model()->GetBlendMode(0), unsigned(BlendMode::Normal));
    QCOMPARE(blending->currentText(), QString("Normal"));
}

void TestLayersWidget::controlsFollowTheLayer()
{
    const auto* opacity = m_pPanel->findChild<QSpinBox*>("m_pOpacitySpn");
    Model()->SetOpacity(1, 0.25);
    QCOMPARE(opacity->value(), 100);
    Select(1);
    QCOMPARE(opacity->value(), 25);
    Model()->SetOpacity(1, 0.75);
    QCOMPARE(opacity->value(), 75);
    QCOMPARE(History(), QStringList());
}

void TestLayersWidget::opacityWorksWithoutAHistory()
{
    ZKDocumentView view(m_pDocument.get(), nullptr);
    m_pPanel->SetView(&view);
    m_pPanel->findChild<QSpinBox*>("m_pOpacitySpn")->setValue(30);
    QCOMPARE(Model()->GetOpacity(0), 0.3);
}

void TestLayersWidget::eachLockIsSetAlone_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<unsigned int>("bit");
    QTest::newRow("transparency") << QByteArray("m_pLockTransparencyBtn") << 0x1u;
    QTest::newRow("pixels") << QByteArray("m_pLockPixelsBtn") << 0x2u;
    QTest::newRow("position") << QByteArray("m_pLockPositionBtn") << 0x4u;
    QTest::newRow("all") << QByteArray("m_pLockBtn") << 0x8u;
}

void TestLayersWidget::eachLockIsSetAlone()
{
    QFETCH(QByteArray, button);
    QFETCH(unsigned int, bit);
    Select(0);
    constexpr unsigned int every = 0xF;
    Click(button);
    QCOMPARE(Model()->GetLockFlags(0), bit);
    QVERIFY(Button(button)->isChecked());
    QCOMPARE(Model()->GetLockFlags(1), 0u);
    m_pHistory->undo();
    QCOMPARE(Model()->GetLockFlags(0), 0u);
    QVERIFY(!Button(button)->isChecked());

    Model()->SetLockFlags(0, every);
    Click(button);
    QCOMPARE(Model()->GetLockFlags(0), every & ~bit);
}

void TestLayersWidget::whatCantBeDoneSaysWhy()
{
    Select(0);
    QVERIFY2(Button("m_pUpBtn")->toolTip().contains("topmost"), qPrintable(Button("m_pUpBtn")->toolTip()));
    QCOMPARE(Button("m_pDownBtn")->toolTip(), QString("Move the layer down"));
    QVERIFY(Button("m_pMaskBtn")->toolTip().contains("has one"));
    List()->selectAll();
    QVERIFY(Button("m_pUpBtn")->toolTip().contains("select one layer"));
    QVERIFY(m_pDocument->Lock());
    QTRY_VERIFY(Button("m_pAddBtn")->toolTip().contains("a tool is at work"));
    QVERIFY(m_pDocument->Unlock());
    m_pPanel->SetView(nullptr);
    QVERIFY(Button("m_pAddBtn")->toolTip().contains("no picture is open"));
    QCOMPARE(Button("m_pAddBtn")->accessibleName(), QString("New layer"));
}

void TestLayersWidget::nothingWorksWhileTheDocumentIsLocked()
{
    QVERIFY(m_pDocument->Lock());
    QTRY_VERIFY(!Button("m_pAddBtn")->isEnabled());
    for (const char* name :
         {"m_pAddBtn", "m_pMaskBtn", "m_pLockBtn", "m_pUpBtn", "m_pDownBtn", "m_pDeleteBtn"}) {
        QVERIFY2(!Button(name)->isEnabled(), name);
    }
    QVERIFY(!m_pPanel->findChild<QComboBox*>("m_pBlendCmb")->isEnabled());
    ClickRow(0, EyeX);
    QVERIFY(Model()->GetVisible(0));
    ClickRow(0, MaskX);
    QVERIFY(!Model()->GetMaskSelected(0));
    m_pDocument->Unlock();
    QTRY_VERIFY(Button("m_pAddBtn")->isEnabled());
}

void TestLayersWidget::aShortLockDoesNotFlicker()
{
    EventCount changes(Button("m_pAddBtn"), QEvent::EnabledChange);
    QVERIFY(m_pDocument->Lock());
    SettleEvents();
    // What looks usable for that moment does nothing.
    QTest::mouseClick(Button("m_pAddBtn"), Qt::LeftButton);
    QCOMPARE(History(), QStringList());
    m_pDocument->Unlock();
    const QList<QTimer*> timers = m_pPanel->findChildren<QTimer*>();
    QTRY_VERIFY(
        std::none_of(timers.begin(), timers.end(), [](const QTimer* timer) { return timer->isActive(); }));
    QCOMPARE(changes.Count(), 0);
    QVERIFY(Button("m_pAddBtn")->isEnabled());
}

void TestLayersWidget::theThumbnailFollowsThePicture()
{
    SettleEvents();
    EventCount paints(List()->viewport(), QEvent::Paint);
    Model()->UpdateLayerThumbnail(0);
    // The view's repaint would be among them.
    QCoreApplication::sendPostedEvents();
    QCOMPARE(paints.Count(), 0);
    SettleEvents();
    QVERIFY(paints.Count() > 0);
}

void TestLayersWidget::blockedOrderKeepsTheRest()
{
    m_pView->BlockLayerOrderOperations(true);
    for (const char* name : {"m_pAddBtn", "m_pDownBtn", "m_pDeleteBtn"})
        QVERIFY2(!Button(name)->isEnabled(), name);
    QVERIFY(Button("m_pLockBtn")->isEnabled());
    m_pView->BlockLayerOrderOperations(false);
    QVERIFY(Button("m_pAddBtn")->isEnabled());
}

void TestLayersWidget::theChoiceIsKeptUnderAToolAtWork()
{
    Select(0);
    // A tool that only holds the document, or only the order, doesn't mind.
    QVERIFY(m_pDocument->Lock());
    ClickRow(1, NameX);
    QCOMPARE(SelectedRows(), QList<int>{1});
    m_pDocument->Unlock();
    m_pView->BlockLayerOrderOperations(true);
    ClickRow(0, NameX);
    QCOMPARE(SelectedRows(), QList<int>{0});

    QVERIFY(m_pDocument->Lock());
    // Of the row that is chosen, which the list has seen pressed.
    const QRect first = List()->visualRect(Model()->index(0));
    const QPoint name(first.left() + NameX, first.center().y());
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, name);
    QVERIFY(!List()->viewport()->findChild<QLineEdit*>());
    ClickRow(1, NameX);
    QCOMPARE(SelectedRows(), QList<int>{0});
    const QPoint other = List()->visualRect(Model()->index(1)).center();
    QMouseEvent drag(QEvent::MouseMove, other, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(List()->viewport(), &drag);
    QCOMPARE(SelectedRows(), QList<int>{0});
    ClickRow(0, MaskX);
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(SelectedRows(), QList<int>{0});
    QCOMPARE(m_pView->GetLayerSelection()->currentIndex().row(), 0);
    QVERIFY(!Model()->GetMaskSelected(0));
    QHelpEvent help(QEvent::ToolTip, name, List()->viewport()->mapToGlobal(name));
    QCoreApplication::sendEvent(List()->viewport(), &help);
    QCOMPARE(QToolTip::text(), QString("A tool is at work on the selected layers."));
    QToolTip::hideText();

    m_pView->BlockLayerOrderOperations(false);
    m_pDocument->Unlock();
    ClickRow(1, NameX);
    QCOMPARE(SelectedRows(), QList<int>{1});
}

void TestLayersWidget::nothingWorksWithoutAPicture()
{
    m_pPanel->SetView(nullptr);
    for (const char* name :
         {"m_pAddBtn", "m_pMaskBtn", "m_pLockBtn", "m_pUpBtn", "m_pDownBtn", "m_pDeleteBtn"}) {
        QVERIFY2(!Button(name)->isEnabled(), name);
    }
    QVERIFY(!m_pPanel->findChild<QSpinBox*>("m_pOpacitySpn")->isEnabled());
}

void TestLayersWidget::severalSelectedLayersHaveNoSingleSettings()
{
    m_pView->GetLayerSelection()->select(Model()->index(1), QItemSelectionModel::Select);
    QCOMPARE(SelectedRows().size(), 2);
    QVERIFY(!Button("m_pLockBtn")->isEnabled());
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled()); // one layer stays
    QVERIFY(Button("m_pAddBtn")->isEnabled());
}

ZK_REGISTER_TEST(tst_layerswidget, TestLayersWidget)
#include "tst_layerswidget.moc"
