#include "support/TestRegistry.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>
#include <QWidget>

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

namespace {
/// What the classes after this one would take for a person's doing.
QStringList LeftBehind()
{
    QStringList left;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) left << "a mouse button that is down";
    if (QGuiApplication::keyboardModifiers() != Qt::NoModifier) left << "a modifier key that is down";
    if (QGuiApplication::overrideCursor()) left << "an override cursor";
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) left << QString("a visible %1").arg(window->metaObject()->className());
    }
    return left;
}
} // namespace

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

/// `program CASE [Qt Test arguments]` runs one class; without a case, all of them, and then none may leave
/// anything to the next.
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
        std::unique_ptr<QObject> test = factory();
        failures += QTest::qExec(test.get(), arguments);
        test.reset();
        ++run;
        if (!wanted.empty()) continue;
        for (const QString& thing : LeftBehind()) {
            std::fprintf(stderr, "FAIL!  : %s leaves %s behind.\n", name.c_str(), qPrintable(thing));
            ++failures;
        }
    }
    if (run == 0) {
        std::fprintf(stderr, "No test is called \"%s\".\n", wanted.c_str());
        return 1;
    }
    return failures;
}
