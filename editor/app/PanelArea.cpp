#include "app/PanelArea.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QTabBar>

namespace {
constexpr int PanelWidth = 260;
} // namespace

PanelArea::PanelArea(QMainWindow* window) : QObject(window), m_pWindow(window)
{
    window->setDockNestingEnabled(true);
    window->setTabPosition(Qt::RightDockWidgetArea, QTabWidget::North);
}

QDockWidget* PanelArea::Add(Group group, const QString& name, const QString& title, QWidget* content)
{
    auto* panel = new QDockWidget(title, m_pWindow);
    panel->setObjectName(name);
    panel->setFeatures(QDockWidget::NoDockWidgetFeatures);
    panel->setWidget(content);
    m_Groups[group].append(panel);
    // The tab says the title already.
    if (m_Groups[group].size() > 1) {
        for (QDockWidget* tab : qAsConst(m_Groups[group])) {
            if (!tab->titleBarWidget()) tab->setTitleBarWidget(new QWidget(tab));
        }
    }
    Reset();
    return panel;
}

QList<QDockWidget*> PanelArea::GetPanels() const
{
    QList<QDockWidget*> panels;
    for (const QList<QDockWidget*>& group : m_Groups)
        panels += group;
    return panels;
}

void PanelArea::Show(QDockWidget* panel)
{
    panel->raise();
    QWidget* content = panel->widget();
    QWidget* first = content->nextInFocusChain();
    while (first != content && !(content->isAncestorOf(first) && first->isVisible() && first->isEnabled() &&
                                 (first->focusPolicy() & Qt::TabFocus) != 0)) {
        first = first->nextInFocusChain();
    }
    first->setFocus(Qt::ShortcutFocusReason);
}

void PanelArea::Reset()
{
    const QList<QDockWidget*> panels = GetPanels();
    for (QDockWidget* panel : panels)
        m_pWindow->removeDockWidget(panel);
    for (const QList<QDockWidget*>& group : m_Groups) {
        for (QDockWidget* panel : group) {
            if (panel == group.first()) {
                m_pWindow->addDockWidget(Qt::RightDockWidgetArea, panel);
            } else {
                m_pWindow->tabifyDockWidget(group.first(), panel);
            }
            panel->show();
        }
        if (!group.isEmpty()) group.first()->raise();
    }
    QList<QDockWidget*> column;
    for (const QList<QDockWidget*>& group : m_Groups) {
        if (!group.isEmpty()) column.append(group.first());
    }
    QList<int> heights;
    for (const QDockWidget* panel : qAsConst(column))
        heights.append(panel->sizeHint().height());
    m_pWindow->resizeDocks(column, heights, Qt::Vertical);
    m_pWindow->resizeDocks({column.first()}, {PanelWidth}, Qt::Horizontal);
    NameTabs();
}

void PanelArea::NameTabs()
{
    for (QTabBar* tabs : m_pWindow->findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly))
        tabs->setAccessibleName(tr("Panels"));
}
