#include "gui/CurvedSlider.h"

#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <cmath>

int CurvedSlider::ValueAt(int step, int maximum)
{
    return qRound(std::pow(static_cast<double>(maximum), static_cast<double>(step) / Steps));
}

int CurvedSlider::StepOf(int value, int maximum)
{
    return qRound(std::log(static_cast<double>(value)) / std::log(static_cast<double>(maximum)) * Steps);
}

void CurvedSlider::Connect(QSlider* slider, QSpinBox* spin)
{
    const auto follow = [slider, spin](int value) {
        // The person's hand is on the spin box: the slider doesn't answer with its own rounding.
        const QSignalBlocker blocker(slider);
        slider->setValue(StepOf(value, spin->maximum()));
    };
    slider->setRange(0, Steps);
    slider->setSingleStep(Steps / 100);
    slider->setPageStep(Steps / 10);
    follow(spin->value());
    QObject::connect(spin, qOverload<int>(&QSpinBox::valueChanged), slider, follow);
    QObject::connect(slider, &QSlider::valueChanged, spin, [spin, slider](int step) {
        const QSignalBlocker blocker(slider);
        spin->setValue(ValueAt(step, spin->maximum()));
        slider->setValue(step);
    });
}
