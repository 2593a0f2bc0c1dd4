#pragma once

#include <QAbstractEventDispatcher>

/// Handles events, and timers that are due, until there are none: what the editor does after it has painted
/// the picture is done then.
inline void SettleEvents()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}
