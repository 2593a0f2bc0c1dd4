#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <functional>

namespace {
/// Writes what it hears, with the states at that moment, into the log of the test.
class Tool : public ZKActivateAction
{
public:
    Tool(const QString& name, QStringList& log) : ZKActivateAction(nullptr), m_Name(name), m_Log(log)
    {
        connect(this, &Tool::Toggled, this, [this](bool on) { Write("Toggled", on); });
        connect(this, &Tool::ImplicitToggled, this, [this](bool on) { Write("ImplicitToggled", on); });
        ZKToolGroupManager::Add(this);
    }

    bool IsAllowChange() override
    {
        m_Log.append(m_Name + " asked");
        if (m_WhenAsked) m_WhenAsked();
        return m_Allows;
    }

    bool m_Allows = true;
    std::function<void()> m_WhenAsked;

private:
    void Write(const QString& what, bool on)
    {
        m_Log.append(QString("%1 %2(%3) [%4%5]")
                         .arg(m_Name, what)
                         .arg(on)
                         .arg(IsChecked() ? "explicit" : "", IsImplicitlyChecked() ? " implicit" : ""));
    }

    QString m_Name;
    QStringList& m_Log;
};
} // namespace

class TestToolGroup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void firstActivationSetsBothStatesBeforeToggled();
    void outgoingToolHearsFirst();
    void refusedChangeChangesNothing();
    void activatingTheChosenToolAsksNobody();
    void uncheckedToolIsNotAsked();
    void nullMeansNoTool();
    void temporaryToolGivesTheTurnBack();
    void choosingAnotherToolStopsTheTemporaryOne();
    void choosingTheTemporaryToolKeepsItRunning();
    void choosingTheChosenToolAgainStopsTheTemporaryOne();
    void setCheckedDoesNotAsk();
    void setCheckedFalseClearsBothStates();
    void uncheckingLeavesTheTemporaryToolRunning();
    void repeatedAddIsHarmless();
    void addingACheckedActionChoosesIt();
    void activateTakesAnActionIn();
    void actionOutsideTheGroupChangesAlone();
    void destroyedChosenToolLeaves();
    void destroyedTemporaryToolGivesTheTurnBack();
    void nestedChangeWins();
    void toolThatGoesOffAtOnceSendsNothingStale();
    void toolMayDieWhenItIsToggled();
    void changeWhileAskedWins();
    void incomingToolMayDieWhileTheOutgoingOneHears();
    void sameStateSendsNothing();

private:
    QStringList TakeLog()
    {
        QStringList log;
        log.swap(m_Log);
        return log;
    }

    QStringList m_Log;
};

void TestToolGroup::cleanup()
{
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), nullptr);
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), nullptr);
    m_Log.clear();
}

void TestToolGroup::firstActivationSetsBothStatesBeforeToggled()
{
    Tool a("a", m_Log);
    QVERIFY(ZKToolGroupManager::Activate(&a));
    QCOMPARE(TakeLog(),
             QStringList({"a Toggled(1) [explicit implicit]", "a ImplicitToggled(1) [explicit implicit]"}));
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &a);
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), &a);
}

void TestToolGroup::outgoingToolHearsFirst()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(&b));
    QCOMPARE(TakeLog(),
             QStringList({"a asked", "a Toggled(0) []", "a ImplicitToggled(0) []",
                          "b Toggled(1) [explicit implicit]", "b ImplicitToggled(1) [explicit implicit]"}));
}

void TestToolGroup::refusedChangeChangesNothing()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    a.m_Allows = false;
    QVERIFY(!ZKToolGroupManager::Activate(&b));
    QVERIFY(!ZKToolGroupManager::Activate(nullptr));
    QCOMPARE(TakeLog(), QStringList({"a asked", "a asked"}));
    QVERIFY(a.IsChecked() && a.IsImplicitlyChecked());
    QVERIFY(!b.IsChecked() && !b.IsImplicitlyChecked());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &a);
}

void TestToolGroup::activatingTheChosenToolAsksNobody()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    a.m_Allows = false;
    QVERIFY(ZKToolGroupManager::Activate(&a));
    QCOMPARE(TakeLog(), QStringList());
}

void TestToolGroup::uncheckedToolIsNotAsked()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    ZKToolGroupManager::Activate(&a);
    a.SetChecked(false);
    a.m_Allows = false;
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(&b));
    QVERIFY(!m_Log.contains("a asked"));
}

