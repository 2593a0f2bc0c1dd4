#include "core/ZKBrushToolManager.h"
#include "core/ZKCMSManager.h"
#include "core/ZKIBrushTool.h"
#include "support/TestRegistry.h"

#include <QPainterPath>
#include <QTest>

namespace {
class Brush : public ZKIBrushTool
{
public:
    void StrokePath(const QPainterPath& path) override { stroked = path; }

    QString GetName() const override { return "Brush"; }

    ZKBrushSettings GetSettings() const override { return settings; }

    void SetSettings(const ZKBrushSettings& changed) override { settings = changed; }

    QPainterPath stroked;
    ZKBrushSettings settings;
};
} // namespace

/// The lists of the program: its color profiles, its brush tools.
class TestCoreLists : public QObject
{
    Q_OBJECT

private slots:
    void theWorkingProfileIsOneOfTheList();
    void anUnknownProfileIsSRgb();
    void aBrushToolIsFoundByItsNumber();
    void theNewestToolOfANumberCounts();
    void aToolLeavesEveryNumber();
    void theNumbersOfBrushToolsAreListed();
};

void TestCoreLists::theWorkingProfileIsOneOfTheList()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QVERIFY(manager->GetWorkingRGBIndex() >= 0);
    QVERIFY(manager->GetWorkingRGBIndex() < manager->GetRGBProfileCount());
    QCOMPARE(manager->GetRGBProfile(manager->GetWorkingRGBIndex()), ZKCMSProfile::SRGB());
}

void TestCoreLists::anUnknownProfileIsSRgb()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QCOMPARE(manager->GetRGBProfile(-1), ZKCMSProfile::SRGB());
    QCOMPARE(manager->GetRGBProfile(manager->GetRGBProfileCount()), ZKCMSProfile::SRGB());
}

void TestCoreLists::aBrushToolIsFoundByItsNumber()
{
    Brush brush;
    QVERIFY(!ZKBrushToolManager::GetPlugin(3));
    ZKBrushToolManager::Register(3, &brush);
    QVERIFY(!ZKBrushToolManager::GetPlugin(4));
    QPainterPath path;
    path.addRect(1, 2, 3, 4);
    ZKBrushToolManager::GetPlugin(3)->StrokePath(path);
    QCOMPARE(brush.stroked, path);
    ZKBrushToolManager::Unregister(&brush);
    QVERIFY(!ZKBrushToolManager::GetPlugin(3));
}

void TestCoreLists::theNewestToolOfANumberCounts()
{
    Brush first;
    Brush second;
    ZKBrushToolManager::Register(3, &first);
    ZKBrushToolManager::Register(3, &second);
    QCOMPARE(ZKBrushToolManager::GetPlugin(3), &second);
    ZKBrushToolManager::Unregister(&first);
    QCOMPARE(ZKBrushToolManager::GetPlugin(3), &second);
    ZKBrushToolManager::Unregister(&second);
}

void TestCoreLists::aToolLeavesEveryNumber()
{
    Brush brush;
    Brush other;
    ZKBrushToolManager::Register(1, &brush);
    ZKBrushToolManager::Register(2, &other);
    ZKBrushToolManager::Register(3, &brush);
    ZKBrushToolManager::Unregister(&brush);
    QVERIFY(!ZKBrushToolManager::GetPlugin(1));
    QCOMPARE(ZKBrushToolManager::GetPlugin(2), &other);
    QVERIFY(!ZKBrushToolManager::GetPlugin(3));
    ZKBrushToolManager::Unregister(&other);
}

void TestCoreLists::theNumbersOfBrushToolsAreListed()
{
    QCOMPARE(ZKBrushToolManager::GetToolIds(), QList<int>());
    Brush brush;
    Brush other;
    ZKBrushToolManager::Register(7, &brush);
    ZKBrushToolManager::Register(2, &other);
    QCOMPARE(ZKBrushToolManager::GetToolIds(), QList<int>({2, 7}));
    ZKBrushToolManager::Unregister(&other);
    QCOMPARE(ZKBrushToolManager::GetToolIds(), QList<int>({7}));
    ZKBrushToolManager::Unregister(&brush);
    QCOMPARE(ZKBrushToolManager::GetToolIds(), QList<int>());
}

ZK_REGISTER_TEST(tst_corelists, TestCoreLists)
#include "tst_corelists.moc"
