#include "ClipboardFixture.h"

#include "core/ZKMenuManager.h"
#include "document/LayerKind.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "image/LXAdjustment.h"
#include "support/TestRegistry.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

/// The clipboard's actions, when they are on, and how they begin.
class TestClipboardTool : public QObject, private ClipboardFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup() { DropTool(); }

    void theActionsHaveTheirKeys_data();
    void theActionsHaveTheirKeys();
    void theMenuEntriesStandInEdit();
    void theToolAnswersToItsInterfaces();
    void thePanelGetsTheLastThreeActions();
    void objectsOfTheHostDontReplaceTheList();

    void nothingIsOnWithoutAView();
    void copyNeedsASelection();
    void copyNeedsOneSelectedLayer();
    void pasteNeedsAnItem();
    void whatNeedsNoPictureStaysOnWithoutAView();
    void aLockedDocumentSwitchesAllOff();
    void aSelectionThatComesUnderTheLockOpensNothing();
    void aMaskAsTargetOpensPaste();
    void anEmptyListSwitchesPasteOff();
    void layersWithoutPixelsTakeAPasteOnTheirMaskAlone_data();
    void layersWithoutPixelsTakeAPasteOnTheirMaskAlone();
    void anAdjustmentOpensCopyWithoutASelection();
    void everyStartLetsTheSystemClipboardSpeak();

    void aKeyBeginsAfterAMoment();
    void aRepeatedKeyMakesOneCopy();
    void copyAndThenCutIsOneCut();
    void copyMergedTakesAllLayers();
    void copyMergedAndThenCutTakesAllLayersAndCutsOne();
    void aStartUnderALockIsForgotten_data();
    void aStartUnderALockIsForgotten();
    void aCopyIsMadeOfTheDocumentItWasBegunIn();
    void aCutReachesIntoNoOtherDocument();
    void aPasteBeginsWhatWaitsFirst_data();
    void aPasteBeginsWhatWaitsFirst();
    void aViewThatIsGoneStopsTheCopy();
    void mergedIsForgottenWithTheViewItWasMeantFor();

    void theEndEmptiesTheSystemClipboardAndThePanel();

private:
    /// Whether a timer runs for something that was begun.
    bool IsWaiting() const;
};

bool TestClipboardTool::IsWaiting() const
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(m_pTool.get());
    return !timers.isEmpty();
}

void TestClipboardTool::theActionsHaveTheirKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("Copy") << "Ctrl+C";
    QTest::newRow("Copy Merged") << "Ctrl+Shift+C";
    QTest::newRow("Cut") << "Ctrl+X";
    QTest::newRow("Paste") << "Ctrl+V";
    QTest::newRow("New image") << "";
    QTest::newRow("New layer") << "";
    QTest::newRow("Paste as a new image") << "Ctrl+Shift+V";
    QTest::newRow("Delete from clipboard") << "";
    QTest::newRow("Copy to system clipboard") << "";
}

void TestClipboardTool::theActionsHaveTheirKeys()
{
    QFETCH(QString, key);
    const QAction* action = Action(QTest::currentDataTag());
    QCOMPARE(action->shortcut(), QKeySequence(key));
    if (!key.isEmpty()) QCOMPARE(action->shortcutContext(), Qt::ApplicationShortcut);
    QVERIFY(!action->isCheckable());
}

void TestClipboardTool::theMenuEntriesStandInEdit()
{
    QStringList texts;
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    for (const MainMenuEntry& entry : entries) {
        QCOMPARE(entry.path.front(), static_cast<int>(ZKMenuManager::Edit));
        const QString text = entry.pMenu ? entry.pMenu->title() : entry.pAction->text();
        texts.append(entry.pAction && entry.pAction->isSeparator() ? "--" : text);
    }
    QCOMPARE(texts, QStringList({"--", "Copy", "Copy Merged", "Cut", "Paste", "Paste as"}));
    QStringList pasteAs;
    const QList<QAction*> actions = entries.rbegin()->pMenu->actions();
    for (const QAction* action : actions)
        pasteAs.append(action->text());
    QCOMPARE(pasteAs, QStringList({"New image", "New layer"}));

    QStringList all;
    const QList<QAction*> menuActions = m_pTool->GetMenuActions();
    for (const QAction* action : menuActions)
        all.append(action->text());
    QCOMPARE(all, QStringList({"Copy", "Copy Merged", "Cut", "Paste", "New image", "New layer",
                               "Paste as a new image", "Delete from clipboard", "Copy to system clipboard"}));
    QVERIFY(m_pTool->GetToolBarActions().isEmpty());
}

