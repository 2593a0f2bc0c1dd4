#include "ITool.h"
#include "ToolLifecycle.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LayersWidget.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {
class RecordingITool : public QObject, public ITool
{
    Q_OBJECT
    Q_INTERFACES(ITool)

public:
    RecordingITool(const QString& name, QStringList* notes) : action(nullptr), m_Name(name), m_pNotes(notes)
    {}

    bool Activate(bool) override { return false; }

    bool IsActive() override { return false; }

    ZKActivateAction* GetActivateAction() override { return Note("GetActivateAction", &action); }

    void SetToolBox(LToolBoxWidget* toolBox) override
    {
        Note("SetToolBox", toolBox == LToolBoxWidget::GetInstance());
    }

    void SetToolBarManager(ZKToolBarManager* manager) override
    {
        Note("SetToolBarManager", manager == ZKToolBarManager::GetInstance());
    }

    void SetToolWidgetManager(LXToolWidgetManager* manager) override
    {
        Note("SetToolWidgetManager", manager == LXToolWidgetManager::instance());
    }

    void SetLayersWidget(LayersWidget* layersWidget) override
    {
        Note("SetLayersWidget", layersWidget == LayersWidget::GetInstance());
    }

    void SaveSettings() override { Note("SaveSettings", true); }

    void LoadSettings() override { Note("LoadSettings", true); }

    ZKActivateAction action;

private:
    template <class Answer>
    Answer Note(const char* call, Answer answer)
    {
        if (answer) m_pNotes->append(m_Name + ' ' + call);
        return answer;
    }

    QString m_Name;
    QStringList* m_pNotes;
};
} // namespace

class TestToolLifecycle : public QObject
{
    Q_OBJECT

private slots:
    void connectingHandsTheEditorOverInOrder();
    void connectingAddsTheActionsToTheGroup();
    void loadAsksEveryToolInOrder();
    void saveAsksEveryTool();
    void onlyAToolHasAnAction();
    void otherObjectsAreSkipped();
};

void TestToolLifecycle::connectingHandsTheEditorOverInOrder()
{
    QStringList notes;
    RecordingITool first("first", &notes);
    RecordingITool second("second", &notes);
    ConnectTools({&first, &second});
    QCOMPARE(notes, QStringList({"first SetToolBarManager", "first SetToolWidgetManager", "first SetToolBox",
                                 "first SetLayersWidget", "first GetActivateAction",
                                 "second SetToolBarManager", "second SetToolWidgetManager",
                                 "second SetToolBox", "second SetLayersWidget", "second GetActivateAction"}));
}

void TestToolLifecycle::loadAsksEveryToolInOrder()
{
    QStringList notes;
    RecordingITool first("first", &notes);
    RecordingITool second("second", &notes);
    LoadTools({&first, &second});
    QCOMPARE(notes, QStringList({"first LoadSettings", "second LoadSettings"}));
}

void TestToolLifecycle::connectingAddsTheActionsToTheGroup()
{
    QStringList notes;
    RecordingITool first("first", &notes);
    RecordingITool second("second", &notes);
    ConnectTools({&first, &second});
    first.action.SetChecked(true);
    second.action.SetChecked(true);
    QVERIFY(!first.action.IsChecked());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &second.action);
}

void TestToolLifecycle::saveAsksEveryTool()
{
    QStringList notes;
    RecordingITool first("first", &notes);
    RecordingITool second("second", &notes);
    SaveTools({&first, &second});
    QCOMPARE(notes, QStringList({"first SaveSettings", "second SaveSettings"}));
}

void TestToolLifecycle::otherObjectsAreSkipped()
{
    QObject object;
    ConnectTools({&object, nullptr});
    LoadTools({&object, nullptr});
    SaveTools({&object, nullptr});
}

void TestToolLifecycle::onlyAToolHasAnAction()
{
    QStringList notes;
    RecordingITool tool("tool", &notes);
    QObject object;
    QCOMPARE(ActionOf(&tool), &tool.action);
    QVERIFY(!ActionOf(&object));
    QVERIFY(!ActionOf(nullptr));
}

ZK_REGISTER_TEST(tst_toollifecycle, TestToolLifecycle)

#include "tst_toollifecycle.moc"
