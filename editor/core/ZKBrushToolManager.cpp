#include "core/ZKBrushToolManager.h"

#include "core/ZKIBrushTool.h"

#include <map>

namespace {
std::map<int, ZKIBrushTool*>& Tools()
{
    static std::map<int, ZKIBrushTool*> tools;
    return tools;
}
} // namespace

ZKIBrushTool::~ZKIBrushTool() = default;

ZKIBrushTool* ZKBrushToolManager::GetPlugin(int toolId)
{
    const auto found = Tools().find(toolId);
    return found == Tools().end() ? nullptr : found->second;
}

QList<int> ZKBrushToolManager::GetToolIds()
{
    QList<int> ids;
    for (const auto& tool : Tools())
        ids.append(tool.first);
    return ids;
}

void ZKBrushToolManager::Register(int toolId, ZKIBrushTool* tool)
{
    Tools()[toolId] = tool;
}

void ZKBrushToolManager::Unregister(ZKIBrushTool* tool)
{
    for (auto entry = Tools().begin(); entry != Tools().end();)
        entry = entry->second == tool ? Tools().erase(entry) : std::next(entry);
}
