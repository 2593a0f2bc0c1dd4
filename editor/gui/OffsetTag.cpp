#include "gui/OffsetTag.h"

#include "document/LXDocumentInterface.h"

namespace {
constexpr int Inches = 1;
constexpr int Millimeters = 2;
constexpr double MillimetersInAnInch = 25.4;
constexpr int Gap = 16; ///< viewport pixels from the pointer's spot
constexpr int Padding = 4;

QString Signed(double value, int decimals)
{
    const QString number = QString::number(value, 'f', decimals);
    const bool isNothing = number.toDouble() == 0.0;
    if (isNothing) return QString::number(0.0, 'f', decimals);
    return value > 0 ? QLatin1Char('+') + number : number;
}

/// Behind the spot, or before it where there is no room.
int Beside(int spot, int extent, int room)
{
    const int behind = spot + Gap;
    return behind + extent <= room ? behind : spot - Gap - extent;
}
} // namespace

OffsetTag::OffsetTag(QWidget* viewport) : QLabel(viewport)
{
    setObjectName(QStringLiteral("dragOffsetTag"));
    setAccessibleName(tr("Offset of the drag"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setMargin(Padding);
    hide();
}

void OffsetTag::Tell(const QPointF& way, const LXDocumentInterface* document, const QPoint& spot)
{
    setText(Text(way, document->GetUnit(), document->GetDPI()));
    adjustSize();
    const QSize room = parentWidget()->size();
    move(Beside(spot.x(), width(), room.width()), Beside(spot.y(), height(), room.height()));
    show();
}

QString OffsetTag::Text(const QPointF& way, int unit, double dpi)
{
    const auto text = [&way](const QString& form, double factor, int decimals) {
        return form.arg(Signed(way.x() * factor, decimals), Signed(way.y() * factor, decimals));
    };
    switch (unit) {
    case Inches: return text(tr("%1, %2 in"), 1 / dpi, 2);
    case Millimeters: return text(tr("%1, %2 mm"), MillimetersInAnInch / dpi, 1);
    default: return text(tr("%1, %2 px"), 1, 0);
    }
}
