#include "core/ToolBarArea.h"

#include "core/ZKToolBarManager_p.h"
#include "utils/ZKIconHelper.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

namespace {
constexpr int MoreWidth = 20;
} // namespace

ToolBarArea::ToolBarArea(QWidget* parent) : QScrollArea(parent), m_pMore(new QToolButton(this))
{
    setObjectName("ToolBarArea");
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(Height);

    auto* strip = new QWidget;
    strip->setObjectName("optionStrip");
    m_pPicture = new QLabel(strip);
    m_pPicture->setFixedSize(PictureSize, PictureSize);
    m_pPicture->setAlignment(Qt::AlignCenter);
    m_pPicture->hide();
    m_pLayout = new QHBoxLayout(strip);
    m_pLayout->setContentsMargins(8, 0, 8 + MoreWidth, 0); // the end stays clear of the button
    m_pLayout->setSpacing(8);
    m_pLayout->addWidget(m_pPicture);
    m_pLayout->addStretch(1);
    setWidget(strip);
    setWidgetResizable(true);

    m_pMore->setObjectName("moreOptions");
    m_pMore->setIcon(ZKIconHelper::DisabledIcon(QString("theme:chevron_right.png")));
    m_pMore->setToolTip(tr("More options"));
    m_pMore->setAccessibleName(tr("More options"));
    m_pMore->setFocusPolicy(Qt::NoFocus); // Tab reaches the controls beyond by itself
    m_pMore->hide();
    connect(m_pMore, &QToolButton::clicked, this, &ToolBarArea::ShowMore);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &ToolBarArea::PlaceMore);
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

    ShowPicture();
    if (bar != nullptr) bar->show();
    horizontalScrollBar()->setValue(0);
    emit ShownBarChanged(bar);
}

void ToolBarArea::ShowPicture()
{
    const bool hasPicture = !m_pShown.isNull() && m_pShown->testAttribute(Qt::WA_SetWindowIcon);
    if (hasPicture) {
        const QIcon picture = m_pShown->windowIcon();
        m_pPicture->setPixmap(picture.pixmap(window()->windowHandle(), {PictureSize, PictureSize}));
    }
    m_pPicture->setVisible(hasPicture);
}

void ToolBarArea::ShowMore()
{
    QScrollBar* position = horizontalScrollBar();
    const bool isAtTheEnd = position->value() == position->maximum();
    position->setValue(isAtTheEnd ? 0 : position->value() + position->pageStep() / 2);
}

void ToolBarArea::PlaceMore()
{
    m_pMore->setVisible(horizontalScrollBar()->maximum() > 0);
    m_pMore->setGeometry(width() - MoreWidth, 0, MoreWidth, height());
    m_pMore->raise();
}

void ToolBarArea::changeEvent(QEvent* event)
{
    QScrollArea::changeEvent(event);
    const bool isNewLook = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
    if (isNewLook && m_pPicture) ShowPicture();
}

void ToolBarArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    PlaceMore();
}

void ToolBarArea::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - (turn.x() != 0 ? turn.x() : turn.y()));
    event->accept();
}
