#include "gui/LXOperationProgressDlg.h"

#include "gui/LXOperationProgressDlg_p.h"

#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int TimeLeftInterval = 1000;

qint64 SystemClock()
{
    return QDeadlineTimer::current().deadline();
}
} // namespace

LXOperationProgressDlgPrivate::LXOperationProgressDlgPrivate(LXOperationProgressDlg* dialog)
    : m_pDialog(dialog),
      m_pLabel(new QLabel(dialog)),
      m_pBar(new QProgressBar(dialog)),
      m_pTimeLbl(new QLabel(dialog)),
      m_pCancelBtn(new QPushButton(LXOperationProgressDlg::tr("Cancel"), dialog)),
      m_Clock(&SystemClock),
      m_TimeLeft(m_Clock())
{}

LXOperationProgressDlgPrivate* LXOperationProgressDlgPrivate::Get(const LXOperationProgressDlg* dialog)
{
    return dialog->m_pPrivate.get();
}

void LXOperationProgressDlgPrivate::SetUp()
{
    m_pLabel->setBuddy(m_pBar);
    m_pBar->setRange(0, 100);
    m_pBar->setValue(0);
    m_pBar->setTextVisible(false);
    m_pBar->setMinimumWidth(280);
    m_pTimeLbl->setObjectName(QStringLiteral("m_pTimeLbl"));
    m_pTimeLbl->setForegroundRole(QPalette::PlaceholderText);
    // Its line is there from the beginning: the dialog doesn't grow when there is something to tell.
    m_pTimeLbl->setMinimumHeight(m_pTimeLbl->fontMetrics().height());
    m_pTimeLbl->hide();
    m_pCancelBtn->hide();
    m_pCancelBtn->setAutoDefault(false);

    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(16);
    bottom->addWidget(m_pTimeLbl, 1);
    bottom->addWidget(m_pCancelBtn, 0, Qt::AlignRight);
    auto* layout = new QVBoxLayout(m_pDialog);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(m_pLabel);
    layout->addWidget(m_pBar);
    layout->addLayout(bottom);

    QObject::connect(m_pCancelBtn, &QPushButton::clicked, m_pDialog, &LXOperationProgressDlg::Reject);
    QObject::connect(&m_Second, &QTimer::timeout, m_pDialog, [this] { UpdateTimeLeft(); });
}

void LXOperationProgressDlgPrivate::SetClock(std::function<qint64()> clock)
{
    m_Clock = std::move(clock);
    BeginTimeLeft();
}

void LXOperationProgressDlgPrivate::SetRange(int minimum, int maximum)
{
    if (minimum == m_pBar->minimum() && maximum == m_pBar->maximum()) return;
    m_pBar->setRange(minimum, maximum);
    BeginTimeLeft();
    SetPosition(m_pBar->value());
}

void LXOperationProgressDlgPrivate::SetPosition(int position)
{
    m_pBar->setValue(qBound(m_pBar->minimum(), position, m_pBar->maximum()));
    UpdateTimeLeft();
}

void LXOperationProgressDlgPrivate::BeginTimeLeft()
{
    m_TimeLeft = TimeLeft(m_Clock());
    m_pTimeLbl->clear();
}

void LXOperationProgressDlgPrivate::UpdateTimeLeft()
{
    const double range = double(m_pBar->maximum()) - m_pBar->minimum();
    if (range <= 0) return;
    const qint64 now = m_Clock();
    m_TimeLeft.Note(now, (double(m_pBar->value()) - m_pBar->minimum()) / range);
    m_pTimeLbl->setText(m_TimeLeft.Tell(now));
}

LXOperationProgressDlg::LXOperationProgressDlg(QWidget* parent)
    : LXDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_pPrivate(std::make_unique<LXOperationProgressDlgPrivate>(this))
{
    setModal(true);
    m_pPrivate->SetUp();
}

LXOperationProgressDlg::~LXOperationProgressDlg() = default;

void LXOperationProgressDlg::SetProgressRange(int minimum, int maximum)
{
    m_pPrivate->SetRange(minimum, maximum);
}

void LXOperationProgressDlg::SetProgressPos(int position)
{
    m_pPrivate->SetPosition(position);
}

int LXOperationProgressDlg::GetProgressPos() const
{
    return m_pPrivate->m_pBar->value();
}

int LXOperationProgressDlg::GetProgressMinimum() const
{
    return m_pPrivate->m_pBar->minimum();
}

int LXOperationProgressDlg::GetProgressMaximum() const
{
    return m_pPrivate->m_pBar->maximum();
}

void LXOperationProgressDlg::SetProgressLabel(const QString& label)
{
    m_pPrivate->m_pLabel->setText(label);
    m_pPrivate->m_pBar->setAccessibleName(label);
}

void LXOperationProgressDlg::ShowTimeLeft(bool show)
{
    m_pPrivate->m_pTimeLbl->setVisible(show);
    show ? m_pPrivate->m_Second.start(TimeLeftInterval) : m_pPrivate->m_Second.stop();
    m_pPrivate->BeginTimeLeft();
}

bool LXOperationProgressDlg::IsTimeLeftShown() const
{
    return m_pPrivate->m_pTimeLbl->isVisibleTo(this);
}

void LXOperationProgressDlg::Reject()
{
    if (m_pPrivate->m_bCancelled) return;
    m_pPrivate->m_bCancelled = isSignalConnected(QMetaMethod::fromSignal(&LXOperationProgressDlg::Cancelled));
    m_pPrivate->m_pCancelBtn->setEnabled(!m_pPrivate->m_bCancelled);
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
    if (signal == QMetaMethod::fromSignal(&LXOperationProgressDlg::Cancelled))
        m_pPrivate->m_pCancelBtn->show();
}