void TestClipboardTool::theToolAnswersToItsInterfaces()
{
    for (const char* name : {"ClipboardTool", "IMainMenuActionList/1.0", "IClipboardInterface/1.0",
                             "IDocumentState/1.0", "IDocumentViewTool/1.0", "IDocumentState"}) {
        QVERIFY2(m_pTool->qt_metacast(name), name);
    }
    QVERIFY(!m_pTool->qt_metacast("ITool/1.0"));
    QCOMPARE(m_pTool->GetDocumentState(), quint64(0));
}

void TestClipboardTool::thePanelGetsTheLastThreeActions()
{
    QStringList texts;
    const QList<QAction*> actions = m_pPanel->GetClipboardActions();
    for (const QAction* action : actions)
        texts.append(action->text());
    QCOMPARE(texts,
             QStringList({"Paste as a new image", "Delete from clipboard", "Copy to system clipboard"}));
    QCOMPARE(m_pTool->GetClipboardActions(), actions);
    QVERIFY(List());
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(List()->columnCount(), 2);
}

void TestClipboardTool::objectsOfTheHostDontReplaceTheList()
{
    const QStandardItemModel* own = List();
    QVERIFY(own);
    {
        QStandardItemModel model;
        QItemSelectionModel selection(&model);
        m_pTool->SetClipboardModel(&model, &selection);
        QVERIFY(List() == own);
        QImage picture(3, 3, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        PutForeign(picture);
        QCOMPARE(own->rowCount(), 1);
        QCOMPARE(model.rowCount(), 0);
    }
    m_pTool->SetClipboardModel(nullptr, nullptr);
    QVERIFY(List() == own);
}

void TestClipboardTool::nothingIsOnWithoutAView()
{
    Select({0, 0, 5, 5});
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(OpenActions(), QStringList());
}

void TestClipboardTool::copyNeedsASelection()
{
    QCOMPARE(OpenActions(), QStringList());
    Select({0, 0, 5, 5});
    QCOMPARE(OpenActions(), QStringList({"Copy", "Copy Merged", "Cut"}));
    Document()->SetSelectionMask({}, {});
    QCOMPARE(OpenActions(), QStringList());
}

void TestClipboardTool::copyNeedsOneSelectedLayer()
{
    Document()->AddLayer("second", LXImage32(40, 30), {});
    Select({0, 0, 5, 5});
    m_pFixture->SelectLayers({0});
    QVERIFY(Action("Copy")->isEnabled());
    m_pFixture->SelectLayers({0, 1});
    QVERIFY(!Action("Copy")->isEnabled());
    QVERIFY(!Action("Copy Merged")->isEnabled());
    m_pFixture->SelectLayers({});
    QVERIFY(!Action("Copy")->isEnabled());
    m_pFixture->SelectLayers({1});
    QVERIFY(Action("Copy")->isEnabled());
}

void TestClipboardTool::pasteNeedsAnItem()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    QCOMPARE(OpenActions(),
             QStringList({"Copy", "Copy Merged", "Cut", "Paste", "New image", "New layer",
                          "Paste as a new image", "Delete from clipboard", "Copy to system clipboard"}));
    QVERIFY(m_pTool->GetMainMenuEntries().rbegin()->pMenu->menuAction()->isEnabled());
}

void TestClipboardTool::whatNeedsNoPictureStaysOnWithoutAView()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(OpenActions(), QStringList({"New image", "Paste as a new image", "Delete from clipboard",
                                         "Copy to system clipboard"}));
}

void TestClipboardTool::aLockedDocumentSwitchesAllOff()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    const QStringList before = OpenActions();
    Document()->Lock();
    QCOMPARE(OpenActions(), QStringList());
    QVERIFY(!m_pTool->GetMainMenuEntries().rbegin()->pMenu->menuAction()->isEnabled());
    Document()->Unlock();
    QCOMPARE(OpenActions(), before);
}

void TestClipboardTool::aSelectionThatComesUnderTheLockOpensNothing()
{
    Document()->Lock();
    Select({0, 0, 5, 5});
    QCOMPARE(OpenActions(), QStringList());
    Document()->Unlock();
    QVERIFY(Action("Copy")->isEnabled());
}

void TestClipboardTool::aMaskAsTargetOpensPaste()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    GiveMask(255, true);
    QVERIFY(Action("Paste")->isEnabled());
    QVERIFY(Action("New layer")->isEnabled());
}

void TestClipboardTool::anEmptyListSwitchesPasteOff()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    m_pTool->Delete();
    QCOMPARE(OpenActions(), QStringList({"Copy", "Copy Merged", "Cut"}));
}

void TestClipboardTool::layersWithoutPixelsTakeAPasteOnTheirMaskAlone_data()
{
    QTest::addColumn<bool>("adjustment");
    QTest::newRow("text") << false;
    QTest::newRow("adjustment") << true;
}

