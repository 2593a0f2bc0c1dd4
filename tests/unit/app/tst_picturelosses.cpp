#include "app/PictureLosses.h"
#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/LayerLocks.h"
#include "document/SelectionChannels.h"
#include "formats/DocumentFile.h"
#include "support/DocumentFixture.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QTest>

#include <cmath>
#include <functional>

using DocumentFixture::OwnedDocument;
using PictureFile::Format;

namespace {
constexpr int Width = 64;
constexpr int Height = 48;

/// Something that a document has, and how to see whether a file gave it back.
struct Feature
{
    const char* name;
    const char* told; ///< of its loss, a part of the sentence
    std::function<void(LXDocumentInterface*)> add;
    std::function<QVariant(const LXDocumentInterface*)> read;
};

LXDocumentInterfacePrivate* Insides(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document);
}

LXImage32 Ground()
{
    return DocumentFixture::Filled(QSize(Width, Height), 0xFF808080);
}

/// Every layer but its pixels and its name.
QVariant LayersOf(const LXDocumentInterface* document)
{
    const LXDocumentModel* model = document->GetModel();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row) {
        const auto id = static_cast<unsigned int>(row) + 1;
        lines << QString("%1 %2 %3 %4 %5")
                     .arg(document->GetLayerKind(id))
                     .arg(model->GetVisible(row))
                     .arg(model->GetOpacity(row))
                     .arg(model->GetBlendMode(row))
                     .arg(model->HasMask(row));
        const QRect rect = document->GetLayerGeometry(id);
        lines << QString("%1 %2 %3 %4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
    }
    return lines;
}

std::function<QVariant(const LXDocumentInterface*)> Pixel(int x, int y, quint32 mask)
{
    return [=](const LXDocumentInterface* document) {
        const LXImage32* image = document->GetLayerImage(1);
        return image ? QVariant(image->GetColor(x, y).value & mask) : QVariant();
    };
}

QVariant ProfileOf(const LXDocumentInterface* document)
{
    return document->GetICCProfile().GetData();
}

QVariant ExifOf(const LXDocumentInterface* document)
{
    QVariantList list;
    for (const ZKEXIFElement& element : document->GetLayerImage(1)->m_ExifData)
        list << element.tag << element.value.size();
    return list;
}

/// Within the step of a file that counts dots per meter.
QVariant ResolutionOf(const LXDocumentInterface* document)
{
    return std::round(document->GetDPI() * 20);
}

std::function<void(LXDocumentInterface*)> WithProfile(const QByteArray& icc)
{
    return [icc](LXDocumentInterface* document) { document->SetICCProfile(ZKCMSProfile(icc)); };
}

std::function<void(LXDocumentInterface*)> WithResolution(double dpi)
{
    return [dpi](LXDocumentInterface* document) { document->SetDPI(dpi); };
}

std::function<void(LXDocumentInterface*)> WithExif(int tag, const QByteArray& value)
{
    return [=](LXDocumentInterface* document) {
        document->GetLayerImage(1)->m_ExifData = {ZKEXIFElement{tag, value}};
    };
}

std::function<void(LXDocumentInterface*)> WithPixel(quint32 argb)
{
    return [argb](LXDocumentInterface* document) {
        LXImage32 image = Ground();
        image.SetColor(3, 4, LXRGBA32i(argb));
        document->SetLayerImage(1, image, QPoint());
    };
}

std::function<void(LXDocumentInterface*)> InModel(const std::function<void(LXDocumentModel*)>& change)
{
    return [change](LXDocumentInterface* document) { change(document->GetModel()); };
}

/// As large as the canvas, so that nothing but its kind tells that it isn't pixels.
void PutText(LXDocumentInterface* document)
{
    document->RemoveLayer(1);
    document->AddTextLayer("words", QPointF());
    document->SetLayerImage(1, Ground(), QPoint());
}

std::vector<Feature> Layers()
{
    const char* merged = "layers and masks are merged";
    return {
        {"two layers", merged, [](auto* d) { d->AddLayer("more", Ground(), QPoint()); }, LayersOf},
        {"mask", merged, [](auto* d) { d->AddMask(1, true); }, LayersOf},
        {"hidden", merged, InModel([](auto* model) { model->SetVisible(0, false); }), LayersOf},
        {"opacity", merged, InModel([](auto* model) { model->SetOpacity(0, 0.5); }), LayersOf},
        {"mode", merged, InModel([](auto* model) { model->SetBlendMode(0, BlendMode::Multiply); }), LayersOf},
        {"beside the canvas", merged, [](auto* d) { d->SetLayerOffset(1, QPoint(5, 0)); }, LayersOf},
        {"text", merged, PutText, LayersOf},
        {"adjustment", merged, [](auto* d) { d->AddAdjustmentLayer("a", LXAdjustment()); }, LayersOf},
    };
}

std::vector<Feature> Colors()
{
    const QByteArray curves = IccProfiles::AdobeRgb().GetData();
    return {
        {"nothing", "", [](auto*) {}, LayersOf},
        {"transparency", "holds no transparency", WithPixel(0x80C08040), Pixel(3, 4, 0xFF000000)},
        {"color under alpha 0", "wholly transparent", WithPixel(0x00C08040), Pixel(3, 4, 0xFFFFFFFF)},
        {"profile of curves", "color profile", WithProfile(curves), ProfileOf},
        {"profile of tables", "color profile", WithProfile(IccProfiles::OnlyReadable().GetData()), ProfileOf},
        {"profile with more behind it", "color profile", WithProfile(curves + QByteArray(4, 'x')), ProfileOf},
        {"profile for more segments than there are", "color profile",
         WithProfile(curves + QByteArray(255 * 65519, 'x')), ProfileOf},
    };
}

