#include "RandomDocument.h"

#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/LayerLocks.h"
#include "document/SelectionChannels.h"
#include "formats/XmlFragment.h"
#include "image/AdjustmentPixels.h"
#include "image/BlendMode.h"
#include "support/FileBytes.h"
#include "support/IccProfiles.h"
#include "support/PixelChecks.h"

#include <QConicalGradient>
#include <QFont>
#include <QLinearGradient>
#include <QRadialGradient>
#include <QXmlStreamReader>

using DocumentFixture::OwnedDocument;

namespace {
/// All that layers blend with.
QVector<unsigned int> Modes()
{
    QVector<unsigned int> modes{BlendMode::Normal};
    for (unsigned int mode = BlendMode::Addition; mode <= BlendMode::Exclusion; ++mode)
        modes << mode;
    return modes;
}

/// An element as a file gives it.
QByteArray Taken(const QByteArray& element)
{
    QXmlStreamReader xml(element);
    xml.readNextStartElement();
    QByteArray taken;
    XmlFragment::Take(xml, 10, &taken);
    return taken;
}

QString BrushWord(Qt::BrushStyle style)
{
    const bool isHatch = style >= Qt::Dense1Pattern && style <= Qt::DiagCrossPattern;
    return isHatch ? "hatch" : QString("brush %1").arg(style);
}

LXDocumentInterfacePrivate* Insides(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document);
}
} // namespace

OwnedDocument RandomDocument::Make()
{
    OwnedDocument document = DocumentFixture::Make(QSize(Pick(1, 200), Pick(1, 160)));
    SetProperties(document.get());
    const int layers = Pick(0, 6);
    for (int row = 0; row < layers; ++row)
        Insides(document.get())->InsertLayer(row, Layer());
    AddSelections(document.get());
    AddPaths(document.get());
    AddSamples(document.get());
    return document;
}

QSet<int> RandomDocument::Rows(const LXDocumentInterface* document)
{
    QSet<int> rows;
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        if (Chance()) rows.insert(row);
    }
    return rows;
}

double RandomDocument::Number(double least, double most)
{
    constexpr double steps = 4294967295.0;
    return least + (most - least) * static_cast<double>(m_Random()) / steps;
}

QString RandomDocument::Name()
{
    static const QStringList names{"",
                                   "Layer 1",
                                   " spaces  inside and around ",
                                   "50%1 %2 %n",
                                   "<b>&amp;\"quotes\"'</b> ]]>",
                                   "two\nlines\tand\ra return",
                                   QString::fromUtf8("Grüner See 🏔 \u05e9\u05dc\u05d5\u05dd e\u0301"),
                                   QString(500, 'x'),
                                   "../../data/layer0.png"};
    return names[Pick(0, names.size() - 1)];
}

QColor RandomDocument::Color()
{
    return QColor(Pick(0, 255), Pick(0, 255), Pick(0, 255), Pick(0, 255));
}

/// Never one that flattens.
QTransform RandomDocument::Transform()
{
    switch (Pick(0, 3)) {
    case 0: return QTransform();
    case 1: return QTransform::fromTranslate(Pick(-50, 50), Number(-50, 50));
    case 2:
        return QTransform(Number(1, 3), Number(-0.5, 0.5), Number(-0.5, 0.5), Number(1, 3), 7, Number(-1, 1));
    default: return QTransform(Number(1, 2), 0.25, Number(0, 1e-4), Number(-0.5, 0), 2, 1e-5, 100.125, -7, 1);
    }
}

QFont RandomDocument::Font()
{
    QFont font(Chance() ? "DejaVu Sans" : "A font, that \"nobody\" has");
    if (Chance()) {
        font.setPixelSize(Pick(1, 100));
    } else {
        font.setPointSizeF(Number(1, 100));
    }
    font.setWeight(Pick(0, 99));
    font.setStyle(static_cast<QFont::Style>(Pick(QFont::StyleNormal, QFont::StyleOblique)));
    font.setUnderline(Chance());
    font.setOverline(Chance());
    font.setStrikeOut(Chance());
    font.setKerning(Chance());
    font.setStretch(Pick(0, 4000));
    font.setCapitalization(static_cast<QFont::Capitalization>(Pick(QFont::MixedCase, QFont::Capitalize)));
    const QFont::SpacingType spacing = Chance() ? QFont::AbsoluteSpacing : QFont::PercentageSpacing;
    if (Chance()) font.setLetterSpacing(spacing, Pick(1, 300) / 4.0);
    if (Chance()) font.setWordSpacing(Pick(-50, 50) / 8.0);
    if (Chance()) font.setFamilies({"First", "Second, with comma"});
    return font;
}

