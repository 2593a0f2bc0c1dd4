#include "image/SimilarPixels.h"

#include "image/SimilarKernels.h"

SimilarPixels::SimilarPixels(const LXImage32& image, const QPoint& seed, LXRGBA32i tolerance)
    : m_Image(image), m_Seed(image.GetColor(seed.x(), seed.y())), m_Tolerance(tolerance)
{}

void SimilarPixels::Find(int column, int row, TileBits& bits)
{
    const LXTilePointer& tile = m_Image.TileAt(column, row);
    if (tile.data() == m_pAllSimilar) {
        bits.rows.fill(~RowBits(0));
        return;
    }
    if (tile.data() == m_pNoneSimilar) {
        bits.rows.fill(0);
        return;
    }
    SimilarKernels::Compare(m_Image.ReadTile(column, row).Pixels(), m_Seed, m_Tolerance, bits);
    if (!tile->IsShared()) return;
    if (TileBitsMath::IsFull(bits)) m_pAllSimilar = tile.data();
    if (TileBitsMath::IsEmpty(bits)) m_pNoneSimilar = tile.data();
}
