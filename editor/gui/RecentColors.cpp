#include "gui/RecentColors.h"

#include "core/ZKApplication.h"
#include "guicore/ColorText.h"

#include <QStringList>

namespace {
const QLatin1String Key("ColorDialog/Recent");
} // namespace

QList<QColor> RecentColors::Read()
{
    const QStringList texts = ZKApplication::GetUserValue(Key, QStringList()).toStringList();
    QList<QColor> colors;
    for (const QString& text : texts) {
        const std::optional<QColor> color = ColorText::Read(text);
        if (color && colors.size() < Most) colors.append(*color);
    }
    return colors;
}

void RecentColors::Add(const QColor& color)
{
    if (!color.isValid()) return;
    QStringList texts;
    for (const QColor& recent : WithFirst(Read(), color))
        texts.append(ColorText::WithAlpha(recent));
    ZKApplication::SetUserValue(Key, texts);
}

QList<QColor> RecentColors::WithFirst(QList<QColor> colors, const QColor& color)
{
    const auto isSame = [&color](const QColor& other) { return other.rgba() == color.rgba(); };
    colors.erase(std::remove_if(colors.begin(), colors.end(), isSame), colors.end());
    colors.prepend(color);
    return colors.mid(0, Most);
}

QList<QColor> RecentColors::Opaque(const QList<QColor>& colors)
{
    QList<QColor> opaque;
    for (const QColor& color : colors) {
        const QColor plain(color.rgb());
        if (!opaque.contains(plain)) opaque.append(plain);
    }
    return opaque;
}