QBrush RandomDocument::Brush()
{
    const QGradientStops stops{{0, Color()}, {Number(0.1, 0.9), Color()}, {1, Color()}};
    const auto gradient = [&](auto value) {
        value.setStops(stops);
        value.setSpread(static_cast<QGradient::Spread>(Pick(QGradient::PadSpread, QGradient::RepeatSpread)));
        if (Chance()) value.setCoordinateMode(QGradient::ObjectMode);
        return QBrush(value);
    };
    QBrush brush(Color());
    switch (Pick(0, 6)) {
    case 0: break;
    case 1: brush = gradient(QLinearGradient(Number(-9, 9), Number(-9, 9), Number(10, 90), 50)); break;
    case 2:
        brush = gradient(QRadialGradient(QPointF(3, 4), Number(1, 50), QPointF(3.25, 4), Number(0, 1)));
        break;
    case 3: brush = gradient(QConicalGradient(Number(-9, 9), 8, Number(0, 360))); break;
    case 4: brush.setStyle(static_cast<Qt::BrushStyle>(Pick(Qt::Dense1Pattern, Qt::DiagCrossPattern))); break;
    case 5: brush.setTextureImage(PixelChecks::RandomImage(Size(), static_cast<quint32>(Pick(0, 2)))); break;
    default: brush.setStyle(Qt::NoBrush);
    }
    brush.setTransform(Transform());
    return brush;
}

TextContent RandomDocument::Text()
{
    TextContent text;
    text.text = Name();
    text.font = Font();
    text.brush = Brush();
    text.position = QPointF(Number(-100, 100), Number(-100, 100));
    text.deformation = {Pick(0, 1), Pick(0, 1), Number(-100, 100), Number(-100, 100), Number(-100, 100)};
    text.renderMode = Pick(TextContent::Aliased, TextContent::Antialiased);
    text.transform = Transform();
    return text;
}

LXAdjustment RandomDocument::Adjustment()
{
    LXAdjustment adjustment;
    adjustment.kind =
        static_cast<LXAdjustment::Kind>(Pick(LXAdjustment::BrightnessContrast, LXAdjustment::Invert));
    for (int* value : {&adjustment.brightness, &adjustment.contrast, &adjustment.hue, &adjustment.saturation,
                       &adjustment.lightness}) {
        *value = Pick(-100, 100);
    }
    for (int* value : {&adjustment.inBlack, &adjustment.inWhite, &adjustment.outBlack, &adjustment.outWhite})
        *value = Pick(0, 255);
    adjustment.gamma = Number(0.1, 9.9);
    return AdjustmentPixels::Clamped(adjustment);
}

ForeignContent RandomDocument::Foreign()
{
    ForeignContent foreign;
    if (Chance()) foreign.attributes.append({QString(), "words", Name()});
    if (Chance()) foreign.attributes.append({"urn:tags", "color-tag", QString::number(Pick(0, 7))});
    if (Chance())
        foreign.children = Taken(R"(<o:note xmlns:o="urn:others" o:of="us">a &amp; b<o:end/></o:note>)");
    if (Chance()) foreign.followers = Taken(R"(<between words="here"/>)");
    return foreign;
}

