#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXShortcut.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QListView>
#include <QSpinBox>
#include <QTest>

/// Clicks of the fill can at the edges of what it does: beside the layer, on one pixel, on two layers, past
/// the selection, with nothing to paint, into masks. What they change is read from the picture.
class TestFillEdges : public QObject
{
    Q_OBJECT

private slots:
    void twoLayersSelectedInThePanelAreNotFilled();
    void aDisabledComboKeepsItsMode();
    void leavingTheToolDeletesItsKeys();

    void aClickThatFindsOnlyItselfChangesOnePixel();
    void aClickBesideTheLayerFillsTheEmptySpace();
    void allLayersAreComparedAndTheLayersRectangleIsPainted();
    void aSelectionWithoutTheClickLeavesThePictureInAStep();
    void opacityZeroLeavesThePictureInAStep();

    void masksAreFilledWithLightness_data();
    void masksAreFilledWithLightness();

    void aStepHoldsTheTilesOfTheFilledArea_data();
    void aStepHoldsTheTilesOfTheFilledArea();
};

namespace {
const QColor Paint(200, 40, 20);

// Places in a row of the list of layers, right of its left end.
constexpr int MaskX = 94;
constexpr int NameX = 180;

void ClickLayerRow(EditorFixture& editor, int row, int x, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    auto* list = LayersWidget::GetInstance()->findChild<QListView*>("m_pList");
    const QRect place = list->visualRect(list->model()->index(row, 0));
    editor.GetInput().Click(list->viewport(), {place.left() + x, place.center().y()}, Qt::LeftButton,
                            modifiers);
}

void Check(EditorFixture& editor, const ToolDriver& can, const QString& box)
{
    QWidget* control = can.PanelControl(box);
    editor.GetInput().Click(control, {8, control->height() / 2});
}

LXImage32 PlainImage(int width, int height, const QColor& color)
{
    LXImage32 image(width, height);
    image.Fill(LXRGBA32i(color.rgba()));
    return image;
}

LXImage32 SelectedEverywhere(int width, int height)
{
    return PlainImage(width, height, QColor(0, 0, 0, 255));
}

/// A bright noise with a dark noisy block: no two tiles are alike.
QImage MakeNoiseWithBlock(const QSize& size, const QRect& block)
{
    QImage picture(size, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            const int gray = (block.contains(x, y) ? 20 : 220) + int(noise >> 28);
            picture.setPixel(x, y, qRgb(gray, gray, gray));
        }
    }
    return picture;
}
} // namespace

