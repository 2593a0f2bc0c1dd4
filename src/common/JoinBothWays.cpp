#include "common/JoinBothWays.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QSpinBox>

namespace {
constexpr auto SpinChanged = qOverload<int>(&QSpinBox::valueChanged);
constexpr auto ComboChanged = qOverload<int>(&QComboBox::currentIndexChanged);
} // namespace

void JoinBothWays(QSpinBox* first, QSpinBox* second)
{
    QObject::connect(first, SpinChanged, second, &QSpinBox::setValue);
    QObject::connect(second, SpinChanged, first, &QSpinBox::setValue);
}

void JoinBothWays(QSpinBox* first, QAbstractSlider* second)
{
    QObject::connect(first, SpinChanged, second, &QAbstractSlider::setValue);
    QObject::connect(second, &QAbstractSlider::valueChanged, first, &QSpinBox::setValue);
}

void JoinBothWays(QComboBox* first, QComboBox* second)
{
    QObject::connect(first, ComboChanged, second, &QComboBox::setCurrentIndex);
    QObject::connect(second, ComboChanged, first, &QComboBox::setCurrentIndex);
}

void JoinBothWays(QAbstractButton* first, QAbstractButton* second)
{
    QObject::connect(first, &QAbstractButton::toggled, second, &QAbstractButton::setChecked);
    QObject::connect(second, &QAbstractButton::toggled, first, &QAbstractButton::setChecked);
}
