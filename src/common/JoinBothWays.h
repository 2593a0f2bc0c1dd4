#pragma once

class QAbstractButton;
class QAbstractSlider;
class QComboBox;
class QSpinBox;

/// Join two controls of one value, so that they always agree whichever of them is used. They agree from the
/// first change on; both must have the same range. Main thread only.
void JoinBothWays(QSpinBox* first, QSpinBox* second);
void JoinBothWays(QSpinBox* first, QAbstractSlider* second);
void JoinBothWays(QComboBox* first, QComboBox* second);
void JoinBothWays(QAbstractButton* first, QAbstractButton* second);
