#include "document/LXDocumentInterface_p.h"
#include "formats/OraFile.h"
#include "formats/OraKinds.h"
#include "formats/OraNames.h"
#include "support/DocumentFixture.h"
#include "support/FileFolder.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QConicalGradient>
#include <QLinearGradient>
#include <QRadialGradient>
#include <QTest>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <functional>

using DocumentFixture::OwnedDocument;

namespace {
template <class Write>
QByteArray Written(const Write& write)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.writeNamespace(OraNames::OwnSpace, OraNames::OwnPrefix);
    write(xml);
    xml.writeEndDocument();
    return bytes;
}

bool ReadText(const QByteArray& bytes, TextContent* text)
{
    QXmlStreamReader xml(bytes);
    OraBrush::Texture texture;
    return xml.readNextStartElement() && OraKinds::ReadText(xml, text, &texture) && xml.isEndElement();
}

QByteArray Written(const TextContent& text)
{
    return Written([&text](QXmlStreamWriter& xml) { OraKinds::WriteText(xml, text, {}); });
}

bool ReadAdjustment(const QByteArray& bytes, LXAdjustment* adjustment)
{
    QXmlStreamReader xml(bytes);
    return xml.readNextStartElement() && OraKinds::ReadAdjustment(xml, adjustment) && xml.isEndElement();
}

TextContent Everything()
{
    TextContent text =
        TextFixture::Text("Two\nlines\twith <&\"> and " + TextFixture::Hebrew() + TextFixture::WithPair(), 37,
                          QPointF(-12.3, 1 / 3.0));
    text.font.setBold(true);
    text.font.setItalic(true);
    text.font.setUnderline(true);
    text.font.setStrikeOut(true);
    text.font.setStretch(130);
    text.font.setLetterSpacing(QFont::AbsoluteSpacing, 2.5);
    text.brush = QColor(1, 20, 255, 77);
    text.renderMode = TextContent::Aliased;
    text.deformation = {TextDeformation::Flag, TextDeformation::Vertical, 33.25, -100, 0.1};
    text.transform = QTransform(1 / 3.0, 0.25, 1e-4, -0.5, 2, 1e-5, 100.125, -7, 1);
    return text;
}
} // namespace

/// Text and adjustment layers as XML, and in the own file.
class TestOraKinds : public QObject
{
    Q_OBJECT

private slots:
    void everyValueOfATextComesBack();
    void everyValueOfAFontComesBack_data();
    void everyValueOfAFontComesBack();
    void gradientsAndHatchesComeBack_data();
    void gradientsAndHatchesComeBack();
    void hatchesOfALaterVersionAreColors();
    void damagedBrushesAreRefused_data();
    void damagedBrushesAreRefused();
    void sizesInPointsComeBack();
    void damagedTextsAreRefused_data();
    void damagedTextsAreRefused();
    void wildNumbersAreBroughtNear();
    void everyAdjustmentComesBack();
    void unknownAdjustmentsChangeNothing();
    void damagedAdjustmentsAreRefused();
    void layersOfEveryKindComeBackInTheFile();
    void aTextShowsThePixelsOfTheFileUntilItChanges();
};

void TestOraKinds::everyValueOfATextComesBack()
{
    const TextContent text = Everything();
    TextContent read;
    QVERIFY(ReadText(Written(text), &read));
    QCOMPARE(read.text, text.text);
    QCOMPARE(read.font, text.font);
    QCOMPARE(read.brush, text.brush);
    QCOMPARE(read.position.x(), text.position.x());
    QCOMPARE(read.position.y(), text.position.y());
    QVERIFY(read.deformation == text.deformation);
    QCOMPARE(read.renderMode, text.renderMode);
    QVERIFY(read.transform == text.transform);
}

