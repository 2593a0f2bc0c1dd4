#include "MagicWandFixture.h"
#include "magicwand/MagicWand_p.h"

#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "gui/LToolBoxButton.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/MWSelectionCommandData.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QCheckBox>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <atomic>
#include <thread>

// What clicks and drags select, on an 8 by 6 document whose column 4 is black.
class TestMagicWand : public QObject, private MagicWandFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClickSelectsWhatIsLikeTheClickedPixel();
    void aClickWithoutContiguousSelectsBothSides();
    void theToleranceReachesTheFill();
    void undoBringsMaskAndOffsetBackBitForBit();
    void aClickOnASelectedPixelRemovesTheSelection_data();
    void aClickOnASelectedPixelRemovesTheSelection();
    void aClickOnAPixelSelectedByHalfOrLessSelectsAnew_data();
    void aClickOnAPixelSelectedByHalfOrLessSelectsAnew();
    void otherModesFillInsideTheSelection_data();
    void otherModesFillInsideTheSelection();
    void otherModesDontDragTheSelection();
    void theFirstSubtractRecordsReplace();
    void softSelectionsCombineLikeTheReference_data();
    void softSelectionsCombineLikeTheReference();
    void subtractingTheLastSelectedPixelWarns();
    void subtractingBesideTheSelectionLeavesItAndIsSilent();
    void aFaintResultWarns();
    void aClickOutsideTheCanvasSelectsNothingAndWarns();
    void aPlaceIsTruncatedTowardZero();
    void theFillRunsUnderTheWaitCursor();
    void theLayerIsHeldUntilTheStepIsMade();
    void warningsHaveOneButtonAndTheMainWindow_data();
    void warningsHaveOneButtonAndTheMainWindow();

    void withoutALayerToCompareAClickDoesNothingUntilTheRelease();
    void aLayerPartlyOutsideIsComparedInDocumentPixels();
    void aLayerOfEveryKindIsCompared();
    void aFloatingPieceLandsBeforeTheFill();

    void aRightClickWithoutASelectionWarns();
    void aRightClickWithAnEmptyMenuChecksTheSelection();
    void aRightClickOverTheSelectionLeavesIt();
    void aRightClickPopsAFilledMenuUp();
    void aMiddlePressEndsInTheSameChecks();

    void aDragMovesTheSelection();
    void aDragIsUndoneAndRedone();
    void aSelectionDragHoldsTheDocumentUntilTheRelease();
    void aDoubleClickSelectsOnce();
    void anotherButtonLeavesADragAlone();
    void aDragWithoutAnEndIsPutDownByTheNextPress();
    void theHoverShowsWhatAPressWouldDo();
    void theArrowGoesWithTheSelection();
    void panningTheViewSelectsNothing_data();
    void panningTheViewSelectsNothing();

private:
    /// A press that only the scene hears of.
    void SendPress(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);

    QByteArray Cursor() { return CursorKey(m_pFixture->View()->cursor()); }

    static QByteArray CursorKey(const QCursor& cursor)
    {
        const QImage image = cursor.pixmap().toImage();
        return QByteArray::number(cursor.shape()) +
               QByteArray::number(qHashBits(image.constBits(), image.sizeInBytes()));
    }
};

namespace {
const QStringList Left{"####....", "####....", "####....", "####....", "####....", "####...."};
const QStringList Right{".....###", ".....###", ".....###", ".....###", ".....###", ".....###"};
const QStringList Nothing{"........", "........", "........", "........", "........", "........"};
const QString NoPixels("Zenkari: Warning. No pixels selected.");
const QString
    Faint("Zenkari: Warning. No pixels are more than 50% selected.\nThe selection edges will not be "
          "visible.");

enum Mode
{
    CreateNew = 0,
    Add = 1,
    Subtract = 2,
    Intersect = 3
};
} // namespace

void TestMagicWand::init()
{
    MakeTool();
}

