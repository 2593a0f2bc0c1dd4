#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QItemSelectionModel>

/// `layers` and the layers it gives.
class TestScriptLayers : public QObject
{
    Q_OBJECT

private slots:
    void aLayerIsAddedAboveTheSelectedOne();
    void addTakesNameAndRow();
    void propertiesAreSetBySteps();
    void wrongValuesAreRefused();
    void locksAreWords();
    void aLayerStaysTheSameWhenOthersMove();
    void aRemovedLayerSaysSo();
    void theLastLayerStays();
    void severalLayersAreSelected();
    void selectingTheMaskMakesItTheTarget();
    void aMaskIsAddedAndRemovedBySteps();
    void fillingTouchesOnlyTheRectangle();
    void fillingCutsTheRectangleToTheLayer();
    void setUpLeavesNoStepButUnsavedChanges();
    void masksArePaintedInNumbers();
    void layerAndMaskArePlaced();
    void layersOfOtherDocumentsAreNotSelected();
    void aTextIsAddedAndChangedBySteps();
    void anAdjustmentIsAddedAndChangedBySteps();
    void wrongOptionsOfKindsAddNothing();
};

void TestScriptLayers::aLayerIsAddedAboveTheSelectedOne()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const added = layers.add()
        expect.equal([layers.count, added.row, added.id, added.name], [2, 0, 1, "Layer 1"])
        expect.ok(added.selected)
        expect.equal(layers.current.name, "Layer 1")
        expect.equal(added.geometry, { x: 0, y: 0, width: 8, height: 6 })
    )");
    QCOMPARE(editor.HistoryTexts(), QStringList("New layer"));
}

void TestScriptLayers::addTakesNameAndRow()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        layers.add({ name: "below", row: 1 })
        expect.equal(layers.all.map(layer => layer.name), ["Background", "below"])
        expect.throws(function() { layers.add({ row: 3 }) }, "from 0 to 2")
    )");
}

void TestScriptLayers::propertiesAreSetBySteps()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const layer = layers.at(0)
        layer.name = "Sky"
        layer.opacity = 0.25
        layer.blendMode = "Color dodge"
        layer.visible = false
        expect.equal([layer.name, layer.opacity, layer.blendMode, layer.visible, layer.kind],
                     ["Sky", 0.25, "Color dodge", false, "raster"])
    )");
    const LXDocumentModel* model = editor.Document()->GetModel();
    QCOMPARE(model->GetName(0), QString("Sky"));
    QCOMPARE(model->GetOpacity(0), 0.25);
    QCOMPARE(model->GetBlendMode(0), unsigned(BlendMode::ColorDodge));
    QVERIFY(!model->GetVisible(0));
    QCOMPARE(editor.History()->count(), 4);

    editor.History()->setIndex(0);
    QCOMPARE(model->GetName(0), QString("Background"));
    QCOMPARE(model->GetOpacity(0), 1.0);
    QVERIFY(model->GetVisible(0));
}

void TestScriptLayers::wrongValuesAreRefused()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        "use strict"
        const layer = layers.at(0)
        expect.throws(function() { layer.opacity = 1.5 }, "from 0 to 1")
        expect.throws(function() { layer.opacity = "much" }, "Cannot assign")
        expect.throws(function() { layer.blendMode = "Glow" }, "\"Glow\" is no blend mode; there are: Normal")
        expect.throws(function() { layer.locks = ["door"] }, "\"door\" is no lock")
        expect.throws(function() { layer.name = " " }, "needs a name")
        expect.throws(function() { layer.row = 1 }, "")
        expect.throws(function() { layer.opactiy = 1 }, "")
        expect.throws(function() { layers.at(1) }, "from 0 to 0")
        expect.throws(function() { layers.named("Sea") }, "There is no layer \"Sea\".")
        expect.throws(function() { layers.select("Background") }, "A layer is needed")
    )");
    QCOMPARE(editor.History()->count(), 0);
}

void TestScriptLayers::locksAreWords()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        layers.at(0).locks = ["position", "transparency"]
        expect.equal(layers.at(0).locks, ["transparency", "position"])
    )");
    QCOMPARE(editor.Document()->GetLayerLockFlags(1), LayerLocks::Position | LayerLocks::Transparency);
    editor.Check("layers.at(0).locks = []; expect.equal(layers.at(0).locks, [])");
    QCOMPARE(editor.Document()->GetLayerLockFlags(1), 0U);
}

void TestScriptLayers::aLayerStaysTheSameWhenOthersMove()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const bottom = layers.at(0)
        const top = layers.add({ name: "Top" }), middle = layers.add({ name: "Middle", row: 1 })
        expect.equal([bottom.row, middle.row, top.row], [2, 1, 0])
        bottom.moveToRow(0)
        expect.equal([bottom.row, top.row, middle.row], [0, 1, 2])
        expect.equal(bottom.name, "Background")
        top.remove()
        expect.equal([bottom.row, middle.row], [0, 1])
        history.undo()
        expect.equal([bottom.row, middle.row], [0, 2])
    )");
}

