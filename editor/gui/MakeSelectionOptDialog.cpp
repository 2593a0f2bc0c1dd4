#include "gui/MakeSelectionOptDialog.h"

#include "ui_MakeSelectionOptDialog.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/ZKDocumentView.h"

namespace {
const LXDocumentInterface* DocumentAround(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (const auto* view = qobject_cast<const ZKDocumentView*>(widget))
            return view->GetModel()->GetDocument();
    }
    return DocumentOf(LXDocumentManager::GetDocumentArea()->GetActiveWindow());
}
} // namespace

class MakeSelectionOptDialogPrivate
{
public:
    Ui::MakeSelectionOptDialog m_Ui;
};

MakeSelectionOptDialog::MakeSelectionOptDialog(QWidget* parent)
    : LXDialog(parent), m_pPrivate(std::make_unique<MakeSelectionOptDialogPrivate>())
{
    Ui::MakeSelectionOptDialog& ui = m_pPrivate->m_Ui;
    ui.setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(ui.m_pButtons, &QDialogButtonBox::accepted, this, &MakeSelectionOptDialog::Accept);
    connect(ui.m_pButtons, &QDialogButtonBox::rejected, this, &MakeSelectionOptDialog::Reject);

    const LXDocumentInterface* document = DocumentAround(parent);
    if (document && document->HasSelection()) return;
    for (QRadioButton* button : {ui.m_pAddRBtn, ui.m_pSubtractRBtn, ui.m_pIntersectRBtn}) {
        button->setEnabled(false);
        button->setToolTip(tr("Nothing is selected yet"));
    }
}

MakeSelectionOptDialog::~MakeSelectionOptDialog() = default;

int MakeSelectionOptDialog::GetSelectionOption() const
{
    const Ui::MakeSelectionOptDialog& ui = m_pPrivate->m_Ui;
    if (ui.m_pAddRBtn->isChecked()) return Add;
    if (ui.m_pSubtractRBtn->isChecked()) return Subtract;
    return ui.m_pIntersectRBtn->isChecked() ? Intersect : New;
}