void TestClipboardTool::layersWithoutPixelsTakeAPasteOnTheirMaskAlone()
{
    QFETCH(bool, adjustment);
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    if (adjustment) {
        Document()->AddAdjustmentLayer("above", LXAdjustment());
    } else {
        Document()->AddTextLayer("above", {});
    }
    m_pFixture->SelectLayers({0});
    QVERIFY(!Action("Paste")->isEnabled());
    QVERIFY(!Action("New layer")->isEnabled());
    QVERIFY(Action("New image")->isEnabled());
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList());

    GiveMask(255, true);
    QVERIFY(Action("Paste")->isEnabled());
    QVERIFY(Action("New layer")->isEnabled());
    Layers()->SetMaskSelected(0, false);
    QVERIFY(!Action("Paste")->isEnabled());
    QVERIFY(!Action("New layer")->isEnabled());
}

void TestClipboardTool::anAdjustmentOpensCopyWithoutASelection()
{
    Document()->AddAdjustmentLayer("above", LXAdjustment());
    m_pFixture->SelectLayers({0});
    QCOMPARE(OpenActions(), QStringList({"Copy", "Copy Merged", "Cut"}));
    // There is nothing to copy, and nobody is told.
    m_pTool->Copy();
    m_pTool->Cut();
    m_pTool->StartCopyMerged();
    QTRY_VERIFY(!IsWaiting());
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestClipboardTool::everyStartLetsTheSystemClipboardSpeak()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    for (const auto start :
         {&ClipboardTool::StartCopy, &ClipboardTool::StartCopyMerged, &ClipboardTool::StartCut}) {
        clipboard->blockSignals(true);
        (m_pTool.get()->*start)();
        QVERIFY(!clipboard->signalsBlocked());
    }
}

void TestClipboardTool::aKeyBeginsAfterAMoment()
{
    Select({0, 0, 5, 5});
    m_pTool->StartCopy();
    QCoreApplication::processEvents();
    QCOMPARE(List()->rowCount(), 0);
    QTRY_COMPARE(List()->rowCount(), 1);
}

void TestClipboardTool::aRepeatedKeyMakesOneCopy()
{
    Select({0, 0, 5, 5});
    QSignalSpy changes(QGuiApplication::clipboard(), &QClipboard::dataChanged);
    for (int press = 0; press < 5; ++press)
        m_pTool->StartCopy();
    QTRY_COMPARE(List()->rowCount(), 1);
    QCOMPARE(changes.count(), 1);

    // Another key afterwards begins anew.
    Select({10, 10, 5, 5});
    m_pTool->StartCopy();
    QTRY_COMPARE(List()->rowCount(), 2);
}

void TestClipboardTool::copyAndThenCutIsOneCut()
{
    Select({0, 0, 5, 5});
    m_pTool->StartCopy();
    m_pTool->StartCut();
    QTRY_COMPARE(HistoryTexts(), QStringList({"Cut"}));
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCut"));
}

void TestClipboardTool::copyMergedTakesAllLayers()
{
    LXImage32 above(40, 30);
    above.Fill(LXRGBA32i(0xFF112233u));
    Document()->AddLayer("above", above, {});
    m_pFixture->SelectLayers({1});
    Select({3, 4, 5, 5});
    m_pTool->StartCopyMerged();
    QTRY_COMPARE(List()->rowCount(), 1);
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, 0xFF112233u);

    m_pTool->Copy();
    QCOMPARE(ItemImage(1).GetColor(0, 0).value, Begun(3, 4).value);
}

void TestClipboardTool::copyMergedAndThenCutTakesAllLayersAndCutsOne()
{
    LXImage32 below(40, 30);
    below.Fill(LXRGBA32i(0xFF112233u));
    Document()->AddLayer("above", LXImage32(40, 30), {});
    Document()->SetLayerImage(2, below, {});
    m_pFixture->SelectLayers({0});
    Document()->GetLayerImage(1)->Fill(LXRGBA32i(0u));
    Select({3, 4, 5, 5});
    m_pTool->StartCopyMerged();
    m_pTool->StartCut();
    QTRY_COMPARE(HistoryTexts(), QStringList({"Cut"}));
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCut"));
    // What shows there is of the layer below, which keeps it.
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, 0xFF112233u);
    QCOMPARE(m_pFixture->Pixel(3, 4, 2), 0xFF112233u);

    m_pTool->Copy();
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(ItemImage(1).GetColor(0, 0).value, 0u);
}

void TestClipboardTool::aStartUnderALockIsForgotten_data()
{
    QTest::addColumn<bool>("merged");
    QTest::addColumn<bool>("cut");
    QTest::newRow("copy") << false << false;
    QTest::newRow("copy merged") << true << false;
    QTest::newRow("cut") << false << true;
}