void TestFillEdges::twoLayersSelectedInThePanelAreNotFilled()
{
    EditorFixture editor(40, 30);
    editor.Document()->AddLayer("Top", LXImage32(40, 30), {});
    ToolDriver can = editor.Tool("Fillcan");
    ClickLayerRow(editor, 0, NameX);
    ClickLayerRow(editor, 1, NameX, Qt::ControlModifier);
    QCOMPARE(editor.View()->GetLayerSelection()->selectedRows().size(), 2);

    editor.GetInput().MoveInScene(editor.View(), {20, 15});
    QCOMPARE(editor.View()->cursor().shape(), Qt::ForbiddenCursor);
    bool wasTold = false;
    editor.GetInput().WhenModalShows([&](QWidget* box) {
        wasTold = true;
        box->close();
    });
    can.Click({20, 15});
    QVERIFY(!wasTold);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestFillEdges::aDisabledComboKeepsItsMode()
{
    EditorFixture editor(40, 30);
    ToolDriver can = editor.Tool("Fillcan");
    auto* blend = qobject_cast<QComboBox*>(can.PanelControl("m_pBlendCombo"));
    can.Key(Qt::Key_M, Qt::ShiftModifier | Qt::AltModifier);
    QCOMPARE(blend->currentText(), QString("Multiply"));
    blend->setEnabled(false);
    can.Key(Qt::Key_N, Qt::ShiftModifier | Qt::AltModifier);
    can.Key(Qt::Key_Plus, Qt::ShiftModifier);
    QCOMPARE(blend->currentText(), QString("Multiply"));
}

void TestFillEdges::leavingTheToolDeletesItsKeys()
{
    EditorFixture editor(40, 30);
    const int before = editor.Window()->findChildren<LXShortcut*>().size();
    editor.Tool("Fillcan");
    QCOMPARE(editor.Window()->findChildren<LXShortcut*>().size(), before + 14);
    QVERIFY(ZKToolGroupManager::Activate(nullptr));
    QCOMPARE(editor.Window()->findChildren<LXShortcut*>().size(), before);
}

void TestFillEdges::aClickThatFindsOnlyItselfChangesOnePixel()
{
    EditorFixture editor(40, 30);
    editor.Document()->GetLayerImage(1)->SetColor(20, 15, LXRGBA32i(0xFF000000));
    editor.Document()->LayerImageChanged(1, QRect());
    QImage expected = editor.Pixels(0);
    expected.setPixelColor(20, 15, Paint);

    ZKApplication::SetForeground(Paint);
    editor.Tool("Fillcan").Click({20.5, 15.5});
    QCOMPARE(editor.Pixels(0), expected);
}

void TestFillEdges::aClickBesideTheLayerFillsTheEmptySpace()
{
    EditorFixture editor(40, 30);
    editor.Document()->SetLayerImage(1, PlainImage(10, 8, Qt::white), {5, 5});
    const QImage before = editor.Pixels(0);
    ZKApplication::SetForeground(Paint);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click({30, 20});

    QImage expected(40, 30, QImage::Format_ARGB32);
    expected.fill(Paint);
    for (int y = 5; y < 13; ++y) {
        for (int x = 5; x < 15; ++x)
            expected.setPixelColor(x, y, Qt::white);
    }
    QCOMPARE(editor.Pixels(0), expected);
    QCOMPARE(editor.Document()->GetLayerGeometry(1), QRect(0, 0, 40, 30));

    can.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Pixels(0), before);
    QCOMPARE(editor.Document()->GetLayerGeometry(1), QRect(5, 5, 10, 8));
}

void TestFillEdges::allLayersAreComparedAndTheLayersRectangleIsPainted()
{
    EditorFixture editor(40, 30);
    editor.Document()->AddLayer("Top", LXImage32(10, 8), {5, 5});
    ToolDriver can = editor.Tool("Fillcan");
    ClickLayerRow(editor, 0, NameX);
    Check(editor, can, "m_pAllLayersChb");
    ZKApplication::SetForeground(Paint);
    can.Click({30, 20});

    QImage painted(10, 8, QImage::Format_ARGB32);
    painted.fill(Paint);
    QCOMPARE(editor.Pixels(1), painted);
    QCOMPARE(editor.Document()->GetLayerGeometry(1), QRect(5, 5, 10, 8));
    QCOMPARE(editor.Pixels(0).pixelColor(30, 20), QColor(Qt::white));
    QCOMPARE(editor.Pixels(0).pixelColor(14, 12), Paint);
}

void TestFillEdges::aSelectionWithoutTheClickLeavesThePictureInAStep()
{
    EditorFixture editor(40, 30);
    for (int y = 0; y < 30; ++y)
        editor.Document()->GetLayerImage(1)->SetColor(0, y, LXRGBA32i(0xFF000000));
    editor.Document()->LayerImageChanged(1, QRect());
    editor.Document()->SetSelectionMask(SelectedEverywhere(1, 30), {0, 0});
    const QImage before = editor.Pixels(0);
    ZKApplication::SetForeground(Paint);
    editor.Tool("Fillcan").Click({20, 15});
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
    QCOMPARE(editor.Pixels(0), before);
}

