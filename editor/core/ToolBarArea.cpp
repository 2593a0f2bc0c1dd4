#include "core/ToolBarArea.h"

#include "core/ZKToolBarManager_p.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>

ToolBarArea::ToolBarArea(QWidget* parent)
    : QWidget(parent), m_pLayout(new QHBoxLayout(this)), m_pPicture(new QLabel(this))
{
    setObjectName("ToolBarArea");
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(Height);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    // Without a constraint the widest bar does not become the least width of the window.
    m_pLayout->setSizeConstraint(QLayout::SetNoConstraint);
    m_pLayout->setContentsMargins(8, 0, 8, 0);
    m_pLayout->setSpacing(8);
    m_pPicture->setFixedSize(PictureSize, PictureSize);
    m_pPicture->setAlignment(Qt::AlignCenter);
    m_pPicture->hide();
    m_pLayout->addWidget(m_pPicture);
    m_pLayout->addStretch(1);
    ZKToolBarManagerPrivate::Get().SetArea(this);
}

void ToolBarArea::TakeIn(QWidget* bar)
{
    bar->hide();
    m_pLayout->insertWidget(m_pLayout->count() - 1, bar);
    bar->hide();
}

void ToolBarArea::Show(QWidget* bar)
{
    if (m_pShown == bar) return;
    if (!m_pShown.isNull()) m_pShown->hide();
    m_pShown = bar;

    const bool hasPicture = bar != nullptr && bar->testAttribute(Qt::WA_SetWindowIcon);
    if (hasPicture)
        m_pPicture->setPixmap(bar->windowIcon().pixmap(windowHandle(), {PictureSize, PictureSize}));
    m_pPicture->setVisible(hasPicture);
    if (bar != nullptr) bar->show();
    emit ShownBarChanged(bar);
}
