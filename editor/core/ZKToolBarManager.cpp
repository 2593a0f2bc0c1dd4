#include "core/ZKToolBarManager.h"

#include "core/ToolBarArea.h"
#include "core/ZKToolBarManager_p.h"

ZKToolBarManagerPrivate& ZKToolBarManagerPrivate::Get()
{
    return *ZKToolBarManager::GetInstance()->m_pPrivate;
}

void ZKToolBarManagerPrivate::Add(QWidget* bar, const QString& title)
{
    if (bar == nullptr) return;
    bar->setAccessibleName(title);
    m_Bars.removeAll(nullptr);
    if (m_Bars.contains(bar)) return;
    m_Bars.append(bar);
    if (m_pArea.isNull()) {
        bar->hide();
    } else {
        m_pArea->TakeIn(bar);
    }
}

void ZKToolBarManagerPrivate::Activate(QWidget* bar)
{
    if (bar != nullptr && !m_Bars.contains(bar)) Add(bar, bar->windowTitle());
    m_pActive = bar;
    if (!m_pArea.isNull()) m_pArea->Show(bar);
}

void ZKToolBarManagerPrivate::SetArea(ToolBarArea* area)
{
    m_pArea = area;
    m_Bars.removeAll(nullptr);
    for (const QPointer<QWidget>& bar : qAsConst(m_Bars)) {
        area->TakeIn(bar);
    }
    area->Show(m_pActive);
}

ZKToolBarManager::ZKToolBarManager() : m_pPrivate(std::make_unique<ZKToolBarManagerPrivate>()) {}

ZKToolBarManager::~ZKToolBarManager() = default;

ZKToolBarManager* ZKToolBarManager::GetInstance()
{
    static ZKToolBarManager manager;
    return &manager;
}

void ZKToolBarManager::Add(QWidget* bar, const QString& title)
{
    ZKToolBarManagerPrivate::Get().Add(bar, title);
}

void ZKToolBarManager::Activate(QWidget* bar)
{
    ZKToolBarManagerPrivate::Get().Activate(bar);
}
