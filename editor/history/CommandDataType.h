#pragma once

/// What LexoCommandData::GetDataType answers; written into history files, so numbers are never used again.
namespace CommandDataType {
constexpr int LayerPaint = 1;
constexpr int LayerMaskPaint = 2;
constexpr int Selection = 3;
constexpr int MWSelection = 4;
constexpr int SelectionMove = 5;
constexpr int Move = 6;
constexpr int LayerCreate = 7;
constexpr int LayerProperty = 8;
constexpr int LayerOrder = 9;
constexpr int LayerContent = 10;
constexpr int LayerMaskContent = 11;
constexpr int Transform = 12;
constexpr int TransformSelection = 13;
constexpr int ImageSize = 14;
constexpr int Crop = 15;
constexpr int Guides = 16;
constexpr int TransformPath = 20;
constexpr int ChangeSubpath = 21;
constexpr int RemoveSubpath = 22;
constexpr int InsertSubpath = 23;
constexpr int RemovePath = 24;
constexpr int InsertPath = 25;
constexpr int PathProperty = 26;
constexpr int PathOrder = 27;
constexpr int ColorSamplesAdd = 28;
constexpr int ColorSamplesRemove = 29;
constexpr int ColorSamplesMove = 30;
constexpr int ColorSamplesClear = 31;
constexpr int SelectionChannel = 40;
constexpr int TextLayerChange = 41;
constexpr int NewLayer = 42;
constexpr int NewTextLayer = 43;
constexpr int Adjustment = 44;
constexpr int AssignProfile = 50;
constexpr int ConvertProfile = 51;
} // namespace CommandDataType
