// The median of MaskModify: a histogram of the disk slides along each row.

#include "image/DiskShape.h"
#include "image/MaskModify.h"
#include "image/MaskPieces.h"

#include <array>

namespace {
/// A bag of values that knows its middle one.
class MiddleOf
{
public:
    void Clear()
    {
        m_Counts.fill(0);
        m_Total = 0;
        m_Middle = 0;
        m_Below = 0;
    }

    void Add(quint8 value)
    {
        ++m_Counts[value];
        ++m_Total;
        if (value < m_Middle) ++m_Below;
    }

    void Remove(quint8 value)
    {
        --m_Counts[value];
        --m_Total;
        if (value < m_Middle) --m_Below;
    }

    /// Of an odd number of values.
    quint8 Find()
    {
        const int wanted = m_Total / 2;
        while (m_Below > wanted) {
            --m_Middle;
            m_Below -= m_Counts[m_Middle];
        }
        while (m_Below + m_Counts[m_Middle] <= wanted) {
            m_Below += m_Counts[m_Middle];
            ++m_Middle;
        }
        return m_Middle;
    }

private:
    std::array<int, 256> m_Counts{};
    int m_Total = 0;
    quint8 m_Middle = 0; ///< of the last time
    int m_Below = 0;     ///< how many values are smaller than m_Middle
};

void Smooth(const MaskValues& around, MaskValues& piece, int radius)
{
    const std::vector<int> halfWidths = DiskHalfWidths(radius);
    const auto halfWidth = [&halfWidths](int row) { return halfWidths[static_cast<std::size_t>(qAbs(row))]; };
    MiddleOf disk;
    for (int y = 0; y < piece.rect.height(); ++y) {
        disk.Clear();
        for (int row = -radius; row <= radius; ++row) {
            const quint8* const middle = around.Row(y + radius + row) + radius;
            std::for_each(middle - halfWidth(row), middle + halfWidth(row) + 1,
                          [&disk](quint8 value) { disk.Add(value); });
        }
        quint8* const target = piece.Row(y);
        target[0] = disk.Find();
        for (int x = 1; x < piece.rect.width(); ++x) {
            for (int row = -radius; row <= radius; ++row) {
                const quint8* const middle = around.Row(y + radius + row) + radius + x;
                disk.Remove(middle[-halfWidth(row) - 1]);
                disk.Add(middle[halfWidth(row)]);
            }
            target[x] = disk.Find();
        }
    }
}
} // namespace

LXImage32 MaskModify::Smoothed(const LXImage32& mask, const QRect& area, int radius)
{
    return MaskPieces::Make(
        mask, area, radius, [](quint8 value) { return value; },
        [radius](const MaskValues& around, MaskValues& piece) { Smooth(around, piece, radius); });
}
