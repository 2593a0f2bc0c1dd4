#pragma once

#include <QApplication>

/// The application object of the program. An exception that comes out of an event handler ends the program
/// with a report: Qt's event loop can't carry it, and nobody knows any more what of the editor still stands.
class GuardedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    /// The exit code after such an end.
    static constexpr int FailureExitCode = 4;

    bool notify(QObject* receiver, QEvent* event) override;
};