void TestToolGroup::nullMeansNoTool()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(nullptr));
    QCOMPARE(TakeLog(), QStringList({"a asked", "a Toggled(0) []", "a ImplicitToggled(0) []"}));
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), nullptr);
    QVERIFY(ZKToolGroupManager::Activate(nullptr));
    QCOMPARE(TakeLog(), QStringList());
}

void TestToolGroup::temporaryToolGivesTheTurnBack()
{
    Tool a("a", m_Log);
    Tool hand("hand", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();

    hand.SetImplicitChecked(true);
    QCOMPARE(TakeLog(),
             QStringList({"a ImplicitToggled(0) [explicit]", "hand ImplicitToggled(1) [ implicit]"}));
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &a);
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), &hand);

    hand.SetImplicitChecked(false);
    QCOMPARE(TakeLog(),
             QStringList({"hand ImplicitToggled(0) []", "a ImplicitToggled(1) [explicit implicit]"}));
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), &a);
}

void TestToolGroup::choosingAnotherToolStopsTheTemporaryOne()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    Tool hand("hand", m_Log);
    ZKToolGroupManager::Activate(&a);
    hand.SetImplicitChecked(true);
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(&b));
    QCOMPARE(TakeLog(),
             QStringList({"a asked", "hand ImplicitToggled(0) []", "a Toggled(0) []",
                          "b Toggled(1) [explicit implicit]", "b ImplicitToggled(1) [explicit implicit]"}));
}

void TestToolGroup::choosingTheTemporaryToolKeepsItRunning()
{
    Tool a("a", m_Log);
    Tool hand("hand", m_Log);
    ZKToolGroupManager::Activate(&a);
    hand.SetImplicitChecked(true);
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(&hand));
    QCOMPARE(TakeLog(), QStringList({"a asked", "a Toggled(0) []", "hand Toggled(1) [explicit implicit]"}));
}

void TestToolGroup::choosingTheChosenToolAgainStopsTheTemporaryOne()
{
    Tool a("a", m_Log);
    Tool hand("hand", m_Log);
    ZKToolGroupManager::Activate(&a);
    hand.SetImplicitChecked(true);
    TakeLog();
    QVERIFY(ZKToolGroupManager::Activate(&a));
    QCOMPARE(TakeLog(),
             QStringList({"hand ImplicitToggled(0) []", "a ImplicitToggled(1) [explicit implicit]"}));
}

void TestToolGroup::setCheckedDoesNotAsk()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    a.SetChecked(true);
    a.m_Allows = false;
    TakeLog();
    b.SetChecked(true);
    QCOMPARE(TakeLog(),
             QStringList({"a Toggled(0) []", "a ImplicitToggled(0) []", "b Toggled(1) [explicit implicit]",
                          "b ImplicitToggled(1) [explicit implicit]"}));
}

void TestToolGroup::setCheckedFalseClearsBothStates()
{
    Tool a("a", m_Log);
    a.SetChecked(true);
    TakeLog();
    a.SetChecked(false);
    QCOMPARE(TakeLog(), QStringList({"a Toggled(0) []", "a ImplicitToggled(0) []"}));
}

void TestToolGroup::uncheckingLeavesTheTemporaryToolRunning()
{
    Tool a("a", m_Log);
    Tool hand("hand", m_Log);
    a.SetChecked(true);
    hand.SetImplicitChecked(true);
    TakeLog();
    a.SetChecked(false);
    QCOMPARE(TakeLog(), QStringList({"a Toggled(0) []"}));
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), &hand);
    hand.SetChecked(false);
    QCOMPARE(TakeLog(), QStringList({"hand ImplicitToggled(0) []"}));
}

void TestToolGroup::repeatedAddIsHarmless()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    ZKToolGroupManager::Add(&a);
    ZKToolGroupManager::Add(nullptr);
    QCOMPARE(TakeLog(), QStringList());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &a);
}

void TestToolGroup::addingACheckedActionChoosesIt()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    ZKActivateAction late(nullptr);
    late.SetChecked(true);
    TakeLog();
    ZKToolGroupManager::Add(&late);
    QCOMPARE(TakeLog(), QStringList({"a Toggled(0) []", "a ImplicitToggled(0) []"}));
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &late);
}

