#include "selectionmenu/SelectionMenuTool.h"

#include "core/ZKMenuManager.h"
#include "history/LexoCommand.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>

Q_DECLARE_METATYPE(FaultSeams::Seam)

namespace {
const QStringList SelectionEntries{"Select all", "Deselect", "Invert selection", "Arrange Selection"};
const QStringList AlignmentTexts{"Center",      "Horizontal center", "Vertical center", "Align left",
                                 "Align right", "Align top",         "Align bottom"};

constexpr QSize NoiseCanvas(260, 140);
constexpr QPoint NoisePlace(-7, -3);

LXImage32 Coverage(int width, int height, quint8 value)
{
    LXImage32 mask(width, height);
    mask.Fill(LXRGBA32i(quint32(value) << 24));
    return mask;
}

struct Selection
{
    QRect rect;
    QVector<int> values; ///< row by row
};

bool operator==(const Selection& a, const Selection& b)
{
    return a.rect == b.rect && a.values == b.values;
}

Selection Read(const LXDocumentInterface* document)
{
    Selection selection{document->GetSelectionGeometry(), {}};
    const LXImage32& mask = document->GetSelectionMask();
    for (int y = 0; y < mask.Height(); ++y) {
        for (int x = 0; x < mask.Width(); ++x) {
            selection.values.append(int(mask.GetColor(x, y).value >> 24));
        }
    }
    return selection;
}
} // namespace

class TestSelectionMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theEntriesStandInOrderWithTheirKeys();
    void theArrangeMenuHoldsTheAlignments();
    void theToolOffersMenuAndViewAlone();

    void selectAllSelectsTheCanvas();
    void selectAllOnNoSelectionRecordsAnEmptyUndoMask();
    void deselectForgetsTheSelection();
    void deselectWithoutASelectionPushesNothing();
    void invertTakesCoverageOut();
    void invertIsTrimmedToWhatRemains();
    void invertingAFullSelectionSelectsNothing();
    void invertWithoutASelectionPushesNothing();
    void undoBringsMaskAndOffsetBackBitForBit();

    void invertOfASoftSelectionLeavesTheRest();
    void everyEntryIsUndoneToTheBit_data();
    void everyEntryIsUndoneToTheBit();

    void alignmentsMoveTheSelectionAlone_data();
    void alignmentsMoveTheSelectionAlone();
    void aCenteredSelectionPushesNoCommand();

    void allLayersSelectsEveryRow();
    void deselectLayersSelectsNone();
    void layerActionsFollowTheSelectedRows();
    void blockedLayerOrderDisablesTheLayerActions();

    void withoutAViewEverythingIsOff();
    void withoutASelectionOnlySelectAllIsOn();
    void withASelectionEverythingIsOn();
    void theDocumentLockDisables();
    void theViewLockDisables();
    void aLockedDocumentStaysOffWhenTheViewUnlocks();
    void aClosedViewLeavesNothingConnected();

    void aCommandWithoutAViewIsReported();
    void aLockOfAViewWithoutAWidgetIsReported();
    void aFailureIsReportedAndRestoresTheCursor_data();
    void aFailureIsReportedAndRestoresTheCursor();
    void workIsDoneUnderTheWaitCursor();
    void withoutAHistoryTheCommandRuns();

private:
    QAction* Action(const QString& text) const;

    void Trigger(const QString& text) const { Action(text)->trigger(); }

    QStringList Enabled() const;
    QStringList HistoryTexts() const;
    void Select(const QRect& rect, quint8 value = 255);
    /// A canvas of several tiles with a selection of noise that reaches over its edges. The left of the noise
    /// is whole.
    PlainImage SelectNoise();

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<SelectionMenuTool> m_pTool;
};

