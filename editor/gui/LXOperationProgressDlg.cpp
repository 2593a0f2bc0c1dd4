#include "gui/LXOperationProgressDlg.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

LXOperationProgressDlg::LXOperationProgressDlg(QWidget* parent)
    : LXDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_pLabel(new QLabel(this)),
      m_pBar(new QProgressBar(this)),
      m_pCancelBtn(new QPushButton(tr("Cancel"), this))
{
    setModal(true);
    m_pLabel->setBuddy(m_pBar);
    m_pBar->setRange(0, 100);
    m_pBar->setValue(0);
    m_pBar->setTextVisible(false);
    m_pBar->setMinimumWidth(280);
    m_pCancelBtn->hide();
    m_pCancelBtn->setAutoDefault(false);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(m_pLabel);
    layout->addWidget(m_pBar);
    layout->addWidget(m_pCancelBtn, 0, Qt::AlignRight);

    connect(m_pCancelBtn, &QPushButton::clicked, this, &LXOperationProgressDlg::Reject);
}

LXOperationProgressDlg::~LXOperationProgressDlg() = default;

void LXOperationProgressDlg::SetProgressRange(int minimum, int maximum)
{
    m_pBar->setRange(minimum, maximum);
    SetProgressPos(m_pBar->value());
}

void LXOperationProgressDlg::SetProgressPos(int position)
{
    m_pBar->setValue(qBound(m_pBar->minimum(), position, m_pBar->maximum()));
}

int LXOperationProgressDlg::GetProgressPos() const
{
    return m_pBar->value();
}

int LXOperationProgressDlg::GetProgressMinimum() const
{
    return m_pBar->minimum();
}

int LXOperationProgressDlg::GetProgressMaximum() const
{
    return m_pBar->maximum();
}

void LXOperationProgressDlg::SetProgressLabel(const QString& label)
{
    m_pLabel->setText(label);
    m_pBar->setAccessibleName(label);
}

void LXOperationProgressDlg::Reject()
{
    if (m_bCancelled) return;
    m_bCancelled = isSignalConnected(QMetaMethod::fromSignal(&LXOperationProgressDlg::Cancelled));
    m_pCancelBtn->setEnabled(!m_bCancelled);
    emit Cancelled();
}

void LXOperationProgressDlg::closeEvent(QCloseEvent* event)
{
    if (event->spontaneous()) {
        event->ignore();
        Reject();
        return;
    }
    event->accept();
    LXDialog::Reject();
}

void LXOperationProgressDlg::connectNotify(const QMetaMethod& signal)
{
    if (signal == QMetaMethod::fromSignal(&LXOperationProgressDlg::Cancelled)) m_pCancelBtn->show();
}
