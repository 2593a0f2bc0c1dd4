#include "gui/LXUndefinedOperationProgress.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QtConcurrentRun>

namespace {
/// Work that is done by then shows no dialog: one that flashes up tells nothing.
constexpr int WaitBeforeShowing = 300;
} // namespace

LXUndefinedOperationProgress::LXUndefinedOperationProgress(QWidget* parent)
    : LXDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_pLabel(new QLabel(this)),
      m_pBar(new QProgressBar(this))
{
    setModal(true);
    m_pLabel->setBuddy(m_pBar);
    m_pBar->setRange(0, 0);
    m_pBar->setTextVisible(false);
    m_pBar->setMinimumWidth(280);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(m_pLabel);
    layout->addWidget(m_pBar);
}

LXUndefinedOperationProgress::~LXUndefinedOperationProgress() = default;

void LXUndefinedOperationProgress::SetProgressLabel(const QString& label)
{
    m_pLabel->setText(label);
    m_pBar->setAccessibleName(label);
}

int LXUndefinedOperationProgress::Execute()
{
    QFutureWatcher<void> watcher;
    QEventLoop moment;
    connect(&watcher, &QFutureWatcherBase::finished, &moment, &QEventLoop::quit);
    QTimer::singleShot(WaitBeforeShowing, &moment, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run([this] { Run(); }));
    moment.exec(QEventLoop::ExcludeUserInputEvents);

    if (!watcher.isFinished()) {
        connect(&watcher, &QFutureWatcherBase::finished, this, &LXUndefinedOperationProgress::Accept);
        Exec();
    }
    return QDialog::Accepted;
}

void LXUndefinedOperationProgress::Reject() {}

void LXUndefinedOperationProgress::closeEvent(QCloseEvent* event)
{
    if (event->spontaneous()) {
        event->ignore();
    } else {
        LXDialog::closeEvent(event);
    }
}