void TestFillEdges::opacityZeroLeavesThePictureInAStep()
{
    EditorFixture editor(40, 30);
    const QImage before = editor.Pixels(0);
    ZKApplication::SetForeground(Paint);
    ToolDriver can = editor.Tool("Fillcan");
    auto* opacity = qobject_cast<QSpinBox*>(can.BarControl("m_pOpacitySpn"));
    editor.GetInput().Click(opacity, {8, opacity->height() / 2});
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.GetInput().Type("0");
    editor.GetInput().Key(Qt::Key_Return);
    QCOMPARE(opacity->value(), 0);

    can.Click({20, 15});
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
    QCOMPARE(editor.Pixels(0), before);
}

void TestFillEdges::masksAreFilledWithLightness_data()
{
    QTest::addColumn<bool>("reveals");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("alpha");
    QTest::newRow("black on a white mask hides") << true << QColor(0, 0, 0) << 0;
    QTest::newRow("white on a black mask reveals") << false << QColor(255, 255, 255) << 255;
    QTest::newRow("gray half hides") << true << QColor(128, 128, 128) << 128;
    QTest::newRow("gray half reveals") << false << QColor(128, 128, 128) << 128;
}

void TestFillEdges::masksAreFilledWithLightness()
{
    QFETCH(bool, reveals);
    QFETCH(QColor, color);
    QFETCH(int, alpha);
    EditorFixture editor(40, 30, Qt::red);
    editor.Document()->AddMask(1, reveals);
    const QImage before = editor.Pixels(0);
    QCOMPARE(before.pixelColor(20, 15).alpha(), reveals ? 255 : 0);
    ToolDriver can = editor.Tool("Fillcan");
    ClickLayerRow(editor, 0, MaskX);
    QVERIFY(editor.Document()->GetModel()->GetMaskSelected(0));

    ZKApplication::SetForeground(color);
    can.Click({20, 15});
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill with mask"});
    QCOMPARE(editor.Pixels(0).pixelColor(20, 15).alpha(), alpha);
    QCOMPARE(editor.Pixels(0).pixelColor(39, 29).alpha(), alpha);
    if (alpha > 0) QCOMPARE(editor.Pixels(0).pixelColor(20, 15).red(), 255);
    QCOMPARE(editor.Pixels(1).pixelColor(20, 15), QColor(Qt::red));

    can.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Pixels(0), before);
}

void TestFillEdges::aStepHoldsTheTilesOfTheFilledArea_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<int>("tiles");
    // The step shares what the layer has or had, and tiles of one color are one. Only where the whole tiles
    // that the area touches would be more, both of its images are its own.
    QTest::newRow("one tile") << QRect(128, 128, 128, 128) << 1;
    QTest::newRow("four tiles") << QRect(256, 256, 256, 256) << 1;
    QTest::newRow("one tile and a part of the next") << QRect(128, 128, 128, 150) << 2;
    QTest::newRow("a few pixels") << QRect(300, 300, 5, 5) << 1;
    QTest::newRow("as large as a tile, off the grid") << QRect(200, 200, 128, 128) << 2;
    QTest::newRow("as large as nine tiles, off the grid") << QRect(200, 200, 384, 384) << 16;
}

void TestFillEdges::aStepHoldsTheTilesOfTheFilledArea()
{
    QFETCH(QRect, area);
    EditorFixture editor;
    const QString file = editor.TempFile("noise.png");
    QVERIFY(MakeNoiseWithBlock({1024, 1024}, area).save(file));
    QVERIFY(editor.Files()->Open(file));
    ToolDriver can = editor.Tool("Fillcan");
    const QImage before = editor.Pixels(0);
    editor.Settle();
    const int tiles = LXTileManager::Instance().LiveTileCount();

    ZKApplication::SetForeground(Paint);
    can.Click(QRectF(area).center());
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
    QCOMPARE(editor.Pixels(0).pixelColor(area.bottomRight()), Paint);
    QTEST(LXTileManager::Instance().LiveTileCount() - tiles, "tiles");

    can.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Pixels(0), before);
}

ZK_REGISTER_TEST(tst_fill_edges, TestFillEdges)
#include "tst_fill_edges.moc"
