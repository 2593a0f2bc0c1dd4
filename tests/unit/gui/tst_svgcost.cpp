#include "gui/SvgCost.h"
#include "support/TestRegistry.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

/// What drawing an SVG picture costs, found out without drawing it.
class TestSvgCost : public QObject
{
    Q_OBJECT

private slots:
    void anHonestDrawingMayBeDrawn();
    void whatCostsTooMuchIsToldWhy_data();
    void whatCostsTooMuchIsToldWhy();
    void usesOfUsesCountUpToTheLimit();
    void theSizeIsOnlyAskedOfWhatCanBeRead();
    void aPictureInsideIsJudgedByItsSize();
};

namespace {
QByteArray Drawing(const QByteArray& content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='20' "
           "height='10'>" +
           content + "</svg>";
}

/// Each group is drawn from two of the one before: so many doublings of a rectangle.
QByteArray Doubled(int times)
{
    QByteArray content = "<defs><rect id='s0' width='1' height='1'/>";
    for (int i = 1; i <= times; ++i) {
        const QByteArray use = "<use xlink:href='#s" + QByteArray::number(i - 1) + "'/>";
        content += "<g id='s" + QByteArray::number(i) + "'>" + use + use + "</g>";
    }
    return Drawing(content + "</defs><use xlink:href='#s" + QByteArray::number(times) + "'/>");
}

QByteArray PictureOf(const QSize& size)
{
    QImage image(size, QImage::Format_Mono);
    image.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return "<image width='9' height='9' xlink:href='data:image/png;base64," + bytes.toBase64() + "'/>";
}

QString WhyNot(const QByteArray& bytes, const QSize& size = QSize(20, 10))
{
    return SvgCost::WhyNot(
        bytes, [](const QSize& inside) { return inside.width() <= 5000; }, [size] { return size; });
}
} // namespace

void TestSvgCost::anHonestDrawingMayBeDrawn()
{
    QCOMPARE(WhyNot(Drawing("<rect width='9' height='1'/><g><path d='M0 0L9 9'/></g>")), QString());
    QCOMPARE(WhyNot(Drawing("<defs><rect id='a'/></defs><use xlink:href='#a'/><use href='#nothing'/>")),
             QString());
    QCOMPARE(WhyNot("<?xml version='1.0'?><!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' "
                    "'http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd'>" +
                    Drawing("<rect/>")),
             QString());
    QCOMPARE(WhyNot("no drawing"), QString());
}

void TestSvgCost::whatCostsTooMuchIsToldWhy_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("why");
    const QString endless("stands for far more shapes than can be drawn.");
    const QString deep("is nested far too deep.");
    QByteArray shapes;
    for (int i = 0; i <= SvgCost::MostElements; ++i)
        shapes += "<g/>";
    const QByteArray levels = QByteArray("<g>").repeated(SvgCost::MostLevels);
    const QByteArray ends = QByteArray("</g>").repeated(SvgCost::MostLevels);
    QTest::newRow("uses of uses") << Doubled(40) << endless;
    QTest::newRow("a use of itself") << Drawing("<g id='a'><use xlink:href='#a'/></g>") << endless;
    QTest::newRow("a use without a prefix") << Drawing("<g id='a'><use href='#a'/></g>") << endless;
    QTest::newRow("shapes") << Drawing(shapes) << "has far too many shapes.";
    QTest::newRow("levels") << Drawing(levels + ends) << deep;
    QTest::newRow("entities") << "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaa'>]>" + Drawing("<text>&a;</text>")
                              << "declares entities.";
    QTest::newRow("packed") << QByteArray("\x1f\x8b\x08") << "is packed.";
    QTest::newRow("bytes") << QByteArray(SvgCost::MostBytes + 1, ' ') << "is too large.";
    QTest::newRow("a file of this machine")
        << Drawing("<image xlink:href='/dev/zero'/>") << "shows a picture that isn't inside of it.";
    QTest::newRow("a drawing inside")
        << Drawing("<image xlink:href='data:image/svg+xml;base64," + Drawing("<rect/>").toBase64() + "'/>")
        << deep;
}

void TestSvgCost::whatCostsTooMuchIsToldWhy()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, why);
    QCOMPARE(WhyNot(bytes), why);
}

void TestSvgCost::usesOfUsesCountUpToTheLimit()
{
    // The root, the definitions, the use; and for each doubling a group with two uses of what came before.
    QCOMPARE(WhyNot(Doubled(10)), QString());
    QVERIFY(!WhyNot(Doubled(17)).isEmpty());
    // Each shape may cover all of a picture.
    QCOMPARE(WhyNot(Doubled(10), QSize(1000, 1000)), QString());
    QCOMPARE(WhyNot(Doubled(10), QSize(10000, 10000)),
             QString("has too many shapes for its size. Make it smaller in the other program."));
}

void TestSvgCost::theSizeIsOnlyAskedOfWhatCanBeRead()
{
    bool isAsked = false;
    const auto size = [&isAsked] {
        isAsked = true;
        return QSize(20, 10);
    };
    const auto any = [](const QSize&) { return true; };
    QVERIFY(!SvgCost::WhyNot(Doubled(40), any, size).isEmpty());
    QVERIFY(!isAsked);
    QVERIFY(SvgCost::WhyNot(Doubled(4), any, size).isEmpty());
    QVERIFY(isAsked);
}

void TestSvgCost::aPictureInsideIsJudgedByItsSize()
{
    const QString tooLarge("holds a picture that is too large.");
    QCOMPARE(WhyNot(Drawing(PictureOf({4000, 4000}))), QString());
    QCOMPARE(WhyNot(Drawing(PictureOf({5001, 1}))), tooLarge);
    // Many of them are no smaller than one.
    QCOMPARE(WhyNot(Drawing(PictureOf({4000, 4000}).repeated(13))), tooLarge);
}

ZK_REGISTER_TEST(tst_svgcost, TestSvgCost)
#include "tst_svgcost.moc"
