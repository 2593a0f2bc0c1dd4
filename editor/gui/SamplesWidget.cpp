#include "gui/SamplesWidget.h"

#include "ui_SamplesWidget.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LaterUpdate.h"
#include "gui/SampleDelegate.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PathCommands.h"
#include "history/PushOrRun.h"
#include "utils/ZKIconHelper.h"

class SamplesWidgetPrivate
{
public:
    explicit SamplesWidgetPrivate(SamplesWidget* panel);

    LXDocumentInterface* Document() const { return m_pView->GetModel()->GetDocument(); }

    LXColorSampleModel* Samples() const { return Document()->GetColorSamples(); }

    void SetUpControls();
    void ShowInList(QAbstractItemModel* samples);
    void Follow();
    void UpdateControls();
    QWidget* WantedPage() const;

    bool MayWork() const { return m_pView && !Document()->GetLockState(); }

    /// From the last to the first.
    QList<int> SelectedRows() const;
    void Delete();
    void Clear();
    void Push(LexoCommand* command) const;

    SamplesWidget* m_pPanel;
    LaterUpdate* m_pLater;
    ZKDocumentView* m_pView = nullptr;
    Ui::SamplesWidget m_Ui;
};

SamplesWidgetPrivate::SamplesWidgetPrivate(SamplesWidget* panel)
    : m_pPanel(panel), m_pLater(new LaterUpdate(panel, [this] { UpdateControls(); }))
{
    m_Ui.setupUi(panel);
    m_Ui.m_pList->setItemDelegate(new SampleDelegate(m_Ui.m_pList));
    SetUpControls();
    UpdateControls();
}

void SamplesWidgetPrivate::SetUpControls()
{
    m_Ui.m_pFormatCmb->addItem(SamplesWidget::tr("RGB"), LXColorSampleModel::RGB);
    m_Ui.m_pFormatCmb->addItem(SamplesWidget::tr("CMYK"), LXColorSampleModel::CMYK);
    QObject::connect(m_Ui.m_pSizeCmb, qOverload<int>(&QComboBox::activated), m_pPanel, [this](int radius) {
        for (const int row : SelectedRows())
            Samples()->SetSampleRadius(row, radius);
    });
    QObject::connect(m_Ui.m_pFormatCmb, qOverload<int>(&QComboBox::activated), m_pPanel, [this](int format) {
        for (const int row : SelectedRows())
            Samples()->SetDisplayFormat(row, static_cast<LXColorSampleModel::SampleFormat>(format));
    });
    m_Ui.m_pDeleteBtn->setIcon(ZKIconHelper::DisabledIcon("theme:layer_delete.png"));
    QObject::connect(m_Ui.m_pDeleteBtn, &QToolButton::clicked, m_pPanel, [this] { Delete(); });
    QObject::connect(m_Ui.m_pClearBtn, &QPushButton::clicked, m_pPanel, [this] { Clear(); });
}

void SamplesWidgetPrivate::ShowInList(QAbstractItemModel* samples)
{
    // The list brings a selection with each new model and keeps the old ones.
    const std::unique_ptr<QItemSelectionModel> old(m_Ui.m_pList->selectionModel());
    m_Ui.m_pList->setModel(samples);
}

void SamplesWidgetPrivate::Follow()
{
    const auto update = [this] { UpdateControls(); };
    QObject::connect(m_Ui.m_pList->selectionModel(), &QItemSelectionModel::selectionChanged, m_pPanel,
                     update);
    QObject::connect(Samples(), &LXColorSampleModel::SampleInserted, m_pPanel, update);
    QObject::connect(Samples(), &LXColorSampleModel::SampleRemoved, m_pPanel, update);
    QObject::connect(Samples(), &LXColorSampleModel::dataChanged, m_pPanel, update);
    QObject::connect(Document(), &LXDocumentInterface::Locked, m_pLater, &LaterUpdate::AskAboutLock);
    QObject::connect(Document(), &LXDocumentInterface::Unlocked, m_pLater, &LaterUpdate::AskAboutLock);
    QObject::connect(m_pView, &ZKDocumentView::AboutDestroy, m_pPanel,
                     [this] { m_pPanel->SetView(nullptr); });
    QObject::connect(m_pView, &ZKDocumentView::ColorTransformChanged, m_pPanel,
                     [this] { m_Ui.m_pList->viewport()->update(); });
}

void SamplesWidgetPrivate::UpdateControls()
{
    const QList<int> rows = m_pView ? SelectedRows() : QList<int>();
    const bool works = MayWork();
    m_Ui.m_pSettings->setEnabled(works && !rows.isEmpty());
    m_Ui.m_pDeleteBtn->setEnabled(works && !rows.isEmpty());
    m_Ui.m_pClearBtn->setEnabled(works && Samples()->rowCount() > 0);
    if (m_pView && !rows.isEmpty()) {
        m_Ui.m_pSizeCmb->setCurrentIndex(Samples()->GetSampleRadius(rows.last()));
        m_Ui.m_pFormatCmb->setCurrentIndex(Samples()->GetDisplayFormat(rows.last()));
    }
    m_Ui.m_pPages->setCurrentWidget(WantedPage());
}

QWidget* SamplesWidgetPrivate::WantedPage() const
{
    if (!m_pView) return m_Ui.m_pNoDocumentLbl;
    return Samples()->rowCount() > 0 ? static_cast<QWidget*>(m_Ui.m_pList) : m_Ui.m_pNoSampleLbl;
}

QList<int> SamplesWidgetPrivate::SelectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = m_Ui.m_pList->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    return rows;
}

void SamplesWidgetPrivate::Delete()
{
    if (!MayWork()) return;
    const QList<int> rows = SelectedRows();
    LexoUndoStack* const history = m_pView->GetHistory();
    const auto removeAll = [&] {
        for (const int row : rows)
            Push(PathCommands::RemoveSample(Document(), row));
    };
    GuardedStep::Run(m_pView, [&] {
        PushAsOneStep(rows.size() > 1 ? history : nullptr, SamplesWidget::tr("Remove sample points"),
                      removeAll);
    });
}

void SamplesWidgetPrivate::Clear()
{
    if (!MayWork() || Samples()->rowCount() == 0) return;
    GuardedStep::Run(m_pView, [this] { Push(PathCommands::ClearSamples(Document())); });
}

void SamplesWidgetPrivate::Push(LexoCommand* command) const
{
    PushOrRun(m_pView->GetHistory(), std::unique_ptr<LexoCommand>(command));
}

SamplesWidget::SamplesWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<SamplesWidgetPrivate>(this))
{}

SamplesWidget::~SamplesWidget() = default;

void SamplesWidget::SetView(ZKDocumentView* view)
{
    if (view == m_pPrivate->m_pView) return;

    if (m_pPrivate->m_pView) {
        m_pPrivate->m_pView->disconnect(this);
        m_pPrivate->Document()->disconnect(this);
        m_pPrivate->Document()->disconnect(m_pPrivate->m_pLater);
        m_pPrivate->Samples()->disconnect(this);
    }
    m_pPrivate->m_pView = view;
    // Null in between: another view of the same document brings another selection too.
    m_pPrivate->ShowInList(nullptr);
    if (view) m_pPrivate->ShowInList(m_pPrivate->Samples());
    if (view) m_pPrivate->Follow();
    m_pPrivate->UpdateControls();
}

QSize SamplesWidget::sizeHint() const
{
    return {260, 240};
}