void TestScriptLayers::aRemovedLayerSaysSo()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const gone = layers.add(), seen = pixels.layer(gone)
        gone.remove()
        expect.equal([gone.exists, layers.count], [false, 1])
        for (const act of [() => gone.name, () => gone.fill("red"), () => layers.select(gone),
                           () => seen.pixel(0, 0)])
            expect.throws(act, "The layer is no longer there.")
    )");
}

void TestScriptLayers::theLastLayerStays()
{
    EditorScriptFixture editor(8, 6);
    editor.Check("expect.throws(function() { layers.at(0).remove() }, 'The last layer stays.')");
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
}

void TestScriptLayers::severalLayersAreSelected()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const first = layers.add(), second = layers.add()
        layers.select([first, second])
        expect.equal(layers.selected.map(layer => layer.name), ["Layer 2", "Layer 1"])
        expect.equal(layers.current, null)
        layers.select(layers.named("Background"))
        expect.equal(layers.current.row, 2)
        layers.select([])
        expect.equal([layers.selected.length, layers.current], [0, null])
    )");
    QVERIFY(!editor.View()->GetLayerSelection()->hasSelection());
}

void TestScriptLayers::selectingTheMaskMakesItTheTarget()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const layer = layers.at(0)
        expect.throws(function() { layers.selectMask(layer) }, "The layer has no mask.")
        layer.addMask()
        layers.selectMask(layer)
        expect.equal([layer.maskSelected, layer.selected], [true, true])
        layers.select(layer)
        expect.equal(layer.maskSelected, false)
    )");
}

void TestScriptLayers::aMaskIsAddedAndRemovedBySteps()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const layer = layers.at(0)
        expect.equal([layer.hasMask, layer.maskGeometry], [false, null])
        layer.addMask({ reveals: false })
        expect.equal([layer.hasMask, layer.maskReveals, layer.linked], [true, false, true])
        expect.equal(layer.maskGeometry, { x: 0, y: 0, width: 8, height: 6 })
        expect.equal(pixels.merged.pixel(0, 0), "#00000000", "hidden by the mask")
        expect.throws(function() { layer.addMask() }, "has a mask already")
        layer.linked = false
        expect.equal(layer.linked, false)
        layer.removeMask()
        expect.equal(layer.hasMask, false)
        for (const act of [() => layer.removeMask(), () => layer.fillMask(0), () => layer.maskOffset,
                           () => pixels.mask(layer)])
            expect.throws(act, "The layer has no mask.")
        expect.equal(history.count, 3)
    )");
}

void TestScriptLayers::fillingTouchesOnlyTheRectangle()
{
    EditorScriptFixture editor(5, 4, Qt::white);
    editor.Check("layers.at(0).fill('#80ff0000', { x: 1, y: 2, width: 3, height: 1 })");
    const QImage seen = editor.Pixels(1);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const bool isInside = y == 2 && x >= 1 && x <= 3;
            QCOMPARE(seen.pixel(x, y), isInside ? qRgba(255, 0, 0, 128) : qRgba(255, 255, 255, 255));
        }
    }
}

void TestScriptLayers::fillingCutsTheRectangleToTheLayer()
{
    EditorScriptFixture editor(5, 4, Qt::white);
    editor.Check(R"(
        layers.at(0).fill("black", { x: -10, y: 3, width: 100, height: 100 })
        expect.throws(function() { layers.at(0).fill("black", { x: 5, y: 0, width: 1, height: 1 }) },
                      "lies outside")
        expect.throws(function() { layers.at(0).fill("black", { x: 0, y: 0, width: 0, height: 1 }) },
                      "width has to be a whole number from 1")
        expect.throws(function() { layers.at(0).fill("black", 7) }, "A rectangle is")
        expect.throws(function() { layers.at(0).setPixel(5, 0, "black") }, "lies outside")
    )");
    QCOMPARE(editor.Pixels(1).pixel(0, 3), qRgb(0, 0, 0));
    QCOMPARE(editor.Pixels(1).pixel(0, 2), qRgb(255, 255, 255));
}

void TestScriptLayers::setUpLeavesNoStepButUnsavedChanges()
{
    EditorScriptFixture editor(5, 4, Qt::white);
    QVERIFY(editor.History()->isClean());
    editor.Check("layers.at(0).fill('black')");
    QCOMPARE(editor.History()->count(), 0);
    QVERIFY(!editor.History()->isClean());
    QCOMPARE(editor.Pixels(0).pixel(2, 2), qRgb(0, 0, 0));
}

