#include "fillcan/FillCanProgress.h"

#include <QTimer>

#include <chrono>

namespace {
using namespace std::chrono_literals;

constexpr int Steps = 600;
constexpr auto StepTime = 100ms;
} // namespace

FillCanProgress::FillCanProgress(QWidget* parent) : LXOperationProgressDlg(parent)
{
    SetProgressRange(0, Steps);
    SetProgressPos(0);
    SetProgressLabel(tr("Fill can:"));
    setFixedSize(sizeHint());

    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &FillCanProgress::Step);
    timer->start(StepTime);
}

void FillCanProgress::Step()
{
    SetProgressPos(GetProgressPos() < GetProgressMaximum() ? GetProgressPos() + 1 : GetProgressMinimum());
}
