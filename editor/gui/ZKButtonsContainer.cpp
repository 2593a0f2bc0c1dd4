#include "gui/ZKButtonsContainer.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"

#include <QAction>
#include <QMenu>

class ZKButtonsContainerPrivate
{
public:
    struct Tool
    {
        ZKActivateAction* action;
        QAction* choice; ///< its line in the menu
    };

    explicit ZKButtonsContainerPrivate(ZKButtonsContainer* button) : m_pButton(button), m_Menu(button)
    {
        m_pButton->setMenu(&m_Menu);
    }

    void Bind(ZKActivateAction* action, const QString& text, const QIcon& icon)
    {
        QAction* choice = m_Menu.addAction(icon, text);
        choice->setCheckable(true);
        m_Tools.push_back({action, choice});
        QObject::connect(choice, &QAction::triggered, m_pButton, [this, action] { Choose(action); });
        QObject::connect(action, &ZKActivateAction::Toggled, m_pButton, [this] { FollowTools(); });
        QObject::connect(action, &QObject::destroyed, m_pButton, [this](QObject* gone) { Drop(gone); });
        FollowTools();
    }

    bool Has(const ZKActivateAction* action) const
    {
        return std::any_of(m_Tools.begin(), m_Tools.end(),
                           [=](const Tool& tool) { return tool.action == action; });
    }

    void ChooseShown()
    {
        const auto shown = std::find_if(m_Tools.begin(), m_Tools.end(), [this](const Tool& tool) {
            return tool.choice == m_pButton->defaultAction();
        });
        if (shown != m_Tools.end()) Choose(shown->action);
    }

private:
    void Choose(ZKActivateAction* action)
    {
        if (!action->IsChecked()) ZKToolGroupManager::Activate(action);
        // Triggering has turned the line's mark over, whether the tool came or not.
        FollowTools();
    }

    /// Brings marks, picture and check to what the tools say.
    void FollowTools()
    {
        const Tool* checked = nullptr;
        for (const Tool& tool : m_Tools) {
            tool.choice->setChecked(tool.action->IsChecked());
            if (tool.action->IsChecked()) checked = &tool;
        }
        if (checked) {
            Show(checked->choice);
        } else if (!m_pButton->defaultAction() && !m_Tools.empty()) {
            Show(m_Tools.front().choice);
        }
        m_pButton->setChecked(checked != nullptr);
    }

    void Show(QAction* choice)
    {
        m_pButton->setDefaultAction(choice);
        m_pButton->setAccessibleName(choice->text());
    }

    void Drop(const QObject* gone)
    {
        const auto tool = std::find_if(m_Tools.begin(), m_Tools.end(),
                                       [=](const Tool& bound) { return bound.action == gone; });
        QAction* choice = tool->choice;
        m_Tools.erase(tool);
        delete choice; // the button forgets it, if it is the one that shows
        FollowTools();
    }

    ZKButtonsContainer* m_pButton;
    QMenu m_Menu;
    std::vector<Tool> m_Tools; ///< in the order of binding
};

ZKButtonsContainer::ZKButtonsContainer(QWidget* parent)
    : LToolBoxButton(parent), m_pPrivate(std::make_unique<ZKButtonsContainerPrivate>(this))
{
    connect(this, &LToolBoxButton::LMousePressed, this, [this] { m_pPrivate->ChooseShown(); });
}

ZKButtonsContainer::~ZKButtonsContainer()
{
    setMenu(nullptr);
}

void ZKButtonsContainer::BindAction(ZKActivateAction* action, const QString& text, const QIcon& icon)
{
    if (action && !m_pPrivate->Has(action)) m_pPrivate->Bind(action, text, icon);
}

void ZKButtonsContainer::RegisterButton(int position)
{
    LToolBoxWidget::GetInstance()->AddToolButton(this, position);
}
