#include "RandomDocument.h"

#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/SelectionChannels.h"
#include "formats/OraFile.h"
#include "support/DocumentFixture.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "support/ZipBytes.h"

#include <QTest>

using DocumentFixture::AreEqual;
using DocumentFixture::OwnedDocument;

/// Documents with everything that there is, by chance, on their way through the own file.
class TestRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void everyPropertyComesBack_data();
    void everyPropertyComesBack();
    void chanceMeetsEverything();

private:
    FileFolder m_Folder;
};

namespace {
constexpr int Documents = 60;

/// Collects the names of what isn't the same.
class Differences
{
public:
    void Compare(const QString& what, bool isSame)
    {
        if (!isSame) m_Names << m_Prefix + what;
    }

    template <typename Value>
    void Compare(const QString& what, const Value& a, const Value& b)
    {
        Compare(what, a == b);
    }

    void Under(const QString& prefix) { m_Prefix = prefix; }

    QStringList Names() const { return m_Names; }

private:
    QString m_Prefix;
    QStringList m_Names;
};

QImage Pixels(const QBrush& brush)
{
    return brush.textureImage().convertToFormat(QImage::Format_ARGB32);
}

void CompareBrushes(Differences& differences, const QBrush& a, const QBrush& b)
{
    differences.Compare("brush style", a.style(), b.style());
    differences.Compare("brush color", a.color(), b.color());
    differences.Compare("brush matrix", a.transform(), b.transform());
    differences.Compare("brush texture", Pixels(a) == Pixels(b));
    if (a.gradient() && b.gradient()) differences.Compare("brush gradient", *a.gradient(), *b.gradient());
}

void CompareTexts(Differences& differences, const TextContent& a, const TextContent& b)
{
    differences.Compare("text", a.text, b.text);
    differences.Compare("font", a.font, b.font);
    CompareBrushes(differences, a.brush, b.brush);
    differences.Compare("text place", a.position.x() == b.position.x() && a.position.y() == b.position.y());
    differences.Compare("bend", a.deformation, b.deformation);
    differences.Compare("edges", a.renderMode, b.renderMode);
    differences.Compare("matrix", a.transform, b.transform);
}

void CompareForeign(Differences& differences, const ForeignContent& a, const ForeignContent& b)
{
    differences.Compare("foreign attributes", a.attributes, b.attributes);
    differences.Compare("foreign children", a.children, b.children);
    differences.Compare("foreign followers", a.followers, b.followers);
}

void CompareLayers(Differences& differences, const LayerState& first, const LayerState& second)
{
    const LayerProperties& a = first.properties;
    const LayerProperties& b = second.properties;
    differences.Compare("name", a.name, b.name);
    differences.Compare("kind", a.kind, b.kind);
    differences.Compare("locks", a.locks, b.locks);
    differences.Compare("opacity", a.opacity, b.opacity);
    differences.Compare("mode", a.blendMode, b.blendMode);
    differences.Compare("visible", a.isVisible, b.isVisible);
    differences.Compare("rectangle", a.rect, b.rect);
    differences.Compare("pixels", AreEqual(first.image, second.image));
    differences.Compare("metadata", first.image.m_ExifData, second.image.m_ExifData);
    differences.Compare("is text", !a.text, !b.text);
    if (a.text && b.text) CompareTexts(differences, *a.text, *b.text);
    differences.Compare("adjustment", a.adjustment, b.adjustment);
    differences.Compare("has mask", a.hasMask, b.hasMask);
    differences.Compare("mask reveals", a.maskReveals, b.maskReveals);
    differences.Compare("mask selected", a.isMaskSelected, b.isMaskSelected);
    differences.Compare("mask linked", a.isMaskLinked, b.isMaskLinked);
    differences.Compare("mask rectangle", a.maskRect, b.maskRect);
    differences.Compare("mask pixels", AreEqual(first.mask, second.mask));
    CompareForeign(differences, a.foreign, b.foreign);
}

bool AreSame(const DocumentPath& a, const DocumentPath& b)
{
    return a.name == b.name && a.isVisible == b.isVisible && a.subPaths == b.subPaths;
}

bool AreSame(const ColorSample& a, const ColorSample& b)
{
    return a.point == b.point && a.radius == b.radius && a.format == b.format;
}

bool AreSame(const SelectionChannel& a, const SelectionChannel& b)
{
    return a.name == b.name && a.coverage.offset == b.coverage.offset &&
           AreEqual(a.coverage.image, b.coverage.image);
}

bool AreSame(const ForeignDocumentContent::Entry& a, const ForeignDocumentContent::Entry& b)
{
    return a.name == b.name && a.bytes == b.bytes && a.isPacked == b.isPacked;
}

template <typename List>
void CompareLists(Differences& differences, const QString& what, const List& a, const List& b)
{
    const bool isSame = std::equal(a.begin(), a.end(), b.begin(), b.end(),
                                   [](const auto& one, const auto& other) { return AreSame(one, other); });
    differences.Compare(what, isSame);
}

/// Read from the documents themselves, not from what is written.
QStringList DifferencesOf(const LXDocumentInterface* first, const LXDocumentInterface* second)
{
    const LXDocumentInterfacePrivate* a = LXDocumentInterfacePrivate::Get(first);
    const LXDocumentInterfacePrivate* b = LXDocumentInterfacePrivate::Get(second);
    const DocumentProperties of = a->Properties();
    const DocumentProperties with = b->Properties();
    Differences differences;
    differences.Compare("size", first->GetDocumentSize(), second->GetDocumentSize());
    differences.Compare("profile", of.profile, with.profile);
    differences.Compare("resolution", of.dpi, with.dpi);
    differences.Compare("unit", of.unit, with.unit);
    differences.Compare("guides", of.guides, with.guides);
    CompareForeign(differences, of.foreign, with.foreign);
    differences.Compare("foreign stack", of.foreign.stackAttributes, with.foreign.stackAttributes);
    CompareLists(differences, "foreign parts", of.foreign.entries, with.foreign.entries);
    CompareLists(differences, "paths", LXPathsListModelPrivate::Get(a->paths)->Snapshot(),
                 LXPathsListModelPrivate::Get(b->paths)->Snapshot());
    CompareLists(differences, "samples", LXColorSampleModelPrivate::Get(a->samples)->Snapshot(),
                 LXColorSampleModelPrivate::Get(b->samples)->Snapshot());
    CompareLists(differences, "kept selections", a->channels->All(), b->channels->All());
    QPoint offset;
    QPoint otherOffset;
    differences.Compare("selection",
                        AreEqual(a->selection.Snapshot(&offset), b->selection.Snapshot(&otherOffset)));
    differences.Compare("selection place", offset, otherOffset);

    const int count = first->GetModel()->rowCount();
    differences.Compare("layers", count, second->GetModel()->rowCount());
    for (int row = 0; row < qMin(count, second->GetModel()->rowCount()); ++row) {
        const auto id = static_cast<unsigned int>(row) + 1;
        differences.Under(QString("layer %1: ").arg(row));
        CompareLayers(differences, a->GetLayerState(id), b->GetLayerState(id));
    }
    return differences.Names();
}

QByteArray PartsOf(const QByteArray& file)
{
    QString complaint;
    QByteArray parts;
    for (const ZipBytes::Entry& entry : ZipBytes::Read(file, &complaint))
        parts += entry.name.toUtf8() + ' ' + entry.bytes + '\n';
    return parts;
}
} // namespace

