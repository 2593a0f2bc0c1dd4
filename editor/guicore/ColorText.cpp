#include "guicore/ColorText.h"

#include <QRegularExpression>

QString ColorText::Opaque(const QColor& color)
{
    return color.name(QColor::HexRgb).toUpper();
}

QString ColorText::WithAlpha(const QColor& color)
{
    return color.name(QColor::HexArgb).toUpper();
}

std::optional<QColor> ColorText::Read(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^#?((?:[0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8}))$"));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch()) return std::nullopt;
    return QColor('#' + match.captured(1));
}
