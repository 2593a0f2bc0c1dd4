#pragma once

/// What the person has turned on to help with drags, for the whole program; kept in the settings. All but the
/// grid's step are off at first. Main thread only.
namespace ViewAids {
constexpr int LeastGridStep = 2;
constexpr int MostGridStep = 10000;

/// Whether what is dragged snaps to lines of the picture.
bool IsSnapOn();
void SetSnap(bool on);

/// Whether the way of a drag is told beside the pointer.
bool IsOffsetTold();
void TellOffset(bool on);

bool IsGridShown();
void ShowGrid(bool on);

/// Document pixels between two lines of the grid, 32 at first.
int GridStep();
/// Brought to the nearer end when out of range.
void SetGridStep(int step);
} // namespace ViewAids
