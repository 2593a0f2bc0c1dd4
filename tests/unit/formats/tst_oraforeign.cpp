#include "BrokenOra.h"

#include "document/LXDocumentInterface_p.h"
#include "formats/OraFile.h"
#include "image/BlendMode.h"
#include "support/DocumentFixture.h"
#include "support/FileFolder.h"
#include "support/TestRegistry.h"

#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

using DocumentFixture::OwnedDocument;
using ZipBytes::Entry;

/// OpenRaster files of other programs: what the editor doesn't know comes back when it saves.
class TestOraForeign : public QObject
{
    Q_OBJECT

private slots:
    void unknownPartsComeBack();
    void unknownAttributesAndElementsComeBack();
    void savingAgainChangesNothing();
    void namesOfUnknownPartsStayTheirOwn();
    void unknownElementsGoWithTheirLayer();
    void unknownBlendModeComesBackUntilAnotherIsChosen();
    void aCopyOfTheDocumentKeepsThemToo();
    void groupsAreDissolved();
    void aLockOfAnotherProgramLocksTheLayer();
    void oldFilesWithoutTypeAndResolutionOpen();
    void numbersMayBeFractions();

private:
    OwnedDocument Open(const QByteArray& bytes, QString* notice = nullptr) const;
    QVector<Entry> Saved(const LXDocumentInterface* document) const;

    FileFolder m_Folder;
};

namespace {
QByteArray BytesOf(const QVector<Entry>& entries, const QString& name)
{
    for (const Entry& entry : entries) {
        if (entry.name == name) return entry.bytes;
    }
    return {};
}

/// Each start, end and text of an XML document in a line, prefixes apart, the editor's own words left out.
QStringList Outline(const QByteArray& xml)
{
    QStringList lines;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        reader.readNext();
        const QString name =
            QString("{%1}%2").arg(reader.namespaceUri().toString(), reader.name().toString());
        if (reader.isStartElement()) {
            QStringList attributes;
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                attributes << QString("{%1}%2=%3")
                                  .arg(attribute.namespaceUri().toString(), attribute.name().toString(),
                                       attribute.value().toString());
            }
            attributes.sort();
            lines << "start " + name + ' ' + attributes.join(' ');
        } else if (reader.isEndElement()) {
            lines << "end " + name;
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            lines << "text " + reader.text().toString();
        } else if (reader.isComment()) {
            lines << "comment " + reader.text().toString();
        }
    }
    return reader.hasError() ? QStringList() : lines;
}

const QByteArray ForeignList =
    R"(<?xml version="1.0" encoding="UTF-8"?>)"
    R"(<image version="0.0.5" w="40" h="30" name="My lake" xmlns:o="urn:other" o:mood="calm">)"
    R"(<stack o:paper="rough">)"
    R"(<o:first/>)"
    R"(<layer name="one" src="data/layer0.png" o:brush="soft &lt;3" alpha-preserve="false">)"
    R"(<o:strokes count="2">fat <b>and</b> thin<!-- as they are --></o:strokes></layer>)"
    R"(<filter type="blur"><params><param name="radius">3</param></params></filter>)"
    R"(<text x="3" y="4">A  lake</text>)"
    R"(<layer name="two" src="data/layer0.png"/>)"
    R"(</stack>)"
    R"(<o:history xmlns:p="urn:third"><p:step p:at="1"/></o:history>)"
    R"(</image>)";

QByteArray ForeignFile()
{
    QVector<Entry> entries = BrokenOra::GoodEntries();
    entries[1].bytes = ForeignList;
    entries.append({"data/strokes.bin", QByteArray("stroke ").repeated(50), true});
    entries.append({"data/paper.jpg", QByteArray("paper ").repeated(50), false});
    return ZipBytes::Write(entries).bytes;
}
} // namespace

OwnedDocument TestOraForeign::Open(const QByteArray& bytes, QString* notice) const
{
    const OraFile::ReadResult result = OraFile::Read(m_Folder.Write("foreign.ora", bytes));
    if (notice) *notice = result.notice;
    if (!result.outcome.IsOk()) qWarning("%s", qPrintable(result.outcome.message));
    return OwnedDocument(result.outcome.IsOk() ? OraFile::MakeDocument(result.content, "foreign") : nullptr);
}

QVector<Entry> TestOraForeign::Saved(const LXDocumentInterface* document) const
{
    const PictureFile::Outcome outcome =
        OraFile::Write(m_Folder.Path("saved.ora"), OraFile::TakeContent(document));
    QString complaint = outcome.message;
    QVector<Entry> entries;
    if (outcome.IsOk()) entries = ZipBytes::Read(m_Folder.Read("saved.ora"), &complaint);
    if (!complaint.isEmpty()) qWarning("%s", qPrintable(complaint));
    return entries;
}

