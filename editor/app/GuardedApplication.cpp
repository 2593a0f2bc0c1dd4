#include "app/GuardedApplication.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {
/// At once, without the destructors: they would touch what the failure has left half done.
[[noreturn]] void EndWithReport(const char* what)
{
    std::fprintf(stderr, "An unexpected failure ends the program: %s\n", what);
    std::fflush(stderr);
    std::_Exit(GuardedApplication::FailureExitCode);
}
} // namespace

bool GuardedApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        EndWithReport(error.what());
    } catch (...) {
        EndWithReport("unknown exception");
    }
}
