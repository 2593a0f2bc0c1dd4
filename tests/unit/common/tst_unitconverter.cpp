#include "common/UnitConverter.h"
#include "support/TestRegistry.h"

#include <QRegularExpression>
#include <QTest>

#include <cstring>
#include <limits>

namespace {
const LengthUnit Pixels{"pixels", "px", 0, false};

LengthUnit Inches()
{
    return UnitConverter::StockUnits().at(0);
}

LengthUnit Millimeters()
{
    return UnitConverter::StockUnits().at(1);
}

/// What is reported contains a date and a line.
QRegularExpression DpiReport()
{
    return QRegularExpression("^Build date=.*, time=.*\\. Line=\\d+, file=\"src/common/UnitConverter\"\\. "
                              "Warning! Conversion dpi is NULL\\.$");
}
} // namespace

class TestUnitConverter : public QObject
{
    Q_OBJECT

private slots:
    void stockHasInchesAndMillimeters();
    void lengthsBecomePixels();
    void pixelsBecomeLengths();
    void lengthsBecomeOtherLengths();
    void pixelsStayPixels();
    void unitsAreCopied();
    void noResolutionIsReported_data();
    void noResolutionIsReported();
    void lengthsWithoutResolutionHaveNoPixels();
};

void TestUnitConverter::stockHasInchesAndMillimeters()
{
    const QList<LengthUnit> units = UnitConverter::StockUnits();
    QCOMPARE(units.size(), 2);
    QCOMPARE(units[0].m_Name, QString("Inches"));
    QCOMPARE(units[0].m_Short, QString("in"));
    QCOMPARE(units[0].m_PerInch, 1.0F);
    QCOMPARE(units[1].m_Name, QString("Millimeters"));
    QCOMPARE(units[1].m_Short, QString("mm"));
    quint32 bits = 0;
    std::memcpy(&bits, &units[1].m_PerInch, sizeof(bits));
    QCOMPARE(bits, 0x41CB3333U);
    for (const LengthUnit& unit : units)
        QVERIFY(!unit.m_bCustom);
}

void TestUnitConverter::lengthsBecomePixels()
{
    QCOMPARE(UnitConverter(Inches(), Pixels, 300).Convert(1), 300.0);
    QCOMPARE(UnitConverter(Millimeters(), Pixels, 300).Convert(double(25.4F)), 300.0);
    QCOMPARE(UnitConverter(Inches(), Pixels, 72.5).Convert(-2), -145.0);
}

void TestUnitConverter::pixelsBecomeLengths()
{
    QCOMPARE(UnitConverter(Pixels, Inches(), 300).Convert(450), 1.5);
    QCOMPARE(UnitConverter(Pixels, Millimeters(), 300).Convert(300), double(25.4F));
    QVERIFY(qAbs(UnitConverter(Pixels, Millimeters(), 300).Convert(300) - 25.4) < 1e-6);
}

void TestUnitConverter::lengthsBecomeOtherLengths()
{
    // The resolution has no part in it.
    for (const double dpi : {0.0, 72.0, 300.0}) {
        QCOMPARE(UnitConverter(Millimeters(), Inches(), dpi).Convert(10), 1.0 * 10 / double(25.4F));
        QCOMPARE(UnitConverter(Inches(), Millimeters(), dpi).Convert(2), 2 * double(25.4F));
    }
}

void TestUnitConverter::pixelsStayPixels()
{
    for (const double dpi : {0.0, 72.0, -5.0, std::numeric_limits<double>::quiet_NaN()})
        QCOMPARE(UnitConverter(Pixels, Pixels, dpi).Convert(12.5), 12.5);
}

void TestUnitConverter::unitsAreCopied()
{
    LengthUnit unit = Inches();
    const UnitConverter converter(unit, Pixels, 300);
    unit.m_PerInch = 7;
    QCOMPARE(converter.Convert(1), 300.0);
}

void TestUnitConverter::noResolutionIsReported_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("result");
    const double infinite = std::numeric_limits<double>::infinity();
    QTest::newRow("above") << 3.0 << infinite;
    QTest::newRow("below") << -3.0 << -infinite;
    QTest::newRow("nothing") << 0.0 << std::numeric_limits<double>::quiet_NaN();
}

void TestUnitConverter::noResolutionIsReported()
{
    QFETCH(const double, value);
    QFETCH(const double, result);
    QTest::ignoreMessage(QtDebugMsg, DpiReport());
    const double converted = UnitConverter(Pixels, Inches(), 0).Convert(value);
    QVERIFY(converted == result || (qIsNaN(converted) && qIsNaN(result)));
}

void TestUnitConverter::lengthsWithoutResolutionHaveNoPixels()
{
    QCOMPARE(UnitConverter(Inches(), Pixels, 0).Convert(3), 0.0);
}

ZK_REGISTER_TEST(tst_unitconverter, TestUnitConverter)
#include "tst_unitconverter.moc"
