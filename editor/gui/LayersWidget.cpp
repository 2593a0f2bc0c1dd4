#include "gui/LayersWidget.h"

#include "ui_LayersWidget.h"

#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/LayerDelegate.h"
#include "gui/LayerOperations.h"
#include "gui/SingleWidget.h"
#include "gui/ZKDocumentView.h"
#include "image/BlendMode.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QSignalBlocker>

class LayersWidgetPrivate
{
public:
    explicit LayersWidgetPrivate(LayersWidget* panel);

    void SetUpButtons();
    void SetUpBlendModes();
    void SetUpList();
    void UpdateControls();

    LayersWidget* m_pPanel;
    ZKDocumentView* m_pView = nullptr;
    LayerOperations m_Operations;
    Ui::LayersWidget m_Ui;
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
    setUp(m_Ui.m_pLockBtn, "layer_lock", LayersWidget::tr("Lock the layer"),
          [this](bool checked) { m_Operations.SetLocked(checked); });
    setUp(m_Ui.m_pUpBtn, "chevron_up", LayersWidget::tr("Move the layer up"),
          [this] { m_Operations.Move(-1); });
    setUp(m_Ui.m_pDownBtn, "chevron_down", LayersWidget::tr("Move the layer down"),
          [this] { m_Operations.Move(1); });
    setUp(m_Ui.m_pDeleteBtn, "layer_delete", QString(), [this] { m_Operations.Delete(); });
}

void LayersWidgetPrivate::SetUpBlendModes()
{
    const std::pair<QString, unsigned int> modes[] = {
        {LayersWidget::tr("Normal"), BlendMode::Normal},
        {LayersWidget::tr("Multiply"), BlendMode::Multiply},
        {LayersWidget::tr("Screen"), BlendMode::Screen},
        {LayersWidget::tr("Overlay"), BlendMode::Overlay},
        {LayersWidget::tr("Difference"), BlendMode::Difference},
        {LayersWidget::tr("Exclusion"), BlendMode::Exclusion},
        {LayersWidget::tr("Lighten colors"), BlendMode::Lighten},
        {LayersWidget::tr("Darken colors"), BlendMode::Darken},
        {LayersWidget::tr("Soft light"), BlendMode::SoftLight},
        {LayersWidget::tr("Hard light"), BlendMode::HardLight},
        {LayersWidget::tr("Color dodge"), BlendMode::ColorDodge},
        {LayersWidget::tr("Color burn"), BlendMode::ColorBurn},
        {LayersWidget::tr("Addition"), BlendMode::Addition},
    };
    for (const auto& [text, mode] : modes)
        m_Ui.m_pBlendCmb->addItem(text, mode);
    QObject::connect(m_Ui.m_pBlendCmb, qOverload<int>(&QComboBox::activated), &m_Operations,
                     [this] { m_Operations.SetBlendMode(m_Ui.m_pBlendCmb->currentData().toUInt()); });
}

void LayersWidgetPrivate::SetUpList()
{
    auto* const delegate = new LayerDelegate(m_Ui.m_pList);
    m_Ui.m_pList->setItemDelegate(delegate);
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
    m_Ui.m_pLockBtn->setChecked(row >= 0 && (model->GetLockFlags(row) & LayerLocks::All) != 0);
    m_Ui.m_pLockBtn->setEnabled(m_Operations.CanChange());
    m_Ui.m_pAddBtn->setEnabled(m_Operations.CanAdd());
    m_Ui.m_pMaskBtn->setEnabled(m_Operations.CanAddMask());
    m_Ui.m_pUpBtn->setEnabled(m_Operations.CanMove(-1));
    m_Ui.m_pDownBtn->setEnabled(m_Operations.CanMove(1));

    const QString toDelete = m_Operations.IsDeletingMask() ? LayersWidget::tr("Delete the mask")
                                                           : LayersWidget::tr("Delete the layer");
    m_Ui.m_pDeleteBtn->setEnabled(m_Operations.CanDelete());
    m_Ui.m_pDeleteBtn->setToolTip(toDelete);
    m_Ui.m_pDeleteBtn->setAccessibleName(toDelete);
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
        connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
    }
    QStackedWidget* const pages = m_pPrivate->m_Ui.m_pPages;
    pages->setCurrentWidget(view ? static_cast<QWidget*>(list) : m_pPrivate->m_Ui.m_pNoDocumentLbl);
}

QSize LayersWidget::sizeHint() const
{
    return {260, 240};
}
