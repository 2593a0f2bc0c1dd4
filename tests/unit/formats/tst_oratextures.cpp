#include "BrokenOra.h"

#include "document/LXDocumentInterface_p.h"
#include "formats/OraFile.h"
#include "support/DocumentFixture.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QBitmap>
#include <QBuffer>
#include <QPainter>
#include <QTest>

using DocumentFixture::OwnedDocument;

/// Texts that are filled with a texture, in the own file.
class TestOraTextures : public QObject
{
    Q_OBJECT

private slots:
    void texturesOfEverySizeComeBack_data();
    void texturesOfEverySizeComeBack();
    void equalTexturesAreOnePart();
    void aTextureOfOneBitComesBackAsItIsDrawn();
    void aLostTextureIsToldAndLeavesTheColor_data();
    void aLostTextureIsToldAndLeavesTheColor();
    void manyLostTexturesAreToldShortly();
    void aLostTextureIsNotSavedAgain();
    void olderFilesHaveTheTextureInTheList();

private:
    OwnedDocument Saved(const LXDocumentInterface* document);

    FileFolder m_Folder;
    QString m_Notice; ///< of the last reading
};

namespace {
/// A text layer on top, with this brush.
void AddText(LXDocumentInterface* document, const QString& name, const QBrush& brush)
{
    document->AddTextLayer(name, QPointF());
    TextContent text = TextFixture::Text("Stone", 20, QPointF(3, 30));
    text.brush = brush;
    LXDocumentInterfacePrivate::Get(document)->PutText(1, text);
}

OwnedDocument WithText(const QBrush& brush)
{
    OwnedDocument document = DocumentFixture::Make(QSize(80, 40));
    AddText(document.get(), "stone", brush);
    return document;
}

TextContent TextOf(const OwnedDocument& document)
{
    return LXDocumentInterfacePrivate::Get(document.get())->Text(1);
}

QImage TextureOf(const OwnedDocument& document)
{
    return TextOf(document).brush.textureImage();
}

/// A list with one text whose attributes end so.
QByteArray ListWith(const QByteArray& attributes)
{
    return BrokenOra::StackOf(
        R"(<layer name="stone" src="data/layer0.png"><zk:text text="a" color="#ff010203" )" + attributes +
        "/></layer>");
}

/// The good file with one text, and a part beside.
QByteArray FileWith(const QByteArray& attributes, const QByteArray& part)
{
    QVector<ZipBytes::Entry> entries = BrokenOra::GoodEntries();
    for (ZipBytes::Entry& entry : entries) {
        if (entry.name == "stack.xml") entry.bytes = ListWith(attributes);
    }
    entries.append({"data/stone.png", part});
    return ZipBytes::Write(entries).bytes;
}

QByteArray ClaimingPng(const QSize& size)
{
    using namespace FileBytes;
    return PngSignature() + PngHeader({size, 8, PngSpec::Rgba, false, {}}) +
           PngChunk("IDAT", qCompress(QByteArray(1000, '\0')).mid(4)) + PngChunk("IEND", {});
}

QByteArray PngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
} // namespace

OwnedDocument TestOraTextures::Saved(const LXDocumentInterface* document)
{
    const QString path = m_Folder.Path("saved.ora");
    if (!OraFile::Write(path, OraFile::TakeContent(document)).IsOk()) return nullptr;
    const OraFile::ReadResult read = OraFile::Read(path);
    m_Notice = read.notice + read.outcome.message;
    return OwnedDocument(read.outcome.IsOk() ? OraFile::MakeDocument(read.content, "again") : nullptr);
}

void TestOraTextures::texturesOfEverySizeComeBack_data()
{
    QTest::addColumn<QImage>("image");
    QTest::newRow("one pixel") << PixelChecks::RandomImage(QSize(1, 1), 1);
    QTest::newRow("small") << PixelChecks::RandomImage(QSize(5, 3), 2);
    QTest::newRow("more than a megabyte") << PixelChecks::RandomImage(QSize(600, 700), 3);
    QTest::newRow("very wide") << PixelChecks::RandomImage(QSize(9000, 2), 4);
    const QImage image = PixelChecks::RandomImage(QSize(40, 30), 5);
    QTest::newRow("opaque") << image.convertToFormat(QImage::Format_RGB32);
    QTest::newRow("few colors") << image.convertToFormat(QImage::Format_Indexed8);
    QTest::newRow("gray") << image.convertToFormat(QImage::Format_Grayscale8);
}

