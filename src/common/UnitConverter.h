#pragma once

#include <QList>
#include <QString>

/// A unit of length that people read.
struct LengthUnit
{
    QString m_Name;         ///< for lists: "Millimeters"
    QString m_Short;        ///< behind a number: "mm"
    float m_PerInch = 0;    ///< how many of it make an inch; 0 for pixels
    bool m_bCustom = false; ///< not one of the stock
};

/// Turns numbers of one unit into numbers of another. A value; any thread.
///
/// At a resolution of 0 pixels have no length: that is noted in the log, and the result is infinite, or no
/// number.
class UnitConverter
{
public:
    /// @param dpi  pixels per inch
    UnitConverter(const LengthUnit& from, const LengthUnit& to, double dpi);

    /// Exact: nothing is rounded.
    double Convert(double value) const;

    /// Inches and millimeters, in the order of LXDocumentInterface::GetUnit() from 1 on; who offers pixels or
    /// percents puts them ahead.
    static QList<LengthUnit> StockUnits();

private:
    LengthUnit m_From;
    LengthUnit m_To;
    double m_Dpi;
};
