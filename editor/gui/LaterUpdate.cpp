#include "gui/LaterUpdate.h"

#include <utility>

namespace {
constexpr int LockMilliseconds = 100;
} // namespace

LaterUpdate::LaterUpdate(QObject* owner, std::function<void()> update) : QObject(owner), m_Timer(this)
{
    m_Timer.setSingleShot(true);
    connect(&m_Timer, &QTimer::timeout, this, std::move(update));
}

void LaterUpdate::AskAfterPicture()
{
    // Such a timer waits until all posted events are handled, and repaints are posted.
    m_Timer.start(0);
}

void LaterUpdate::AskAboutLock()
{
    if (!m_Timer.isActive()) m_Timer.start(LockMilliseconds);
}