void TestSelectionMenu::init()
{
    m_pFixture = std::make_unique<ViewFixture>(64, 48);
    m_pTool = std::make_unique<SelectionMenuTool>();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void TestSelectionMenu::cleanup()
{
    FaultSeams::Reset();
    QVERIFY(!QGuiApplication::overrideCursor());
    m_pTool.reset();
    m_pFixture.reset();
}

QAction* TestSelectionMenu::Action(const QString& text) const
{
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    for (const MainMenuEntry& entry : entries) {
        if (entry.pAction && entry.pAction->text() == text) return entry.pAction;
        if (!entry.pMenu) continue;
        if (entry.pMenu->title() == text) return entry.pMenu->menuAction();
        const QList<QAction*> actions = entry.pMenu->actions();
        for (QAction* action : actions) {
            if (action->text() == text) return action;
        }
    }
    qFatal("no entry %s", qUtf8Printable(text));
}

QStringList TestSelectionMenu::Enabled() const
{
    QStringList texts;
    const QStringList all = SelectionEntries + AlignmentTexts + QStringList{"All layers", "Deselect layers"};
    for (const QString& text : all) {
        if (Action(text)->isEnabled()) texts.append(text);
    }
    return texts;
}

QStringList TestSelectionMenu::HistoryTexts() const
{
    QStringList texts;
    for (int i = 0; i < m_pFixture->History().count(); ++i) {
        texts.append(m_pFixture->History().text(i));
    }
    return texts;
}

void TestSelectionMenu::Select(const QRect& rect, quint8 value)
{
    m_pFixture->Document()->SetSelectionMask(Coverage(rect.width(), rect.height(), value), rect.topLeft());
}

void TestSelectionMenu::theEntriesStandInOrderWithTheirKeys()
{
    QStringList rows;
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    for (const MainMenuEntry& entry : entries) {
        QCOMPARE(entry.path.size(), std::size_t(2));
        QCOMPARE(entry.path[0], int(ZKMenuManager::Selection));
        const QAction* action = entry.pMenu ? entry.pMenu->menuAction() : entry.pAction;
        rows.append(action->text() + '|' + action->shortcut().toString());
    }
    QCOMPARE(rows, QStringList({"Select all|", "Deselect|Ctrl+D", "Invert selection|Ctrl+Shift+I",
                                "Arrange Selection|", "All layers|Ctrl+Alt+A", "Deselect layers|"}));
}

void TestSelectionMenu::theArrangeMenuHoldsTheAlignments()
{
    QStringList texts;
    const QList<QAction*> actions = Action("Arrange Selection")->menu()->actions();
    for (const QAction* action : actions) {
        texts.append(action->text());
    }
    QCOMPARE(texts, AlignmentTexts);
}

void TestSelectionMenu::theToolOffersMenuAndViewAlone()
{
    for (const char* name : {"SelectionMenuTool", "IDocumentViewTool/1.0", "IMainMenuActionList/1.0"}) {
        QVERIFY2(m_pTool->qt_metacast(name), name);
    }
    for (const char* name : {"ITool/1.0", "IDocumentViewState/1.0", "IWidgetTool/1.0"}) {
        QVERIFY2(!m_pTool->qt_metacast(name), name);
    }
    QVERIFY(m_pTool->GetMenuActions().isEmpty());
    QVERIFY(m_pTool->GetToolBarActions().isEmpty());
}

void TestSelectionMenu::selectAllSelectsTheCanvas()
{
    Select({5, 6, 7, 8}, 90);
    Trigger("Select all");
    QCOMPARE(Read(m_pFixture->Document()).rect, QRect(0, 0, 64, 48));
    QCOMPARE(Read(m_pFixture->Document()).values, QVector<int>(64 * 48, 255));
    QCOMPARE(HistoryTexts(), QStringList({"Select all"}));
}

void TestSelectionMenu::selectAllOnNoSelectionRecordsAnEmptyUndoMask()
{
    Trigger("Select all");
    m_pFixture->History().undo();
    QVERIFY(!m_pFixture->Document()->HasSelection());
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 64, 48));
}