void TestScriptLayers::masksArePaintedInNumbers()
{
    EditorScriptFixture editor(4, 2, Qt::red);
    editor.Check(R"(
        const layer = layers.at(0)
        layer.addMask()
        layer.fillMask(0, { x: 0, y: 0, width: 2, height: 2 })
        layer.setMaskPixel(3, 1, 128)
        expect.equal(pixels.mask(layer).region(0, 0, 4, 2), [0, 0, 255, 255, 0, 0, 255, 128])
        expect.equal(pixels.merged.region(1, 1, 3, 1), ["#00000000", "#ffff0000", "#80ff0000"])
        expect.throws(function() { layer.fillMask(256) }, "from 0 to 255")
        expect.equal(pixels.mask(layer).pixel(-1, 5), 255, "outside it shows")
        layer.removeMask()
        layer.addMask({ reveals: false })
        expect.equal(pixels.mask(layer).pixel(-1, 5), 0, "outside it hides")
    )");
}

void TestScriptLayers::layerAndMaskArePlaced()
{
    EditorScriptFixture editor(4, 2, Qt::red);
    editor.Check(R"(
        const layer = layers.at(0)
        layer.addMask({ reveals: true })
        layer.place(1, -1)
        layer.placeMask(-2, 0)
        expect.equal([layer.offset, layer.maskOffset], [{ x: 1, y: -1 }, { x: -2, y: 0 }])
        expect.equal(layer.geometry, { x: 1, y: -1, width: 4, height: 2 })
        expect.equal(pixels.merged.region(0, 0, 2, 2), ["#00000000", "#ffff0000", "#00000000", "#00000000"])
    )");
}

void TestScriptLayers::layersOfOtherDocumentsAreNotSelected()
{
    EditorScriptFixture editor(4, 2);
    editor.Check(R"(
        const other = layers.at(0)
        documents.create(3, 3)
        expect.throws(function() { layers.select(other) }, "belongs to another document")
        other.opacity = 0.5
        expect.equal([other.opacity, layers.at(0).opacity], [0.5, 1])
        expect.equal(history.count, 0, "the other document's history")
    )");
}

#include "tst_scriptlayers.moc"

void TestScriptLayers::aTextIsAddedAndChangedBySteps()
{
    EditorScriptFixture editor(80, 60);
    editor.Check(R"(
        const text = layers.addText({ text: "a", x: 5, y: 40, size: 30, name: "Letter", color: "#80ff0000" })
        expect.equal([text.kind, text.name, text.text, text.row], ["text", "Letter", "a", 0])
        const options = text.textOptions
        expect.equal([options.x, options.y, options.size, options.color], [5, 40, 30, "#80ff0000"])
        expect.equal(options.matrix, [1, 0, 0, 1, 0, 0])
        expect.equal([options.antialiasing, options.style, options.orientation], [true, "none", "horizontal"])
        text.setText({ text: "b", antialiasing: false, underline: true, hDistortion: -5 })
        text.setText({ text: "b" })
        expect.equal([text.text, text.textOptions.antialiasing, text.textOptions.hDistortion], ["b", false, -5])
        expect.throws(function() { layers.at(1).text }, "\"text\"")
        expect.throws(function() { text.adjustment }, "\"adjustment\"")
    )");
    QCOMPARE(editor.HistoryTexts(), (QStringList{"New text layer", "Change text layer"}));
    QVERIFY(editor.Document()->GetTextFont(1).underline());
    editor.History()->setIndex(1);
    QCOMPARE(editor.Document()->GetText(1), QString("a"));
}

void TestScriptLayers::anAdjustmentIsAddedAndChangedBySteps()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const turned = layers.addAdjustment({ kind: "hueSaturation", hue: -90 })
        expect.equal([turned.kind, turned.name], ["adjustment", "Hue and saturation"])
        expect.equal(turned.adjustment, { kind: "hueSaturation", hue: -90, saturation: 0, lightness: 0 })
        turned.setAdjustment({ saturation: 10 })
        expect.equal(turned.adjustment.saturation, 10)
        expect.equal(turned.geometry, null)
    )");
    QCOMPARE(editor.HistoryTexts(), (QStringList{"New adjustment layer", "Change adjustment"}));
    QCOMPARE(editor.Document()->GetAdjustment(1).hue, -90);
}

void TestScriptLayers::wrongOptionsOfKindsAddNothing()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        expect.throws(function() { layers.addText({ words: "a" }) }, "words")
        expect.throws(function() { layers.addText({ text: "a", size: 0 }) }, "from 1")
        expect.throws(function() { layers.addText({ text: "a", matrix: [1, 0, 0, 1] }) }, "six numbers")
        expect.throws(function() { layers.addText({ text: "a", matrix: [0, 0, 0, 0, 1, 1] }) }, "flattens")
        expect.throws(function() { layers.addAdjustment({ kind: "curves" }) }, "levels")
        expect.throws(function() { layers.addAdjustment({ kind: "levels", inBlack: 256 }) }, "from 0 to 255")
        expect.equal(layers.count, 1)
    )");
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

ZK_REGISTER_TEST(tst_scriptlayers, TestScriptLayers)