void TestOraKinds::everyValueOfAFontComesBack_data()
{
    QTest::addColumn<QFont>("font");
    const auto add = [](const char* name, const std::function<void(QFont&)>& change) {
        QFont font = TextFixture::Font(37);
        change(font);
        QTest::newRow(name) << font;
    };
    add("families", [](QFont& font) { font.setFamilies({"DejaVu Serif", "Nimbus, Sans"}); });
    add("style name", [](QFont& font) { font.setStyleName("Bold \"Condensed\""); });
    add("oblique", [](QFont& font) { font.setStyle(QFont::StyleOblique); });
    add("overline", [](QFont& font) { font.setOverline(true); });
    add("fixed pitch", [](QFont& font) { font.setFixedPitch(true); });
    add("without kerning", [](QFont& font) { font.setKerning(false); });
    add("letters in percent", [](QFont& font) { font.setLetterSpacing(QFont::PercentageSpacing, 112.5); });
    add("letters nearer", [](QFont& font) { font.setLetterSpacing(QFont::AbsoluteSpacing, -1.25); });
    add("words", [](QFont& font) { font.setWordSpacing(-3.5); });
    add("hint", [](QFont& font) { font.setStyleHint(QFont::Monospace, QFont::NoFontMerging); });
    add("hinting", [](QFont& font) { font.setHintingPreference(QFont::PreferNoHinting); });
    add("large points", [](QFont& font) { font.setPointSizeF(9999.75); });
    for (int capitals = QFont::AllUppercase; capitals <= QFont::Capitalize; ++capitals) {
        QFont font = TextFixture::Font(37);
        font.setCapitalization(static_cast<QFont::Capitalization>(capitals));
        QTest::addRow("capitals %d", capitals) << font;
    }
}

void TestOraKinds::everyValueOfAFontComesBack()
{
    QFETCH(const QFont, font);
    TextContent text = Everything();
    text.font = font;
    TextContent read;
    QVERIFY(ReadText(Written(text), &read));
    QCOMPARE(read.font, font);
}

void TestOraKinds::gradientsAndHatchesComeBack_data()
{
    QTest::addColumn<QBrush>("brush");
    const QGradientStops stops{{0, QColor(1, 2, 3, 4)}, {1 / 3.0, Qt::red}, {1, QColor(250, 0, 9, 77)}};
    QLinearGradient linear(-3.5, 1 / 3.0, 40, 1e6);
    linear.setStops(stops);
    QTest::newRow("linear") << QBrush(linear);
    linear.setSpread(QGradient::RepeatSpread);
    linear.setCoordinateMode(QGradient::ObjectMode);
    QTest::newRow("linear, repeating over the text") << QBrush(linear);
    QRadialGradient radial(QPointF(3, 4), 5.5, QPointF(3.25, 4), 0.5);
    radial.setStops(stops);
    radial.setSpread(QGradient::ReflectSpread);
    QTest::newRow("radial") << QBrush(radial);
    QConicalGradient conical(7, -8, 33.3);
    conical.setStops(stops);
    QBrush turned(conical);
    turned.setTransform(QTransform(1 / 3.0, 0.25, 1e-4, -0.5, 2, 1e-5, 100.125, -7, 1));
    QTest::newRow("conical, transformed") << turned;
    for (int style = Qt::Dense1Pattern; style <= Qt::DiagCrossPattern; ++style) {
        QBrush hatch(QColor(1, 20, 255, 77), static_cast<Qt::BrushStyle>(style));
        hatch.setTransform(QTransform(1 / 3.0, 0.25, 0, -0.5, 2, 0, 100.125, -7, 1));
        QTest::addRow("hatch %d", style) << hatch;
    }
    QTest::newRow("nothing") << QBrush(QColor(1, 20, 255, 77), Qt::NoBrush);
    QBrush color(QColor(1, 20, 255, 77));
    color.setTransform(QTransform::fromTranslate(1e-14, 0));
    QTest::newRow("color, nearly not transformed") << color;
}

void TestOraKinds::gradientsAndHatchesComeBack()
{
    QFETCH(const QBrush, brush);
    TextContent text = Everything();
    text.brush = brush;
    TextContent read;
    QVERIFY(ReadText(Written(text), &read));
    QCOMPARE(read.brush.style(), brush.style());
    QVERIFY(read.brush.transform() == brush.transform());
    QCOMPARE(read.brush.color(), brush.color());
    if (brush.gradient()) QVERIFY(*read.brush.gradient() == *brush.gradient());
}

