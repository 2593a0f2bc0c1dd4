#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "plugincore/IWidgetTool.h"
#include "plugincore/ZKIPluginContainer.h"
#include "plugincore/ZKPlugin.h"
#include "plugincore/ZKPluginContainer.h"
#include "support/TestRegistry.h"

#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QVariant>

/// The plug-in as its file alone: read by Qt's loader, known by nothing but the contract.
class TestBasicTools : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theMetadataNameThePlugin();
    void thePluginHasItsTwoExports();
    void theObjectIsAContainerUnderBothItsFaces();
    void aSecondQueryGivesTheSameObject();
    void aDeletedObjectIsReplaced();
    void nothingIsRegisteredBeforeInit();
    void initRegistersTheToolsInOrder();
    void shutdownUnregistersInOrderAndDeletesTheTools();
    void shutdownWithoutInitIsHarmless();
    void settingsAreLoadedWhenAllToolsStand();
    void settingsAreSavedAtShutdown();
    void shutdownSavesBeforeItUnregistersAndDeletesAfter();
    void everyToolIsReachedThroughItsUnit();

private:
    QObject* Instance() { return m_pLoader->instance(); }

    ZKIPluginContainer* Plugin() { return qobject_cast<ZKIPluginContainer*>(Instance()); }

    std::unique_ptr<QPluginLoader> m_pLoader;
};

namespace {
// Registrations as they happen, by the names of the units.
void RecordRegistrations(QObject* instance, QStringList* log)
{
    auto* container = qobject_cast<ZKPluginContainer*>(instance);
    QObject::connect(container, &ZKPluginContainer::PluginRegistered,
                     [log](ZKPlugin* plugin) { log->append("+" + plugin->GetName()); });
    QObject::connect(container, &ZKPluginContainer::PluginUnregistered,
                     [log](ZKPlugin* plugin) { log->append("-" + plugin->GetName()); });
}

const QStringList Names{"Fillcan",   "Fill menu",  "Selection menu", "Color range",
                        "Move tool", "Magic wand", "Clipboard"};
const QStringList Ids{"{B0000000-0000-0000-0000-000000000010}", "{B0000000-0000-0000-0000-000000000018}",
                      "{B0000000-0000-0000-0000-000000000023}", "{B0000000-0000-0000-0000-000000000024}",
                      "{B0000000-0000-0000-0000-000000000025}", "{B0000000-0000-0000-0000-000000000026}",
                      "{B0000000-0000-0000-0000-000000000027}"};
} // namespace

void TestBasicTools::init()
{
    ZKApplication::SetUserValue("FillCanTool/Active", false);
    m_pLoader = std::make_unique<QPluginLoader>(ZK_PLUGIN_FILE);
}

void TestBasicTools::cleanup()
{
    // The code stays mapped; a fresh object serves the next case.
    delete m_pLoader->instance();
    m_pLoader.reset();
}

void TestBasicTools::theMetadataNameThePlugin()
{
    const QJsonObject metaData = m_pLoader->metaData();
    QCOMPARE(metaData.value("IID").toString(), QString("basic tools/1.0"));
    QCOMPARE(metaData.value("className").toString(), QString("ZKBasicTools"));
    QCOMPARE(metaData.value("debug").toBool(true), false);
    QVERIFY(metaData.value("MetaData").toObject().isEmpty());
}

void TestBasicTools::thePluginHasItsTwoExports()
{
    QLibrary library(ZK_PLUGIN_FILE);
    QVERIFY(library.resolve("qt_plugin_instance"));
    QVERIFY(library.resolve("qt_plugin_query_metadata"));
}

void TestBasicTools::theObjectIsAContainerUnderBothItsFaces()
{
    QVERIFY2(Instance(), qPrintable(m_pLoader->errorString()));
    QCOMPARE(Instance()->metaObject()->className(), "ZKBasicTools");
    QVERIFY(qobject_cast<ZKPluginContainer*>(Instance()));
    QVERIFY(Plugin());
    QVERIFY(Instance()->qt_metacast("ZKIPluginContainer"));
}

void TestBasicTools::aSecondQueryGivesTheSameObject()
{
    const auto query =
        reinterpret_cast<QObject* (*)()>(QLibrary::resolve(ZK_PLUGIN_FILE, "qt_plugin_instance"));
    QVERIFY(query);
    QCOMPARE(query(), query());
    QCOMPARE(Instance(), query());
}

void TestBasicTools::aDeletedObjectIsReplaced()
{
    const QSignalSpy gone(Instance(), &QObject::destroyed);
    delete Instance();
    QCOMPARE(gone.count(), 1);
    QVERIFY(Instance());
    QCOMPARE(Instance()->metaObject()->className(), "ZKBasicTools");
}