void TestOraForeign::unknownPartsComeBack()
{
    const OwnedDocument document = Open(ForeignFile());
    QVERIFY(document);
    const QVector<Entry> entries = Saved(document.get());
    QCOMPARE(BytesOf(entries, "data/strokes.bin"), QByteArray("stroke ").repeated(50));
    QCOMPARE(BytesOf(entries, "data/paper.jpg"), QByteArray("paper ").repeated(50));
    for (const Entry& entry : entries) {
        if (entry.name == "data/strokes.bin") QVERIFY(entry.isDeflated);
        if (entry.name == "data/paper.jpg") QVERIFY(!entry.isDeflated);
    }
}

void TestOraForeign::unknownAttributesAndElementsComeBack()
{
    const OwnedDocument document = Open(ForeignFile());
    QVERIFY(document);
    const QStringList lines = Outline(BytesOf(Saved(document.get()), "stack.xml"));
    QVERIFY(!lines.isEmpty());
    QVERIFY2(lines[0].contains(" {urn:other}mood=calm") && lines[0].contains(" {}name=My lake"),
             qPrintable(lines[0]));
    QVERIFY2(lines[1].startsWith("start {}stack {urn:other}paper=rough"), qPrintable(lines[1]));
    QCOMPARE(lines[2], QString("start {urn:other}first "));
    QVERIFY2(lines[4].startsWith("start {}layer ") && lines[4].contains(" {urn:other}brush=soft <3") &&
                 lines[4].contains("{}alpha-preserve=false"),
             qPrintable(lines[4]));
    const QStringList inside{"start {urn:other}strokes {}count=2",
                             "text fat ",
                             "start {}b ",
                             "text and",
                             "end {}b",
                             "text  thin",
                             "comment  as they are ",
                             "end {urn:other}strokes"};
    QCOMPARE(lines.mid(5, inside.size()), inside);
    const QStringList behind{"end {}layer",
                             "start {}filter {}type=blur",
                             "start {}params ",
                             "start {}param {}name=radius",
                             "text 3",
                             "end {}param",
                             "end {}params",
                             "end {}filter",
                             "start {}text {}x=3 {}y=4",
                             "text A  lake",
                             "end {}text"};
    QCOMPARE(lines.mid(5 + inside.size(), behind.size()), behind);
    QCOMPARE(lines.mid(lines.size() - 5),
             QStringList({"start {urn:other}history ", "start {urn:third}step {urn:third}at=1",
                          "end {urn:third}step", "end {urn:other}history", "end {}image"}));
}

void TestOraForeign::savingAgainChangesNothing()
{
    const OwnedDocument document = Open(ForeignFile());
    const QVector<Entry> once = Saved(document.get());
    const OwnedDocument again = Open(m_Folder.Read("saved.ora"));
    QVERIFY(again);
    const QVector<Entry> twice = Saved(again.get());
    QVERIFY(!once.isEmpty());
    QCOMPARE(twice.size(), once.size());
    for (int i = 0; i < once.size(); ++i) {
        QCOMPARE(twice[i].name, once[i].name);
        QCOMPARE(twice[i].bytes, once[i].bytes);
    }
}

void TestOraForeign::namesOfUnknownPartsStayTheirOwn()
{
    // A part that nobody refers to has the name that the second layer would get.
    QVector<Entry> entries = BrokenOra::GoodEntries();
    entries.append(Entry{"data/layer1.png", "not a layer"});
    const OwnedDocument document = Open(ZipBytes::Write(entries).bytes);
    QVERIFY(document);
    document->AddLayer("new", DocumentFixture::Filled(QSize(5, 5), 0xFF112233), QPoint());
    const QVector<Entry> saved = Saved(document.get());
    QCOMPARE(BytesOf(saved, "data/layer1.png"), QByteArray("not a layer"));
    const OwnedDocument again = Open(m_Folder.Read("saved.ora"));
    QVERIFY(again);
    QCOMPARE(DocumentFixture::Describe(again.get()), DocumentFixture::Describe(document.get()));
}

void TestOraForeign::unknownElementsGoWithTheirLayer()
{
    const OwnedDocument document = Open(ForeignFile());
    QVERIFY(document);
    document->GetModel()->MoveLayer(0, 1);
    const QStringList moved = Outline(BytesOf(Saved(document.get()), "stack.xml"));
    QVERIFY(moved.indexOf("start {}filter {}type=blur") >
            moved.lastIndexOf(QRegularExpression("start \\{\\}layer .*")));

    document->RemoveLayer(2);
    const QStringList removed = Outline(BytesOf(Saved(document.get()), "stack.xml"));
    QVERIFY(!removed.isEmpty());
    QCOMPARE(removed.indexOf("start {}filter {}type=blur"), -1);
    QVERIFY(removed.contains("start {urn:other}history "));
}

