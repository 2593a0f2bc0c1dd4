#include "document/LXColorSampleModel.h"
#include "document/LayerLocks.h"
#include "document/SelectionChannels.h"
#include "formats/OraFile.h"
#include "support/DocumentFixture.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PathFixture.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "support/ZipBytes.h"

#include <QBuffer>
#include <QTest>
#include <QXmlStreamReader>

using DocumentFixture::ChannelsOf;
using DocumentFixture::OwnedDocument;

/// The editor's own file: everything comes back, and others can read it.
class TestOraFile : public QObject
{
    Q_OBJECT

private slots:
    void everythingComesBack();
    void savingTwiceGivesTheSame();
    void anotherReaderFindsTheSame();
    void mimetypeStandsFirstAndUnpacked();
    void picturesForProgramsWithoutLayersAreThere();
    void thumbnailOfASmallPictureIsNotEnlarged();
    void everyBlendModeComesBack();
    void namesThatXmlCannotHoldAreCleaned();
    void layerWithoutPixelsComesBack();
    void documentWithoutLayersComesBack();
    void fractionsOfResolutionAndOpacityComeBack();
    void selectedRowsComeBack();

private:
    FileFolder m_Folder;
};

namespace {
QStringList DescribeAll(LXDocumentInterface* document)
{
    const LXDocumentModel* model = document->GetModel();
    QStringList lines = DocumentFixture::Describe(document);
    lines << QString("dpi %1 profile %2")
                 .arg(document->GetDPI(), 0, 'g', 17)
                 .arg(QString(document->GetICCProfile().GetData().toHex()));
    lines << QString("unit %1").arg(document->GetUnit());
    for (const LXGuide& guide : document->GetGuides()) {
        lines << QString("guide %1 %2").arg(guide.orientation).arg(guide.position, 0, 'g', 17);
    }
    for (int row = 0; row < model->rowCount(); ++row) {
        lines << QString("mask selected %1 opacity %2")
                     .arg(model->GetMaskSelected(row))
                     .arg(model->GetOpacity(row), 0, 'g', 17);
        for (const ZKEXIFElement& element : document->GetLayerImage(uint(row) + 1)->m_ExifData) {
            lines << QString("metadata %1 %2").arg(element.tag).arg(QString(element.value.toHex()));
        }
    }
    return lines;
}

void AddPathsAndSamples(LXDocumentInterface* document)
{
    LXPathsListModel* paths = document->GetPathListModel();
    LXPath bends = PathFixture::Ellipse(QRectF(10.1, -20.2, 1.0 / 3, 44));
    bends.append(PathFixture::Line({1e-7, 5}, {123456.75, -0.1}));
    bends[5].SetStartsContour(true);
    bends[1].SetInGuide(bends[1].GetCenterPoint());
    paths->InsertPath(0, "Work path", {{bends, LXPathsListModel::Subtract}});
    paths->InsertPath(1, "a \"b\" <&>",
                      {{PathFixture::Rectangle(QRectF(0, 0, 5, 5)), LXPathsListModel::Exclude},
                       {LXPath(), LXPathsListModel::Intersect},
                       {PathFixture::Line({1, 2}, {3, 4}), LXPathsListModel::None}});
    paths->InsertPath(2, "");
    paths->SetPathVisible(1, true);
    LXColorSampleModel* samples = document->GetColorSamples();
    samples->InsertSample(0, {-3, 1000});
    samples->InsertSample(1, {20, 30});
    samples->SetSampleRadius(1, 3);
    samples->SetDisplayFormat(1, LXColorSampleModel::CMYK);
}

/// Something of everything that a document can have.
OwnedDocument FullDocument()
{
    DocumentFixture::Random random(7);
    OwnedDocument document = DocumentFixture::Make(QSize(300, 200));
    document->SetDPI(299.75);
    document->SetICCProfile(ZKCMSProfile(FileBytes::IccProfile("RGB ")));
    document->SetUnit(3);
    document->SetGuides({{Qt::Vertical, 12.25}, {Qt::Horizontal, -3}});
    LXDocumentModel* model = document->GetModel();

    LXImage32 bottom = DocumentFixture::Noise(random, QSize(300, 200));
    bottom.m_ExifData = {ZKEXIFElement{0, FileBytes::Exif({})}, ZKEXIFElement{270, "a lake & <trees>"}};
    document->AddLayer("Background", bottom, QPoint());
    document->AddLayer(QString::fromUtf8("Grüner See \"1\" <&>\n🏔"),
                       DocumentFixture::Noise(random, QSize(150, 260)), QPoint(-20, -30));
    document->AddLayer("", DocumentFixture::Noise(random, QSize(40, 30)), QPoint(500, 170));
    document->AddMask(2, true);
    document->SetMaskImage(2, DocumentFixture::MaskNoise(random, QSize(90, 80)), QPoint(-5, 11));
    document->AddMask(3, false);
    model->SetMaskLinked(1, false);
    model->SetMaskSelected(1, true);
    model->SetOpacity(1, 1.0 / 3);
    model->SetBlendMode(1, BlendMode::Multiply);
    model->SetVisible(0, false);
    model->SetLockFlags(0, LayerLocks::Transparency | LayerLocks::Position);
    model->SetLockFlags(1, LayerLocks::Pixels);
    model->SetLockFlags(2, LayerLocks::All);
    document->SetSelectionMask(DocumentFixture::MaskNoise(random, QSize(120, 70)), QPoint(-30, 60));
    ChannelsOf(document.get())
        ->Set({{QString::fromUtf8("Himmel \"<&>\" 🏔"),
                {DocumentFixture::MaskNoise(random, QSize(50, 60)), QPoint(-7, 180)}},
               {"cropped away", {}}});
    AddPathsAndSamples(document.get());
    return document;
}

OwnedDocument Reopen(const QString& path, OraFile::ReadResult* result = nullptr)
{
    const OraFile::ReadResult read = OraFile::Read(path);
    if (result) *result = read;
    return OwnedDocument(read.outcome.IsOk() ? OraFile::MakeDocument(read.content, "again") : nullptr);
}

QString Save(const FileFolder& folder, const QString& name, const LXDocumentInterface* document)
{
    const PictureFile::Outcome outcome =
        OraFile::Write(folder.Path(name), OraFile::TakeContent(document, {0, 2}));
    return outcome.message;
}

QVector<ZipBytes::Entry> EntriesOf(const FileFolder& folder, const QString& name)
{
    QString complaint;
    const QVector<ZipBytes::Entry> entries = ZipBytes::Read(folder.Read(name), &complaint);
    if (!complaint.isEmpty()) qWarning("%s", qPrintable(complaint));
    return entries;
}

QByteArray BytesOf(const QVector<ZipBytes::Entry>& entries, const QString& name)
{
    for (const ZipBytes::Entry& entry : entries) {
        if (entry.name == name) return entry.bytes;
    }
    return {};
}

QImage ImageOf(const QVector<ZipBytes::Entry>& entries, const QString& name)
{
    return QImage::fromData(BytesOf(entries, name), "PNG").convertToFormat(QImage::Format_ARGB32);
}

/// The gray of each pixel as the alpha of a mask.
QImage AsMask(const QImage& gray)
{
    QImage mask(gray.size(), QImage::Format_ARGB32);
    for (int y = 0; y < gray.height(); ++y) {
        for (int x = 0; x < gray.width(); ++x) {
            mask.setPixel(x, y, uint(qGray(gray.pixel(x, y))) << 24);
        }
    }
    return mask;
}

/// An element of the list of layers, as another reader sees it.
struct Element
{
    QString name;
    QXmlStreamAttributes attributes;

