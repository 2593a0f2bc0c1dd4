// The bell of MaskModify. Sums of the three means are kept whole: even with the largest radius 255 * 501^6
// fits into 64 bits, so that one rounding at the end is the only one.

#include "image/MaskModify.h"
#include "image/MaskPieces.h"

namespace {
constexpr int Passes = 3;

/// sums[x] = sums[x] + ... + sums[x + 2 * radius], in place; there are `count` of them afterwards.
void SumAlong(quint64* sums, int count, int radius)
{
    quint64 sum = 0;
    for (int x = 0; x < 2 * radius; ++x)
        sum += sums[x];
    for (int x = 0; x < count; ++x) {
        sum += sums[x + 2 * radius];
        const quint64 leaving = sums[x];
        sums[x] = sum;
        sum -= leaving;
    }
}

/// The same from row to row.
class ColumnSums
{
public:
    ColumnSums(int width, int height)
        : m_Width(static_cast<std::size_t>(width)),
          m_Rows(m_Width * static_cast<std::size_t>(height)),
          m_Sum(m_Width)
    {}

    quint64* Row(int y) { return m_Rows.data() + static_cast<std::size_t>(y) * m_Width; }

    void SumDown(int count, int radius)
    {
        std::fill(m_Sum.begin(), m_Sum.end(), 0);
        for (int y = 0; y < 2 * radius; ++y)
            Add(Row(y));
        for (int y = 0; y < count; ++y) {
            Add(Row(y + 2 * radius));
            Exchange(Row(y));
        }
    }

private:
    void Add(const quint64* row)
    {
        for (std::size_t x = 0; x < m_Width; ++x)
            m_Sum[x] += row[x];
    }

    void Exchange(quint64* row)
    {
        for (std::size_t x = 0; x < m_Width; ++x) {
            const quint64 leaving = row[x];
            row[x] = m_Sum[x];
            m_Sum[x] -= leaving;
        }
    }

    std::size_t m_Width;
    std::vector<quint64> m_Rows;
    std::vector<quint64> m_Sum;
};

void Feather(const MaskValues& around, MaskValues& piece, int radius)
{
    const int width = piece.rect.width();
    const int height = piece.rect.height();
    ColumnSums columns(width, around.rect.height());
    std::vector<quint64> sums(static_cast<std::size_t>(around.rect.width()));
    for (int y = 0; y < around.rect.height(); ++y) {
        std::copy_n(around.Row(y), around.rect.width(), sums.begin());
        for (int pass = Passes - 1; pass >= 0; --pass)
            SumAlong(sums.data(), width + 2 * pass * radius, radius);
        std::copy_n(sums.begin(), width, columns.Row(y));
    }
    for (int pass = Passes - 1; pass >= 0; --pass)
        columns.SumDown(height + 2 * pass * radius, radius);

    const quint64 side = 2 * static_cast<quint64>(radius) + 1;
    const quint64 weight = side * side * side * side * side * side;
    for (int y = 0; y < height; ++y) {
        const quint64* const row = columns.Row(y);
        std::transform(row, row + width, piece.Row(y),
                       [weight](quint64 sum) { return static_cast<quint8>((sum + weight / 2) / weight); });
    }
}
} // namespace

LXImage32 MaskModify::Feathered(const LXImage32& mask, const QRect& area, int radius)
{
    return MaskPieces::Make(
        mask, area, Passes * radius, [](quint8 value) { return value; },
        [radius](const MaskValues& around, MaskValues& piece) { Feather(around, piece, radius); });
}
