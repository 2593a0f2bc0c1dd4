#pragma once

/// What LexoCommandData::GetDataType answers; written into history files, so numbers are never used again.
namespace CommandDataType {
constexpr int LayerPaint = 1;
constexpr int LayerMaskPaint = 2;
} // namespace CommandDataType
