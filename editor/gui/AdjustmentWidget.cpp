#include "gui/AdjustmentWidget.h"

#include "ui_AdjustmentWidget.h"

#include <QLayout>
#include <QSignalBlocker>

#include <array>

namespace {
/// A slider counts the middle in hundredths.
constexpr double GammaSteps = 100;
} // namespace

class AdjustmentWidgetPrivate
{
public:
    explicit AdjustmentWidgetPrivate(AdjustmentWidget* widget);

    struct Row
    {
        QSlider* slider;
        QSpinBox* spin;
        int LXAdjustment::*value;
    };

    std::array<Row, 9> Rows() const;
    void Join(const Row& row);
    void JoinGamma();
    void FollowSlider(QSlider* slider);
    void Want(const LXAdjustment& adjustment, const QSlider* slider);

    AdjustmentWidget* m_pWidget;
    Ui::AdjustmentWidget m_Ui;
    LXAdjustment m_Shown;
};

AdjustmentWidgetPrivate::AdjustmentWidgetPrivate(AdjustmentWidget* widget) : m_pWidget(widget)
{
    m_Ui.setupUi(widget);
    for (const Row& row : Rows())
        Join(row);
    JoinGamma();
}

std::array<AdjustmentWidgetPrivate::Row, 9> AdjustmentWidgetPrivate::Rows() const
{
    return {{{m_Ui.m_pBrightnessSldr, m_Ui.m_pBrightnessSpn, &LXAdjustment::brightness},
             {m_Ui.m_pContrastSldr, m_Ui.m_pContrastSpn, &LXAdjustment::contrast},
             {m_Ui.m_pInBlackSldr, m_Ui.m_pInBlackSpn, &LXAdjustment::inBlack},
             {m_Ui.m_pInWhiteSldr, m_Ui.m_pInWhiteSpn, &LXAdjustment::inWhite},
             {m_Ui.m_pOutBlackSldr, m_Ui.m_pOutBlackSpn, &LXAdjustment::outBlack},
             {m_Ui.m_pOutWhiteSldr, m_Ui.m_pOutWhiteSpn, &LXAdjustment::outWhite},
             {m_Ui.m_pHueSldr, m_Ui.m_pHueSpn, &LXAdjustment::hue},
             {m_Ui.m_pSaturationSldr, m_Ui.m_pSaturationSpn, &LXAdjustment::saturation},
             {m_Ui.m_pLightnessSldr, m_Ui.m_pLightnessSpn, &LXAdjustment::lightness}}};
}

void AdjustmentWidgetPrivate::Join(const Row& row)
{
    const auto want = [this, row](int value) {
        LXAdjustment adjustment = m_Shown;
        adjustment.*row.value = value;
        Want(adjustment, row.slider);
    };
    QObject::connect(row.slider, &QSlider::valueChanged, m_pWidget, want);
    QObject::connect(row.spin, qOverload<int>(&QSpinBox::valueChanged), m_pWidget, want);
    FollowSlider(row.slider);
}

void AdjustmentWidgetPrivate::JoinGamma()
{
    const auto want = [this](double gamma) {
        LXAdjustment adjustment = m_Shown;
        adjustment.gamma = gamma;
        Want(adjustment, m_Ui.m_pGammaSldr);
    };
    QObject::connect(m_Ui.m_pGammaSldr, &QSlider::valueChanged, m_pWidget,
                     [want](int hundredths) { want(hundredths / GammaSteps); });
    QObject::connect(m_Ui.m_pGammaSpn, qOverload<double>(&QDoubleSpinBox::valueChanged), m_pWidget, want);
    FollowSlider(m_Ui.m_pGammaSldr);
}

void AdjustmentWidgetPrivate::FollowSlider(QSlider* slider)
{
    QObject::connect(slider, &QSlider::sliderReleased, m_pWidget, &AdjustmentWidget::Finished);
}

void AdjustmentWidgetPrivate::Want(const LXAdjustment& adjustment, const QSlider* slider)
{
    m_pWidget->SetAdjustment(adjustment);
    emit m_pWidget->Changed(adjustment);
    if (!slider->isSliderDown()) emit m_pWidget->Finished();
}

AdjustmentWidget::AdjustmentWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<AdjustmentWidgetPrivate>(this))
{
    SetAdjustment(LXAdjustment());
}

AdjustmentWidget::~AdjustmentWidget() = default;

void AdjustmentWidget::SetAdjustment(const LXAdjustment& adjustment)
{
    const Ui::AdjustmentWidget& ui = m_pPrivate->m_Ui;
    m_pPrivate->m_Shown = adjustment;
    for (const AdjustmentWidgetPrivate::Row& row : m_pPrivate->Rows()) {
        const QSignalBlocker sliderBlocker(row.slider);
        const QSignalBlocker spinBlocker(row.spin);
        row.slider->setValue(adjustment.*row.value);
        row.spin->setValue(adjustment.*row.value);
    }
    const QSignalBlocker sliderBlocker(ui.m_pGammaSldr);
    const QSignalBlocker spinBlocker(ui.m_pGammaSpn);
    ui.m_pGammaSldr->setValue(qRound(adjustment.gamma * GammaSteps));
    ui.m_pGammaSpn->setValue(adjustment.gamma);

    // The pages stand in the order of the kinds; one that isn't shown takes no room.
    ui.m_pPages->setCurrentIndex(adjustment.kind);
    for (int i = 0; i < ui.m_pPages->count(); ++i) {
        const bool isShown = i == ui.m_pPages->currentIndex();
        ui.m_pPages->widget(i)->setSizePolicy(QSizePolicy::Preferred,
                                              isShown ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    }
    // Pages that are hidden don't tell of a new policy.
    ui.m_pPages->layout()->invalidate();
    ui.m_pPages->updateGeometry();
}
