#include "image/TileBlender.h"

#include "image/BlendMode.h"
#include "image/TileNature.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>
#include <optional>

namespace {
using TileWalk::TileSide;

using Cuts = QVarLengthArray<int, 8>;

void AddCut(Cuts& cuts, int cut, int first, int end)
{
    if (cut > first && cut < end) cuts.append(cut);
}

/// Where, from `first` to `end`, another image's tiles begin; `shift` leads to that image.
void AddTileCuts(Cuts& cuts, int first, int end, int shift)
{
    const int inTile = ((first + shift) % TileSide + TileSide) % TileSide;
    for (int cut = first + TileSide - inTile; cut < end; cut += TileSide) {
        AddCut(cuts, cut, first, end);
    }
}

void Finish(Cuts& cuts, int first, int end)
{
    cuts.append(first);
    cuts.append(end);
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
}

QRect InTile(const QRect& part)
{
    return QRect(QPoint(part.left() % TileSide, part.top() % TileSide), part.size());
}

const LXTilePointer& TileAtPixel(const LXImage32& image, const QPoint& pixel)
{
    return image.TileAt(pixel.x() / TileSide, pixel.y() / TileSide);
}

double InRange(double opacity)
{
    return opacity > 0.0 ? std::min(opacity, 1.0) : 0.0;
}
} // namespace

TileBlender::TileBlender(const LXImage32& src, const BlendRule& rule, LXImage32& dst, const BlendArea& area,
                         const MaskPart& mask)
    : m_Src(src),
      m_Dst(dst),
      m_Area(area),
      m_Mask(mask),
      m_Kernel(BlendKernels::For(rule.mode, rule.keepAlpha)),
      m_Strength(m_Kernel.strength, InRange(rule.opacity), mask.image != nullptr),
      m_IsCopy(rule.mode == BlendMode::Source && m_Strength.IsAlwaysFull()),
      m_HidesUnder(rule.mode == BlendMode::Normal && !rule.keepAlpha && mask.image == nullptr &&
                   rule.opacity >= 1.0)
{
    if (mask.image != nullptr) m_MaskInside = (mask.rect & mask.image->Rect()).translated(-area.toMask);
}

void TileBlender::Run()
{
    TileThreads::ForEachTile(
        m_Area.target, [this](int column, int row, const QRect& part) { BlendTile(column, row, part); });
}

void TileBlender::BlendTile(int column, int row, const QRect& part)
{
    if (m_IsCopy) {
        if (!ShareTile(column, row, part)) CopyTile(column, row, part);
        return;
    }
    if (m_HidesUnder && IsOpaque(part) && ShareTile(column, row, part)) return;
    if (LeavesAsIs(column, row, part) || TakeComposed(column, row, part)) return;

    const bool isKept = m_Mask.image == nullptr && SourceTileOf(part)->IsShared() &&
                        m_Dst.TileAt(column, row)->IsShared() && ComesFromOne(part);
    Composed composed;
    if (isKept) composed = {SourceTileOf(part), m_Dst.TileAt(column, row), {}, InTile(part)};
    {
        const auto tile = m_Dst.WriteTile(column, row);
        ForEachCell(part, [&](const Cell& cell) { WriteCell(cell, tile.Pixels()); });
    }
    if (!isKept) return;
    composed.after = m_Dst.TileAt(column, row);
    const std::lock_guard<std::mutex> guard(m_ComposedMutex);
    std::swap(ComposedOf(part), composed);
}

/// Lets the target share the source's tile when all that counts of its own is replaced: what lies beyond the
/// edge of either image means nothing.
bool TileBlender::ShareTile(int column, int row, const QRect& part)
{
    if (part != (TileWalk::TileRect(column, row) & m_Dst.Rect()) || !ComesFromOne(part)) return false;

    m_Dst.TileAt(column, row) = SourceTileOf(part);
    return true;
}

/// Whether the source's tile under the part is opaque all over, asked of whole tiles alone.
bool TileBlender::IsOpaque(const QRect& part) const
{
    if (part.width() != TileSide || part.height() != TileSide || !ComesFromOne(part)) return false;
    return TileNature::Of(*SourceTileOf(part)).isOpaque;
}

void TileBlender::CopyTile(int column, int row, const QRect& part)
{
    if (m_Dst.TileAt(column, row)->IsShared()) {
        if (IsCopyEqual(part)) return;
        if (ComesFromOne(part) && IsEqualAround(part)) {
            m_Dst.TileAt(column, row) = SourceTileOf(part);
            return;
        }
    }
    const auto tile = m_Dst.WriteTile(column, row);
    LXRGBA32i* const target = tile.Pixels() + TileWalk::IndexInTile(part.topLeft());
    TileWalk::ReadSpans(m_Src, part.translated(m_Area.toSource),
                        [&](const LXRGBA32i* pixels, int x, int y, int count) {
                            std::copy_n(pixels, count, target + y * TileSide + x);
                        });
}