void TestRoundTrip::everyPropertyComesBack_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < Documents; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void TestRoundTrip::everyPropertyComesBack()
{
    QFETCH(const int, seed);
    RandomDocument random(static_cast<unsigned int>(seed));
    const OwnedDocument document = random.Make();
    const QSet<int> rows = random.Rows(document.get());
    const QString path = m_Folder.Path("all.ora");
    const PictureFile::Outcome outcome = OraFile::Write(path, OraFile::TakeContent(document.get(), rows));
    QVERIFY2(outcome.IsOk(), qPrintable(outcome.message));
    const QByteArray written = PartsOf(m_Folder.Read("all.ora"));

    const OraFile::ReadResult read = OraFile::Read(path);
    QVERIFY2(read.outcome.IsOk(), qPrintable(read.outcome.message));
    QCOMPARE(read.notice, QString());
    QCOMPARE(read.content.selectedRows, rows);
    const OwnedDocument again(OraFile::MakeDocument(read.content, "again"));
    QVERIFY(again);
    QCOMPARE(DifferencesOf(again.get(), document.get()).join(", "), QString());
    QCOMPARE(DocumentFixture::DescribeWhole(again.get()), DocumentFixture::DescribeWhole(document.get()));

    QVERIFY(OraFile::Write(path, OraFile::TakeContent(again.get(), rows)).IsOk());
    QVERIFY(!written.isEmpty());
    QVERIFY2(PartsOf(m_Folder.Read("all.ora")) == written, "saved again it is another file");
}

/// What no document has isn't tested above.
void TestRoundTrip::chanceMeetsEverything()
{
    QSet<QString> met;
    for (unsigned int seed = 0; seed < Documents; ++seed) {
        const OwnedDocument document = RandomDocument(seed).Make();
        met += RandomDocument::FeaturesOf(document.get());
    }
    QCOMPARE(RandomDocument::AllFeatures() - met, QSet<QString>());
}

ZK_REGISTER_TEST(tst_roundtrip, TestRoundTrip)
#include "tst_roundtrip.moc"
