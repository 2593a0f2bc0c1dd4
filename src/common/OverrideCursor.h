#pragma once

#include <QCursor>
#include <QGuiApplication>

/// A cursor for the whole program, for as long as the scope lasts. Main thread only.
class OverrideCursor
{
public:
    explicit OverrideCursor(const QCursor& cursor) { QGuiApplication::setOverrideCursor(cursor); }

    ~OverrideCursor() { QGuiApplication::restoreOverrideCursor(); }

    Q_DISABLE_COPY(OverrideCursor)
};