void TestMagicWand::cleanup()
{
    VERIFY_NOTHING_IS_HELD();
    DropTool();
}

void TestMagicWand::SendPress(const QPointF& scenePos, Qt::MouseButton button)
{
    QGraphicsSceneMouseEvent press(QEvent::GraphicsSceneMousePress);
    press.setScenePos(scenePos);
    press.setButton(button);
    press.setButtons(button);
    QApplication::sendEvent(m_pFixture->View()->scene(), &press);
}

void TestMagicWand::aClickSelectsWhatIsLikeTheClickedPixel()
{
    Click({2.5, 2.5});
    QCOMPARE(Selection(), Left);
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 4, 6));
    QCOMPARE(m_pFixture->History().text(0), QString("Apply magic wand"));
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestMagicWand::aClickWithoutContiguousSelectsBothSides()
{
    InPanel<QCheckBox>("m_pContiguousAreas")->setChecked(false);
    Click({2.5, 2.5});
    QCOMPARE(Selection().first(), QString("####.###"));
}

void TestMagicWand::theToleranceReachesTheFill()
{
    InPanel<QSpinBox>("m_pToleranceSpin")->setValue(255);
    Click({2.5, 2.5});
    QCOMPARE(Selection().first(), QString("########"));
}

void TestMagicWand::undoBringsMaskAndOffsetBackBitForBit()
{
    // Partly outside of the canvas.
    Select({"h#f", "fl."}, {-1, 3});
    const LXImage32 before = m_pFixture->Document()->GetSelectionMask();
    Click({6.5, 0.5});
    QCOMPARE(Selection(), Right);
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(-1, 3, 3, 2));
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            QCOMPARE(m_pFixture->Document()->GetSelectionMask().GetColor(x, y), before.GetColor(x, y));
        }
    }
    m_pFixture->History().redo();
    QCOMPARE(Selection(), Right);
}

void TestMagicWand::aClickOnASelectedPixelRemovesTheSelection_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("wholly selected") << "########";
    QTest::newRow("just more than half") << "hhhhhhhh";
}

void TestMagicWand::aClickOnASelectedPixelRemovesTheSelection()
{
    QFETCH(QString, row);
    Select({row});
    QCOMPARE(BoxesDuring([&] { Click({2.5, 0.5}); }), QStringList());
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(m_pFixture->History().undoText(), QString("Remove selection"));
    m_pFixture->History().undo();
    QCOMPARE(Selection().first(), row);
}

void TestMagicWand::aClickOnAPixelSelectedByHalfOrLessSelectsAnew_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("half") << "llllllll";
    QTest::newRow("less") << "ffffffff";
    QTest::newRow("beside") << ".....###";
}

void TestMagicWand::aClickOnAPixelSelectedByHalfOrLessSelectsAnew()
{
    QFETCH(QString, row);
    Select({row});
    Click({2.5, 0.5});
    QCOMPARE(Selection(), Left);
    QCOMPARE(m_pFixture->History().undoText(), QString("Apply magic wand"));
}

void TestMagicWand::otherModesFillInsideTheSelection_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    QTest::newRow("add") << int(Add) << "########";
    QTest::newRow("subtract") << int(Subtract) << "....####";
    QTest::newRow("intersect") << int(Intersect) << "####....";
}

void TestMagicWand::otherModesFillInsideTheSelection()
{
    QFETCH(int, mode);
    QFETCH(QString, expected);
    Select({"########"});
    SetMode(mode);
    Click({2.5, 0.5});
    QCOMPARE(Selection().first(), expected);
    QCOMPARE(m_pFixture->History().undoText(), QString("Apply magic wand"));
}

void TestMagicWand::otherModesDontDragTheSelection()
{
    Select({"########"});
    Move({1.5, 0.5});
    SetMode(Add);
    Press({1.5, 0.5});
    Move({3.5, 3.5});
    Release({3.5, 3.5});
    QCOMPARE(m_pFixture->History().count(), 1);
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry().topLeft(), QPoint(0, 0));
}