void TestOraTextures::texturesOfEverySizeComeBack()
{
    QFETCH(const QImage, image);
    QBrush brush(QColor(1, 2, 3, 4));
    brush.setTextureImage(image);
    brush.setTransform(QTransform(1 / 3.0, 0.25, 0, -0.5, 2, 0, 100.125, -7, 1));
    const OwnedDocument document = WithText(brush);
    const OwnedDocument again = Saved(document.get());
    QVERIFY2(again && m_Notice.isEmpty(), qPrintable(m_Notice));
    const QBrush read = TextOf(again).brush;
    QCOMPARE(read.style(), Qt::TexturePattern);
    QCOMPARE(read.color(), brush.color());
    QVERIFY(read.transform() == brush.transform());
    QCOMPARE(PixelChecks::FirstDifference(TextureOf(again), image.convertToFormat(QImage::Format_ARGB32)),
             QString());
    // Drawn anew it looks as it did.
    LXDocumentInterfacePrivate::Get(document.get())->PutText(1, TextOf(again));
    QCOMPARE(DocumentFixture::DescribeWhole(document.get()), DocumentFixture::DescribeWhole(again.get()));
}

void TestOraTextures::equalTexturesAreOnePart()
{
    const QImage image = PixelChecks::RandomImage(QSize(70, 60), 6);
    const OwnedDocument document = WithText(QBrush(image));
    AddText(document.get(), "the same, loaded again", QBrush(image.copy()));
    AddText(document.get(), "another", QBrush(image.mirrored()));
    const OwnedDocument again = Saved(document.get());
    QVERIFY(again);
    QString complaint;
    QStringList textures;
    for (const ZipBytes::Entry& entry : ZipBytes::Read(m_Folder.Read("saved.ora"), &complaint)) {
        if (entry.name.startsWith("data/texture")) textures << entry.name;
    }
    QCOMPARE(textures, QStringList({"data/texture0.png", "data/texture1.png"}));
    const LXDocumentInterfacePrivate* d = LXDocumentInterfacePrivate::Get(again.get());
    QCOMPARE(d->Text(1).brush.textureImage(), image.mirrored());
    QCOMPARE(d->Text(2).brush.textureImage(), image);
    QCOMPARE(d->Text(3).brush.textureImage(), image);
    QVERIFY(d->Properties().foreign.entries.isEmpty());
}

void TestOraTextures::aTextureOfOneBitComesBackAsItIsDrawn()
{
    QBitmap dots(4, 4);
    dots.clear();
    QPainter(&dots).fillRect(1, 0, 1, 3, Qt::color1);
    const QBrush brush(QColor(200, 100, 50, 128), dots);
    const OwnedDocument document = WithText(brush);
    const OwnedDocument again = Saved(document.get());
    QVERIFY(again);
    QCOMPARE(TextureOf(again).pixel(1, 2), qRgba(200, 100, 50, 128));
    QCOMPARE(TextureOf(again).pixel(1, 3), qRgba(0, 0, 0, 0));
    QCOMPARE(TextureOf(again).pixel(2, 2), qRgba(0, 0, 0, 0));
}

