#include "gui/HistoryPanel.h"

#include "ui_HistoryPanel.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/HistoryDelegate.h"
#include "gui/HistoryModel.h"
#include "gui/LaterUpdate.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoUndoStack.h"

#include <QItemSelectionModel>
#include <QLocale>
#include <QScopedValueRollback>
#include <QTimer>

HistoryPanel::HistoryPanel(QWidget* parent)
    : QWidget(parent),
      m_pUi(std::make_unique<Ui::HistoryPanel>()),
      m_pModel(new HistoryModel(this)),
      m_pLater(new LaterUpdate(this, [this] { ShowState(); })),
      m_pLockLater(new LaterUpdate(this, [this] { UpdateLock(); }))
{
    m_pUi->setupUi(this);
    m_pUi->m_pList->setModel(m_pModel);
    m_pUi->m_pList->setItemDelegate(new HistoryDelegate(this));
    FollowHistory();
    connect(m_pUi->m_pList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &HistoryPanel::GoTo);
    ShowState();
}

HistoryPanel::~HistoryPanel() = default;

void HistoryPanel::SetView(ZKDocumentView* view)
{
    if (view == m_pView) return;

    if (m_pView) {
        m_pView->disconnect(this);
        m_pView->GetModel()->GetDocument()->disconnect(m_pLockLater);
    }
    m_pView = view;
    if (view) {
        const LXDocumentInterface* document = view->GetModel()->GetDocument();
        connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
        connect(document, &LXDocumentInterface::Locked, m_pLockLater, &LaterUpdate::AskAboutLock);
        connect(document, &LXDocumentInterface::Unlocked, m_pLockLater, &LaterUpdate::AskAboutLock);
    }
    m_pModel->SetHistory(view ? view->GetHistory() : nullptr);
    ShowState();
    UpdateLock();
}

QSize HistoryPanel::sizeHint() const
{
    return {260, 240};
}

void HistoryPanel::FollowHistory()
{
    connect(m_pModel, &HistoryModel::AboutToUpdate, this, [this] { m_bUpdating = true; });
    connect(m_pModel, &HistoryModel::Updated, this, [this] {
        m_bUpdating = false;
        m_pLater->AskAfterPicture();
    });
}

bool HistoryPanel::MayWork() const
{
    return m_pView && !m_pView->GetModel()->GetDocument()->GetLockState();
}

void HistoryPanel::GoTo(const QModelIndex& index)
{
    if (m_bUpdating || m_bFollowing || !index.isValid()) return;

    // The list learns later than the model which row the history is at.
    const bool isThere = index.row() == m_pModel->GetCurrentRow();
    QString failure;
    if (!isThere && MayWork())
        failure = GuardedStep::Try([&] { m_pModel->GetHistory()->setIndex(index.row()); });
    // The history may have gone elsewhere, or nowhere.
    ShowState();
    // The list is in the middle of a press, so a box waits until it is through with it.
    if (!failure.isEmpty())
        QTimer::singleShot(0, this, [this, failure] { GuardedStep::Tell(this, failure); });
}

void HistoryPanel::ShowState()
{
    const QScopedValueRollback<bool> following(m_bFollowing, true);
    const LexoUndoStack* history = m_pModel->GetHistory();
    QListView* list = m_pUi->m_pList;
    m_pUi->m_pPages->setCurrentWidget(history ? static_cast<QWidget*>(list) : m_pUi->m_pNoDocumentLbl);
    m_pUi->m_pFooter->setEnabled(history != nullptr);

    const QModelIndex current = m_pModel->index(m_pModel->GetCurrentRow());
    list->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
    if (current.isValid()) list->scrollTo(current);
    m_pUi->m_pMemoryValueLbl->setText(
        history ? QLocale().formattedDataSize(history->memoryCost(), 1, QLocale::DataSizeTraditionalFormat)
                : QString());
}

void HistoryPanel::UpdateLock()
{
    const bool isLocked = m_pView && !MayWork();
    m_pUi->m_pList->setEnabled(!isLocked);
    m_pUi->m_pList->setToolTip(isLocked ? tr("Wait until the tool has finished.") : QString());
}
