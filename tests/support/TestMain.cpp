#include "support/TestRegistry.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>
#include <map>
#include <string>

namespace {
std::map<std::string, TestRegistry::Factory>& Factories()
{
    static std::map<std::string, TestRegistry::Factory> factories;
    return factories;
}
} // namespace

bool TestRegistry::Add(const char* name, Factory factory)
{
    Factories()[name] = std::move(factory);
    return true;
}

#if defined(__SANITIZE_THREAD__)
/// Qt Test's watchdog thread and its uninstrumented wait condition look like a race to the sanitizer, which
/// calls this by its own name.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" Q_DECL_EXPORT const char* __tsan_default_suppressions()
{
    return "race:QTest::qRun\n"
           "race:QWaitCondition::~QWaitCondition\n";
}
#endif

/// `program CASE [Qt Test arguments]` runs one class; without a case, all of them.
int main(int argc, char** argv)
{
    // Tests need no display and leave the person's own settings alone.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);

    QStringList arguments = application.arguments();
    std::string wanted;
    if (arguments.size() > 1 && !arguments[1].startsWith('-')) wanted = arguments.takeAt(1).toStdString();

    int failures = 0;
    int run = 0;
    for (const auto& [name, factory] : Factories()) {
        if (!wanted.empty() && name != wanted) continue;
        const std::unique_ptr<QObject> test = factory();
        failures += QTest::qExec(test.get(), arguments);
        ++run;
    }
    if (run == 0) {
        std::fprintf(stderr, "No test is called \"%s\".\n", wanted.c_str());
        return 1;
    }
    return failures;
}
