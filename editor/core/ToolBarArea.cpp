#include "core/ToolBarArea.h"

#include "core/ZKToolBarManager_p.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>

ToolBarArea::ToolBarArea(QWidget* parent) : QScrollArea(parent)
{
    setObjectName("ToolBarArea");
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(Height);

    auto* strip = new QWidget;
    m_pPicture = new QLabel(strip);
    m_pPicture->setFixedSize(PictureSize, PictureSize);
    m_pPicture->setAlignment(Qt::AlignCenter);
    m_pPicture->hide();
    m_pLayout = new QHBoxLayout(strip);
    m_pLayout->setContentsMargins(8, 0, 8, 0);
    m_pLayout->setSpacing(8);
    m_pLayout->addWidget(m_pPicture);
    m_pLayout->addStretch(1);
    setWidget(strip);
    setWidgetResizable(true);
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

void ToolBarArea::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - (turn.x() != 0 ? turn.x() : turn.y()));
    event->accept();
}