void TestMagicWand::theFirstSubtractRecordsReplace()
{
    SetMode(Subtract);
    Click({2.5, 2.5});
    QCOMPARE(Selection(), Left);
    const auto* data =
        dynamic_cast<const MWSelectionCommandData*>(m_pFixture->History().command(0)->GetCommandData());
    QVERIFY(data);
    QCOMPARE(data->GetRedoOp(), SelectionCommandData::Replace);
    QVERIFY(data->HasNoUndoSelection());
    m_pFixture->History().undo();
    QVERIFY(!m_pFixture->Document()->HasSelection());
}

void TestMagicWand::softSelectionsCombineLikeTheReference_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("add") << int(Add);
    QTest::newRow("subtract") << int(Subtract);
    QTest::newRow("intersect") << int(Intersect);
}

void TestMagicWand::softSelectionsCombineLikeTheReference()
{
    QFETCH(int, mode);
    const QStringList soft{"........", "..hlf#h.", "..lfh#l.", "..###ff.", "........", "........"};
    Select(soft);
    SetMode(mode);
    Click({0.5, 0.5});
    QStringList expected = soft;
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 8; ++x) {
            const bool isFound = Left[y][x] == '#';
            if (mode == Add && isFound) expected[y][x] = '#';
            if (mode == Subtract && isFound) expected[y][x] = '.';
            if (mode == Intersect && !isFound) expected[y][x] = '.';
        }
    }
    QCOMPARE(Selection(), expected);
    m_pFixture->History().undo();
    QCOMPARE(Selection(), soft);
}

void TestMagicWand::subtractingTheLastSelectedPixelWarns()
{
    Select({"#"}, {1, 1});
    SetMode(Subtract);
    QCOMPARE(BoxesDuring([&] { Click({2.5, 2.5}); }), QStringList(NoPixels));
    QVERIFY(!m_pFixture->Document()->HasSelection());
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 1, 1));
}

void TestMagicWand::subtractingBesideTheSelectionLeavesItAndIsSilent()
{
    Select({"#"}, {1, 1});
    SetMode(Subtract);
    Click({6.5, 2.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 1, 1));
    QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
}

void TestMagicWand::aFaintResultWarns()
{
    Select({"ffffffff"});
    SetMode(Intersect);
    QCOMPARE(BoxesDuring([&] { Click({2.5, 2.5}); }), QStringList(Faint));
    QCOMPARE(Selection().first(), QString("ffff...."));
}

void TestMagicWand::aClickOutsideTheCanvasSelectsNothingAndWarns()
{
    QCOMPARE(BoxesDuring([&] { Click({-3.5, 2.5}); }), QStringList(NoPixels));
    QVERIFY(!m_pFixture->Document()->HasSelection());
}

void TestMagicWand::aPlaceIsTruncatedTowardZero()
{
    QCOMPARE(BoxesDuring([&] { SendPress({-0.5, -0.5}); }), QStringList());
    QCOMPARE(Selection(), Left);
}

void TestMagicWand::theFillRunsUnderTheWaitCursor()
{
    QVector<int> cursors;
    connect(m_pFixture->Document(), &LXDocumentInterface::SelectionChanged, this, [&cursors] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        cursors.append(cursor ? int(cursor->shape()) : -1);
    });
    Press({2.5, 2.5});
    disconnect(m_pFixture->Document(), nullptr, this, nullptr);
    QVERIFY(!cursors.isEmpty());
    QCOMPARE(cursors.count(Qt::WaitCursor), cursors.size());
    QVERIFY(!QGuiApplication::overrideCursor());
    Release({2.5, 2.5});
}

