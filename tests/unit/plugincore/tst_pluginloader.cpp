#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "plugincore/PluginLoader.h"
#include "plugincore/ZKPlugin.h"
#include "support/TestRegistry.h"

#include <QLibraryInfo>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QVariant>

class TestPluginLoader : public QObject
{
    Q_OBJECT

private slots:
    void thePluginIsLoadedAndStarted();
    void theMainWidgetReachesTheTools();
    void shutdownTakesEverythingBack();
    void thePluginCanBeLoadedAgain();
    void aSecondLoadIsRefused();
    void aMissingFileIsNamed();
    void aRelativePathIsRefused();
    void aFileThatIsNoPluginIsNamed();
    void anotherPluginIsRefused();
    void nothingLoadedIsHarmless();
};

void TestPluginLoader::thePluginIsLoadedAndStarted()
{
    PluginLoader loader;
    QVERIFY2(loader.Load(ZK_PLUGIN_FILE), qPrintable(loader.GetErrorText()));
    QVERIFY(loader.GetErrorText().isEmpty());
    QVERIFY(!loader.GetPlugins().isEmpty());
    for (ZKPlugin* plugin : loader.GetPlugins()) {
        QVERIFY(plugin->property("tool").value<QObject*>());
    }
}

void TestPluginLoader::theMainWidgetReachesTheTools()
{
    PluginLoader loader;
    QVERIFY(loader.Load(ZK_PLUGIN_FILE));
    QWidget widget;
    loader.SetMainWidget(&widget);
    loader.SetMainWidget(nullptr);
}

void TestPluginLoader::shutdownTakesEverythingBack()
{
    PluginLoader loader;
    QVERIFY(loader.Load(ZK_PLUGIN_FILE));
    QPointer<ZKPlugin> plugin = loader.GetPlugins().first();
    QPointer<QObject> tool = plugin->property("tool").value<QObject*>();
    QVERIFY(!LToolBoxWidget::GetInstance()->findChildren<LToolBoxButton*>().isEmpty());

    loader.Shutdown();
    QVERIFY(!plugin);
    QVERIFY(!tool);
    QVERIFY(loader.GetPlugins().isEmpty());
    QVERIFY(LToolBoxWidget::GetInstance()->findChildren<LToolBoxButton*>().isEmpty());
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestPluginLoader::thePluginCanBeLoadedAgain()
{
    PluginLoader loader;
    QVERIFY(loader.Load(ZK_PLUGIN_FILE));
    const int count = loader.GetPlugins().size();
    loader.Shutdown();
    QVERIFY2(loader.Load(ZK_PLUGIN_FILE), qPrintable(loader.GetErrorText()));
    QCOMPARE(loader.GetPlugins().size(), count);
}

void TestPluginLoader::aSecondLoadIsRefused()
{
    PluginLoader loader;
    QVERIFY(loader.Load(ZK_PLUGIN_FILE));
    QVERIFY(!loader.Load(ZK_PLUGIN_FILE));
    QCOMPARE(loader.GetErrorText(), QString("A plug-in is loaded already."));
    QVERIFY(!loader.GetPlugins().isEmpty());
}

void TestPluginLoader::aMissingFileIsNamed()
{
    PluginLoader loader;
    QVERIFY(!loader.Load("/nowhere/libbasictools.so"));
    QVERIFY(loader.GetErrorText().contains("\"/nowhere/libbasictools.so\" is missing"));
}

void TestPluginLoader::aRelativePathIsRefused()
{
    PluginLoader loader;
    QVERIFY(!loader.Load("libbasictools.so"));
    QVERIFY(loader.GetErrorText().contains("not an absolute path"));
}

void TestPluginLoader::aFileThatIsNoPluginIsNamed()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("notaplugin.so");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no plug-in");
    file.close();

    PluginLoader loader;
    QVERIFY(!loader.Load(path));
    QVERIFY(loader.GetErrorText().contains("notaplugin.so\" is not a plug-in"));
}

void TestPluginLoader::anotherPluginIsRefused()
{
    const QString path = QLibraryInfo::location(QLibraryInfo::PluginsPath) + "/platforms/libqoffscreen.so";
    PluginLoader loader;
    QVERIFY(!loader.Load(path));
    QVERIFY(loader.GetErrorText().contains("not \"basic tools/1.0\""));
    QVERIFY(loader.GetPlugins().isEmpty());
}

void TestPluginLoader::nothingLoadedIsHarmless()
{
    PluginLoader loader;
    loader.SetMainWidget(nullptr);
    loader.Shutdown();
    loader.Shutdown();
    QVERIFY(loader.GetPlugins().isEmpty());
}

ZK_REGISTER_TEST(tst_pluginloader, TestPluginLoader)

#include "tst_pluginloader.moc"
