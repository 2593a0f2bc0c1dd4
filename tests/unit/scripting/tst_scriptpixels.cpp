#include "document/LXDocumentInterface.h"
#include "image/LXImage.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QCryptographicHash>
#include <QImage>

/// `pixels` and the sources it gives.
class TestScriptPixels : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreColorsAndOutsideIsTransparent();
    void theMergedPictureShowsAllLayers();
    void theSelectionReadsAsNumbers();
    void withoutASelectionThereIsNothing();
    void theChecksumIsThatOfTheBytes();
    void theHistogramCountsEachValue();
    void comparingTellsHowManyPixelsDifferAndWhere();
    void comparingRefusesAnotherSizeAndNoPicture();
    void aFileIsReadLikeALayer();
    void boundsGoAroundWhatIsThere();
    void wrongRegionsAreRefused();
    void aSourceOfAClosedDocumentSaysSo();
};

void TestScriptPixels::pixelsAreColorsAndOutsideIsTransparent()
{
    EditorScriptFixture editor(3, 2, QColor(1, 2, 3));
    editor.Check(R"(
        const layer = layers.at(0)
        layer.setPixel(2, 1, "#40ff8000")
        layer.place(-1, 0)
        const seen = pixels.layer(layer)
        expect.equal(seen.pixel(-1, 0), "#ff010203")
        expect.equal(seen.pixel(1, 1), "#40ff8000")
        expect.equal(seen.pixel(2, 1), "#00000000")
        expect.equal(seen.region(0, 1, 3, 1), ["#ff010203", "#40ff8000", "#00000000"])
        expect.equal(seen.geometry, { x: -1, y: 0, width: 3, height: 2 })
    )");
}

void TestScriptPixels::theMergedPictureShowsAllLayers()
{
    EditorScriptFixture editor(2, 1, Qt::red);
    editor.Check(R"(
        layers.add().setPixel(1, 0, "blue")
        expect.equal(pixels.merged.region(0, 0, 2, 1), ["#ffff0000", "#ff0000ff"])
        expect.equal(pixels.layer(layers.at(0)).region(0, 0, 2, 1), ["#00000000", "#ff0000ff"])
        expect.equal(pixels.merged.pixel(2, 0), "#00000000")
    )");
}

void TestScriptPixels::theSelectionReadsAsNumbers()
{
    EditorScriptFixture editor(6, 5);
    LXImage32 mask(2, 2);
    mask.SetColor(0, 0, LXRGBA32i(0xFF000000));
    mask.SetColor(1, 1, LXRGBA32i(0x80000000));
    editor.Document()->SetSelectionMask(mask, QPoint(3, 1));
    editor.Check(R"(
        expect.equal(pixels.hasSelection, true)
        expect.equal(pixels.selection.region(2, 1, 4, 2), [0, 255, 0, 0, 0, 0, 128, 0])
        expect.equal(pixels.selection.pixel(100, 100), 0)
        expect.equal(pixels.selection.bounds, { x: 3, y: 1, width: 2, height: 2 })
    )");
}

void TestScriptPixels::withoutASelectionThereIsNothing()
{
    EditorScriptFixture editor(6, 5);
    editor.Check(R"(
        expect.equal([pixels.hasSelection, pixels.selection.bounds, pixels.selection.geometry],
                     [false, null, null])
        expect.equal(pixels.selection.pixel(1, 1), 0)
        expect.throws(function() { pixels.selection.checksum() }, "There are no pixels.")
    )");
}

void TestScriptPixels::theChecksumIsThatOfTheBytes()
{
    EditorScriptFixture editor(2, 1, QColor(0x11, 0x22, 0x33));
    // Blue, green, red and alpha of each pixel.
    const QByteArray bytes("\x33\x22\x11\xFF\x33\x22\x11\xFF", 8);
    const QString expected = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    editor.Check(QString(R"(
        expect.equal(pixels.merged.checksum(), "%1")
        expect.notEqual(pixels.merged.checksum({ x: 0, y: 0, width: 1, height: 1 }), "%1")
        layers.at(0).setPixel(0, 0, "#112234")
        expect.notEqual(pixels.merged.checksum(), "%1")
    )")
                     .arg(expected));
}

