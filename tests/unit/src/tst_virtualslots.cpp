#include "IClipboardInterface.h"
#include "IDocumentState.h"
#include "IDocumentViewState.h"
#include "IDocumentViewTool.h"
#include "IMainMenuActionList.h"
#include "ITool.h"
#include "LXDialogViewToolBase.h"
#include "LXMenuModalToolBase.h"
#include "LXViewToolBase.h"
#include "ZKOldToolContainer.h"

#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"
#include "plugincore/IWidgetTool.h"
#include "plugincore/ZKIPluginContainer.h"
#include "plugincore/ZKPlugin.h"
#include "support/TestRegistry.h"

#include <QMetaMethod>
#include <QTest>

#include <cstddef>
#include <cstring>

/// The order of virtual functions, which editor and plug-in share when they are built apart, and of signals
/// and slots. Never changed, only added to at the end.
class TestVirtualSlots : public QObject
{
    Q_OBJECT

private slots:
    void toolInterfaces();
    void pluginContract();
    void toolContainer();
    void viewToolBase();
    void dialogToolBase();
    void menuToolBase();
    void commandsAndTheirData();
    void signalsAndSlotsOfTheViewToolBase();
    void slotsOfTheToolContainer();
    void signalsAndSlotsOfDialogAndMenuTools();
};

namespace {
/// The destructor takes two places.
constexpr int BehindDestructor = 2;

/// A pointer to a virtual function starts with its offset in the table, on every platform but Microsoft's;
/// the lowest bits may hold a flag.
template <class Member>
int SlotOf(Member member)
{
    std::ptrdiff_t offset = 0;
    static_assert(sizeof(member) == 2 * sizeof(offset), "not the ABI that this test knows");
    std::memcpy(&offset, &member, sizeof(offset));
    return static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

template <class... Members>
QList<int> SlotsOf(Members... members)
{
    return {SlotOf(members)...};
}

QList<int> Rising(int first, int count)
{
    QList<int> numbers;
    for (int number = first; number < first + count; ++number) {
        numbers.append(number);
    }
    return numbers;
}

struct ObjectSlots : QObject
{
    static int Behind() { return SlotOf(&ObjectSlots::disconnectNotify) + 1; }
};

struct ViewToolSlots : LXViewToolBase
{
    static QList<int> All()
    {
        using Tool = ViewToolSlots;
        return SlotsOf(&Tool::SetToolBox, &Tool::SetToolBarManager, &Tool::SetToolWidgetManager,
                       &Tool::SetLayersWidget, &Tool::SaveSettings, &Tool::LoadSettings,
                       &Tool::GetDocumentViewState, &Tool::GetMenuActions, &Tool::GetToolBarActions,
                       &Tool::GetMainMenuEntries, &Tool::Init, &Tool::OnEnter, &Tool::OnLeave,
                       &Tool::OnSceneMouseMove, &Tool::OnSceneMousePress, &Tool::OnSceneMouseRelease,
                       &Tool::OnSceneMouseDoubleClick, &Tool::GetToolWidget, &Tool::GetToolBar,
                       &Tool::GetToolBoxButton, &Tool::GetToolBoxPosition, &Tool::UpdateToolUi,
                       &Tool::OnToolBoxButtonPressed, &Tool::CreateToolBar, &Tool::CreateToolBoxButton,
                       &Tool::CreateToolWidget, &Tool::GetCursor, &Tool::AllowDeactivate);
    }
};

struct DialogToolSlots : LXDialogViewToolBase
{
    static QList<int> All()
    {
        using Tool = DialogToolSlots;
        return SlotsOf(&Tool::CreateDialog, &Tool::DialogStarted, &Tool::DialogFinished,
                       &Tool::DialogAccepted, &Tool::DialogRejected);
    }
};

QByteArrayList MethodNames(const QMetaObject& metaObject, QMetaMethod::MethodType type)
{
    QByteArrayList names;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        if (metaObject.method(i).methodType() == type) names.append(metaObject.method(i).name());
    }
    return names;
}
} // namespace

void TestVirtualSlots::toolInterfaces()
{
    QCOMPARE(SlotsOf(&ITool::Activate, &ITool::IsActive, &ITool::GetActivateAction, &ITool::SetToolBox,
                     &ITool::SetToolBarManager, &ITool::SetToolWidgetManager, &ITool::SetLayersWidget,
                     &ITool::SaveSettings, &ITool::LoadSettings),
             Rising(BehindDestructor, 9));
    QCOMPARE(SlotsOf(&IDocumentViewTool::SetDocumentView), Rising(BehindDestructor, 1));
    QCOMPARE(
        SlotsOf(&IDocumentViewState::GetDocumentViewState, &IDocumentViewState::DocumentViewStateChanged),
        Rising(BehindDestructor, 2));
    QCOMPARE(SlotsOf(&IWidgetTool::SetMainWidget), Rising(BehindDestructor, 1));
    QCOMPARE(SlotsOf(&IMainMenuActionList::GetMenuActions, &IMainMenuActionList::GetToolBarActions,
                     &IMainMenuActionList::GetMainMenuEntries),
             Rising(BehindDestructor, 3));
    QCOMPARE(SlotsOf(&IClipboardInterface::SetClipboardModel, &IClipboardInterface::GetClipboardActions),
             Rising(BehindDestructor, 2));
    QCOMPARE(SlotsOf(&IDocumentState::GetDocumentState, &IDocumentState::DocumentStateChanged),
             Rising(BehindDestructor, 2));
}

