#pragma once

/// Lock bits of a layer (`LXDocumentInterface::GetLayerLockFlags`) and the masks that callers test.
namespace LayerLocks {
constexpr unsigned int Transparency = 0x1; ///< painting keeps the alpha of every pixel
constexpr unsigned int Pixels = 0x2;       ///< the pixels don't change
constexpr unsigned int Position = 0x4;     ///< the layer doesn't move
constexpr unsigned int All = 0x8;          ///< nothing of the layer changes, its mask included

constexpr unsigned int Every = 0xF;            ///< all bits there are
constexpr unsigned int AgainstPaint = 0xA;     ///< any of them: the layer's pixels can't be painted
constexpr unsigned int AgainstMove = 0xC;      ///< any of them: the layer can't be moved or transformed
constexpr unsigned int AgainstMaskPaint = 0x8; ///< set: the layer's mask can't be painted
} // namespace LayerLocks
