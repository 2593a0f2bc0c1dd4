#include "gui/BlendModeNames.h"

#include "image/BlendMode.h"

#include <QCoreApplication>

namespace {
QString Name(const char* text)
{
    return QCoreApplication::translate("BlendModeNames", text);
}
} // namespace

QList<std::pair<QString, unsigned int>> BlendModeNames()
{
    return {
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Normal")), BlendMode::Normal},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Multiply")), BlendMode::Multiply},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Screen")), BlendMode::Screen},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Overlay")), BlendMode::Overlay},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Difference")), BlendMode::Difference},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Exclusion")), BlendMode::Exclusion},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Lighten colors")), BlendMode::Lighten},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Darken colors")), BlendMode::Darken},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Soft light")), BlendMode::SoftLight},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Hard light")), BlendMode::HardLight},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Color dodge")), BlendMode::ColorDodge},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Color burn")), BlendMode::ColorBurn},
        {Name(QT_TRANSLATE_NOOP("BlendModeNames", "Addition")), BlendMode::Addition},
    };
}