void TestMagicWand::theLayerIsHeldUntilTheStepIsMade()
{
    InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
    std::atomic_bool written = false;
    std::thread writer;
    bool writtenInTheStep = false;
    const auto pushed = connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this, [&] {
        writer = std::thread([&] {
            const LXDocumentLayerLockerForWrite locker(m_pFixture->Document(), 1);
            written = true;
        });
        // Time enough for somebody whom nothing holds up.
        QTest::qSleep(100);
        writtenInTheStep = written;
    });
    Click({2.5, 2.5});
    disconnect(pushed);
    QVERIFY(writer.joinable());
    writer.join();
    QVERIFY(!writtenInTheStep);
    QVERIFY(written);
    QCOMPARE(Selection(), Left);
}

void TestMagicWand::warningsHaveOneButtonAndTheMainWindow_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("told");
    QTest::newRow("nothing") << QStringList() << NoPixels;
    QTest::newRow("faint") << QStringList("ffffffff") << Faint;
}

void TestMagicWand::warningsHaveOneButtonAndTheMainWindow()
{
    QFETCH(QStringList, rows);
    QFETCH(QString, told);
    QMainWindow window;
    window.setCentralWidget(LXDocumentManager::GetDocumentArea());
    QCOMPARE(LXMdiArea::MainWindow(), &window);
    LXMessageBox sample;
    const QString ok = sample.AddButton(LXMessageBox::Ok)->text();

    if (!rows.isEmpty()) Select(rows);
    QStringList buttons;
    QString seen;
    const QWidget* parent = nullptr;
    bool isWaiting = true;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        for (const QPushButton* button : box->findChildren<QPushButton*>()) {
            buttons.append(button->text());
        }
        seen = box->windowTitle() + ": " + box->GetText();
        parent = box->parentWidget();
        isWaiting = QGuiApplication::overrideCursor();
        box->close();
    });
    Click({2.5, 0.5}, Qt::RightButton);
    QCOMPARE(seen, told);
    QCOMPARE(buttons, QStringList(ok));
    QCOMPARE(parent, &window);
    QVERIFY(!isWaiting);
}

// ---- which layer

void TestMagicWand::withoutALayerToCompareAClickDoesNothingUntilTheRelease()
{
    m_pFixture->SelectLayers({});
    InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
    Press({2.5, 2.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));
    QVERIFY(!QApplication::activeModalWidget());
    Release({2.5, 2.5});
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestMagicWand::aLayerPartlyOutsideIsComparedInDocumentPixels()
{
    LXImage32 image(4, 4);
    image.Fill(LXRGBA32i(0xFFFF0000));
    m_pFixture->Document()->AddLayer("Red", image, {-2, 3});
    m_pFixture->SelectLayers({0});
    InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
    Click({1.5, 4.5});
    QCOMPARE(Selection(),
             QStringList({"........", "........", "........", "##......", "##......", "##......"}));
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 3, 2, 3));
}

void TestMagicWand::aLayerOfEveryKindIsCompared()
{
    for (const int kind : {LayerKind::Text, LayerKind::Adjustment}) {
        LayerState layer;
        layer.properties.kind = kind;
        layer.properties.rect = QRect(1, 1, 2, 2);
        layer.image = LXImage32(2, 2);
        layer.image.Fill(LXRGBA32i(0xFF00FF00));
        LXDocumentInterfacePrivate::Get(m_pFixture->Document())->InsertLayer(0, layer);
        m_pFixture->SelectLayers({0});
        InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
        Click({2.5, 2.5});
        QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 2, 2));
        m_pFixture->History().undo();
    }
}

void TestMagicWand::aFloatingPieceLandsBeforeTheFill()
{
    const auto landing = connect(&m_pFixture->History(), &LexoUndoStack::aboutCommit, this,
                                 [&] { m_pFixture->Document()->SetSelectionMask({}, {}); });
    Select({"#"}, {1, 1});
    SetMode(Add);
    Click({6.5, 2.5});
    disconnect(landing);
    QCOMPARE(Selection(), Right);
}