    QString Value(const char* attribute) const
    {
        return attributes.value(QLatin1String(attribute)).toString();
    }

    QPoint Offset() const { return {Value("x").toInt(), Value("y").toInt()}; }
};

QVector<Element> ElementsOf(const QByteArray& xml)
{
    QVector<Element> elements;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement) {
            elements.append({reader.qualifiedName().toString(), reader.attributes()});
        }
    }
    if (reader.hasError()) elements.clear();
    return elements;
}

QVector<Element> Named(const QVector<Element>& elements, const QString& name)
{
    QVector<Element> named;
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(named),
                 [&name](const Element& element) { return element.name == name; });
    return named;
}
} // namespace

void TestOraFile::everythingComesBack()
{
    const OwnedDocument document = FullDocument();
    QCOMPARE(Save(m_Folder, "full.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("full.ora"));
    QVERIFY(again);
    QCOMPARE(DescribeAll(again.get()), DescribeAll(document.get()));
}

void TestOraFile::savingTwiceGivesTheSame()
{
    const OwnedDocument document = FullDocument();
    QCOMPARE(Save(m_Folder, "first.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("first.ora"));
    QCOMPARE(Save(m_Folder, "second.ora", again.get()), QString());
    const auto first = EntriesOf(m_Folder, "first.ora");
    const auto second = EntriesOf(m_Folder, "second.ora");
    QVERIFY(!first.isEmpty());
    QCOMPARE(second.size(), first.size());
    for (int i = 0; i < first.size(); ++i) {
        QCOMPARE(second[i].name, first[i].name);
        QVERIFY2(second[i].bytes == first[i].bytes, qPrintable(first[i].name));
    }
}

void TestOraFile::anotherReaderFindsTheSame()
{
    const OwnedDocument document = FullDocument();
    QCOMPARE(Save(m_Folder, "others.ora", document.get()), QString());
    const auto entries = EntriesOf(m_Folder, "others.ora");
    const auto elements = ElementsOf(BytesOf(entries, "stack.xml"));
    QVERIFY(elements.size() > 5);
    QCOMPARE(elements[0].name, QString("image"));
    QCOMPARE(elements[0].Value("w"), QString("300"));
    QCOMPARE(elements[0].Value("h"), QString("200"));
    QCOMPARE(elements[0].Value("xres"), QString("300"));
    QCOMPARE(elements[0].Value("yres"), QString("300"));
    QCOMPARE(elements[1].name, QString("stack"));

    const auto layers = Named(elements, "layer");
    QCOMPARE(layers.size(), 3);
    const QStringList modes{"svg:src-over", "svg:multiply", "svg:src-over"};
    const QStringList visible{"hidden", "visible", "visible"};
    const QStringList selected{"true", "", "true"};
    const QStringList locked{"", "true", "true"};
    for (int row = 0; row < 3; ++row) {
        const Element& layer = layers[row];
        const uint id = uint(row) + 1;
        QCOMPARE(layer.Value("name"), document->GetModel()->GetName(row));
        QCOMPARE(layer.Offset(), document->GetModel()->GetLayerOffset(row));
        QCOMPARE(layer.Value("opacity").toDouble(), document->GetModel()->GetOpacity(row));
        QCOMPARE(layer.Value("composite-op"), modes[row]);
        QCOMPARE(layer.Value("visibility"), visible[row]);
        QCOMPARE(layer.Value("selected"), selected[row]);
        QCOMPARE(layer.Value("edit-locked"), locked[row]);
        QCOMPARE(PixelChecks::FirstDifference(ImageOf(entries, layer.Value("src")),
                                              PixelChecks::ToQImage(*document->GetLayerImage(id))),
                 QString());
    }

    const auto masks = Named(elements, "zk:mask");
    QCOMPARE(masks.size(), 2);
    QCOMPARE(masks[0].Offset(), QPoint(-5, 11));
    QCOMPARE(masks[0].Value("reveals"), QString("true"));
    QCOMPARE(masks[0].Value("linked"), QString("false"));
    QCOMPARE(masks[0].Value("selected"), QString("true"));
    QCOMPARE(masks[1].Value("reveals"), QString("false"));
    QCOMPARE(PixelChecks::FirstDifference(AsMask(ImageOf(entries, masks[0].Value("src"))),
                                          PixelChecks::ToQImage(*document->GetMaskImage(2))),
             QString());
    const auto selection = Named(elements, "zk:selection");
    QCOMPARE(selection.size(), 1);
    QCOMPARE(selection[0].Offset(), QPoint(-30, 60));
    QCOMPARE(PixelChecks::FirstDifference(AsMask(ImageOf(entries, selection[0].Value("src"))),
                                          PixelChecks::ToQImage(document->GetSelectionMask())),
             QString());
    const auto channels = Named(elements, "zk:channel");
    QCOMPARE(channels.size(), 2);
    QCOMPARE(channels[0].Value("name"), QString::fromUtf8("Himmel \"<&>\" 🏔"));
    QCOMPARE(channels[0].Offset(), QPoint(-7, 180));
    QCOMPARE(PixelChecks::FirstDifference(
                 AsMask(ImageOf(entries, channels[0].Value("src"))),
                 PixelChecks::ToQImage(ChannelsOf(document.get())->All().first().coverage.image)),
             QString());
    const auto samples = Named(elements, "zk:sample");
    QCOMPARE(samples.size(), 2);
    QCOMPARE(samples[1].Value("x"), QString("20"));
    QCOMPARE(samples[1].Value("radius"), QString("3"));
    QCOMPARE(samples[1].Value("format"), QString("cmyk"));
    const auto paths = Named(elements, "zk:path");
    QCOMPARE(paths.size(), 3);
    QCOMPARE(paths[1].Value("name"), QString("a \"b\" <&>"));
    QCOMPARE(paths[1].Value("visible"), QString("true"));
    QCOMPARE(Named(elements, "zk:sub-path").size(), 4);
    QCOMPARE(Named(elements, "zk:sub-path")[1].Value("operation"), QString("exclude"));
    const auto guides = Named(elements, "zk:guide");
    QCOMPARE(guides.size(), 2);
    QCOMPARE(guides[0].Value("orientation"), QString("vertical"));
    QCOMPARE(guides[0].Value("position"), QString("12.25"));
    const auto profile = Named(elements, "zk:profile");
    QCOMPARE(profile.size(), 1);
    QCOMPARE(BytesOf(entries, profile[0].Value("src")), document->GetICCProfile().GetData());
}

void TestOraFile::mimetypeStandsFirstAndUnpacked()
{
    QCOMPARE(Save(m_Folder, "type.ora", FullDocument().get()), QString());
    const QByteArray bytes = m_Folder.Read("type.ora");
    // Where programs look that only glance at a file: the name behind the first header, then the type.
    QCOMPARE(bytes.left(4), QByteArray("PK\3\4"));
    QCOMPARE(bytes.mid(8, 2), QByteArray("\0\0", 2));
    QCOMPARE(bytes.mid(30, 24), QByteArray("mimetypeimage/openraster"));
    const auto entries = EntriesOf(m_Folder, "type.ora");
    QCOMPARE(entries[0].name, QString("mimetype"));
    QCOMPARE(entries[1].name, QString("stack.xml"));
}

void TestOraFile::picturesForProgramsWithoutLayersAreThere()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(600, 300));
    document->AddLayer("red", DocumentFixture::Filled(QSize(600, 300), 0xFFFF0000), QPoint());
    document->AddLayer("blue", DocumentFixture::Filled(QSize(600, 150), 0xFF0000FF), QPoint(0, 150));
    QCOMPARE(Save(m_Folder, "two.ora", document.get()), QString());
    const auto entries = EntriesOf(m_Folder, "two.ora");
    const QImage merged = ImageOf(entries, "mergedimage.png");
    QCOMPARE(merged.size(), QSize(600, 300));
    QCOMPARE(merged.pixel(10, 149), 0xFFFF0000);
    QCOMPARE(merged.pixel(10, 150), 0xFF0000FF);
    const QImage thumbnail = ImageOf(entries, "Thumbnails/thumbnail.png");
    QCOMPARE(thumbnail.size(), QSize(256, 128));
    QCOMPARE(thumbnail.pixel(128, 60), 0xFFFF0000);
    QCOMPARE(thumbnail.pixel(128, 68), 0xFF0000FF);
}

void TestOraFile::thumbnailOfASmallPictureIsNotEnlarged()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(20, 10));
    document->AddLayer("gray", DocumentFixture::Filled(QSize(20, 10), 0xFF808080), QPoint());
    QCOMPARE(Save(m_Folder, "small.ora", document.get()), QString());
    QCOMPARE(ImageOf(EntriesOf(m_Folder, "small.ora"), "Thumbnails/thumbnail.png").size(), QSize(20, 10));
}

