#pragma once

/// What a layer consists of, as `LXDocumentInterface::GetLayerKind` answers.
namespace LayerKind {
constexpr int Raster = 0;     ///< pixels; the only kind that pixel tools change
constexpr int Text = 1;       ///< letters, rendered into pixels
constexpr int Adjustment = 2; ///< changes the colors of what lies below
} // namespace LayerKind
