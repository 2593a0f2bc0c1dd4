#include "app/ModifySelectionDialog.h"

#include "ui_ModifySelectionDialog.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"

#include <QPushButton>

namespace {
constexpr int FirstRadius = 5;

QString RadiusKey(SelectionModify::Kind kind)
{
    return QStringLiteral("Editor/ModifySelection/Radius%1").arg(int(kind));
}

QString LabelOf(SelectionModify::Kind kind)
{
    switch (kind) {
    case SelectionModify::Kind::Grow: return ModifySelectionDialog::tr("&Grow by:");
    case SelectionModify::Kind::Shrink: return ModifySelectionDialog::tr("&Shrink by:");
    case SelectionModify::Kind::Border: return ModifySelectionDialog::tr("&Width to each side:");
    case SelectionModify::Kind::Feather:
    case SelectionModify::Kind::Smooth: break;
    }
    return ModifySelectionDialog::tr("&Radius:");
}
} // namespace

QString ModifySelectionDialog::TitleOf(SelectionModify::Kind kind)
{
    switch (kind) {
    case SelectionModify::Kind::Grow: return tr("Grow selection");
    case SelectionModify::Kind::Shrink: return tr("Shrink selection");
    case SelectionModify::Kind::Border: return tr("Select border");
    case SelectionModify::Kind::Feather: return tr("Feather selection");
    case SelectionModify::Kind::Smooth: break;
    }
    return tr("Smooth selection");
}

ModifySelectionDialog::ModifySelectionDialog(LXDocumentInterface* document, SelectionModify::Kind kind,
                                             QWidget* parent)
    : LXDialog(parent),
      m_pUi(std::make_unique<Ui::ModifySelectionDialog>()),
      m_pDocument(document),
      m_Kind(kind),
      m_Former(SelectionModify::Of(document)),
      m_Preview(m_Former, QRect(QPoint(0, 0), document->GetDocumentSize()), kind)
{
    m_pUi->setupUi(this);
    setWindowTitle(TitleOf(kind));
    m_pUi->m_pRadiusLbl->setText(LabelOf(kind));
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    OfferRadius();
    // Else Enter would be its own while OK is disabled.
    m_pUi->m_pButtons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);

    connect(&m_Preview, &SelectionPreview::Ready, this, &ModifySelectionDialog::ShowMade);
    connect(&m_Preview, &SelectionPreview::Failed, this, &ModifySelectionDialog::ShowFailure);
    connect(m_pUi->m_pRadiusSpn, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &ModifySelectionDialog::ShowChange);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &ModifySelectionDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &ModifySelectionDialog::Reject);
    ShowChange();
}

ModifySelectionDialog::~ModifySelectionDialog() = default;

void ModifySelectionDialog::OfferRadius()
{
    m_pUi->m_pRadiusSpn->setRange(1, SelectionModify::MaxRadius(m_Kind));
    m_pUi->m_pRadiusSpn->setValue(ZKApplication::GetUserValue(RadiusKey(m_Kind), FirstRadius).toInt());
    m_pUi->m_pRadiusSpn->selectAll();
}

void ModifySelectionDialog::ShowChange()
{
    m_bIsPossible = true;
    m_Preview.Request(m_pUi->m_pRadiusSpn->value());
    UpdateControls();
}

void ModifySelectionDialog::ShowMade(const PlacedMask& made)
{
    if (m_pDocument) m_pDocument->SetSelectionMask(made.mask, made.offset);
    m_pUi->m_pNoteLbl->setText(made.mask.IsNull() ? tr("Nothing stays selected.") : QString());
    UpdateControls();
    if (m_bAcceptsWhenReady) Accept();
}

void ModifySelectionDialog::ShowFailure()
{
    PutBack();
    m_bIsPossible = false;
    m_bAcceptsWhenReady = false;
    m_pUi->m_pNoteLbl->setText(tr("There is not enough memory."));
    UpdateControls();
}

void ModifySelectionDialog::UpdateControls()
{
    QWidget* const bar = m_pUi->m_pBusyBar;
    QWidget* const note = m_pUi->m_pNoteLbl;
    m_pUi->m_pOutcomeStk->setCurrentWidget(m_Preview.IsUnderWay() ? bar : note);
    m_pUi->m_pRadiusSpn->setEnabled(!m_bAcceptsWhenReady);
    m_pUi->m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(m_bIsPossible && !m_bAcceptsWhenReady);
}

void ModifySelectionDialog::PutBack()
{
    if (m_pDocument) m_pDocument->SetSelectionMask(m_Former.mask, m_Former.offset);
}

void ModifySelectionDialog::Accept()
{
    // Enter works without the button.
    if (!m_bIsPossible) return;
    if (m_Preview.IsUnderWay()) {
        m_bAcceptsWhenReady = true;
        UpdateControls();
        return;
    }
    ZKApplication::SetUserValue(RadiusKey(m_Kind), m_pUi->m_pRadiusSpn->value());
    LXDialog::Accept();
}

void ModifySelectionDialog::Reject()
{
    m_Preview.Stop();
    PutBack();
    LXDialog::Reject();
}
