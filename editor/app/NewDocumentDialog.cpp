#include "app/NewDocumentDialog.h"

#include "ui_NewDocumentDialog.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"

namespace {
const QLatin1String WidthKey("Editor/NewWidth");
const QLatin1String HeightKey("Editor/NewHeight");
const QLatin1String BackgroundKey("Editor/NewBackground");
constexpr int DefaultWidth = 1920;
constexpr int DefaultHeight = 1080;

/// The rows of the combo box.
enum Background
{
    White,
    BackgroundColor,
    Transparent,
};
} // namespace

NewDocumentDialog::NewDocumentDialog(QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::NewDocumentDialog>())
{
    m_pUi->setupUi(this);
    for (QSpinBox* size : {m_pUi->m_pWidthSpn, m_pUi->m_pHeightSpn}) {
        size->setRange(1, LXDocumentInterface::MAX_DOC_DIMENSION);
    }
    m_pUi->m_pWidthSpn->setValue(ZKApplication::GetUserValue(WidthKey, DefaultWidth).toInt());
    m_pUi->m_pHeightSpn->setValue(ZKApplication::GetUserValue(HeightKey, DefaultHeight).toInt());
    m_pUi->m_pBackgroundCmb->setCurrentIndex(ZKApplication::GetUserValue(BackgroundKey, White).toInt());
    m_pUi->m_pWidthSpn->selectAll();
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &NewDocumentDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &NewDocumentDialog::Reject);
}

NewDocumentDialog::~NewDocumentDialog() = default;

QSize NewDocumentDialog::GetSize() const
{
    return {m_pUi->m_pWidthSpn->value(), m_pUi->m_pHeightSpn->value()};
}

QColor NewDocumentDialog::GetBackground() const
{
    switch (m_pUi->m_pBackgroundCmb->currentIndex()) {
    case BackgroundColor: return ZKApplication::GetBackground();
    case Transparent: return Qt::transparent;
    default: return Qt::white;
    }
}

void NewDocumentDialog::Accept()
{
    ZKApplication::SetUserValue(WidthKey, m_pUi->m_pWidthSpn->value());
    ZKApplication::SetUserValue(HeightKey, m_pUi->m_pHeightSpn->value());
    ZKApplication::SetUserValue(BackgroundKey, m_pUi->m_pBackgroundCmb->currentIndex());
    LXDialog::Accept();
}
