#include "app/GuideDialog.h"

#include "ui_GuideDialog.h"

namespace {
/// The row of the combo box.
constexpr int VerticalRow = 1;
} // namespace

GuideDialog::GuideDialog(const QSize& canvas, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::GuideDialog>()), m_Canvas(canvas)
{
    m_pUi->setupUi(this);
    OfferMiddle();
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pDirectionCmb, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &GuideDialog::OfferMiddle);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &GuideDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &GuideDialog::Reject);
}

GuideDialog::~GuideDialog() = default;

LXGuide GuideDialog::GetGuide() const
{
    const bool isVertical = m_pUi->m_pDirectionCmb->currentIndex() == VerticalRow;
    return {isVertical ? Qt::Vertical : Qt::Horizontal, m_pUi->m_pPositionSpn->value()};
}

void GuideDialog::OfferMiddle()
{
    const bool isVertical = m_pUi->m_pDirectionCmb->currentIndex() == VerticalRow;
    const int extent = isVertical ? m_Canvas.width() : m_Canvas.height();
    m_pUi->m_pPositionSpn->setRange(0, extent);
    m_pUi->m_pPositionSpn->setValue(extent / 2.0);
    m_pUi->m_pPositionSpn->selectAll();
}