void TestOraTextures::aLostTextureIsToldAndLeavesTheColor_data()
{
    using FileBytes::PngSpec;
    const QByteArray png = PngOf(PixelChecks::RandomImage(QSize(30, 20), 7));
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QByteArray>("part");
    const QByteArray there = R"(brush="image" brush-src="data/stone.png")";
    QTest::newRow("missing") << QByteArray(R"(brush="image" brush-src="data/gone.png")") << png;
    QTest::newRow("outside") << QByteArray(R"(brush="image" brush-src="/etc/passwd")") << png;
    QTest::newRow("the list itself") << QByteArray(R"(brush="image" brush-src="stack.xml")") << png;
    QTest::newRow("empty") << there << QByteArray();
    QTest::newRow("text") << there << QByteArray("no picture at all, only words");
    QTest::newRow("cut off") << there << png.left(png.size() / 2);
    QTest::newRow("a flipped byte") << there << QByteArray(png).replace(70, 1, "?");
    QTest::newRow("nothing wide") << there << ClaimingPng(QSize(0, 5));
    QTest::newRow("claims too wide") << there << ClaimingPng(QSize(60001, 1));
    QTest::newRow("claims too much") << there << ClaimingPng(QSize(60000, 60000));
    QTest::newRow("claims more rows than it has") << there << ClaimingPng(QSize(2000, 2000));
    QTest::newRow("text in an older file")
        << QByteArray(R"(brush="texture" brush-texture="bm90aGluZw==")") << png;
}

void TestOraTextures::aLostTextureIsToldAndLeavesTheColor()
{
    QFETCH(const QByteArray, attributes);
    QFETCH(const QByteArray, part);
    const OraFile::ReadResult read = OraFile::Read(m_Folder.Write("lost.ora", FileWith(attributes, part)));
    QCOMPARE(read.outcome.message, QString());
    QCOMPARE(read.notice,
             QString::fromUtf8("The texture of a text is missing in the file, or is damaged. As soon as "
                               "the text changes, it has a plain color: “stone”."));
    const OwnedDocument document(OraFile::MakeDocument(read.content, "lost"));
    QCOMPARE(TextOf(document).brush, QBrush(QColor(1, 2, 3)));
    QCOMPARE(document->GetLayerGeometry(1).size(), QSize(30, 20));
}

void TestOraTextures::manyLostTexturesAreToldShortly()
{
    QByteArray layers;
    for (const char* name : {"a", "b", "cccccccccccccccccccccccccccccccccccccccccccccccc", "d"}) {
        layers += QByteArray(R"(<layer name=")") + name +
                  R"(" src="data/layer0.png"><zk:text text="a" brush="image" brush-src="gone"/></layer>)";
    }
    const OraFile::ReadResult read =
        OraFile::Read(m_Folder.Write("many.ora", BrokenOra::WithStack(BrokenOra::StackOf(layers))));
    const QString end = QString::fromUtf8("color: “a”, “b”, “cccccccccccccccccccccccccccccccccccccccc…”, ….");
    QVERIFY2(read.notice.endsWith(end), qPrintable(read.notice));
}

void TestOraTextures::aLostTextureIsNotSavedAgain()
{
    const QByteArray bytes = FileWith(R"(brush="image" brush-src="data/stone.png")", "only words");
    const OraFile::ReadResult read = OraFile::Read(m_Folder.Write("lost.ora", bytes));
    const OwnedDocument document(OraFile::MakeDocument(read.content, "lost"));
    QVERIFY(Saved(document.get()));
    QCOMPARE(m_Notice, QString());
    QVERIFY(!m_Folder.Read("saved.ora").contains("only words"));
}

void TestOraTextures::olderFilesHaveTheTextureInTheList()
{
    const QImage image = PixelChecks::RandomImage(QSize(12, 7), 8);
    const QByteArray attributes = R"(brush="texture" brush-matrix="2 0 0 0 0.5 0 0 0 1" brush-texture=")" +
                                  PngOf(image).toBase64() + '"';
    const OraFile::ReadResult read = OraFile::Read(m_Folder.Write("older.ora", FileWith(attributes, {})));
    QCOMPARE(read.notice, QString());
    const OwnedDocument document(OraFile::MakeDocument(read.content, "older"));
    QCOMPARE(TextureOf(document), image);
    QVERIFY(TextOf(document).brush.transform() == QTransform::fromScale(2, 0.5));
}

ZK_REGISTER_TEST(tst_oratextures, TestOraTextures)
#include "tst_oratextures.moc"
