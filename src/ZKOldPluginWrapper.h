#pragma once

#include "plugincore/ZKPlugin.h"

#include <QString>

/// Presents one tool to the editor, which reaches it through the dynamic property "tool".
class ZKOldPluginWrapper : public ZKPlugin
{
    Q_OBJECT

public:
    /// @param tool  owned from then on; may be null.
    ZKOldPluginWrapper(QObject* tool, const QString& name, const QString& id);

    /// Deletes the tool.
    ~ZKOldPluginWrapper() override;

    int GetType() override;
    QString GetName() override;
    QObject* GetParent() override;
    QString GetId() override;

private:
    QObject* m_pTool;
    QString m_Name;
    QString m_Id;
};
