#include "image/TileBits.h"

#include <algorithm>

using TileWalk::TileSide;

namespace {
constexpr int HalfBits = TileSide / 2;

/// All bits of `inside` that hang together with a bit of `seeds` above them. Doubles the reach in each step:
/// after steps of 1, 2, 4 ... 32 a seed has come as far as its run goes.
quint64 SpreadDown(quint64 seeds, quint64 inside)
{
    for (int step = 1; step < HalfBits; step *= 2) {
        seeds |= inside & (seeds >> step);
        inside &= inside >> step;
    }
    return seeds;
}
} // namespace

RowBits TileBitsMath::SpreadAlongRow(RowBits seeds, RowBits inside)
{
    // A sum carries from each seed to the end of its run and so turns the run's bits over; at a further seed
    // of the run the bit stays, which is why the seeds are added again.
    const RowBits up = (inside & ~(inside + seeds)) | seeds;
    // Often, as in a corridor across the rows, there is nowhere else to go.
    if ((inside & ~up & (up >> 1)) == 0) return up;

    const auto insideHigh = static_cast<quint64>(inside >> HalfBits);
    const auto insideLow = static_cast<quint64>(inside);
    const quint64 high = SpreadDown(static_cast<quint64>(up >> HalfBits), insideHigh);
    const quint64 crossing = insideLow & (high << (HalfBits - 1));
    const quint64 low = SpreadDown(static_cast<quint64>(up) | crossing, insideLow);
    return (RowBits(high) << HalfBits) | low;
}

void TileBitsMath::Clip(TileBits& bits, const QRect& part)
{
    const RowBits columns = part.isEmpty() ? RowBits(0) : Columns(part.left(), part.right());
    for (int y = 0; y < TileSide; ++y) {
        const bool isInside = y >= part.top() && y <= part.bottom();
        bits.rows[static_cast<std::size_t>(y)] &= isInside ? columns : RowBits(0);
    }
}

bool TileBitsMath::IsFull(const TileBits& bits)
{
    return std::all_of(bits.rows.begin(), bits.rows.end(), [](RowBits row) { return ~row == 0; });
}

bool TileBitsMath::IsEmpty(const TileBits& bits)
{
    return std::all_of(bits.rows.begin(), bits.rows.end(), [](RowBits row) { return row == 0; });
}

QRect TileBitsMath::BoundsOf(const TileBits& bits)
{
    RowBits columns = 0;
    int top = TileSide;
    int bottom = -1;
    for (int y = 0; y < TileSide; ++y) {
        const RowBits row = bits.rows[static_cast<std::size_t>(y)];
        if (row == 0) continue;
        columns |= row;
        top = std::min(top, y);
        bottom = y;
    }
    if (bottom < 0) return {};
    return QRect(QPoint(CountTrailingZeros(columns), top),
                 QPoint(TileSide - 1 - CountLeadingZeros(columns), bottom));
}