LayerState RandomDocument::Layer()
{
    LayerState layer;
    LayerProperties& properties = layer.properties;
    const QVector<unsigned int> modes = Modes();
    properties.name = Name();
    properties.kind = Pick(LayerKind::Raster, LayerKind::Adjustment);
    properties.locks = static_cast<unsigned int>(Pick(0, LayerLocks::Every));
    properties.opacity = Chance() ? 1 : Number(0, 1);
    properties.blendMode = modes[Pick(0, modes.size() - 1)];
    properties.isVisible = Chance();
    if (properties.kind == LayerKind::Text) properties.text = std::make_shared<const TextContent>(Text());
    if (properties.kind == LayerKind::Adjustment) {
        properties.adjustment = Adjustment();
    } else {
        if (Pick(0, 4) > 0) layer.image = DocumentFixture::Noise(m_Random, Size());
        properties.rect = QRect(Place(), layer.image.Rect().size());
        AddMetadata(&layer.image);
    }
    if (Chance()) AddMask(&layer);
    properties.foreign = Foreign();
    return layer;
}

void RandomDocument::AddMask(LayerState* layer)
{
    LayerProperties& properties = layer->properties;
    if (Pick(0, 4) > 0) layer->mask = DocumentFixture::MaskNoise(m_Random, Size());
    properties.hasMask = true;
    properties.maskReveals = Chance();
    properties.isMaskSelected = Chance();
    properties.isMaskLinked = Chance();
    properties.maskRect = QRect(Place(), layer->mask.Rect().size());
}

void RandomDocument::AddMetadata(LXImage32* image)
{
    if (Chance()) image->m_ExifData << ZKEXIFElement{0, FileBytes::Exif({})};
    if (Chance()) image->m_ExifData << ZKEXIFElement{Pick(1, 65535), QByteArray(Pick(0, 300), '\x81')};
}

LXPath RandomDocument::SubPath()
{
    LXPath path;
    const auto point = [this] { return QPointF(Number(-300, 300), Number(-300, 300)); };
    const int anchors = Pick(0, 5);
    for (int i = 0; i < anchors; ++i) {
        path.append(Chance() ? LXPathElement(point()) : LXPathElement(point(), point(), point()));
        path.last().SetStartsContour(Chance());
    }
    return path;
}

void RandomDocument::AddPaths(LXDocumentInterface* document)
{
    std::vector<DocumentPath> paths(static_cast<std::size_t>(Pick(0, 3)));
    for (DocumentPath& path : paths) {
        path.name = Name();
        path.isVisible = Chance();
        const int subPaths = Pick(0, 3);
        for (int i = 0; i < subPaths; ++i)
            path.subPaths.append({SubPath(), Pick(LXPathsListModel::None, LXPathsListModel::Exclude)});
    }
    LXPathsListModelPrivate::Get(document->GetPathListModel())->Fill(paths);
}

void RandomDocument::AddSamples(LXDocumentInterface* document)
{
    std::vector<ColorSample> samples(static_cast<std::size_t>(Pick(0, 3)));
    for (ColorSample& sample : samples) {
        sample.point = Place();
        sample.radius = Pick(0, LXColorSampleModel::MaxSampleRadius);
        sample.format = Chance() ? LXColorSampleModel::RGB : LXColorSampleModel::CMYK;
    }
    LXColorSampleModelPrivate::Get(document->GetColorSamples())->Fill(samples);
}

void RandomDocument::AddSelections(LXDocumentInterface* document)
{
    if (Chance()) document->SetSelectionMask(DocumentFixture::MaskNoise(m_Random, Size()), Place());
    SelectionChannels::List channels;
    const int count = Pick(0, 3);
    for (int i = 0; i < count; ++i) {
        SelectionChannel channel;
        channel.name = Name();
        if (Chance()) channel.coverage = {DocumentFixture::MaskNoise(m_Random, Size()), Place()};
        channels << channel;
    }
    DocumentFixture::ChannelsOf(document)->Set(channels);
}

