#include "app/SaveSelectionDialog.h"

#include "ui_SaveSelectionDialog.h"

#include <QLineEdit>
#include <QPushButton>

namespace {
QString NewName(const QStringList& names)
{
    QString name;
    int number = 1;
    do {
        name = SaveSelectionDialog::tr("Selection %1").arg(number++);
    } while (names.contains(name));
    return name;
}
} // namespace

SaveSelectionDialog::SaveSelectionDialog(const QStringList& names, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::SaveSelectionDialog>()), m_Names(names)
{
    m_pUi->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_pUi->m_pNameCmb->addItems(names);
    m_pUi->m_pNameCmb->setEditText(NewName(names));
    m_pUi->m_pNameCmb->lineEdit()->selectAll();
    // Else Enter would be its own while OK is disabled.
    m_pUi->m_pButtons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);

    connect(m_pUi->m_pNameCmb, &QComboBox::editTextChanged, this, &SaveSelectionDialog::ShowOutcome);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &SaveSelectionDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &SaveSelectionDialog::Reject);
    ShowOutcome();
}

SaveSelectionDialog::~SaveSelectionDialog() = default;

QString SaveSelectionDialog::GetName() const
{
    return m_pUi->m_pNameCmb->currentText().trimmed();
}

void SaveSelectionDialog::ShowOutcome()
{
    const bool isThere = m_Names.contains(GetName());
    m_pUi->m_pNoteLbl->setText(isThere ? tr("Replaces the one of this name.") : QString());
    m_pUi->m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(!GetName().isEmpty());
}

void SaveSelectionDialog::Accept()
{
    // Enter works without the button.
    if (!GetName().isEmpty()) LXDialog::Accept();
}
