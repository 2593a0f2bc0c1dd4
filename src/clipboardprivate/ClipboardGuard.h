#pragma once

#include "common/Messages.h"
#include "common/Reports.h"

#include <QString>

#include <exception>

/// Runs what may throw inside a slot; a failure is reported and told, and goes no further. Main thread only.
template <class Work>
void GuardClipboard(const Reports::Place& place, const QString& failure, Work work)
{
    try {
        work();
        return;
    } catch (const std::exception& exception) {
        Reports::Exception(place, exception);
    } catch (...) {
        Reports::UnknownException(place);
    }
    Messages::ShowOperationError(failure);
}
