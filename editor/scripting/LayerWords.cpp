#include "scripting/LayerWords.h"

#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "image/BlendMode.h"
#include "scripting/ScriptError.h"

namespace {
struct Word
{
    const char* word;
    unsigned int number;
};

constexpr Word BlendModes[] = {
    {"Normal", BlendMode::Normal},          {"Multiply", BlendMode::Multiply},
    {"Screen", BlendMode::Screen},          {"Overlay", BlendMode::Overlay},
    {"Difference", BlendMode::Difference},  {"Exclusion", BlendMode::Exclusion},
    {"Lighten colors", BlendMode::Lighten}, {"Darken colors", BlendMode::Darken},
    {"Soft light", BlendMode::SoftLight},   {"Hard light", BlendMode::HardLight},
    {"Color dodge", BlendMode::ColorDodge}, {"Color burn", BlendMode::ColorBurn},
    {"Addition", BlendMode::Addition},
};

constexpr Word Locks[] = {
    {"transparency", LayerLocks::Transparency},
    {"pixels", LayerLocks::Pixels},
    {"position", LayerLocks::Position},
    {"all", LayerLocks::All},
};

template <std::size_t Count>
unsigned int NumberOf(const Word (&words)[Count], const QString& wanted, const char* what)
{
    QStringList known;
    for (const Word& word : words) {
        if (wanted == QLatin1String(word.word)) return word.number;
        known.append(QString::fromLatin1(word.word));
    }
    throw ScriptError(QStringLiteral("\"%1\" is no %2; there are: %3.")
                          .arg(wanted, QString::fromLatin1(what), known.join(QStringLiteral(", "))));
}
} // namespace

QString LayerWords::OfKind(int kind)
{
    switch (kind) {
    case LayerKind::Raster: return QStringLiteral("raster");
    case LayerKind::Text: return QStringLiteral("text");
    case LayerKind::Adjustment: return QStringLiteral("adjustment");
    default: return {};
    }
}

QString LayerWords::OfBlendMode(unsigned int mode)
{
    for (const Word& word : BlendModes) {
        if (word.number == mode) return QString::fromLatin1(word.word);
    }
    return QString::number(mode);
}

unsigned int LayerWords::ToBlendMode(const QString& word)
{
    return NumberOf(BlendModes, word, "blend mode");
}

QStringList LayerWords::OfLocks(unsigned int flags)
{
    QStringList words;
    for (const Word& word : Locks) {
        if (flags & word.number) words.append(QString::fromLatin1(word.word));
    }
    return words;
}

unsigned int LayerWords::ToLocks(const QStringList& words)
{
    unsigned int flags = 0;
    for (const QString& word : words)
        flags |= NumberOf(Locks, word, "lock");
    return flags;
}