// ---- other buttons

void TestMagicWand::aRightClickWithoutASelectionWarns()
{
    QCOMPARE(BoxesDuring([&] { Click({2.5, 2.5}, Qt::RightButton); }), QStringList(NoPixels));
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestMagicWand::aRightClickWithAnEmptyMenuChecksTheSelection()
{
    Select({"llllllll"});
    QCOMPARE(BoxesDuring([&] { Click({2.5, 0.5}, Qt::RightButton); }), QStringList(Faint));
    QCOMPARE(Selection().first(), QString("llllllll"));
}

void TestMagicWand::aRightClickOverTheSelectionLeavesIt()
{
    Select({"########"});
    Move({2.5, 0.5});
    Click({2.5, 0.5}, Qt::RightButton);
    QCOMPARE(Selection().first(), QString("########"));
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestMagicWand::aRightClickPopsAFilledMenuUp()
{
    auto* tool = m_pTool->findChild<MagicWandPrivate*>();
    QAction action("Other tool's action");
    tool->GetContextMenu()->addAction(&action);
    Select({"########"});
    Click({2.5, 0.5}, Qt::RightButton);
    QTRY_VERIFY(tool->GetContextMenu()->isVisible());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    tool->GetContextMenu()->close();

    // Without a selection the menu stays away.
    m_pFixture->Document()->SetSelectionMask({}, {});
    QCOMPARE(BoxesDuring([&] { Click({2.5, 0.5}, Qt::RightButton); }), QStringList(NoPixels));
    QVERIFY(!tool->GetContextMenu()->isVisible());
}

void TestMagicWand::aMiddlePressEndsInTheSameChecks()
{
    QCOMPARE(BoxesDuring([&] { SendPress({2.5, 2.5}, Qt::MiddleButton); }), QStringList(NoPixels));
}

// ---- drag of the selection

void TestMagicWand::aDragMovesTheSelection()
{
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    Move({2.5, 1.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry().topLeft(), QPoint(2, 1));
    Move({5.5, 3.5});
    QCOMPARE(m_pFixture->History().count(), 0);
    Release({5.5, 3.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(5, 3, 2, 1));
    QCOMPARE(m_pFixture->History().count(), 1);
    QCOMPARE(m_pFixture->History().text(0), QString("Move selection"));
    // No pixel moves.
    QCOMPARE(m_pFixture->Pixel(4, 3), QRgb(0xFF000000));
}

void TestMagicWand::aDragIsUndoneAndRedone()
{
    Select({"h#"}, {1, 1});
    m_pFixture->Input().DragInScene(m_pFixture->View(), {{1.5, 1.5}, {-0.5, 3.5}});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(-1, 3, 2, 1));
    m_pFixture->History().undo();
    QCOMPARE(Selection()[1], QString(".h#....."));
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(-1, 3, 2, 1));
}

void TestMagicWand::aSelectionDragHoldsTheDocumentUntilTheRelease()
{
    Select({"########"});
    Press({1.5, 0.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(IDocumentView::LockBit));
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    Move({2.5, 0.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    Release({2.5, 0.5});
    VERIFY_NOTHING_IS_HELD();
}

void TestMagicWand::aDoubleClickSelectsOnce()
{
    m_pFixture->Input().DoubleClickInScene(m_pFixture->View(), {2.5, 2.5});
    QCOMPARE(Selection(), Left);
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestMagicWand::anotherButtonLeavesADragAlone()
{
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton}) {
        Select({"##"}, {1, 1});
        Press({1.5, 1.5});
        Move({2.5, 1.5});
        const auto verifyHeld = [this] {
            QVERIFY(m_pFixture->Document()->GetLockState());
            QCOMPARE(m_pFixture->ToolView().GetState(), quint64(IDocumentView::LockBit));
            QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
            QCOMPARE(m_pFixture->History().count(), 0);
        };
        QCOMPARE(BoxesDuring([&] { Press({2.5, 1.5}, other); }), QStringList());
        verifyHeld();
        Release({2.5, 1.5}, other);
        verifyHeld();
        Move({5.5, 3.5});
        Release({5.5, 3.5});
        VERIFY_NOTHING_IS_HELD();
        QCOMPARE(m_pFixture->History().count(), 1);
        QCOMPARE(m_pFixture->History().text(0), QString("Move selection"));
        QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(5, 3, 2, 1));
        m_pFixture->History().undo();
        QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 2, 1));
        m_pFixture->History().clear();
    }
}

void TestMagicWand::aDragWithoutAnEndIsPutDownByTheNextPress()
{
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    Move({2.5, 1.5});
    // Somebody took the release, and the left button is pressed anew.
    SendPress({6.5, 2.5});
    QCOMPARE(m_pFixture->History().text(0), QString("Move selection"));
    QCOMPARE(Selection(), Right);
    Release({6.5, 2.5});
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(2, 1, 2, 1));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 2, 1));
}