void TestToolGroup::activateTakesAnActionIn()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    {
        ZKActivateAction stranger(nullptr);
        QVERIFY(ZKToolGroupManager::Activate(&stranger));
        QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &stranger);
        QVERIFY(!a.IsChecked());
    }
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), nullptr);
}

void TestToolGroup::actionOutsideTheGroupChangesAlone()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    ZKActivateAction stranger(nullptr);
    stranger.SetChecked(true);
    QVERIFY(stranger.IsChecked() && stranger.IsImplicitlyChecked());
    stranger.SetImplicitChecked(false);
    QVERIFY(stranger.IsChecked() && !stranger.IsImplicitlyChecked());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &a);
}

void TestToolGroup::destroyedChosenToolLeaves()
{
    {
        Tool a("a", m_Log);
        ZKToolGroupManager::Activate(&a);
        TakeLog();
    }
    QCOMPARE(TakeLog(), QStringList());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), nullptr);
}

void TestToolGroup::destroyedTemporaryToolGivesTheTurnBack()
{
    Tool a("a", m_Log);
    ZKToolGroupManager::Activate(&a);
    {
        Tool hand("hand", m_Log);
        hand.SetImplicitChecked(true);
        TakeLog();
    }
    QCOMPARE(TakeLog(), QStringList({"a ImplicitToggled(1) [explicit implicit]"}));
    QCOMPARE(ZKToolGroupManager::GetImplicitAction(), &a);
}

void TestToolGroup::nestedChangeWins()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    Tool c("c", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    connect(&a, &Tool::Toggled, &c, [&c] { ZKToolGroupManager::Activate(&c); });
    QVERIFY(!ZKToolGroupManager::Activate(&b));
    QVERIFY(c.IsChecked() && c.IsImplicitlyChecked());
    QVERIFY(!a.IsChecked() && !b.IsChecked());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &c);
    QVERIFY(m_Log.filter("b ").isEmpty());
}

void TestToolGroup::toolThatGoesOffAtOnceSendsNothingStale()
{
    Tool a("a", m_Log);
    connect(&a, &Tool::Toggled, &a, [&a](bool on) {
        if (on) a.SetChecked(false);
    });
    QVERIFY(!ZKToolGroupManager::Activate(&a));
    QCOMPARE(TakeLog(),
             QStringList({"a Toggled(1) [explicit implicit]", "a Toggled(0) []", "a ImplicitToggled(0) []"}));
}

void TestToolGroup::toolMayDieWhenItIsToggled()
{
    auto a = std::make_unique<Tool>("a", m_Log);
    connect(a.get(), &Tool::Toggled, this, [&a] { a.reset(); });
    ZKToolGroupManager::Activate(a.get());
    QCOMPARE(TakeLog(), QStringList({"a Toggled(1) [explicit implicit]"}));
}

void TestToolGroup::changeWhileAskedWins()
{
    Tool a("a", m_Log);
    Tool b("b", m_Log);
    Tool c("c", m_Log);
    ZKToolGroupManager::Activate(&a);
    a.m_WhenAsked = [&c] { c.SetChecked(true); };
    QVERIFY(!ZKToolGroupManager::Activate(&b));
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &c);
    QVERIFY(!b.IsChecked());
}

void TestToolGroup::incomingToolMayDieWhileTheOutgoingOneHears()
{
    Tool a("a", m_Log);
    auto b = std::make_unique<Tool>("b", m_Log);
    ZKToolGroupManager::Activate(&a);
    TakeLog();
    connect(&a, &Tool::ImplicitToggled, this, [&b] { b.reset(); });
    QVERIFY(!ZKToolGroupManager::Activate(b.get()));
    QCOMPARE(TakeLog(), QStringList({"a asked", "a Toggled(0) []", "a ImplicitToggled(0) []"}));
}

void TestToolGroup::sameStateSendsNothing()
{
    Tool a("a", m_Log);
    a.SetChecked(false);
    a.SetImplicitChecked(false);
    QCOMPARE(TakeLog(), QStringList());
    a.SetChecked(true);
    TakeLog();
    a.SetChecked(true);
    a.SetImplicitChecked(true);
    QCOMPARE(TakeLog(), QStringList());
}

ZK_REGISTER_TEST(tst_toolgroup, TestToolGroup)
#include "tst_toolgroup.moc"
