#include "gui/ClipboardPanel.h"

#include "ui_ClipboardPanel.h"

#include "gui/ClipboardDelegate.h"
#include "gui/LayersWidget.h"

#include <QAction>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QToolButton>

ClipboardPanel::ClipboardPanel(LayersWidget* source, QWidget* parent)
    : QWidget(parent), m_pUi(std::make_unique<Ui::ClipboardPanel>())
{
    m_pUi->setupUi(this);
    m_pUi->m_pList->setItemDelegate(new ClipboardDelegate(this));
    if (source) {
        connect(source, &LayersWidget::ClipboardModelChanged, this, [this, source] { Follow(source); });
        Follow(source);
    }
    UpdatePage();
}

ClipboardPanel::~ClipboardPanel() = default;

QSize ClipboardPanel::sizeHint() const
{
    return {260, 240};
}

void ClipboardPanel::Follow(const LayersWidget* source)
{
    QListView* list = m_pUi->m_pList;
    if (list->model()) list->model()->disconnect(this);
    QAbstractItemModel* model = source->GetClipboardModel();
    list->setModel(model);
    if (model) {
        // The list brings a selection of its own with each new model.
        const std::unique_ptr<QItemSelectionModel> unused(list->selectionModel());
        list->setSelectionModel(source->GetClipboardSelection());
        connect(model, &QAbstractItemModel::rowsInserted, this, &ClipboardPanel::UpdatePage);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &ClipboardPanel::UpdatePage);
        // What comes last is what was copied now; what is copied once more stands anywhere.
        connect(model, &QAbstractItemModel::rowsInserted, list, &QListView::scrollToBottom);
        connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, list,
                [list](const QItemSelection& chosen) {
                    if (!chosen.isEmpty()) list->scrollTo(chosen.first().topLeft());
                });
    }
    MakeButtons(source);
    UpdatePage();
}

void ClipboardPanel::MakeButtons(const LayersWidget* source)
{
    qDeleteAll(m_Buttons);
    m_Buttons.clear();
    const QList<QAction*> actions = source->GetClipboardActions();
    for (QAction* action : actions) {
        auto* button = new QToolButton(m_pUi->m_pActions);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(action->text());
        m_pUi->m_pActionsLayout->addWidget(button);
        m_Buttons.append(button);
    }
}

void ClipboardPanel::UpdatePage()
{
    const QAbstractItemModel* model = m_pUi->m_pList->model();
    const bool isEmpty = !model || model->rowCount() == 0;
    m_pUi->m_pPages->setCurrentWidget(isEmpty ? static_cast<QWidget*>(m_pUi->m_pEmptyLbl) : m_pUi->m_pList);
}
