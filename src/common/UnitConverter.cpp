#include "common/UnitConverter.h"

#include "common/Reports.h"

#include <QCoreApplication>

UnitConverter::UnitConverter(const LengthUnit& from, const LengthUnit& to, double dpi)
    : m_From(from), m_To(to), m_Dpi(dpi)
{}

double UnitConverter::Convert(double value) const
{
    const auto from = static_cast<double>(m_From.m_PerInch);
    const auto to = static_cast<double>(m_To.m_PerInch);
    if (from > 0) return (to > 0 ? to : m_Dpi) * value / from;
    if (!(to > 0)) return value;
    if (m_Dpi == 0.0) Reports::Condition(ZK_HERE, QStringLiteral("Warning! Conversion dpi is NULL."));
    return to * value / m_Dpi;
}

QList<LengthUnit> UnitConverter::StockUnits()
{
    constexpr float millimetersPerInch = 25.4F;
    const auto translated = [](const char* text) {
        return QCoreApplication::translate("UnitConverter", text);
    };
    return {{translated("Inches"), translated("in"), 1.0F, false},
            {translated("Millimeters"), translated("mm"), millimetersPerInch, false}};
}
