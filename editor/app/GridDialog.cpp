#include "app/GridDialog.h"

#include "ui_GridDialog.h"

#include "gui/ViewAids.h"

GridDialog::GridDialog(int step, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::GridDialog>())
{
    m_pUi->setupUi(this);
    m_pUi->m_pStepSpn->setRange(ViewAids::LeastGridStep, ViewAids::MostGridStep);
    m_pUi->m_pStepSpn->setValue(step);
    m_pUi->m_pStepSpn->selectAll();
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &GridDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &GridDialog::Reject);
}

GridDialog::~GridDialog() = default;

int GridDialog::GetStep() const
{
    return m_pUi->m_pStepSpn->value();
}