void TestOraFile::everyBlendModeComesBack()
{
    const QVector<uint> modes{0, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23};
    const OwnedDocument document = DocumentFixture::Make(QSize(4, 4));
    for (int row = 0; row < modes.size(); ++row) {
        document->AddLayer("layer", DocumentFixture::Filled(QSize(4, 4), 0x80402010), QPoint(), row);
        document->GetModel()->SetBlendMode(row, modes[row]);
    }
    QCOMPARE(Save(m_Folder, "modes.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("modes.ora"));
    for (int row = 0; row < modes.size(); ++row) {
        QCOMPARE(again->GetModel()->GetBlendMode(row), modes[row]);
    }
    const auto layers = Named(ElementsOf(BytesOf(EntriesOf(m_Folder, "modes.ora"), "stack.xml")), "layer");
    QStringList names;
    for (const Element& layer : layers) {
        names << layer.Value("composite-op");
    }
    QCOMPARE(names,
             QString("svg:src-over svg:plus svg:multiply svg:screen svg:overlay svg:darken svg:lighten "
                     "svg:color-dodge svg:color-burn svg:hard-light svg:soft-light svg:difference "
                     "svg:exclusion")
                 .split(' '));
}

void TestOraFile::namesThatXmlCannotHoldAreCleaned()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(4, 4));
    const QString name = QString("a") + QChar(1) + "b" + QChar(0) + "c" + QChar(0xD800) + "d" + QChar(0xFFFF);
    document->AddLayer(name, DocumentFixture::Filled(QSize(4, 4), 0xFF000000), QPoint());
    QCOMPARE(Save(m_Folder, "names.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("names.ora"));
    QVERIFY(again);
    QCOMPARE(again->GetModel()->GetName(0), QString("abcd"));
}

void TestOraFile::layerWithoutPixelsComesBack()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(4, 4));
    document->AddLayer("empty", LXImage32(), QPoint(3, -7));
    QCOMPARE(Save(m_Folder, "empty.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("empty.ora"));
    QVERIFY(again);
    QVERIFY(again->GetLayerImage(1)->IsNull());
    QCOMPARE(again->GetModel()->GetLayerOffset(0), QPoint(3, -7));
}

void TestOraFile::documentWithoutLayersComesBack()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(17, 9));
    QCOMPARE(Save(m_Folder, "none.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("none.ora"));
    QVERIFY(again);
    QCOMPARE(again->GetModel()->rowCount(), 0);
    QCOMPARE(again->GetDocumentSize(), QSize(17, 9));
    QVERIFY(!again->HasSelection());
    QCOMPARE(again->GetDPI(), 72.0);
}

void TestOraFile::fractionsOfResolutionAndOpacityComeBack()
{
    const OwnedDocument document = DocumentFixture::Make(QSize(4, 4));
    document->SetDPI(0.1);
    document->AddLayer("thin", DocumentFixture::Filled(QSize(4, 4), 0xFF000000), QPoint());
    document->GetModel()->SetOpacity(0, 0.1);
    QCOMPARE(Save(m_Folder, "thin.ora", document.get()), QString());
    const OwnedDocument again = Reopen(m_Folder.Path("thin.ora"));
    QCOMPARE(again->GetDPI(), 0.1);
    QCOMPARE(again->GetModel()->GetOpacity(0), 0.1);
}

void TestOraFile::selectedRowsComeBack()
{
    QCOMPARE(Save(m_Folder, "selected.ora", FullDocument().get()), QString());
    OraFile::ReadResult result;
    const OwnedDocument again = Reopen(m_Folder.Path("selected.ora"), &result);
    QCOMPARE(result.content.selectedRows, QSet<int>({0, 2}));
    QCOMPARE(result.notice, QString());
}

ZK_REGISTER_TEST(tst_orafile, TestOraFile)
#include "tst_orafile.moc"