void TestOraForeign::unknownBlendModeComesBackUntilAnotherIsChosen()
{
    QString notice;
    const OwnedDocument document = Open(
        BrokenOra::WithStack(BrokenOra::StackOf(R"(<layer src="data/layer0.png" composite-op="svg:hue"/>)")),
        &notice);
    QVERIFY(document);
    QVERIFY2(notice.contains("unknown blend modes"), qPrintable(notice));
    QCOMPARE(document->GetModel()->GetBlendMode(0), uint(BlendMode::Normal));
    QVERIFY(BytesOf(Saved(document.get()), "stack.xml").contains("composite-op=\"svg:hue\""));

    document->GetModel()->SetBlendMode(0, BlendMode::Screen);
    const QByteArray xml = BytesOf(Saved(document.get()), "stack.xml");
    QVERIFY(xml.contains("composite-op=\"svg:screen\""));
    QVERIFY(!xml.contains("svg:hue"));
}

void TestOraForeign::aCopyOfTheDocumentKeepsThemToo()
{
    const OwnedDocument document = Open(ForeignFile());
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    const QByteArray expected = BytesOf(Saved(document.get()), "stack.xml");
    QVERIFY(!expected.isEmpty());
    const QVector<Entry> entries = Saved(copy.get());
    QCOMPARE(BytesOf(entries, "stack.xml"), expected);
    QCOMPARE(BytesOf(entries, "data/strokes.bin"), QByteArray("stroke ").repeated(50));
}

void TestOraForeign::groupsAreDissolved()
{
    QString notice;
    const OwnedDocument document = Open(
        BrokenOra::WithStack(BrokenOra::StackOf(
            R"(<layer name="top" src="data/layer0.png" x="1"/>)"
            R"(<stack x="10" y="20" opacity="0.5"><layer name="in" src="data/layer0.png" x="1" y="2" opacity="0.5"/>)"
            R"(<stack visibility="hidden"><layer name="deep" src="data/layer0.png"/></stack></stack>)"
            R"(<layer name="bottom" src="data/layer0.png"/>)")),
        &notice);
    QVERIFY(document);
    QVERIFY2(notice.contains("groups were dissolved"), qPrintable(notice));
    const LXDocumentModel* model = document->GetModel();
    QCOMPARE(model->rowCount(), 4);
    QCOMPARE(model->GetName(1), QString("in"));
    QCOMPARE(model->GetLayerOffset(1), QPoint(11, 22));
    QCOMPARE(model->GetOpacity(1), 0.25);
    QVERIFY(model->GetVisible(1));
    QCOMPARE(model->GetLayerOffset(2), QPoint(10, 20));
    QVERIFY(!model->GetVisible(2));
    QCOMPARE(model->GetOpacity(3), 1.0);
    QCOMPARE(model->GetLayerOffset(3), QPoint(0, 0));
}

void TestOraForeign::aLockOfAnotherProgramLocksTheLayer()
{
    const OwnedDocument document = Open(BrokenOra::WithStack(
        BrokenOra::StackOf(R"(<layer src="data/layer0.png" edit-locked="true"/>)"
                           R"(<layer src="data/layer0.png" edit-locked="true" zk:locks="pixels future"/>)"
                           R"(<layer src="data/layer0.png" edit-locked="true" zk:locks="position"/>)"
                           R"(<layer src="data/layer0.png" edit-locked="false"/>)")));
    QVERIFY(document);
    const LXDocumentModel* model = document->GetModel();
    QCOMPARE(model->GetLockFlags(0), 0x8U);
    QCOMPARE(model->GetLockFlags(1), 0x2U);
    QCOMPARE(model->GetLockFlags(2), 0xCU);
    QCOMPARE(model->GetLockFlags(3), 0U);
}

void TestOraForeign::oldFilesWithoutTypeAndResolutionOpen()
{
    QVector<Entry> entries = BrokenOra::GoodEntries();
    entries.removeFirst();
    entries.append(Entry{"data/", ""});
    for (Entry& entry : entries) {
        entry.isDeflated = true;
    }
    const OwnedDocument document = Open(ZipBytes::Write(entries).bytes);
    QVERIFY(document);
    QCOMPARE(document->GetDPI(), 72.0);
    QCOMPARE(Saved(document.get())[0].name, QString("mimetype"));
}

void TestOraForeign::numbersMayBeFractions()
{
    const OwnedDocument document = Open(BrokenOra::WithStack(
        BrokenOra::StackOf(R"(<layer src="data/layer0.png" x="2.6" y="-1.0" opacity="1.5"/>)")));
    QVERIFY(document);
    QCOMPARE(document->GetModel()->GetLayerOffset(0), QPoint(3, -1));
    QCOMPARE(document->GetModel()->GetOpacity(0), 1.0);
}

ZK_REGISTER_TEST(tst_oraforeign, TestOraForeign)
#include "tst_oraforeign.moc"
