#pragma once

class QSlider;
class QSpinBox;

/// A slider and a spin box that say the same, 1 to the spin box's maximum, where a step of the slider is a
/// part of the value: small values, of which each counts, have as much room as large ones.
namespace CurvedSlider {
/// Gives the slider its range and the place of the spin box's value. Both must live in one dialog.
void Connect(QSlider* slider, QSpinBox* spin);

/// 0 to Steps.
constexpr int Steps = 1000;
int ValueAt(int step, int maximum);
int StepOf(int value, int maximum);
} // namespace CurvedSlider
