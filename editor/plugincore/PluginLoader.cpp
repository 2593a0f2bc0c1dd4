#include "plugincore/PluginLoader.h"

#include "plugincore/IWidgetTool.h"
#include "plugincore/ZKIPluginContainer.h"
#include "plugincore/ZKPlugin.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>
#include <QVariant>

namespace {
const QLatin1String PluginIid("basic tools/1.0");
} // namespace

PluginLoader::~PluginLoader()
{
    Shutdown();
}

bool PluginLoader::Load(const QString& path)
{
    const QString shownPath = QDir::toNativeSeparators(path);
    if (m_pInstance) return Fail(tr("A plug-in is loaded already."));
    if (!QDir::isAbsolutePath(path)) return Fail(tr("\"%1\" is not an absolute path.").arg(shownPath));
    if (!QFileInfo(path).isFile()) return Fail(tr("The plug-in \"%1\" is missing.").arg(shownPath));

    QPluginLoader loader(path);
    const QString iid = loader.metaData().value(QLatin1String("IID")).toString();
    if (iid.isEmpty()) return Fail(tr("\"%1\" is not a plug-in for this program.").arg(shownPath));
    if (iid != PluginIid) {
        return Fail(tr("\"%1\" is a plug-in of the kind \"%2\", not \"%3\".").arg(shownPath, iid, PluginIid));
    }

    m_pInstance = loader.instance();
    if (!m_pInstance) {
        return Fail(tr("The plug-in \"%1\" can't be loaded: %2").arg(shownPath, loader.errorString()));
    }
    m_pContainer = qobject_cast<ZKIPluginContainer*>(m_pInstance);
    if (!m_pContainer) {
        delete m_pInstance;
        return Fail(tr("The plug-in \"%1\" can't be started by this program.").arg(shownPath));
    }

    m_ErrorText.clear();
    m_pContainer->Init();
    return true;
}

void PluginLoader::SetMainWidget(QWidget* widget)
{
    for (ZKPlugin* plugin : GetPlugins()) {
        QObject* tool = plugin->property("tool").value<QObject*>();
        if (auto* widgetTool = qobject_cast<IWidgetTool*>(tool)) widgetTool->SetMainWidget(widget);
    }
}

QList<ZKPlugin*> PluginLoader::GetPlugins() const
{
    return m_pInstance ? m_pContainer->GetPlugins() : QList<ZKPlugin*>();
}

void PluginLoader::Shutdown()
{
    if (!m_pInstance) return;

    m_pContainer->Shutdown();
    delete m_pInstance;
    m_pContainer = nullptr;
}

bool PluginLoader::Fail(const QString& text)
{
    m_ErrorText = text;
    return false;
}
