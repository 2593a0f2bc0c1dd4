#include "gui/AdjustmentPanel.h"

#include "ui_AdjustmentPanel.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "gui/LaterUpdate.h"
#include "gui/LayerOperations.h"
#include "gui/ZKDocumentView.h"

class AdjustmentPanelPrivate
{
public:
    explicit AdjustmentPanelPrivate(AdjustmentPanel* panel);

    void Update();

    LayerOperations m_Operations;
    ZKDocumentView* m_pView = nullptr;
    Ui::AdjustmentPanel m_Ui;
};

AdjustmentPanelPrivate::AdjustmentPanelPrivate(AdjustmentPanel* panel)
{
    m_Ui.setupUi(panel);
    QObject::connect(m_Ui.m_pAdjustment, &AdjustmentWidget::Changed, &m_Operations,
                     &LayerOperations::PreviewAdjustment);
    QObject::connect(m_Ui.m_pAdjustment, &AdjustmentWidget::Finished, &m_Operations,
                     &LayerOperations::FinishAdjustment);
    QObject::connect(&m_Operations, &LayerOperations::Changed, panel, [this] { Update(); });
    auto* const later = new LaterUpdate(panel, [this] { Update(); });
    QObject::connect(&m_Operations, &LayerOperations::LockChanged, later, &LaterUpdate::AskAboutLock);
    Update();
}

void AdjustmentPanelPrivate::Update()
{
    const int row = m_Operations.GetRow();
    const unsigned int id = static_cast<unsigned int>(row) + 1;
    const LXDocumentInterface* document = row >= 0 ? m_Operations.GetModel()->GetDocument() : nullptr;
    const bool isAdjustment = document && document->GetLayerKind(id) == LayerKind::Adjustment;
    m_Ui.m_pPages->setCurrentWidget(isAdjustment ? static_cast<QWidget*>(m_Ui.m_pAdjustment)
                                                 : m_Ui.m_pNoAdjustmentLbl);
    if (!isAdjustment) return;
    m_Ui.m_pAdjustment->setEnabled(m_Operations.CanChange());
    m_Ui.m_pAdjustment->SetAdjustment(document->GetAdjustment(id));
}

AdjustmentPanel::AdjustmentPanel(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<AdjustmentPanelPrivate>(this))
{}

AdjustmentPanel::~AdjustmentPanel() = default;

void AdjustmentPanel::SetView(ZKDocumentView* view)
{
    if (view == m_pPrivate->m_pView) return;
    if (m_pPrivate->m_pView) disconnect(m_pPrivate->m_pView, nullptr, this, nullptr);
    m_pPrivate->m_pView = view;
    m_pPrivate->m_Operations.SetView(view);
    if (view) connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
}