void TestSelectionMenu::deselectForgetsTheSelection()
{
    Select({5, 6, 7, 8});
    Trigger("Deselect");
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(HistoryTexts(), QStringList({"Deselect"}));
}

void TestSelectionMenu::deselectWithoutASelectionPushesNothing()
{
    QVERIFY(QMetaObject::invokeMethod(m_pTool->findChild<QObject*>(), "Deselect"));
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestSelectionMenu::invertTakesCoverageOut()
{
    Select({10, 10, 2, 1}, 100);
    Trigger("Invert selection");
    const Selection inverted = Read(m_pFixture->Document());
    QCOMPARE(inverted.rect, QRect(0, 0, 64, 48));
    // 255 - (255 x 100 + 127) / 255
    QCOMPARE(inverted.values[10 * 64 + 10], 155);
    QCOMPARE(inverted.values[10 * 64 + 11], 155);
    QCOMPARE(inverted.values[10 * 64 + 12], 255);
    QCOMPARE(inverted.values.count(255), 64 * 48 - 2);
    QCOMPARE(HistoryTexts(), QStringList({"Invert selection"}));
}

void TestSelectionMenu::invertIsTrimmedToWhatRemains()
{
    Select({-4, 0, 14, 60});
    Trigger("Invert selection");
    QCOMPARE(Read(m_pFixture->Document()), (Selection{{10, 0, 54, 48}, QVector<int>(54 * 48, 255)}));
}

void TestSelectionMenu::invertingAFullSelectionSelectsNothing()
{
    Select({0, 0, 64, 48});
    Trigger("Invert selection");
    QVERIFY(!m_pFixture->Document()->HasSelection());
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 64, 48));
}

void TestSelectionMenu::invertWithoutASelectionPushesNothing()
{
    QVERIFY(QMetaObject::invokeMethod(m_pTool->findChild<QObject*>(), "InvertSelection"));
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestSelectionMenu::undoBringsMaskAndOffsetBackBitForBit()
{
    for (const char* entry : {"Select all", "Deselect", "Invert selection", "Align right", "Center"}) {
        Select({-3, 6, 9, 8}, 77);
        const Selection before = Read(m_pFixture->Document());
        Trigger(entry);
        const Selection after = Read(m_pFixture->Document());
        QVERIFY2(!(after == before), entry);
        m_pFixture->History().undo();
        QVERIFY2(Read(m_pFixture->Document()) == before, entry);
        m_pFixture->History().redo();
        QVERIFY2(Read(m_pFixture->Document()) == after, entry);
    }
}

PlainImage TestSelectionMenu::SelectNoise()
{
    cleanup();
    m_pFixture = std::make_unique<ViewFixture>(NoiseCanvas.width(), NoiseCanvas.height());
    m_pTool = std::make_unique<SelectionMenuTool>();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());

    std::mt19937 random(7);
    PlainImage noise = TestImages::Random(200, 150, random);
    for (int y = 0; y < noise.height; ++y) {
        for (int x = 0; x < noise.width; ++x)
            noise.At(x, y) = LXRGBA32i(x < 20 ? 0xFF000000 : noise.At(x, y).value & 0xFF000000);
    }
    m_pFixture->Document()->SetSelectionMask(TestImages::ToTiles(noise), NoisePlace);
    return noise;
}

void TestSelectionMenu::invertOfASoftSelectionLeavesTheRest()
{
    const PlainImage noise = SelectNoise();
    PlainImage rest(NoiseCanvas.width(), NoiseCanvas.height());
    QRect bound;
    for (int y = 0; y < rest.height; ++y) {
        for (int x = 0; x < rest.width; ++x) {
            const QPoint pos = QPoint(x, y) - NoisePlace;
            const int selected = noise.Contains(pos.x(), pos.y()) ? noise.At(pos.x(), pos.y()).Alpha() : 0;
            const int value = 255 - (255 * selected + 127) / 255;
            rest.At(x, y) = LXRGBA32i(qRgba(0, 0, 0, value));
            if (value > 0) bound |= QRect(x, y, 1, 1);
        }
    }
    QCOMPARE(bound, QRect(13, 0, 247, 140));
    Trigger("Invert selection");
    const LXDocumentInterface* document = m_pFixture->Document();
    QCOMPARE(document->GetSelectionGeometry(), bound);
    QCOMPARE(document->GetSelectionMaskOffset(), bound.topLeft());
    const PlainImage inverted = TestImages::ToPlain(document->GetSelectionMask());
    const PlainImage expected = TestImages::ToPlain(CopyPart(TestImages::ToTiles(rest), bound));
    QCOMPARE(TestImages::Difference(inverted, expected), QString());
}

