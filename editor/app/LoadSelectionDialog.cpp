#include "app/LoadSelectionDialog.h"

#include "ui_LoadSelectionDialog.h"

#include <array>

namespace {
/// The operations in the order of the combo box.
constexpr std::array<SelectionCommandData::LogicalOp, 4> Operations{
    {SelectionCommandData::Replace, SelectionCommandData::Unite, SelectionCommandData::Subtract,
     SelectionCommandData::Intersect}};
} // namespace

LoadSelectionDialog::LoadSelectionDialog(const QStringList& names, bool hasSelection, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::LoadSelectionDialog>())
{
    m_pUi->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_pUi->m_pNameCmb->addItems(names);
    m_pUi->m_pModeCmb->setEnabled(hasSelection);

    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &LoadSelectionDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &LoadSelectionDialog::Reject);
}

LoadSelectionDialog::~LoadSelectionDialog() = default;

int LoadSelectionDialog::GetRow() const
{
    return m_pUi->m_pNameCmb->currentIndex();
}

SelectionCommandData::LogicalOp LoadSelectionDialog::GetOperation() const
{
    return Operations.at(static_cast<std::size_t>(qMax(0, m_pUi->m_pModeCmb->currentIndex())));
}
