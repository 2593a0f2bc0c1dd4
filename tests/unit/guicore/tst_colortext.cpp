#include "guicore/ColorText.h"
#include "support/TestRegistry.h"

#include <QTest>

/// Colors as people write them.
class TestColorText : public QObject
{
    Q_OBJECT

private slots:
    void colorsAreWrittenInCapitals();
    void textIsRead_data();
    void textIsRead();
    void otherTextIsNoColor_data();
    void otherTextIsNoColor();
};

void TestColorText::colorsAreWrittenInCapitals()
{
    const QColor color(0x0a, 0xbc, 0xff, 0x7f);
    QCOMPARE(ColorText::Opaque(color), QString("#0ABCFF"));
    QCOMPARE(ColorText::WithAlpha(color), QString("#7F0ABCFF"));
}

void TestColorText::textIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRgb>("color");
    QTest::newRow("six digits") << "#0ABCFF" << 0xff0abcffu;
    QTest::newRow("small letters") << "#0abcff" << 0xff0abcffu;
    QTest::newRow("no sign") << "0abcff" << 0xff0abcffu;
    QTest::newRow("blanks around") << "  #0abcff\n" << 0xff0abcffu;
    QTest::newRow("three digits stand for six") << "#1cF" << 0xff11ccffu;
    QTest::newRow("eight digits begin with the alpha") << "#7f0abcff" << 0x7f0abcffu;
    QTest::newRow("nothing at all") << "#00000000" << 0u;
}

void TestColorText::textIsRead()
{
    QFETCH(const QString, text);
    QFETCH(const QRgb, color);
    const std::optional<QColor> read = ColorText::Read(text);
    QVERIFY(read);
    QCOMPARE(read->rgba(), color);
}

void TestColorText::otherTextIsNoColor_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("the sign alone") << "#";
    QTest::newRow("four digits") << "#1234";
    QTest::newRow("five digits") << "#12345";
    QTest::newRow("seven digits") << "#1234567";
    QTest::newRow("nine digits") << "#123456789";
    QTest::newRow("another letter") << "#12345g";
    QTest::newRow("a blank inside") << "#12 456";
    QTest::newRow("two signs") << "##123456";
    QTest::newRow("a name") << "red";
}

void TestColorText::otherTextIsNoColor()
{
    QFETCH(const QString, text);
    QVERIFY(!ColorText::Read(text));
}

ZK_REGISTER_TEST(tst_colortext, TestColorText)
#include "tst_colortext.moc"