void TestSelectionMenu::everyEntryIsUndoneToTheBit_data()
{
    QTest::addColumn<bool>("moves");
    for (const char* entry : {"Select all", "Deselect", "Invert selection"})
        QTest::newRow(entry) << false;
    for (const QString& entry : AlignmentTexts)
        QTest::newRow(qPrintable(entry)) << true;
}

void TestSelectionMenu::everyEntryIsUndoneToTheBit()
{
    QFETCH(bool, moves);
    const PlainImage noise = SelectNoise();
    const LXDocumentInterface* document = m_pFixture->Document();
    const auto mask = [document] { return TestImages::ToPlain(document->GetSelectionMask()); };

    Trigger(QTest::currentDataTag());
    const PlainImage after = mask();
    const QPoint place = document->GetSelectionMaskOffset();
    QVERIFY(place != NoisePlace || after.width != noise.width);
    if (moves) QCOMPARE(TestImages::Difference(after, noise), QString());
    for (int round = 0; round < 2; ++round) {
        m_pFixture->History().undo();
        QCOMPARE(document->GetSelectionMaskOffset(), NoisePlace);
        QCOMPARE(TestImages::Difference(mask(), noise), QString());
        m_pFixture->History().redo();
        QCOMPARE(document->GetSelectionMaskOffset(), place);
        QCOMPARE(TestImages::Difference(mask(), after), QString());
    }
}

void TestSelectionMenu::alignmentsMoveTheSelectionAlone_data()
{
    QTest::addColumn<QPoint>("topLeft");
    QTest::addColumn<QString>("text");

    // A box of 5 x 7 on 64 x 48: (63 / 2, 47 / 2) - ((10 + 14) / 2, (18 + 24) / 2) = (31 - 12, 23 - 21).
    QTest::newRow("Center") << QPoint(29, 20) << "Align center";
    QTest::newRow("Horizontal center") << QPoint(29, 18) << "Horizontal center";
    QTest::newRow("Vertical center") << QPoint(10, 20) << "Vertical center";
    QTest::newRow("Align left") << QPoint(0, 18) << "Align left";
    QTest::newRow("Align right") << QPoint(59, 18) << "Align right";
    QTest::newRow("Align top") << QPoint(10, 0) << "Align top";
    QTest::newRow("Align bottom") << QPoint(10, 41) << "Align bottom";
}

void TestSelectionMenu::alignmentsMoveTheSelectionAlone()
{
    QFETCH(QPoint, topLeft);
    QFETCH(QString, text);
    Select({10, 18, 5, 7}, 130);
    Trigger(QTest::currentDataTag());
    QCOMPARE(Read(m_pFixture->Document()),
             (Selection{QRect(topLeft, QSize(5, 7)), QVector<int>(5 * 7, 130)}));
    QCOMPARE(m_pFixture->Document()->GetLayerGeometry(1), QRect(0, 0, 64, 48));
    QCOMPARE(HistoryTexts(), QStringList({text}));
}