std::vector<Feature> Notes()
{
    const QByteArray exif = FileBytes::Exif({});
    return {
        {"camera data", "(Exif)", WithExif(0, exif), ExifOf},
        {"long camera data", "(Exif)", WithExif(0, exif + QByteArray(70000, 'x')), ExifOf},
        {"camera data of no kind", "(Exif)", WithExif(0, "words"), ExifOf},
        {"other metadata", "metadata of layers", WithExif(270, "a lake"), ExifOf},
        {"300 dpi", "resolution", WithResolution(300), ResolutionOf},
        {"dots of the screen", "resolution", WithResolution(96), ResolutionOf},
        {"half a dot", "resolution", WithResolution(72.5), ResolutionOf},
        {"few dots", "resolution", WithResolution(0.4), ResolutionOf},
        {"very many dots", "resolution", WithResolution(90000), ResolutionOf},
        {"another program's words", "what other programs added",
         [](auto* d) {
             Insides(d)->ChangeProperties([](DocumentProperties& p) {
                 p.foreign.attributes.append({QString(), "a", "b"});
             });
         },
         [](auto* d) { return Insides(d)->Properties().foreign.attributes.size(); }},
    };
}

std::vector<Feature> Aids()
{
    const auto selection = [](auto* d) {
        d->SetSelectionMask(DocumentFixture::Filled(QSize(9, 9), 0xFF000000), QPoint());
    };
    return {
        {"selection", "selection", selection, [](auto* d) { return d->HasSelection(); }},
        {"kept selection", "saved selections",
         [](auto* d) {
             Insides(d)->channels->Set({{"a", {}}});
         },
         [](auto* d) { return Insides(d)->channels->All().size(); }},
        {"guide", "guides",
         [](auto* d) {
             d->SetGuides({{Qt::Vertical, 3}});
         },
         [](auto* d) { return d->GetGuides().size(); }},
        {"path", "paths",
         [](auto* d) {
             LXPathsListModelPrivate::Get(d->GetPathListModel())->Fill({{"a", {}, true}});
         },
         [](auto* d) { return d->GetPathListModel()->rowCount(); }},
        {"sample", "color samples",
         [](auto* d) { LXColorSampleModelPrivate::Get(d->GetColorSamples())->Fill({{QPoint(1, 1)}}); },
         [](auto* d) { return d->GetColorSamples()->rowCount(); }},
        {"unit", "unit", [](auto* d) { d->SetUnit(2); }, [](auto* d) { return d->GetUnit(); }},
        {"lock", "locks", InModel([](auto* model) { model->SetLockFlags(0, LayerLocks::Position); }),
         [](auto* d) { return d->GetModel()->GetLockFlags(0); }},
    };
}

std::vector<Feature> Features()
{
    std::vector<Feature> all;
    for (const std::vector<Feature>& features : {Layers(), Colors(), Notes(), Aids()})
        all.insert(all.end(), features.begin(), features.end());
    return all;
}

OwnedDocument DocumentWith(const Feature& feature)
{
    OwnedDocument document = DocumentFixture::Make(QSize(Width, Height));
    document->AddLayer("Background", Ground(), QPoint());
    feature.add(document.get());
    return document;
}
} // namespace

/// What a format is said to lose is what it loses: every feature goes through every kind of file.
class TestPictureLosses : public QObject
{
    Q_OBJECT

private slots:
    void whatIsLostIsTold_data();
    void whatIsLostIsTold();

private:
    const std::vector<Feature> m_Features = Features();
    FileFolder m_Folder;
};

void TestPictureLosses::whatIsLostIsTold_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("feature");
    for (const Format format : {Format::Png, Format::Jpeg, Format::Tiff, Format::Webp, Format::Bmp}) {
        for (std::size_t i = 0; i < m_Features.size(); ++i) {
            QTest::addRow("%s: %s", qPrintable(PictureFile::FormatName(format)), m_Features[i].name)
                << int(format) << int(i);
        }
    }
}

void TestPictureLosses::whatIsLostIsTold()
{
    QFETCH(const int, format);
    QFETCH(const int, feature);
    const auto kind = static_cast<Format>(format);
    const Feature& one = m_Features[static_cast<std::size_t>(feature)];
    const OwnedDocument document = DocumentWith(one);
    const Picture picture = PictureFile::TakePicture(document.get());
    const QString told =
        (PictureLosses::OfContent(document.get(), picture, kind) +
         PictureLosses::OfNotes(document.get(), picture, kind) + PictureLosses::OfAids(document.get(), kind))
            .join('\n');

    QVERIFY(PictureFile::WritePicture(m_Folder.Path("flat"), kind, picture).IsOk());
    const DocumentFile::ReadResult read = DocumentFile::Read(m_Folder.Path("flat"));
    QVERIFY2(read.outcome.IsOk(), qPrintable(read.outcome.message));
    QCOMPARE(read.notice, QString());
    const OwnedDocument again(DocumentFile::MakeDocument(read, "again"));

    const bool isLost = one.read(again.get()) != one.read(document.get());
    const bool isTold = *one.told != '\0' && told.contains(one.told);
    // White instead of a color that can't be seen is told as the loss of the transparency.
    const bool isFlattened = !PictureFile::KeepsAlpha(kind) && told.contains("holds no transparency");
    QVERIFY2(isLost == (isTold || isFlattened), qPrintable("told: " + told));
    // And nothing is told that isn't there to be lost.
    if (*one.told == '\0') QCOMPARE(told, QString());
}

ZK_REGISTER_TEST(tst_picturelosses, TestPictureLosses)
#include "tst_picturelosses.moc"