void TestMagicWand::theHoverShowsWhatAPressWouldDo()
{
    const QByteArray wand = Cursor();
    Select({"##ll"});
    Move({1.5, 0.5});
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
    Move({2.5, 0.5});
    QCOMPARE(Cursor(), wand);
    Move({1.5, 0.5});
    Move({1.5, 3.5});
    QCOMPARE(Cursor(), wand);

    SetMode(Add);
    const QByteArray plus = Cursor();
    QVERIFY(plus != wand);
    Move({1.5, 0.5});
    QCOMPARE(Cursor(), plus);
}

void TestMagicWand::theArrowGoesWithTheSelection()
{
    const QByteArray wand = Cursor();
    Select({"##"}, {1, 1});
    Move({1.5, 1.5});
    Click({1.5, 1.5});
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(Cursor(), wand);

    // It goes before the press, and there is no layer to compare.
    m_pFixture->SelectLayers({});
    InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
    Select({"##"}, {1, 1});
    Move({2.5, 1.5});
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
    m_pFixture->Document()->SetSelectionMask({}, {});
    Click({2.5, 1.5});
    QCOMPARE(Cursor(), wand);
}

// ---- panning

void TestMagicWand::panningTheViewSelectsNothing_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("no selection") << "........";
    QTest::newRow("over what is selected") << "########";
    QTest::newRow("beside it") << ".....###";
}

void TestMagicWand::panningTheViewSelectsNothing()
{
    QFETCH(QString, row);
    if (row.contains('#')) Select({row});
    const bool hadSelection = m_pFixture->Document()->HasSelection();
    ZKDocumentView* view = m_pFixture->View();
    Move({2.5, 0.5});
    const QByteArray before = Cursor();
    const QStringList boxes = BoxesDuring([&] {
        view->EnablePanning(true);
        Click({2.5, 0.5});
        view->EnablePanning(true);
        Press({2.5, 0.5});
        Move({4.5, 3.5});
        QCOMPARE(view->cursor().shape(), Qt::ClosedHandCursor);
        VERIFY_NOTHING_IS_HELD();
        Release({4.5, 3.5});
        Press({2.5, 0.5}, Qt::MiddleButton);
        Move({4.5, 3.5});
        QCOMPARE(view->cursor().shape(), Qt::ClosedHandCursor);
        Release({4.5, 3.5}, Qt::MiddleButton);
    });
    QCOMPARE(boxes, QStringList());
    QCOMPARE(m_pFixture->History().count(), 0);
    QCOMPARE(m_pFixture->Document()->HasSelection(), hadSelection);
    QCOMPARE(Selection().first(), row);
    QCOMPARE(Cursor(), before);
}

ZK_REGISTER_TEST(tst_magicwand, TestMagicWand)

#include "tst_magicwand.moc"
