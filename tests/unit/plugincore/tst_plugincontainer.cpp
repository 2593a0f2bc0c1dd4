#include "plugincore/ZKPlugin.h"
#include "plugincore/ZKPluginContainer.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {
class EmptyPlugin : public ZKPlugin
{
public:
    int GetType() override { return 0; }

    QString GetName() override { return {}; }

    QObject* GetParent() override { return nullptr; }

    QString GetId() override { return {}; }
};
} // namespace

class TestPluginContainer : public QObject
{
    Q_OBJECT

private slots:
    void unitsStandInTheOrderOfRegistration();
    void theListIsACopy();
    void unregisteringDoesNotDelete();
    void aDeletedUnitLeavesByItself();
    void aUnitThatWasUnregisteredMayDieLater();
    void nullAndRepetitionAreIgnored();
    void everyChangeIsTold();
    void aContainerMayDieBeforeItsUnits();
};

void TestPluginContainer::unitsStandInTheOrderOfRegistration()
{
    EmptyPlugin first;
    EmptyPlugin second;
    EmptyPlugin third;
    ZKPluginContainer container;
    container.RegisterPlugin(&second);
    container.RegisterPlugin(&first);
    container.RegisterPlugin(&third);
    QCOMPARE(container.GetPlugins(), QList<ZKPlugin*>({&second, &first, &third}));
}

void TestPluginContainer::theListIsACopy()
{
    EmptyPlugin plugin;
    ZKPluginContainer container;
    container.RegisterPlugin(&plugin);
    QList<ZKPlugin*> plugins = container.GetPlugins();
    container.UnregisterPlugin(&plugin);
    QCOMPARE(plugins.size(), 1);
    QVERIFY(container.GetPlugins().isEmpty());
}

void TestPluginContainer::unregisteringDoesNotDelete()
{
    QPointer<ZKPlugin> plugin = new EmptyPlugin;
    ZKPluginContainer container;
    container.RegisterPlugin(plugin);
    container.UnregisterPlugin(plugin);
    QVERIFY(plugin);
    delete plugin;
}

void TestPluginContainer::aDeletedUnitLeavesByItself()
{
    EmptyPlugin stays;
    ZKPluginContainer container;
    auto goes = std::make_unique<EmptyPlugin>();
    container.RegisterPlugin(goes.get());
    container.RegisterPlugin(&stays);
    goes.reset();
    QCOMPARE(container.GetPlugins(), QList<ZKPlugin*>({&stays}));
}

void TestPluginContainer::aUnitThatWasUnregisteredMayDieLater()
{
    ZKPluginContainer container;
    {
        EmptyPlugin plugin;
        container.RegisterPlugin(&plugin);
        container.UnregisterPlugin(&plugin);
    }
    QVERIFY(container.GetPlugins().isEmpty());
}

void TestPluginContainer::nullAndRepetitionAreIgnored()
{
    EmptyPlugin plugin;
    ZKPluginContainer container;
    container.RegisterPlugin(nullptr);
    container.RegisterPlugin(&plugin);
    container.RegisterPlugin(&plugin);
    QCOMPARE(container.GetPlugins().size(), 1);
    container.UnregisterPlugin(nullptr);
    container.UnregisterPlugin(&plugin);
    container.UnregisterPlugin(&plugin);
    QVERIFY(container.GetPlugins().isEmpty());
}

void TestPluginContainer::everyChangeIsTold()
{
    EmptyPlugin plugin;
    ZKPluginContainer container;
    QList<ZKPlugin*> registered;
    QList<ZKPlugin*> unregistered;
    connect(&container, &ZKPluginContainer::PluginRegistered, this,
            [&](ZKPlugin* told) { registered.append(told); });
    connect(&container, &ZKPluginContainer::PluginUnregistered, this,
            [&](ZKPlugin* told) { unregistered.append(told); });
    container.RegisterPlugin(&plugin);
    container.RegisterPlugin(&plugin);
    container.UnregisterPlugin(&plugin);
    container.UnregisterPlugin(&plugin);
    QCOMPARE(registered, QList<ZKPlugin*>({&plugin}));
    QCOMPARE(unregistered, QList<ZKPlugin*>({&plugin}));
}

void TestPluginContainer::aContainerMayDieBeforeItsUnits()
{
    EmptyPlugin plugin;
    {
        ZKPluginContainer container;
        container.RegisterPlugin(&plugin);
    }
    // Its death must reach nobody.
}

ZK_REGISTER_TEST(tst_plugincontainer, TestPluginContainer)

#include "tst_plugincontainer.moc"