void TestOraKinds::hatchesOfALaterVersionAreColors()
{
    TextContent text;
    QVERIFY(ReadText("<text text='a' color='#ff010203' brush='hatch' brush-hatch='bricks'/>", &text));
    QCOMPARE(text.brush, QBrush(QColor(1, 2, 3)));
}

void TestOraKinds::damagedBrushesAreRefused_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::newRow("a number is missing")
        << QByteArray("brush='linear' brush-numbers='1 2 3' brush-stops='0 red'");
    QTest::newRow("a word for a number")
        << QByteArray("brush='conical' brush-numbers='1 2 x' brush-stops='0 red'");
    QTest::newRow("no color") << QByteArray("brush='conical' brush-numbers='1 2 3' brush-stops='0 nothing'");
    QTest::newRow("half a stop") << QByteArray("brush='conical' brush-numbers='1 2 3' brush-stops='0 red 1'");
    QTest::newRow("texture nowhere") << QByteArray("brush='image'");
    QTest::newRow("empty texture") << QByteArray("brush='texture' brush-texture=''");
    QTest::newRow("half a matrix") << QByteArray(
        "brush='conical' brush-numbers='1 2 3' brush-stops='0 red' brush-matrix='1 0 0'");
}

void TestOraKinds::damagedBrushesAreRefused()
{
    QFETCH(const QByteArray, attributes);
    TextContent text;
    QVERIFY(!ReadText("<text text='a' " + attributes + "/>", &text));
    QVERIFY(ReadText("<text text='a' brush='of a later version' brush-numbers='x'/>", &text));
}

void TestOraKinds::sizesInPointsComeBack()
{
    TextContent text = Everything();
    text.font.setPointSizeF(10.5);
    TextContent read;
    QVERIFY(ReadText(Written(text), &read));
    QCOMPARE(read.font.pointSizeF(), 10.5);
}

void TestOraKinds::damagedTextsAreRefused_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::newRow("size") << QByteArray("size='large'");
    QTest::newRow("place") << QByteArray("x='nan'");
    QTest::newRow("matrix of eight numbers") << QByteArray("matrix='1 0 0 0 1 0 0 0'");
    QTest::newRow("matrix with a word") << QByteArray("matrix='1 0 0 0 1 0 0 0 one'");
    QTest::newRow("bend") << QByteArray("bend='inf'");
}

void TestOraKinds::damagedTextsAreRefused()
{
    QFETCH(const QByteArray, attribute);
    TextContent text;
    QVERIFY(!ReadText("<text text='a' " + attribute + "/>", &text));
    QVERIFY(ReadText("<text text='a'/>", &text));
}

void TestOraKinds::wildNumbersAreBroughtNear()
{
    TextContent text;
    QVERIFY(ReadText("<text text='a' size='1e300' unit='px' x='-1e99' bend='4000' weight='-3' "
                     "matrix='0 0 0 0 0 0 0 0 0' color='nothing' later='words'><child/></text>",
                     &text));
    QCOMPARE(text.font.pixelSize(), 10000);
    QCOMPARE(text.position.x(), -1e9);
    QCOMPARE(text.deformation.bend, 100.0);
    QCOMPARE(text.font.weight(), 0);
    QVERIFY(text.transform.isIdentity());
    QCOMPARE(text.brush, QBrush(Qt::black));
}

