#include "gui/PathsWidget.h"

#include "ui_PathsWidget.h"

#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "gui/LaterUpdate.h"
#include "gui/PathDelegate.h"
#include "gui/PathOperations.h"
#include "gui/PathUses.h"
#include "gui/ZKDocumentView.h"
#include "utils/ZKIconHelper.h"

#include <QAction>

class PathsWidgetPrivate
{
public:
    explicit PathsWidgetPrivate(PathsWidget* panel);

    void SetUpButtons();
    void SetUpList();
    void SetUpUses();
    void UpdateControls();
    void UpdateUses();
    QWidget* WantedPage() const;

    ZKDocumentView* m_pView = nullptr;
    PathOperations m_Operations;
    QAction m_Stroke;
    QAction m_Select;
    Ui::PathsWidget m_Ui;
};

PathsWidgetPrivate::PathsWidgetPrivate(PathsWidget* panel)
{
    m_Ui.setupUi(panel);
    SetUpButtons();
    SetUpList();
    SetUpUses();
    QObject::connect(&m_Operations, &PathOperations::Changed, panel, [this] { UpdateControls(); });
    auto* const later = new LaterUpdate(panel, [this] { UpdateControls(); });
    QObject::connect(&m_Operations, &PathOperations::LockChanged, later, &LaterUpdate::AskAboutLock);
    UpdateControls();
}

void PathsWidgetPrivate::SetUpButtons()
{
    const auto setUp = [this](QToolButton* button, const char* icon, const QString& text, auto act) {
        button->setIcon(ZKIconHelper::DisabledIcon(QString("theme:%1.png").arg(icon)));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setToolTip(text);
        button->setAccessibleName(text);
        QObject::connect(button, &QToolButton::clicked, &m_Operations, act);
    };
    setUp(m_Ui.m_pAddBtn, "layer_add", PathsWidget::tr("New path"), [this] { m_Operations.Add(); });
    setUp(m_Ui.m_pUpBtn, "chevron_up", PathsWidget::tr("Move the path up"),
          [this] { m_Operations.Move(-1); });
    setUp(m_Ui.m_pDownBtn, "chevron_down", PathsWidget::tr("Move the path down"),
          [this] { m_Operations.Move(1); });
    setUp(m_Ui.m_pDeleteBtn, "layer_delete", PathsWidget::tr("Delete the path"),
          [this] { m_Operations.Delete(); });
}

void PathsWidgetPrivate::SetUpList()
{
    auto* const delegate = new PathDelegate(m_Ui.m_pList);
    m_Ui.m_pList->setItemDelegate(delegate);
    m_Ui.m_pList->SetChoiceObstacle([this] { return m_Operations.GetChoiceObstacle(); });
    QObject::connect(delegate, &PathDelegate::VisibleWanted, &m_Operations, &PathOperations::SetVisible);
    QObject::connect(delegate, &PathDelegate::NameWanted, &m_Operations, &PathOperations::Rename);
    QObject::connect(m_Ui.m_pList, &LayerListView::EyePressed, &m_Operations, [this](int row) {
        m_Operations.SetVisible(row, !m_Operations.GetModel()->GetPathVisible(row));
    });
}

// In the list's menu as well, by key too.
void PathsWidgetPrivate::SetUpUses()
{
    const auto setUp = [this](QAction& action, QToolButton* button, const char* icon, const QString& text,
                              void (*use)(ZKDocumentView*)) {
        action.setText(text);
        action.setIcon(ZKIconHelper::DisabledIcon(QString("theme:%1.png").arg(icon)));
        button->setDefaultAction(&action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(text);
        m_Ui.m_pList->addAction(&action);
        QObject::connect(&action, &QAction::triggered, &m_Operations, [this, use] { use(m_pView); });
    };
    setUp(m_Stroke, m_Ui.m_pStrokeBtn, "pen", PathsWidget::tr("Stroke Path…"), &PathUses::Stroke);
    setUp(m_Select, m_Ui.m_pSelectBtn, "replace_selection", PathsWidget::tr("Make Selection…"),
          &PathUses::MakeSelection);
}

void PathsWidgetPrivate::UpdateControls()
{
    m_Ui.m_pAddBtn->setEnabled(m_Operations.CanAdd());
    m_Ui.m_pDeleteBtn->setEnabled(m_Operations.CanDelete());
    m_Ui.m_pUpBtn->setEnabled(m_Operations.CanMove(-1));
    m_Ui.m_pDownBtn->setEnabled(m_Operations.CanMove(1));
    m_Ui.m_pPages->setCurrentWidget(WantedPage());
    UpdateUses();
}

// What can't be done now says why.
void PathsWidgetPrivate::UpdateUses()
{
    const auto update = [](QAction& action, const QString& reason) {
        action.setEnabled(reason.isEmpty());
        action.setToolTip(reason.isEmpty() ? action.text()
                                           : PathsWidget::tr("%1: %2").arg(action.text(), reason));
    };
    update(m_Stroke, PathUses::WhyNotStroke(m_pView));
    update(m_Select, PathUses::WhyNotSelect(m_pView));
}

QWidget* PathsWidgetPrivate::WantedPage() const
{
    if (!m_pView) return m_Ui.m_pNoDocumentLbl;
    return m_Operations.GetModel()->rowCount() > 0 ? static_cast<QWidget*>(m_Ui.m_pList) : m_Ui.m_pNoPathLbl;
}

PathsWidget::PathsWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<PathsWidgetPrivate>(this))
{}

PathsWidget::~PathsWidget() = default;

void PathsWidget::SetView(ZKDocumentView* view)
{
    if (view == m_pPrivate->m_pView) return;

    QListView* const list = m_pPrivate->m_Ui.m_pList;
    if (m_pPrivate->m_pView) disconnect(m_pPrivate->m_pView, nullptr, this, nullptr);
    list->setModel(nullptr);
    m_pPrivate->m_pView = view;
    m_pPrivate->m_Operations.SetView(view);
    if (!view) return;

    list->setModel(m_pPrivate->m_Operations.GetModel());
    // The list brings a selection of its own with each new model.
    const std::unique_ptr<QItemSelectionModel> unused(list->selectionModel());
    list->setSelectionModel(view->GetPathSelection());
    connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
}

QSize PathsWidget::sizeHint() const
{
    return {260, 240};
}