void TestClipboardTool::aStartUnderALockIsForgotten()
{
    QFETCH(bool, merged);
    QFETCH(bool, cut);
    Select({0, 0, 5, 5});
    if (merged) {
        m_pTool->StartCopyMerged();
    } else if (cut) {
        m_pTool->StartCut();
    } else {
        m_pTool->StartCopy();
    }
    // Whoever holds the document has taken the pixels out, and sees that the moment has come.
    Document()->Lock();
    QTRY_VERIFY(!IsWaiting());
    Document()->Unlock();
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());

    m_pTool->Copy();
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, Begun(0, 0).value);
}

void TestClipboardTool::aCopyIsMadeOfTheDocumentItWasBegunIn()
{
    ViewFixture other(40, 30, Qt::red);
    LXImage32 mask(7, 7);
    mask.Fill(LXRGBA32i(0xFF000000u));
    other.Document()->SetSelectionMask(mask, {});
    Select({3, 4, 5, 5});
    m_pTool->StartCopy();
    m_pTool->SetDocumentView(&other.ToolView());
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(ItemImage(0).Rect().size(), QSize(5, 5));
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, Begun(3, 4).value);
    QVERIFY(!IsWaiting());
    m_pTool->SetDocumentView(nullptr);
}

void TestClipboardTool::aCutReachesIntoNoOtherDocument()
{
    ViewFixture other(40, 30, Qt::red);
    LXImage32 mask(7, 7);
    mask.Fill(LXRGBA32i(0xFF000000u));
    other.Document()->SetSelectionMask(mask, {});
    Select({3, 4, 5, 5});
    m_pTool->StartCut();
    m_pTool->SetDocumentView(&other.ToolView());
    QVERIFY(!IsWaiting());
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());

    // Nothing of it is left for the next copy.
    m_pTool->Copy();
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    QCOMPARE(other.Pixel(0, 0), 0xFFFF0000u);
    QCOMPARE(other.History().count(), 0);
    m_pTool->SetDocumentView(nullptr);
}

void TestClipboardTool::aPasteBeginsWhatWaitsFirst_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("Paste") << "Paste" << QStringList({"Cut", "Paste"});
    QTest::newRow("New layer") << "New layer" << QStringList({"Cut", "PasteAsNewLayer"});
    QTest::newRow("Paste as a new image") << "Paste as a new image" << QStringList({"Cut"});
}

void TestClipboardTool::aPasteBeginsWhatWaitsFirst()
{
    QFETCH(QString, action);
    QFETCH(QStringList, steps);
    const std::unique_ptr<LXMdiArea> area(LXDocumentManager::GetDocumentArea());
    Select({30, 20, 4, 4});
    m_pTool->Copy();
    Select({3, 4, 5, 6});
    m_pTool->StartCut();
    Action(action)->trigger();
    QVERIFY(!IsWaiting());
    QCOMPARE(HistoryTexts(), steps);
    QCOMPARE(List()->rowCount(), 2);
    const QList<LXDocumentInterface*> made = LXDocumentManager::Instance()->GetDocuments();
    if (made.isEmpty()) {
        QCOMPARE(Cell(1, 3), QString("ARGB32\nPasted"));
        QCOMPARE(m_pFixture->Pixel(7, 9), Begun(7, 9).value);
    } else {
        QCOMPARE(made.first()->GetDocumentSize(), QSize(5, 6));
    }
}

void TestClipboardTool::aViewThatIsGoneStopsTheCopy()
{
    Select({0, 0, 5, 5});
    m_pTool->SetDocumentView(nullptr);
    m_pTool->Copy();
    m_pTool->Cut();
    m_pTool->Paste();
    m_pTool->PasteAsNewLayer();
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestClipboardTool::mergedIsForgottenWithTheViewItWasMeantFor()
{
    LXImage32 above(40, 30);
    above.Fill(LXRGBA32i(0xFF112233u));
    Document()->AddLayer("above", above, {});
    m_pFixture->SelectLayers({1});
    Select({3, 4, 5, 5});
    m_pTool->StartCopyMerged();
    m_pTool->SetDocumentView(nullptr);
    m_pTool->Copy();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Copy();
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, Begun(3, 4).value);
}

void TestClipboardTool::theEndEmptiesTheSystemClipboardAndThePanel()
{
    Select({0, 0, 5, 5});
    m_pTool->Copy();
    QVERIFY(!SystemImage().isNull());
    QSignalSpy changes(QGuiApplication::clipboard(), &QClipboard::dataChanged);
    m_pTool.reset();
    QCOMPARE(changes.count(), 0);
    QVERIFY(SystemImage().isNull());
    QVERIFY(!QGuiApplication::clipboard()->signalsBlocked());
    QVERIFY(!m_pPanel->GetClipboardModel());
    QVERIFY(!m_pPanel->GetClipboardSelection());
    QVERIFY(m_pPanel->GetClipboardActions().isEmpty());
}

ZK_REGISTER_TEST(tst_clipboardtool, TestClipboardTool)
#include "tst_clipboardtool.moc"
