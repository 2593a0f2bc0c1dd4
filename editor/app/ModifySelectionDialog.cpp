#include "app/ModifySelectionDialog.h"

#include "ui_ModifySelectionDialog.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"

#include <QPushButton>

#include <new>

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
      m_Former(SelectionModify::Of(document))
{
    m_pUi->setupUi(this);
    setWindowTitle(TitleOf(kind));
    m_pUi->m_pRadiusLbl->setText(LabelOf(kind));
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    OfferRadius();

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
    if (!m_pDocument) return;

    QString note;
    bool isPossible = true;
    try {
        const QRect canvas(QPoint(0, 0), m_pDocument->GetDocumentSize());
        const PlacedMask changed =
            SelectionModify::Modified(m_Former, canvas, m_Kind, m_pUi->m_pRadiusSpn->value());
        m_pDocument->SetSelectionMask(changed.mask, changed.offset);
        if (changed.mask.IsNull()) note = tr("Nothing stays selected.");
    } catch (const std::bad_alloc&) {
        PutBack();
        isPossible = false;
        note = tr("There is not enough memory.");
    }
    m_pUi->m_pNoteLbl->setText(note);
    m_pUi->m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(isPossible);
}

void ModifySelectionDialog::PutBack()
{
    if (m_pDocument) m_pDocument->SetSelectionMask(m_Former.mask, m_Former.offset);
}

void ModifySelectionDialog::Accept()
{
    // Enter works without the button.
    if (!m_pUi->m_pButtons->button(QDialogButtonBox::Ok)->isEnabled()) return;
    ZKApplication::SetUserValue(RadiusKey(m_Kind), m_pUi->m_pRadiusSpn->value());
    LXDialog::Accept();
}

void ModifySelectionDialog::Reject()
{
    PutBack();
    LXDialog::Reject();
}
