#include "gui/LayersWidget.h"

#include "ui_LayersWidget.h"

#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/BlendModeNames.h"
#include "gui/LaterUpdate.h"
#include "gui/LayerDelegate.h"
#include "gui/LayerOperations.h"
#include "gui/SingleWidget.h"
#include "gui/ZKDocumentView.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QPointer>
#include <QSignalBlocker>

#include <array>

class LayersWidgetPrivate
{
public:
    explicit LayersWidgetPrivate(LayersWidget* panel);

    struct LockButton
    {
        QToolButton* button;
        unsigned int bits;
        const char* icon;
        QString text;
    };

    std::array<LockButton, 4> LockButtons() const;
    void SetUpButtons();
    void SetUpBlendModes();
    void SetUpList();
    void UpdateControls();
    void UpdateButtons();

    LayersWidget* m_pPanel;
    ZKDocumentView* m_pView = nullptr;
    LayerOperations m_Operations;
    Ui::LayersWidget m_Ui;
    QPointer<QAbstractItemModel> m_pClipboardModel;
    QPointer<QItemSelectionModel> m_pClipboardSelection;
    QList<QAction*> m_ClipboardActions;
};

LayersWidgetPrivate::LayersWidgetPrivate(LayersWidget* panel) : m_pPanel(panel)
{
    m_Ui.setupUi(panel);
    SetUpButtons();
    SetUpBlendModes();
    SetUpList();
    QObject::connect(m_Ui.m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), &m_Operations,
                     [this](int percent) { m_Operations.SetOpacity(percent / 100.0); });
    QObject::connect(&m_Operations, &LayerOperations::Changed, panel, [this] { UpdateControls(); });
    auto* const later = new LaterUpdate(panel, [this] { UpdateControls(); });
    QObject::connect(&m_Operations, &LayerOperations::LockChanged, later, &LaterUpdate::AskAboutLock);
    UpdateControls();
}

void LayersWidgetPrivate::SetUpButtons()
{
    const auto setUp = [this](QToolButton* button, const char* icon, const QString& text, auto act) {
        button->setIcon(ZKIconHelper::DisabledIcon(QString("theme:%1.png").arg(icon)));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setToolTip(text);
        button->setAccessibleName(text);
        QObject::connect(button, &QToolButton::clicked, &m_Operations, act);
    };
    setUp(m_Ui.m_pAddBtn, "layer_add", LayersWidget::tr("New layer"), [this] { m_Operations.Add(); });
    setUp(m_Ui.m_pMaskBtn, "layer_mask", LayersWidget::tr("Add a mask (with Shift one that hides all)"),
          [this] { m_Operations.AddMask(!QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier)); });
    for (const LockButton& lock : LockButtons()) {
        setUp(lock.button, lock.icon, lock.text,
              [this, bits = lock.bits](bool checked) { m_Operations.SetLocks(bits, checked); });
    }
    setUp(m_Ui.m_pUpBtn, "chevron_up", LayersWidget::tr("Move the layer up"),
          [this] { m_Operations.Move(-1); });
    setUp(m_Ui.m_pDownBtn, "chevron_down", LayersWidget::tr("Move the layer down"),
          [this] { m_Operations.Move(1); });
    setUp(m_Ui.m_pDeleteBtn, "layer_delete", QString(), [this] { m_Operations.Delete(); });
}

std::array<LayersWidgetPrivate::LockButton, 4> LayersWidgetPrivate::LockButtons() const
{
    return {{
        {m_Ui.m_pLockTransparencyBtn, LayerLocks::Transparency, "lock_transparency",
         LayersWidget::tr("Lock the transparency")},
        {m_Ui.m_pLockPixelsBtn, LayerLocks::Pixels, "lock_pixels", LayersWidget::tr("Lock the pixels")},
        {m_Ui.m_pLockPositionBtn, LayerLocks::Position, "lock_position",
         LayersWidget::tr("Lock the position")},
        {m_Ui.m_pLockBtn, LayerLocks::All, "layer_lock", LayersWidget::tr("Lock everything")},
    }};
}

void LayersWidgetPrivate::SetUpBlendModes()
{
    const auto modes = BlendModeNames();
    for (const auto& [text, mode] : modes)
        m_Ui.m_pBlendCmb->addItem(text, mode);
    QObject::connect(m_Ui.m_pBlendCmb, qOverload<int>(&QComboBox::activated), &m_Operations,
                     [this] { m_Operations.SetBlendMode(m_Ui.m_pBlendCmb->currentData().toUInt()); });
}

void LayersWidgetPrivate::SetUpList()
{
    auto* const delegate = new LayerDelegate(m_Ui.m_pList);
    m_Ui.m_pList->setItemDelegate(delegate);
    m_Ui.m_pList->SetChoiceObstacle([this] { return m_Operations.GetChoiceObstacle(); });
    QObject::connect(delegate, &LayerDelegate::VisibleWanted, &m_Operations, &LayerOperations::SetVisible);
    QObject::connect(m_Ui.m_pList, &LayerListView::EyePressed, &m_Operations, [this](int row) {
        m_Operations.SetVisible(row, !m_Operations.GetModel()->GetVisible(row));
    });
    QObject::connect(delegate, &LayerDelegate::NameWanted, &m_Operations, &LayerOperations::Rename);
}

