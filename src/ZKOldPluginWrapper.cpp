#include "ZKOldPluginWrapper.h"

#include <QVariant>

namespace {
constexpr int ToolType = 1;
} // namespace

ZKOldPluginWrapper::ZKOldPluginWrapper(QObject* tool, const QString& name, const QString& id)
    : m_pTool(tool), m_Name(name), m_Id(id)
{
    setProperty("tool", QVariant::fromValue(tool));
}

ZKOldPluginWrapper::~ZKOldPluginWrapper()
{
    delete m_pTool;
}

int ZKOldPluginWrapper::GetType()
{
    return ToolType;
}

QString ZKOldPluginWrapper::GetName()
{
    return m_Name;
}

QObject* ZKOldPluginWrapper::GetParent()
{
    return nullptr;
}

QString ZKOldPluginWrapper::GetId()
{
    return m_Id;
}