void TestVirtualSlots::pluginContract()
{
    QCOMPARE(
        SlotsOf(&ZKIPluginContainer::Init, &ZKIPluginContainer::Shutdown, &ZKIPluginContainer::GetPlugins),
        Rising(0, 3));
    QCOMPARE(SlotsOf(&ZKPlugin::GetType, &ZKPlugin::GetName, &ZKPlugin::GetParent, &ZKPlugin::GetId),
             Rising(ObjectSlots::Behind(), 4));
}

void TestVirtualSlots::toolContainer()
{
    using Container = ZKOldToolContainer;
    QCOMPARE(SlotsOf(&Container::UpdateTools, &Container::DocumentStateChanged, &Container::DocumentActivated,
                     &Container::DocumentDeactivated),
             Rising(ObjectSlots::Behind(), 4));
}

void TestVirtualSlots::viewToolBase()
{
    QCOMPARE(ViewToolSlots::All(), Rising(ObjectSlots::Behind(), 28));
}

void TestVirtualSlots::dialogToolBase()
{
    QCOMPARE(DialogToolSlots::All(), Rising(ViewToolSlots::All().last() + 1, 5));
}

void TestVirtualSlots::menuToolBase()
{
    using Tool = LXMenuModalToolBase;
    QCOMPARE(
        SlotsOf(&Tool::GetMenuActions, &Tool::GetToolBarActions, &Tool::GetMainMenuEntries, &Tool::Update),
        Rising(ObjectSlots::Behind(), 4));
}

void TestVirtualSlots::commandsAndTheirData()
{
    QCOMPARE(SlotsOf(&LexoCommand::BeginTransaction, &LexoCommand::EndTransaction, &LexoCommand::RedoExecute,
                     &LexoCommand::UndoExecute),
             Rising(SlotOf(&QUndoCommand::mergeWith) + 1, 4));
    QCOMPARE(SlotsOf(&LexoCommandData::GetDataType, &LexoCommandData::Serialize,
                     &LexoCommandData::Deserialize, &LexoCommandData::ReleaseSerializeData),
             Rising(BehindDestructor, 4));
}

void TestVirtualSlots::signalsAndSlotsOfTheViewToolBase()
{
    const QMetaObject& tool = LXViewToolBase::staticMetaObject;
    QCOMPARE(
        MethodNames(tool, QMetaMethod::Signal),
        QByteArrayList({"OnActivate", "OnDocumentViewChanged", "OnDocumentViewChange", "OnMousePress",
                        "OnMousePress", "OnMouseMove", "OnMouseRelease", "OnMouseRelease",
                        "OnDocumentStateChanged", "OnSetMainWidget", "LayerWidgetChanged",
                        "CurrentDocumentLocked", "FocusOut", "FocusIn", "Enter", "Leave", "PanningEnabled"}));
    QCOMPARE(MethodNames(tool, QMetaMethod::Slot),
             QByteArrayList({"ToolBoxButtonPressed", "OnCurrentDocumentLocked", "OnCurrentDocumentUnlocked",
                             "OnPanningEnabled", "OnExplicitlyActivated", "OnImplicitlyActivated"}));
}

void TestVirtualSlots::slotsOfTheToolContainer()
{
    QCOMPARE(MethodNames(ZKOldToolContainer::staticMetaObject, QMetaMethod::Slot),
             QByteArrayList({"OnDocumentActivated", "OnDocumentLocked", "OnDocumentUnlocked",
                             "OnDocumentStateChanged"}));
}

void TestVirtualSlots::signalsAndSlotsOfDialogAndMenuTools()
{
    QCOMPARE(MethodNames(LXDialogViewToolBase::staticMetaObject, QMetaMethod::Slot),
             QByteArrayList({"OnAccepted", "OnRejected"}));
    QCOMPARE(MethodNames(LXMenuModalToolBase::staticMetaObject, QMetaMethod::Signal),
             QByteArrayList({"DocumentViewChanged", "DocumentViewChange"}));
}

ZK_REGISTER_TEST(tst_virtualslots, TestVirtualSlots)

#include "tst_virtualslots.moc"