void LayersWidgetPrivate::UpdateControls()
{
    const QSignalBlocker spinBlocker(m_Ui.m_pOpacitySpn);
    const LXDocumentModel* model = m_Operations.GetModel();
    const int row = m_Operations.GetRow();
    m_Ui.m_pSettings->setEnabled(m_Operations.CanChange());
    if (row >= 0) {
        m_Ui.m_pBlendCmb->setCurrentIndex(m_Ui.m_pBlendCmb->findData(model->GetBlendMode(row)));
        m_Ui.m_pOpacitySpn->setValue(qRound(model->GetOpacity(row) * 100));
    }
    m_Ui.m_pLocks->setEnabled(m_Operations.CanChange());
    for (const LockButton& lock : LockButtons())
        lock.button->setChecked(row >= 0 && (model->GetLockFlags(row) & lock.bits) != 0);
    UpdateButtons();
}

void LayersWidgetPrivate::UpdateButtons()
{
    // What can't be done now says why.
    const QString obstacle = m_Operations.GetObstacle();
    const bool isSingle = m_Operations.GetRow() >= 0;
    const auto update = [&](QToolButton* button, const QString& text, bool can, const QString& reason) {
        const QString why = obstacle.isEmpty() ? reason : obstacle;
        button->setEnabled(can);
        button->setAccessibleName(text);
        button->setToolTip(can ? text : LayersWidget::tr("%1: %2").arg(text, why));
    };
    const auto reasonOf = [isSingle](const QString& ofLayer) {
        return isSingle ? ofLayer : LayersWidget::tr("select one layer");
    };
    update(m_Ui.m_pAddBtn, LayersWidget::tr("New layer"), m_Operations.CanAdd(), QString());
    update(m_Ui.m_pMaskBtn, LayersWidget::tr("Add a mask (with Shift one that hides all)"),
           m_Operations.CanAddMask(), reasonOf(LayersWidget::tr("the layer has one, or is locked")));
    update(m_Ui.m_pUpBtn, LayersWidget::tr("Move the layer up"), m_Operations.CanMove(-1),
           reasonOf(LayersWidget::tr("it is the topmost")));
    update(m_Ui.m_pDownBtn, LayersWidget::tr("Move the layer down"), m_Operations.CanMove(1),
           reasonOf(LayersWidget::tr("it is the lowest")));
    update(m_Ui.m_pDeleteBtn,
           m_Operations.IsDeletingMask() ? LayersWidget::tr("Delete the mask")
                                         : LayersWidget::tr("Delete the layer"),
           m_Operations.CanDelete(), LayersWidget::tr("it is locked, or the last one"));
}

LayersWidget::LayersWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<LayersWidgetPrivate>(this))
{
    SingleWidget<LayersWidget>::Register(this);
}

LayersWidget::~LayersWidget() = default;

LayersWidget* LayersWidget::GetInstance()
{
    return SingleWidget<LayersWidget>::Get();
}

void LayersWidget::SetView(ZKDocumentView* view)
{
    if (view == m_pPrivate->m_pView) return;

    QListView* const list = m_pPrivate->m_Ui.m_pList;
    if (m_pPrivate->m_pView) disconnect(m_pPrivate->m_pView, nullptr, this, nullptr);
    m_pPrivate->m_pView = view;
    m_pPrivate->m_Operations.SetView(view);
    list->setModel(nullptr);
    if (view) {
        list->setModel(view->GetModel());
        // The list brings a selection of its own with each new model.
        const std::unique_ptr<QItemSelectionModel> unused(list->selectionModel());
        list->setSelectionModel(view->GetLayerSelection());
        connect(view, &ZKDocumentView::ColorTransformChanged, this, [list] { list->viewport()->update(); });
        connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
    }
    QStackedWidget* const pages = m_pPrivate->m_Ui.m_pPages;
    pages->setCurrentWidget(view ? static_cast<QWidget*>(list) : m_pPrivate->m_Ui.m_pNoDocumentLbl);
}

bool LayersWidget::DeleteSelection(const QString& text)
{
    return m_pPrivate->m_Operations.DeleteSelection(text);
}

void LayersWidget::setClipboardModel(QAbstractItemModel* model, QItemSelectionModel* selection,
                                     const QList<QAction*>& actions)
{
    m_pPrivate->m_pClipboardModel = model;
    m_pPrivate->m_pClipboardSelection = selection;
    m_pPrivate->m_ClipboardActions = actions;
    emit ClipboardModelChanged();
}

QAbstractItemModel* LayersWidget::GetClipboardModel() const
{
    return m_pPrivate->m_pClipboardModel;
}

QItemSelectionModel* LayersWidget::GetClipboardSelection() const
{
    return m_pPrivate->m_pClipboardSelection;
}

QList<QAction*> LayersWidget::GetClipboardActions() const
{
    return m_pPrivate->m_ClipboardActions;
}

QSize LayersWidget::sizeHint() const
{
    return {260, 240};
}
