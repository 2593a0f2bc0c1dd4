#include "gui/LXToolWidgetManager.h"

#include "gui/SingleWidget.h"

#include <QLabel>
#include <QScrollArea>
#include <QStackedLayout>

LXToolWidgetManager::LXToolWidgetManager(QWidget* parent)
    : QWidget(parent),
      m_pPages(new QStackedLayout(this)),
      m_pNoPanelLbl(new QLabel(this)),
      m_pPanelArea(new QScrollArea(this))
{
    SingleWidget<LXToolWidgetManager>::Register(this);

    m_pNoPanelLbl->setText(tr("This tool has no settings."));
    m_pNoPanelLbl->setObjectName(QStringLiteral("noPanelLbl"));
    m_pNoPanelLbl->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_pNoPanelLbl->setMargin(16);
    m_pNoPanelLbl->setWordWrap(true);

    m_pPanelArea->setWidgetResizable(true);
    m_pPanelArea->setFrameShape(QFrame::NoFrame);
    m_pPanelArea->setFocusPolicy(Qt::NoFocus);

    m_pPages->addWidget(m_pNoPanelLbl);
    m_pPages->addWidget(m_pPanelArea);
}

LXToolWidgetManager::~LXToolWidgetManager()
{
    // The panels are their tools' own.
    if (QWidget* shown = m_pPanelArea->takeWidget()) shown->setParent(nullptr);
}

LXToolWidgetManager* LXToolWidgetManager::instance()
{
    return SingleWidget<LXToolWidgetManager>::Get();
}

void LXToolWidgetManager::AddWidget(QWidget* widget)
{
    if (!widget || widget == GetCurrentWidget()) return;

    if (!m_Widgets.removeOne(widget)) connect(widget, &QObject::destroyed, this, [=] { Forget(widget); });
    m_Widgets.append(widget);
    ShowLast();
}

void LXToolWidgetManager::RemoveWidget(QWidget* widget)
{
    if (!m_Widgets.removeOne(widget)) return;

    disconnect(widget, &QObject::destroyed, this, nullptr);
    ShowLast();
}

QWidget* LXToolWidgetManager::GetCurrentWidget() const
{
    return m_pPanelArea->widget();
}

QSize LXToolWidgetManager::sizeHint() const
{
    return {260, 240};
}

void LXToolWidgetManager::Forget(QWidget* widget)
{
    m_Widgets.removeOne(widget);
    // It is still in its place at this moment.
    QMetaObject::invokeMethod(this, &LXToolWidgetManager::ShowLast, Qt::QueuedConnection);
}

void LXToolWidgetManager::ShowLast()
{
    QWidget* const last = m_Widgets.isEmpty() ? nullptr : m_Widgets.last();
    if (last && last == GetCurrentWidget()) return;

    if (QWidget* shown = m_pPanelArea->takeWidget()) {
        shown->hide();
        shown->setParent(nullptr);
    }
    if (last) {
        m_pPanelArea->setWidget(last);
        last->show();
    }
    m_pPages->setCurrentWidget(last ? static_cast<QWidget*>(m_pPanelArea) : m_pNoPanelLbl);
    emit CurrentWidgetChanged(last);
}