void TestSelectionMenu::aCenteredSelectionPushesNoCommand()
{
    Select({29, 20, 5, 7});
    Trigger("Center");
    Trigger("Horizontal center");
    Trigger("Vertical center");
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestSelectionMenu::allLayersSelectsEveryRow()
{
    m_pFixture->Document()->AddLayer("Second", LXImage32(4, 4), {});
    m_pFixture->Document()->AddLayer("Third", LXImage32(4, 4), {});
    m_pFixture->SelectLayers({1});
    Trigger("All layers");
    QCOMPARE(m_pFixture->View()->GetLayerSelection()->selectedRows().size(), 3);
    QVERIFY(!Action("All layers")->isEnabled());
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestSelectionMenu::deselectLayersSelectsNone()
{
    Trigger("Deselect layers");
    QVERIFY(m_pFixture->View()->GetLayerSelection()->selectedRows().isEmpty());
    QVERIFY(!Action("Deselect layers")->isEnabled());
}

void TestSelectionMenu::layerActionsFollowTheSelectedRows()
{
    QVERIFY(!Action("All layers")->isEnabled());
    QVERIFY(Action("Deselect layers")->isEnabled());
    m_pFixture->Document()->AddLayer("Second", LXImage32(4, 4), {});
    QVERIFY(Action("All layers")->isEnabled());
    m_pFixture->SelectLayers({});
    QVERIFY(Action("All layers")->isEnabled());
    QVERIFY(!Action("Deselect layers")->isEnabled());
}

void TestSelectionMenu::blockedLayerOrderDisablesTheLayerActions()
{
    m_pFixture->Document()->AddLayer("Second", LXImage32(4, 4), {});
    m_pFixture->View()->BlockLayerOrderOperations(true);
    QVERIFY(!Action("All layers")->isEnabled());
    QVERIFY(!Action("Deselect layers")->isEnabled());
    m_pFixture->SelectLayers({0});
    QVERIFY(!Action("Deselect layers")->isEnabled());
    m_pFixture->View()->BlockLayerOrderOperations(false);
    QVERIFY(Action("All layers")->isEnabled());
    QVERIFY(Action("Deselect layers")->isEnabled());
}

void TestSelectionMenu::withoutAViewEverythingIsOff()
{
    QCOMPARE(SelectionMenuTool().GetMainMenuEntries().size(), std::size_t(6));
    Select({1, 1, 4, 4});
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(Enabled(), QStringList());
}

void TestSelectionMenu::withoutASelectionOnlySelectAllIsOn()
{
    QCOMPARE(Enabled(), QStringList({"Select all", "Deselect layers"}));
}

void TestSelectionMenu::withASelectionEverythingIsOn()
{
    Select({1, 1, 4, 4});
    QCOMPARE(Enabled(), SelectionEntries + AlignmentTexts + QStringList{"Deselect layers"});
    m_pFixture->Document()->SetSelectionMask(LXImage32(), {});
    QCOMPARE(Enabled(), QStringList({"Select all", "Deselect layers"}));
}

void TestSelectionMenu::theDocumentLockDisables()
{
    Select({1, 1, 4, 4});
    m_pFixture->Document()->Lock();
    QCOMPARE(Enabled(), QStringList({"Deselect layers"}));
    m_pFixture->Document()->Unlock();
    QCOMPARE(Enabled(), SelectionEntries + AlignmentTexts + QStringList{"Deselect layers"});
}

void TestSelectionMenu::theViewLockDisables()
{
    Select({1, 1, 4, 4});
    m_pFixture->ToolView().Lock(this);
    QCOMPARE(Enabled(), QStringList({"Deselect layers"}));
    m_pFixture->ToolView().Unlock(this);
    QCOMPARE(Enabled(), SelectionEntries + AlignmentTexts + QStringList{"Deselect layers"});
}

void TestSelectionMenu::aLockedDocumentStaysOffWhenTheViewUnlocks()
{
    Select({1, 1, 4, 4});
    m_pFixture->ToolView().Lock(this);
    m_pFixture->Document()->Lock();
    m_pFixture->ToolView().Unlock(this);
    QCOMPARE(Enabled(), QStringList({"Deselect layers"}));
    m_pFixture->Document()->Unlock();
}

void TestSelectionMenu::aClosedViewLeavesNothingConnected()
{
    m_pTool->SetDocumentView(nullptr);
    Select({1, 1, 4, 4});
    QCOMPARE(Enabled(), QStringList());
    m_pFixture->SelectLayers({});
    m_pFixture->SelectLayers({0});
    QCOMPARE(Enabled(), QStringList());
}

void TestSelectionMenu::aLockOfAViewWithoutAWidgetIsReported()
{
    auto widget = std::make_unique<ZKDocumentWidget>(m_pFixture->Document(), &m_pFixture->History());
    IDocumentView view;
    view.SetDocumentWidget(widget.get());
    m_pTool->SetDocumentView(&view);
    widget.reset();
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("^Build date=.*, time=.*\\. Line=\\d+, "
                                       "file=\"src/selectionmenu/SelectMenuTool_p\"\\. Error input lock$"));
    view.Lock(this);
    view.SetDocumentWidget(m_pFixture->Widget());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QVERIFY(Action("Select all")->isEnabled());
}

void TestSelectionMenu::aCommandWithoutAViewIsReported()
{
    m_pTool->SetDocumentView(nullptr);
    QObject* commands = m_pTool->findChild<QObject*>();
    for (const char* slot : {"SelectAll", "Deselect", "InvertSelection"}) {
        QTest::ignoreMessage(
            QtDebugMsg,
            QRegularExpression("^Build date=.*, time=.*\\. Line=\\d+, "
                               "file=\"src/selectionmenu/SelectMenuTool_p\"\\. Error in state machine\\.$"));
        QVERIFY2(QMetaObject::invokeMethod(commands, slot), slot);
    }
}

void TestSelectionMenu::aFailureIsReportedAndRestoresTheCursor_data()
{
    QTest::addColumn<FaultSeams::Seam>("seam");
    QTest::addColumn<QString>("report");
    const QString place("line=\\d+, file=\"src/selectionmenu/SelectMenuTool_p\"");
    QTest::newRow("memory") << FaultSeams::Seam::TileAllocation
                            << "Unexpected exception: " + place + "\\. Exception content:";
    QTest::newRow("anything else") << FaultSeams::Seam::StrangeTileAllocation
                                   << "Unexpected unknown exception: " + place + "$";
}

void TestSelectionMenu::aFailureIsReportedAndRestoresTheCursor()
{
    QFETCH(FaultSeams::Seam, seam);
    QFETCH(QString, report);
    Select({1, 1, 4, 4}, 50);
    const Selection before = Read(m_pFixture->Document());
    FaultSeams::FailNth(seam, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(report));
    Trigger("Invert selection");
    FaultSeams::Reset();
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(Read(m_pFixture->Document()), before);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestSelectionMenu::workIsDoneUnderTheWaitCursor()
{
    QVector<int> cursors;
    const auto note = [&cursors] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        cursors.append(cursor ? int(cursor->shape()) : -1);
    };
    connect(m_pFixture->Document(), &LXDocumentInterface::SelectionChanged, this, note);
    for (const char* entry : {"Select all", "Align right", "Invert selection", "Deselect"}) {
        Select({5, 6, 7, 8});
        cursors.clear();
        Trigger(entry);
        QVERIFY2(!cursors.isEmpty() && cursors.count(Qt::WaitCursor) == cursors.size(), entry);
        QVERIFY2(!QGuiApplication::overrideCursor(), entry);
    }
    disconnect(m_pFixture->Document(), nullptr, this, nullptr);
}

void TestSelectionMenu::withoutAHistoryTheCommandRuns()
{
    ZKDocumentWidget bare(m_pFixture->Document(), nullptr);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(nullptr);
    m_pTool->SetDocumentView(&view);
    Trigger("Select all");
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 64, 48));
    m_pTool->SetDocumentView(nullptr);
}

ZK_REGISTER_TEST(tst_selectionmenu, TestSelectionMenu)
#include "tst_selectionmenu.moc"