void TestScriptPixels::theHistogramCountsEachValue()
{
    EditorScriptFixture editor(3, 1, QColor(10, 20, 30));
    editor.Check(R"(
        layers.at(0).setPixel(0, 0, "#800a1400")
        const counts = pixels.layer(layers.at(0)).histogram()
        expect.equal([counts.red[10], counts.green[20], counts.blue[30], counts.blue[0]], [3, 3, 2, 1])
        expect.equal([counts.alpha[255], counts.alpha[128], counts.alpha.length], [2, 1, 256])
        layers.at(0).addMask()
        layers.at(0).setMaskPixel(1, 0, 7)
        const values = pixels.mask(layers.at(0)).histogram({ x: 1, y: 0, width: 2, height: 1 }).value
        expect.equal([values[7], values[255]], [1, 1])
    )");
}

void TestScriptPixels::comparingTellsHowManyPixelsDifferAndWhere()
{
    EditorScriptFixture editor(4, 3, QColor(100, 100, 100));
    QImage other(4, 3, QImage::Format_RGB32);
    other.fill(QColor(100, 100, 100));
    other.setPixel(2, 1, qRgb(100, 104, 100));
    other.setPixel(3, 1, qRgb(90, 100, 100));
    QVERIFY(other.save(editor.TempFile("other.png")));
    editor.Check(QString(R"(
        expect.equal(pixels.merged.compare(%1),
                     { same: false, count: 2, largest: 10, first: { x: 2, y: 1 } })
        expect.equal(pixels.merged.compare(%1, 4),
                     { same: false, count: 1, largest: 10, first: { x: 3, y: 1 } })
        expect.equal(pixels.merged.compare(%1, 10), { same: true, count: 0, largest: 10, first: null })
    )")
                     .arg(editor.Quoted("other.png")));
}

void TestScriptPixels::comparingRefusesAnotherSizeAndNoPicture()
{
    EditorScriptFixture editor(4, 3);
    QImage other(4, 4, QImage::Format_RGB32);
    other.fill(Qt::white);
    QVERIFY(other.save(editor.TempFile("other.png")));
    editor.Check(QString(R"(
        expect.throws(function() { pixels.merged.compare(%1) }, "has 4 × 4 pixels, and 4 × 3 are expected")
        expect.throws(function() { pixels.merged.compare("nowhere.png") }, "is no picture that can be read")
        expect.throws(function() { pixels.merged.compare(%1, 256) }, "from 0 to 255")
        expect.throws(function() { pixels.file("nowhere.png") }, "is no picture that can be read")
    )")
                     .arg(editor.Quoted("other.png")));
}

void TestScriptPixels::aFileIsReadLikeALayer()
{
    EditorScriptFixture editor(2, 2, Qt::red);
    editor.Check(QString(R"(
        layers.at(0).setPixel(1, 1, "#00000000")
        pixels.merged.save(%1)
        const kept = pixels.file(%1)
        expect.equal(kept.region(0, 1, 2, 1), ["#ffff0000", "#00000000"])
        expect.equal(kept.geometry, { x: 0, y: 0, width: 2, height: 2 })
        expect.throws(function() { pixels.merged.save("nowhere/there.png") }, "can't be written")
    )")
                     .arg(editor.Quoted("kept.png")));
}

void TestScriptPixels::boundsGoAroundWhatIsThere()
{
    EditorScriptFixture editor(9, 9, Qt::red);
    editor.Check(R"(
        const layer = layers.add(), seen = pixels.layer(layer)
        expect.equal(seen.bounds, null)
        layer.setPixel(2, 3, "black")
        layer.setPixel(5, 4, "#01000000")
        layer.place(1, 0)
        expect.equal(seen.bounds, { x: 3, y: 3, width: 4, height: 2 })
    )");
}

void TestScriptPixels::wrongRegionsAreRefused()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        expect.throws(function() { pixels.merged.pixel("left", 0) }, "x has to be a number")
        expect.throws(function() { pixels.merged.pixel(0.5, 0) }, "x has to be a whole number")
        expect.throws(function() { pixels.merged.region(0, 0, 0, 1) }, "width has to be")
        expect.throws(function() { pixels.merged.region(0, 0, 2000, 2000) }, "at most 1048576 pixels")
        expect.throws(function() { pixels.layer(0) }, "A layer is needed")
    )");
}

void TestScriptPixels::aSourceOfAClosedDocumentSaysSo()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        const merged = pixels.merged, selection = pixels.selection
        documents.active.close()
        expect.throws(function() { merged.pixel(0, 0) }, "The document is closed.")
        expect.throws(function() { selection.bounds }, "The document is closed.")
    )");
}

#include "tst_scriptpixels.moc"
ZK_REGISTER_TEST(tst_scriptpixels, TestScriptPixels)
