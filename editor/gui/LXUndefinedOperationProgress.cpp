#include "gui/LXUndefinedOperationProgress.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFuture>
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
    : LXDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    setModal(true);
}

LXUndefinedOperationProgress::~LXUndefinedOperationProgress() = default;

void LXUndefinedOperationProgress::Build()
{
    m_pLabel = new QLabel(m_Label, this);
    m_pBar = new QProgressBar(this);
    m_pLabel->setBuddy(m_pBar);
    m_pBar->setAccessibleName(m_Label);
    m_pBar->setRange(0, 0);
    m_pBar->setTextVisible(false);
    m_pBar->setMinimumWidth(280);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(m_pLabel);
    layout->addWidget(m_pBar);
}

void LXUndefinedOperationProgress::SetProgressLabel(const QString& label)
{
    m_Label = label;
    if (!m_pLabel) return;
    m_pLabel->setText(label);
    m_pBar->setAccessibleName(label);
}

int LXUndefinedOperationProgress::Execute()
{
    QEventLoop moment;
    bool hasEnded = false;
    const auto end = [&] {
        hasEnded = true;
        moment.quit();
        if (isVisible()) Accept();
    };
    QTimer::singleShot(WaitBeforeShowing, &moment, &QEventLoop::quit);
    QFuture<void> work = QtConcurrent::run([&] {
        Run();
        QMetaObject::invokeMethod(&moment, end, Qt::QueuedConnection);
    });
    moment.exec(QEventLoop::ExcludeUserInputEvents);
    if (!hasEnded) Exec();
    work.waitForFinished();
    return QDialog::Accepted;
}

// Most work is done before anybody has to see the dialog, so its parts are made when it shows.
void LXUndefinedOperationProgress::setVisible(bool visible)
{
    if (visible && !m_pLabel) Build();
    LXDialog::setVisible(visible);
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
