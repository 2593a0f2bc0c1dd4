#include "image/TileComponents.h"

#include <algorithm>

using TileSides::Bottom;
using TileSides::Left;
using TileSides::Right;
using TileSides::Top;
using TileWalk::TileSide;

namespace {
constexpr int WordBits = 64;
constexpr int WordsARow = TileSide / WordBits;
constexpr int Words = TileSide * WordsARow;
/// Every second pixel.
constexpr std::size_t MostRuns = TileWalk::TilePixels / 2;
/// Of components that touch no side, and so are never taken: two hundred and fifty-four at most do, those of
/// every second pixel along the sides.
constexpr quint8 Inner = 255;

std::size_t At(int index)
{
    return static_cast<std::size_t>(index);
}

quint64 WordOf(const TileBits& pixels, int word)
{
    return static_cast<quint64>(pixels.rows[At(word / WordsARow)] >> (word % WordsARow * WordBits));
}

/// The first bit of each run of bits.
quint64 StartsOf(quint64 word)
{
    return word & ~(word << 1);
}

/// The last bit of `bits` up to `place`; there is one.
int LastUpTo(int place, quint64 bits)
{
    const quint64 upTo = ~quint64(0) >> (WordBits - 1 - place);
    return WordBits - 1 - static_cast<int>(qCountLeadingZeroBits(bits & upTo));
}
} // namespace

/// The runs of bits in the words of a tile, numbered in the order of words, and joined to components: each
/// points to an earlier one of its component, the first to itself.
class TileComponents::Runs
{
public:
    explicit Runs(const TileBits& pixels)
    {
        for (int word = 0; word < Words; ++word) {
            const quint64 bits = WordOf(pixels, word);
            m_First[At(word)] = m_Count;
            Add(StartsOf(bits), m_At[At(word % Kept)]);
            if (word >= WordsARow) JoinWithAbove(bits, WordOf(pixels, word - WordsARow), word);
            const bool isRight = word % WordsARow != 0;
            if (isRight && (bits & 1) != 0 && (WordOf(pixels, word - 1) >> (WordBits - 1)) != 0)
                Join(m_First[At(word)], static_cast<quint16>(m_First[At(word)] - 1));
        }
        m_First[Words] = m_Count;
        for (int run = 0; run < m_Count; ++run) {
            m_Parents[At(run)] = m_Parents[m_Parents[At(run)]];
        }
    }

    int Count() const { return m_Count; }

    /// The first run of the component.
    quint16 RootOf(int run) const { return m_Parents[At(run)]; }

    int FirstOf(int word) const { return m_First[At(word)]; }

    int LastOf(int word) const { return m_First[At(word + 1)] - 1; }

private:
    /// Words whose runs are looked up: those of this row and of the one above.
    static constexpr int Kept = 2 * WordsARow;

    using RunAt = std::array<quint16, WordBits>; ///< by the place of a run's first bit

    void Add(quint64 starts, RunAt& runAt)
    {
        for (; starts != 0; starts &= starts - 1) {
            runAt[qCountTrailingZeroBits(starts)] = m_Count;
            m_Parents[m_Count] = m_Count;
            ++m_Count;
        }
    }

    void JoinWithAbove(quint64 bits, quint64 above, int word)
    {
        const RunAt& runs = m_At[At(word % Kept)];
        const RunAt& runsAbove = m_At[At((word - WordsARow) % Kept)];
        const quint64 starts = StartsOf(bits);
        const quint64 startsAbove = StartsOf(above);
        for (quint64 joins = StartsOf(bits & above); joins != 0; joins &= joins - 1) {
            const int place = static_cast<int>(qCountTrailingZeroBits(joins));
            Join(runs[At(LastUpTo(place, starts))], runsAbove[At(LastUpTo(place, startsAbove))]);
        }
    }

    void Join(quint16 a, quint16 b)
    {
        a = Root(a);
        b = Root(b);
        m_Parents[std::max(a, b)] = std::min(a, b);
    }

    quint16 Root(quint16 run)
    {
        while (m_Parents[run] != run) {
            m_Parents[run] = m_Parents[m_Parents[run]];
            run = m_Parents[run];
        }
        return run;
    }

    quint16 m_Count = 0;
    std::array<quint16, Words + 1> m_First;
    std::array<RunAt, Kept> m_At;
    std::array<quint16, MostRuns> m_Parents;
};

TileComponents::TileComponents(const TileBits& open, const TileBits& taken)
    : m_Pixels(open), m_TakenBefore(taken)
{
    const Runs runs(open);
    m_OfRun.assign(At(runs.Count()), Inner);
    NumberAlongSides(runs);
    for (int run = 0; run < runs.Count(); ++run) {
        m_OfRun[At(run)] = m_OfRun[runs.RootOf(run)];
    }
}

/// Leaves the numbers at the components' first runs.
void TileComponents::NumberAlongSides(const Runs& runs)
{
    const auto note = [&](int run, TileSides::Side side, int place) {
        quint8& number = m_OfRun[runs.RootOf(run)];
        if (number == Inner) {
            number = static_cast<quint8>(m_Sides.size());
            m_Sides.push_back({});
        }
        m_Sides[number][side] |= TileBitsMath::Bit(place);
        m_Open[side] |= TileBitsMath::Bit(place);
        m_OfSidePixel[side][At(place)] = number;
    };
    const auto noteRow = [&](int y, TileSides::Side side) {
        for (int half = 0; half < WordsARow; ++half) {
            const int word = y * WordsARow + half;
            const quint64 bits = WordOf(m_Pixels, word);
            int run = runs.FirstOf(word) - 1;
            for (int place = 0; place < WordBits; ++place) {
                run += static_cast<int>((StartsOf(bits) >> place) & 1);
                if (((bits >> place) & 1) != 0) note(run, side, half * WordBits + place);
            }
        }
    };
    noteRow(0, Top);
    noteRow(TileSide - 1, Bottom);
    for (int y = 0; y < TileSide; ++y) {
        const RowBits row = m_Pixels.rows[At(y)];
        if ((row & TileBitsMath::Bit(0)) != 0) note(runs.FirstOf(y * WordsARow), Left, y);
        if ((row & TileBitsMath::Bit(TileSide - 1)) != 0)
            note(runs.LastOf((y + 1) * WordsARow - 1), Right, y);
    }
}

bool TileComponents::Take(TileSides::Side side, RowBits pixels, SideBits& leaves)
{
    pixels &= m_Open[side];
    if (pixels == 0) return false;
    for (; pixels != 0; pixels &= m_Open[side]) {
        const quint8 number = m_OfSidePixel[side][At(TileBitsMath::CountTrailingZeros(pixels))];
        m_IsTaken.set(number);
        for (std::size_t i = 0; i < TileSides::Count; ++i) {
            leaves[i] |= m_Sides[number][i];
            m_Open[i] &= ~m_Sides[number][i];
        }
    }
    return true;
}

TileBits TileComponents::Taken() const
{
    TileBits taken = m_TakenBefore;
    std::size_t run = 0;
    for (int word = 0; word < Words; ++word) {
        const quint64 bits = WordOf(m_Pixels, word);
        quint64 seeds = 0;
        for (quint64 starts = StartsOf(bits); starts != 0; starts &= starts - 1) {
            if (m_IsTaken[m_OfRun[run++]]) seeds |= starts & ~(starts - 1);
        }
        // A sum carries from each seed to the end of its run and so turns the run's bits over.
        const quint64 pixels = bits & ~(bits + seeds);
        taken.rows[At(word / WordsARow)] |= RowBits(pixels) << (word % WordsARow * WordBits);
    }
    return taken;
}
