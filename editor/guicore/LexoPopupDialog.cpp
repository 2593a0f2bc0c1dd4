#include "guicore/LexoPopupDialog.h"

#include "guicore/PopupFrame.h"
#include "guicore/PopupPlacement.h"

#include <QPointer>
#include <QShowEvent>

class LexoPopupDialogPrivate
{
public:
    QPointer<QWidget> m_pAnchor;
};

LexoPopupDialog::LexoPopupDialog(QWidget* parent)
    : LXDialog(parent, Qt::Popup | Qt::FramelessWindowHint),
      m_pPrivate(std::make_unique<LexoPopupDialogPrivate>())
{
    setContentsMargins(PopupFrame::Margins);
    // Else the press that closes it would also work what lies under the pointer, which is mostly the control
    // that it belongs to, and open it again.
    setAttribute(Qt::WA_NoMouseReplay);
}

LexoPopupDialog::~LexoPopupDialog() = default;

void LexoPopupDialog::SetAnchor(QWidget* anchor)
{
    m_pPrivate->m_pAnchor = anchor;
}

void LexoPopupDialog::showEvent(QShowEvent* event)
{
    // The size is known only now: show() has just fitted it to the contents.
    if (!event->spontaneous() && m_pPrivate->m_pAnchor)
        move(PopupPlacement::Beside(*m_pPrivate->m_pAnchor, size()));
    LXDialog::showEvent(event);
}

void LexoPopupDialog::paintEvent(QPaintEvent*)
{
    PopupFrame::Paint(*this);
}