/// Whether the target holds the source's pixels already, as blank images do.
bool TileBlender::IsCopyEqual(const QRect& part) const
{
    const auto target = m_Dst.ReadTile(part.left() / TileSide, part.top() / TileSide);
    const LXRGBA32i* const first = target.Pixels() + TileWalk::IndexInTile(part.topLeft());
    bool isEqual = true;
    TileWalk::ReadSpans(m_Src, part.translated(m_Area.toSource),
                        [&](const LXRGBA32i* pixels, int x, int y, int count) {
                            const auto bytes = static_cast<std::size_t>(count) * sizeof(LXRGBA32i);
                            isEqual = isEqual && std::memcmp(pixels, first + y * TileSide + x, bytes) == 0;
                        });
    return isEqual;
}

/// Whether the source's tile holds, around the part that is copied, what the target has there: it was made
/// from the target's then, and can take its place as it is.
bool TileBlender::IsEqualAround(const QRect& part) const
{
    const int column = part.left() / TileSide;
    const int row = part.top() / TileSide;
    const QRect counts = TileWalk::TileRect(column, row) & m_Dst.Rect();
    const auto target = m_Dst.ReadTile(column, row);
    const LXTileReader<LXRGBA32i> source(*SourceTileOf(part));
    const auto isEqual = [&](const QRect& rect) {
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            const int first = TileWalk::IndexInTile(QPoint(rect.left(), y));
            const auto bytes = static_cast<std::size_t>(rect.width()) * sizeof(LXRGBA32i);
            if (std::memcmp(source.Pixels() + first, target.Pixels() + first, bytes) != 0) return false;
        }
        return true;
    };
    const QRect above(counts.topLeft(), QPoint(counts.right(), part.top() - 1));
    const QRect below(QPoint(counts.left(), part.bottom() + 1), counts.bottomRight());
    const QRect left(QPoint(counts.left(), part.top()), QPoint(part.left() - 1, part.bottom()));
    const QRect right(QPoint(part.right() + 1, part.top()), QPoint(counts.right(), part.bottom()));
    return isEqual(above) && isEqual(below) && isEqual(left) && isEqual(right);
}

/// Whether the source's tiles lie under the target's.
bool TileBlender::IsAligned() const
{
    return m_Area.toSource.x() % TileSide == 0 && m_Area.toSource.y() % TileSide == 0;
}

/// Whether all that the part gets lies in one tile of the source as it would in the target's: the grids
/// coincide, or the tile is of one color and so may be moved.
bool TileBlender::ComesFromOne(const QRect& part) const
{
    if (IsAligned()) return true;
    const LXTile* const tile = SourceTileOf(part).data();
    return IsAllOf(*tile, part) && TileNature::Of(*tile).isSolid;
}

const LXTilePointer& TileBlender::SourceTileOf(const QRect& part) const
{
    return TileAtPixel(m_Src, part.topLeft() + m_Area.toSource);
}

/// Whether all that the part gets comes from this tile of the source, which may stand in several places.
bool TileBlender::IsAllOf(const LXTile& tile, const QRect& part) const
{
    const QRect source = part.translated(m_Area.toSource);
    return TileAtPixel(m_Src, source.topLeft()).data() == &tile &&
           TileAtPixel(m_Src, source.topRight()).data() == &tile &&
           TileAtPixel(m_Src, source.bottomLeft()).data() == &tile &&
           TileAtPixel(m_Src, source.bottomRight()).data() == &tile;
}

/// Whether all that the part gets comes from the tile that was found blank before.
bool TileBlender::IsKnownBlank(const QRect& part) const
{
    const LXTile* const blank = m_pBlankSource;
    return blank != nullptr && IsAllOf(*blank, part);
}

/// Whether the tile needs no write at all; asked before it is detached, so that blank parts of layers and
/// selections stay shared.
bool TileBlender::LeavesAsIs(int column, int row, const QRect& part)
{
    const bool isShared = m_Dst.TileAt(column, row)->IsShared();
    if (m_Kernel.keepsAtZeroStrength) {
        if (IsKnownBlank(part)) return true;
        const LXTilePointer& source = SourceTileOf(part);
        if ((isShared || source->IsShared()) && HasNoStrength(part)) {
            const bool isWhole = part.width() == TileSide && part.height() == TileSide && IsAligned();
            if (isWhole && source->IsShared() && m_Mask.image == nullptr && m_Strength.CountsAlpha() &&
                !StrengthKernels::HasAlpha(LXTileReader<LXRGBA32i>(*source).Pixels(), TileWalk::TilePixels)) {
                m_pBlankSource = source.data();
            }
            return true;
        }
    }
    if (!m_Kernel.keepsTransparentTarget || !isShared) return false;

    bool isTransparent = true;
    TileWalk::ReadSpans(m_Dst, part, [&](const LXRGBA32i* pixels, int, int, int count) {
        isTransparent = isTransparent && !StrengthKernels::HasAlpha(pixels, count);
    });
    return isTransparent;
}

