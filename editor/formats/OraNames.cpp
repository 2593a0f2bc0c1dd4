#include "formats/OraNames.h"

#include "document/LayerLocks.h"
#include "image/BlendMode.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {
struct NamedMode
{
    unsigned int mode;
    const char* name;
};

/// The format's own names, and for the exclusion the one that fits among them.
constexpr std::array<NamedMode, 13> Modes{{
    {BlendMode::Normal, "svg:src-over"},
    {BlendMode::Addition, "svg:plus"},
    {BlendMode::Multiply, "svg:multiply"},
    {BlendMode::Screen, "svg:screen"},
    {BlendMode::Overlay, "svg:overlay"},
    {BlendMode::Darken, "svg:darken"},
    {BlendMode::Lighten, "svg:lighten"},
    {BlendMode::ColorDodge, "svg:color-dodge"},
    {BlendMode::ColorBurn, "svg:color-burn"},
    {BlendMode::HardLight, "svg:hard-light"},
    {BlendMode::SoftLight, "svg:soft-light"},
    {BlendMode::Difference, "svg:difference"},
    {BlendMode::Exclusion, "svg:exclusion"},
}};

struct NamedLock
{
    unsigned int bit;
    const char* word;
};

constexpr std::array<NamedLock, 4> Locks{{
    {LayerLocks::Transparency, "transparency"},
    {LayerLocks::Pixels, "pixels"},
    {LayerLocks::Position, "position"},
    {LayerLocks::All, "all"},
}};
} // namespace

QString OraNames::CompositeOp(unsigned int blendMode)
{
    const auto* found = std::find_if(Modes.begin(), Modes.end(),
                                     [blendMode](const NamedMode& named) { return named.mode == blendMode; });
    return QLatin1String(found == Modes.end() ? Modes.front().name : found->name);
}

bool OraNames::BlendModeOf(const QString& compositeOp, unsigned int* blendMode)
{
    const auto* found = std::find_if(Modes.begin(), Modes.end(), [&compositeOp](const NamedMode& named) {
        return compositeOp == QLatin1String(named.name);
    });
    if (found == Modes.end()) return false;
    *blendMode = found->mode;
    return true;
}

QString OraNames::LockWords(unsigned int locks)
{
    QStringList words;
    for (const NamedLock& lock : Locks) {
        if ((locks & lock.bit) != 0) words << QLatin1String(lock.word);
    }
    return words.join(' ');
}

unsigned int OraNames::LocksOf(const QString& words)
{
    const QStringList list = words.split(' ');
    unsigned int locks = 0;
    for (const NamedLock& lock : Locks) {
        if (list.contains(QLatin1String(lock.word))) locks |= lock.bit;
    }
    return locks;
}

QString OraNames::OrientationWord(Qt::Orientation orientation)
{
    return orientation == Qt::Vertical ? QStringLiteral("vertical") : QStringLiteral("horizontal");
}

bool OraNames::OrientationOf(const QString& word, Qt::Orientation* orientation)
{
    for (const Qt::Orientation candidate : {Qt::Horizontal, Qt::Vertical}) {
        if (word != OrientationWord(candidate)) continue;
        *orientation = candidate;
        return true;
    }
    return false;
}