void TestOraKinds::everyAdjustmentComesBack()
{
    for (const auto kind : {LXAdjustment::BrightnessContrast, LXAdjustment::Levels,
                            LXAdjustment::HueSaturation, LXAdjustment::Invert}) {
        LXAdjustment adjustment;
        adjustment.kind = kind;
        adjustment.brightness = -4;
        adjustment.contrast = 5;
        adjustment.inBlack = 6;
        adjustment.inWhite = 7;
        adjustment.outBlack = 8;
        adjustment.outWhite = 9;
        adjustment.gamma = 1 / 3.0;
        adjustment.hue = -170;
        adjustment.saturation = 99;
        adjustment.lightness = -98;
        LXAdjustment read;
        QVERIFY(ReadAdjustment(
            Written([&](QXmlStreamWriter& xml) { OraKinds::WriteAdjustment(xml, adjustment); }), &read));
        QVERIFY(read == adjustment);
    }
}

void TestOraKinds::unknownAdjustmentsChangeNothing()
{
    LXAdjustment adjustment;
    QVERIFY(ReadAdjustment("<adjustment kind='curves' brightness='50'/>", &adjustment));
    QVERIFY(adjustment == LXAdjustment());
    QVERIFY(ReadAdjustment("<adjustment kind='levels' in-black='900' gamma='-1'/>", &adjustment));
    QCOMPARE(adjustment.inBlack, 255);
    QCOMPARE(adjustment.gamma, 0.1);
}

void TestOraKinds::damagedAdjustmentsAreRefused()
{
    LXAdjustment adjustment;
    QVERIFY(!ReadAdjustment("<adjustment kind='levels' in-black='dark'/>", &adjustment));
    QVERIFY(!ReadAdjustment("<adjustment kind='levels' gamma='nan'/>", &adjustment));
}

void TestOraKinds::layersOfEveryKindComeBackInTheFile()
{
    const FileFolder folder;
    const OwnedDocument document = DocumentFixture::Make(QSize(120, 90));
    DocumentFixture::Random random(3);
    document->AddLayer("ground", DocumentFixture::Noise(random, QSize(120, 90)), QPoint());
    LXAdjustment adjustment;
    adjustment.kind = LXAdjustment::Levels;
    adjustment.gamma = 1.7;
    document->AddAdjustmentLayer("levels", adjustment);
    document->AddMask(1, false);
    document->AddTextLayer("words", QPointF());
    LXDocumentInterfacePrivate::Get(document.get())->PutText(1, Everything());
    document->AddTextLayer("nothing yet", QPointF(5.5, 6));

    const QString path = folder.Path("kinds.ora");
    QVERIFY(OraFile::Write(path, OraFile::TakeContent(document.get())).IsOk());
    const OraFile::ReadResult result = OraFile::Read(path);
    QVERIFY(result.outcome.IsOk());
    const OwnedDocument read(OraFile::MakeDocument(result.content, "read"));
    QCOMPARE(DocumentFixture::DescribeWhole(read.get()), DocumentFixture::DescribeWhole(document.get()));
    QCOMPARE(read->GetLayerKind(2), LayerKind::Text);
    QCOMPARE(read->GetLayerKind(3), LayerKind::Adjustment);
}

/// The machine that opens the file need not have the font.
void TestOraKinds::aTextShowsThePixelsOfTheFileUntilItChanges()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(120, 90));
    document->AddTextLayer("words", QPointF(10, 60));
    document->SetText(1, "Word");
    // As another machine drew it.
    document->SetLayerImage(1, DocumentFixture::Filled(QSize(30, 20), 0xFF00FF00), QPoint(12, 34));
    const OwnedDocument read(OraFile::MakeDocument(OraFile::TakeContent(document.get()), "read"));
    QCOMPARE(read->GetLayerGeometry(1), QRect(12, 34, 30, 20));
    QCOMPARE(read->GetLayerImage(1)->GetColor(3, 3).value, 0xFF00FF00U);
    read->SetLayerOffset(1, QPoint(20, 40));
    QCOMPARE(read->GetLayerImage(1)->GetColor(3, 3).value, 0xFF00FF00U);
    read->SetText(1, "Words");
    QVERIFY(read->GetLayerImage(1)->GetColor(0, 0).value != 0xFF00FF00U);
}

ZK_REGISTER_TEST(tst_orakinds, TestOraKinds)
#include "tst_orakinds.moc"