void RandomDocument::SetProperties(LXDocumentInterface* document)
{
    document->SetDPI(Chance() ? 300 : Number(0.1, 99999));
    document->SetUnit(Pick(0, 2));
    const QVector<ZKCMSProfile> profiles{ZKCMSProfile(), IccProfiles::AdobeRgb(), IccProfiles::OnlyReadable(),
                                         ZKCMSProfile(IccProfiles::AdobeRgb().GetData() + "more")};
    document->SetICCProfile(profiles[Pick(0, profiles.size() - 1)]);
    LXGuides guides;
    const int count = Pick(0, 4);
    for (int i = 0; i < count; ++i)
        guides.append({Chance() ? Qt::Horizontal : Qt::Vertical, Number(-500, 500)});
    document->SetGuides(guides);
    ForeignDocumentContent foreign;
    static_cast<ForeignContent&>(foreign) = Foreign();
    if (Chance()) foreign.stackAttributes.append({QString(), "opened-by", "others"});
    if (Chance()) foreign.entries.append({"data/layer1.png", QByteArray(Pick(0, 3000), '?'), Chance()});
    Insides(document)->ChangeProperties([&foreign](DocumentProperties& p) { p.foreign = foreign; });
}

QSet<QString> RandomDocument::FeaturesOf(const LXDocumentInterface* document)
{
    QSet<QString> features;
    const auto note = [&features](bool has, const QString& what) {
        if (has) features.insert(what);
    };
    const LXDocumentInterfacePrivate* d = Insides(document);
    for (int id = 1; id <= document->GetModel()->rowCount(); ++id) {
        const LayerState layer = d->GetLayerState(static_cast<unsigned int>(id));
        const LayerProperties& properties = layer.properties;
        features << QString("kind %1").arg(properties.kind) << QString("mode %1").arg(properties.blendMode);
        for (const unsigned int bit : {0x1U, 0x2U, 0x4U, 0x8U})
            note((properties.locks & bit) != 0, QString("lock %1").arg(bit));
        note(!properties.isVisible, "hidden");
        note(properties.opacity < 1, "opacity");
        note(layer.image.IsNull() && properties.kind == LayerKind::Raster, "no pixels");
        note(layer.image.m_ExifData.size() > 1, "metadata");
        if (properties.hasMask) {
            features << QString("mask reveals %1").arg(properties.maskReveals)
                     << QString("mask linked %1").arg(properties.isMaskLinked)
                     << QString("mask selected %1").arg(properties.isMaskSelected);
        }
        if (properties.text) features << BrushWord(properties.text->brush.style());
        if (properties.kind == LayerKind::Adjustment)
            features << QString("adjustment %1").arg(properties.adjustment.kind);
    }
    note(document->HasSelection(), "selection");
    note(!document->GetICCProfile().IsNull(), "profile");
    note(!document->GetGuides().isEmpty(), "guides");
    note(!d->channels->All().isEmpty(), "kept selections");
    note(document->GetPathListModel()->rowCount() > 1, "paths");
    note(document->GetColorSamples()->rowCount() > 1, "samples");
    note(document->GetUnit() != 0, "unit");
    note(!d->Properties().foreign.entries.isEmpty(), "foreign parts");
    return features;
}

QSet<QString> RandomDocument::AllFeatures()
{
    QSet<QString> features{"hidden", "opacity", "no pixels", "metadata",        "selection", "profile",
                           "guides", "paths",   "samples",   "kept selections", "unit",      "foreign parts"};
    for (int kind = LayerKind::Raster; kind <= LayerKind::Adjustment; ++kind)
        features << QString("kind %1").arg(kind);
    for (const unsigned int mode : Modes())
        features << QString("mode %1").arg(mode);
    for (const unsigned int bit : {0x1U, 0x2U, 0x4U, 0x8U})
        features << QString("lock %1").arg(bit);
    for (const bool is : {false, true}) {
        features << QString("mask reveals %1").arg(is) << QString("mask linked %1").arg(is)
                 << QString("mask selected %1").arg(is);
    }
    for (int kind = LXAdjustment::BrightnessContrast; kind <= LXAdjustment::Invert; ++kind)
        features << QString("adjustment %1").arg(kind);
    for (const Qt::BrushStyle style :
         {Qt::NoBrush, Qt::SolidPattern, Qt::CrossPattern, Qt::LinearGradientPattern,
          Qt::RadialGradientPattern, Qt::ConicalGradientPattern, Qt::TexturePattern}) {
        features << BrushWord(style);
    }
    return features;
}