void TestBasicTools::nothingIsRegisteredBeforeInit()
{
    QVERIFY(Plugin()->GetPlugins().isEmpty());
}

void TestBasicTools::initRegistersTheToolsInOrder()
{
    QStringList log;
    RecordRegistrations(Instance(), &log);
    Plugin()->Init();

    QStringList registered;
    QStringList names;
    QStringList ids;
    for (ZKPlugin* plugin : Plugin()->GetPlugins()) {
        registered.append("+" + plugin->GetName());
        names.append(plugin->GetName());
        ids.append(plugin->GetId());
        QCOMPARE(plugin->GetType(), 1);
        QVERIFY(!plugin->GetParent());
    }
    QCOMPARE(names, Names);
    QCOMPARE(ids, Ids);
    QCOMPARE(log, registered);
    Plugin()->Shutdown();
}

void TestBasicTools::shutdownUnregistersInOrderAndDeletesTheTools()
{
    Plugin()->Init();
    QList<QPointer<QObject>> owned;
    QStringList unregistered;
    for (ZKPlugin* plugin : Plugin()->GetPlugins()) {
        owned << plugin << plugin->property("tool").value<QObject*>();
        unregistered.append("-" + plugin->GetName());
    }
    QStringList log;
    RecordRegistrations(Instance(), &log);
    Plugin()->Shutdown();
    QCOMPARE(log, unregistered);
    QVERIFY(Plugin()->GetPlugins().isEmpty());
    for (const QPointer<QObject>& object : owned) {
        QVERIFY(!object);
    }
}

void TestBasicTools::shutdownWithoutInitIsHarmless()
{
    Plugin()->Shutdown();
    QVERIFY(Plugin()->GetPlugins().isEmpty());
}

void TestBasicTools::settingsAreLoadedWhenAllToolsStand()
{
    ZKApplication::SetUserValue("FillCanTool/Active", true);
    Plugin()->Init();
    QVERIFY(ZKToolGroupManager::GetExplicitAction());
    Plugin()->Shutdown();
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestBasicTools::settingsAreSavedAtShutdown()
{
    ZKApplication::SetUserValue("FillCanTool/Active", true);
    Plugin()->Init();
    ZKToolGroupManager::Activate(nullptr);
    Plugin()->Shutdown();
    QCOMPARE(ZKApplication::GetUserValue("FillCanTool/Active", true).toBool(), false);
}

void TestBasicTools::shutdownSavesBeforeItUnregistersAndDeletesAfter()
{
    ZKApplication::SetUserValue("FillCanTool/Active", true);
    Plugin()->Init();
    ZKToolGroupManager::Activate(nullptr);
    QStringList log;
    auto* container = qobject_cast<ZKPluginContainer*>(Instance());
    connect(container, &ZKPluginContainer::PluginUnregistered, this, [&log](ZKPlugin* plugin) {
        const bool isSaved = !ZKApplication::GetUserValue("FillCanTool/Active", true).toBool();
        log << (isSaved ? "saved" : "not saved") << "unregistered " + plugin->GetName();
        connect(plugin->property("tool").value<QObject*>(), &QObject::destroyed,
                [&log] { log << "tool deleted"; });
    });
    Plugin()->Shutdown();
    QStringList expected;
    for (const QString& name : Names) {
        expected << "saved"
                 << "unregistered " + name << "tool deleted";
    }
    QCOMPARE(log, expected);
}

void TestBasicTools::everyToolIsReachedThroughItsUnit()
{
    Plugin()->Init();
    QObject* fillCan = Plugin()->GetPlugins().first()->property("tool").value<QObject*>();
    QVERIFY(fillCan->qt_metacast("ITool/1.0"));
    QVERIFY(fillCan->qt_metacast("IDocumentViewTool/1.0"));
    QVERIFY(fillCan->qt_metacast("IDocumentViewState/1.0"));
    QVERIFY(fillCan->qt_metacast("IMainMenuActionList/1.0"));
    QVERIFY(qobject_cast<IWidgetTool*>(fillCan));
    QObject* wand =
        Plugin()->GetPlugins().at(Names.indexOf("Magic wand"))->property("tool").value<QObject*>();
    QVERIFY(wand->qt_metacast("ITool/1.0"));
    QVERIFY(wand->qt_metacast("MagicWandTool"));
    QObject* clipboard = Plugin()->GetPlugins().last()->property("tool").value<QObject*>();
    QVERIFY(clipboard->qt_metacast("IClipboardInterface/1.0"));
    QVERIFY(clipboard->qt_metacast("IDocumentState/1.0"));
    QVERIFY(!clipboard->qt_metacast("ITool/1.0"));
    Plugin()->Shutdown();
}

ZK_REGISTER_TEST(tst_basictools, TestBasicTools)

#include "tst_basictools.moc"
