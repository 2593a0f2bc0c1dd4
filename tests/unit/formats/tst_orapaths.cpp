#include "document/LXPathsListModel.h"
#include "formats/OraNames.h"
#include "formats/OraPaths.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cmath>
#include <limits>

using namespace PathFixture;

namespace {
QByteArray Written(const DocumentPath& path)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.writeNamespace(OraNames::OwnSpace, OraNames::OwnPrefix);
    OraPaths::WritePath(xml, path);
    return bytes;
}

bool ReadPath(const QByteArray& bytes, DocumentPath* path)
{
    QXmlStreamReader xml(bytes);
    return xml.readNextStartElement() && OraPaths::ReadPath(xml, path) && xml.isEndElement();
}

bool ReadSample(const QByteArray& bytes, ColorSample* sample)
{
    QXmlStreamReader xml(bytes);
    return xml.readNextStartElement() && OraPaths::ReadSample(xml, sample) && xml.isEndElement();
}

DocumentPath OfOne(const LXPath& elements)
{
    return {"path", {{elements, LXPathsListModel::Unite}}, false};
}
} // namespace

/// Paths and color samples as XML.
class TestOraPaths : public QObject
{
    Q_OBJECT

private slots:
    void cornersAreTwoNumbersAndBendsSix();
    void coordinatesComeBackToTheLastBit();
    void coordinatesThatAreNoNumbersBecomeZero();
    void coordinatesBeyondAllCanvasesAreBroughtNear();
    void damagedAnchorsAreRefused_data();
    void damagedAnchorsAreRefused();
    void unknownWordsAndElementsAreTolerated();
    void damagedSamplesAreRefused_data();
    void damagedSamplesAreRefused();
    void sampleValuesAreClamped();
};

void TestOraPaths::cornersAreTwoNumbersAndBendsSix()
{
    LXPath path{LXPathElement({1, 2}), LXPathElement({3, 4}, {3, 4}, {5.5, 6}), LXPathElement({7, 8})};
    path[2].SetStartsContour(true);
    const QString text = QString::fromUtf8(Written(OfOne(path)));
    QVERIFY2(text.contains(">1 2\n3 4 3 4 5.5 6\nm 7 8\n<"), qPrintable(text));
}

void TestOraPaths::coordinatesComeBackToTheLastBit()
{
    const double third = 1.0 / 3;
    const LXPath path{LXPathElement({third, -1e-300}, {third, -1e-300}, {std::nextafter(third, 1), 0}),
                      LXPathElement({123456789.123456, 0.1 + 0.2})};
    DocumentPath read;
    QVERIFY(ReadPath(Written(OfOne(path)), &read));
    QCOMPARE(read.subPaths, OfOne(path).subPaths);
    QCOMPARE(read.name, QString("path"));
}

void TestOraPaths::coordinatesThatAreNoNumbersBecomeZero()
{
    const double infinity = std::numeric_limits<double>::infinity();
    const LXPath path{LXPathElement({infinity, 5}), LXPathElement({std::nan(""), -infinity})};
    DocumentPath read;
    QVERIFY(ReadPath(Written(OfOne(path)), &read));
    QCOMPARE(read.subPaths.first().first.first().GetCenterPoint(), QPointF(0, 5));
    QCOMPARE(read.subPaths.first().first.last().GetCenterPoint(), QPointF(0, 0));
}

void TestOraPaths::coordinatesBeyondAllCanvasesAreBroughtNear()
{
    DocumentPath read;
    QVERIFY(ReadPath("<path><sub-path>1e300 -1e10</sub-path></path>", &read));
    QCOMPARE(read.subPaths.first().first.first(), LXPathElement({1e9, -1e9}));
}

void TestOraPaths::damagedAnchorsAreRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("one number") << QByteArray("1");
    QTest::newRow("three numbers") << QByteArray("1 2 3");
    QTest::newRow("seven numbers") << QByteArray("1 2 3 4 5 6 7");
    QTest::newRow("no number") << QByteArray("1 x");
    QTest::newRow("infinite") << QByteArray("1 inf");
    QTest::newRow("nan") << QByteArray("nan 1");
    QTest::newRow("mark alone") << QByteArray("m");
    QTest::newRow("mark behind") << QByteArray("1 2 m");
    QTest::newRow("second line") << QByteArray("1 2\n3");
}

void TestOraPaths::damagedAnchorsAreRefused()
{
    QFETCH(QByteArray, text);
    DocumentPath read;
    QVERIFY(!ReadPath("<path><sub-path>" + text + "</sub-path></path>", &read));
}

void TestOraPaths::unknownWordsAndElementsAreTolerated()
{
    DocumentPath read;
    QVERIFY(ReadPath("<path name='n' color='red'><later><deep/></later>"
                     "<sub-path operation='later'> 1  2 <x/>\n\n</sub-path><sub-path/></path>",
                     &read));
    QCOMPARE(read.name, QString("n"));
    QVERIFY(!read.isVisible);
    QCOMPARE(read.subPaths, (LXSubPaths{{{LXPathElement({1, 2})}, LXPathsListModel::None}, {LXPath(), 0}}));
    QVERIFY(!ReadPath("<path><sub-path>1 2", &read));
}

void TestOraPaths::damagedSamplesAreRefused_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("no place") << QByteArray("<sample/>");
    QTest::newRow("half a place") << QByteArray("<sample x='1'/>");
    QTest::newRow("no number") << QByteArray("<sample x='1' y='y'/>");
    QTest::newRow("infinite") << QByteArray("<sample x='inf' y='1'/>");
    QTest::newRow("cut") << QByteArray("<sample x='1' y='1'>");
}

void TestOraPaths::damagedSamplesAreRefused()
{
    QFETCH(QByteArray, element);
    ColorSample sample;
    QVERIFY(!ReadSample(element, &sample));
}

void TestOraPaths::sampleValuesAreClamped()
{
    ColorSample sample;
    QVERIFY(ReadSample("<sample x='1e30' y='-1e30' radius='9' format='later'/>", &sample));
    QCOMPARE(sample.point, QPoint(1 << 24, -(1 << 24)));
    QCOMPARE(sample.radius, 3);
    QCOMPARE(sample.format, LXColorSampleModel::RGB);
    QVERIFY(ReadSample("<sample x='4' y='5' radius='-1'/>", &sample));
    QCOMPARE(sample.point, QPoint(4, 5));
    QCOMPARE(sample.radius, 0);
}

ZK_REGISTER_TEST(tst_orapaths, TestOraPaths)
#include "tst_orapaths.moc"
