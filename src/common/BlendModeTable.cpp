#include "common/BlendModeTable.h"

#include "image/BlendMode.h"

#include <QCoreApplication>

#include <array>

namespace {
struct Row
{
    const char* text;
    unsigned int mode;
};

constexpr std::array<Row, BlendModeTable::Count> Rows{{
    {QT_TRANSLATE_NOOP("BlendModeTable", "Normal"), BlendMode::Normal},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Multiply"), BlendMode::Multiply},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Screen"), BlendMode::Screen},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Overlay"), BlendMode::Overlay},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Difference"), BlendMode::Difference},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Exclusion"), BlendMode::Exclusion},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Lighten colors"), BlendMode::Lighten},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Darken colors"), BlendMode::Darken},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Soft light"), BlendMode::SoftLight},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Hard light"), BlendMode::HardLight},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Color dodge"), BlendMode::ColorDodge},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Color burn"), BlendMode::ColorBurn},
    {QT_TRANSLATE_NOOP("BlendModeTable", "Addition"), BlendMode::Addition},
}};
} // namespace

QStringList BlendModeTable::Texts()
{
    QStringList texts;
    for (const Row& row : Rows) {
        texts.append(QCoreApplication::translate("BlendModeTable", row.text));
    }
    return texts;
}

unsigned int BlendModeTable::ModeOf(int index)
{
    if (index < 0 || index >= Count) return BlendMode::Normal;
    return Rows.at(static_cast<std::size_t>(index)).mode;
}