bool TileBlender::HasNoStrength(const QRect& part) const
{
    bool hasAny = false;
    quint8 strength[TileSide];
    ForEachCell(part, [&](const Cell& cell) {
        if (hasAny) return;
        ForEachRow(cell, [&](const LXRGBA32i* source, const LXRGBA32i* mask, const QPoint&, int count) {
            if (hasAny) return;
            m_Strength.Row(source, mask, count, strength);
            hasAny = std::any_of(strength, strength + count, [](quint8 s) { return s != 0; });
        });
    });
    return !hasAny;
}

/// Shares what came out where the same two tiles met before.
bool TileBlender::TakeComposed(int column, int row, const QRect& part)
{
    if (m_Mask.image != nullptr || !ComesFromOne(part)) return false;
    LXTilePointer& slot = m_Dst.TileAt(column, row);
    const std::lock_guard<std::mutex> guard(m_ComposedMutex);
    const Composed& composed = ComposedOf(part);
    if (composed.after == nullptr || composed.before != slot || composed.part != InTile(part) ||
        composed.source != SourceTileOf(part)) {
        return false;
    }
    slot = composed.after;
    return true;
}

TileBlender::Composed& TileBlender::ComposedOf(const QRect& part)
{
    const bool isWhole = part.width() == TileSide && part.height() == TileSide;
    return isWhole ? m_ComposedTile : m_ComposedPart;
}

void TileBlender::WriteCell(const Cell& cell, LXRGBA32i* tilePixels) const
{
    quint8 strength[TileSide];
    quint8 maskValues[TileSide];
    const bool readsMask = m_Kernel.strength == StrengthRule::AlphaOpacity;
    std::fill_n(maskValues, TileSide, m_Mask.image == nullptr ? quint8(255) : quint8(0));
    ForEachRow(cell, [&](const LXRGBA32i* source, const LXRGBA32i* mask, const QPoint& target, int count) {
        m_Strength.Row(source, mask, count, strength);
        if (readsMask && mask != nullptr) StrengthKernels::Alphas(mask, count, maskValues);
        m_Kernel.run({source, strength, maskValues, tilePixels + TileWalk::IndexInTile(target), count});
    });
}

/// Calls `visit(cell)` for the cells of a part of one target tile.
template <class Visit>
void TileBlender::ForEachCell(const QRect& part, Visit visit) const
{
    Cuts columns;
    Cuts rows;
    const int right = part.right() + 1;
    const int bottom = part.bottom() + 1;
    AddTileCuts(columns, part.left(), right, m_Area.toSource.x());
    AddTileCuts(rows, part.top(), bottom, m_Area.toSource.y());
    if (m_Mask.image != nullptr) {
        AddTileCuts(columns, part.left(), right, m_Area.toMask.x());
        AddTileCuts(rows, part.top(), bottom, m_Area.toMask.y());
        AddCut(columns, m_MaskInside.left(), part.left(), right);
        AddCut(columns, m_MaskInside.right() + 1, part.left(), right);
        AddCut(rows, m_MaskInside.top(), part.top(), bottom);
        AddCut(rows, m_MaskInside.bottom() + 1, part.top(), bottom);
    }
    Finish(columns, part.left(), right);
    Finish(rows, part.top(), bottom);
    for (int j = 0; j + 1 < rows.size(); ++j) {
        for (int i = 0; i + 1 < columns.size(); ++i) {
            const QRect rect(columns[i], rows[j], columns[i + 1] - columns[i], rows[j + 1] - rows[j]);
            visit(Cell{rect, m_Mask.image != nullptr && m_MaskInside.contains(rect)});
        }
    }
}

/// Calls `use(source, mask, target, count)` for the rows of a cell: pointers to the pixels (no mask: null)
/// and where the row begins in the target.
template <class Use>
void TileBlender::ForEachRow(const Cell& cell, Use use) const
{
    const QPoint inSource = cell.rect.topLeft() + m_Area.toSource;
    const LXTileReader<LXRGBA32i> sourceTile(*TileAtPixel(m_Src, inSource));
    const LXRGBA32i* source = sourceTile.Pixels() + TileWalk::IndexInTile(inSource);

    std::optional<LXTileReader<LXRGBA32i>> maskTile;
    const LXRGBA32i* mask = nullptr;
    if (cell.hasMask) {
        const QPoint inMask = cell.rect.topLeft() + m_Area.toMask;
        maskTile.emplace(*TileAtPixel(*m_Mask.image, inMask));
        mask = maskTile->Pixels() + TileWalk::IndexInTile(inMask);
    }
    for (int y = cell.rect.top(); y <= cell.rect.bottom(); ++y) {
        use(source, mask, QPoint(cell.rect.left(), y), cell.rect.width());
        source += TileSide;
        if (mask != nullptr) mask += TileSide;
    }
}
