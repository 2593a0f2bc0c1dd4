#include "scripting/ScriptEngine.h"

#include "scripting/InputDriver.h"
#include "scripting/QuietEditor.h"
#include "scripting/ScriptHost.h"
#include "scripting/ScriptSurface.h"
#include "scripting/ScriptWatchdog.h"
#include "scripting/WindowPicture.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QJSEngine>
#include <QMainWindow>

#include <utility>

namespace {
constexpr int GraceAfterLimit = 5000; // ms
constexpr int QuietLimit = 30000;     // ms

/// A call of a C++ function takes just the arguments that it names and drops the rest; `print` takes any
/// number.
constexpr const char* PrintOfMany = "(function (print) {"
                                    "  return (...values) => print(values.map(String).join(' '))"
                                    "})";

/// Saves what the screen shows; empty when that isn't possible.
QString SavePicture(const ScriptContext& context)
{
    const ScriptOptions& options = context.GetOptions();
    if (options.pictureFolder.isEmpty() || !QDir().mkpath(options.pictureFolder)) return QString();
    const QString name = QFileInfo(options.file).completeBaseName() + QStringLiteral(".png");
    const QString path = QDir(options.pictureFolder).absoluteFilePath(name);
    return WindowPicture::OfScreen(context.GetHost().GetWindow()).save(path) ? path : QString();
}
} // namespace

ScriptEngine::ScriptEngine(ScriptHost& host, ScriptOptions options)
    : m_pEngine(std::make_unique<QJSEngine>()),
      m_pInput(std::make_unique<InputDriver>()),
      m_pContext(std::make_unique<ScriptContext>(host, *m_pInput, *m_pEngine, std::move(options))),
      m_pSurface(std::make_unique<QObject>())
{
    InstallSurface();
}

ScriptEngine::~ScriptEngine() = default;

void ScriptEngine::InstallSurface()
{
    QJSValue global = m_pEngine->globalObject();
    for (const ScriptSurface::Entry& entry : ScriptSurface::Entries()) {
        if (entry.isForFaults && !m_pContext->GetOptions().allowFaults) continue;
        // Objects with a parent stay ours: the engine's garbage collector leaves them alone.
        QObject* object = entry.make(*m_pContext, m_pSurface.get());
        global.setProperty(QString::fromLatin1(entry.name), m_pEngine->newQObject(object));
    }
    const QJSValue script = global.property(QStringLiteral("script"));
    for (const char* name : ScriptSurface::GlobalFunctions()) {
        const QString function = QString::fromLatin1(name);
        global.setProperty(function, script.property(function));
    }
    const QString print = QStringLiteral("print");
    global.setProperty(print, m_pEngine->evaluate(QLatin1String(PrintOfMany)).call({script.property(print)}));
}

ScriptOutcome ScriptEngine::Run()
{
    const ScriptOptions& options = m_pContext->GetOptions();
    const ScriptWatchdog watchdog(
        ScriptWatchdog::Milliseconds(options.timeLimit), ScriptWatchdog::Milliseconds(GraceAfterLimit),
        [this] { OnTimeLimit(); },
        [stuck = options.onStuck] {
            if (stuck) stuck();
        });
    const ScriptFile::Result result = ScriptFile::Run(*m_pEngine, QFileInfo(options.file).absoluteFilePath());
    if (!result.hasThrown) FinishScript();
    return CollectOutcome(result);
}

/// What the script has set going may still fail it.
void ScriptEngine::FinishScript()
{
    // A gesture that the script leaves open ends here, as any other.
    m_pContext->GetInput().LetGo();
    const QString busy = QuietEditor::WaitUntilQuiet(*m_pContext, QuietLimit);
    if (!busy.isEmpty()) {
        m_pContext->Fail(tr("the script ended, but not everything comes to rest: %1").arg(busy));
    } else if (const QWidget* window = QApplication::activeModalWidget()) {
        m_pContext->Fail(tr("a window stands open at the end: %1").arg(WindowPicture::WordsOf(window)));
    } else {
        m_pContext->CheckEnd();
    }
}

void ScriptEngine::OnTimeLimit()
{
    m_isTimedOut = true;
    m_pEngine->setInterrupted(true);
    // The script may wait inside the event loop of a modal window, where no interruption reaches it.
    QMetaObject::invokeMethod(this, &ScriptEngine::DismissModalWindows, Qt::QueuedConnection);
}

void ScriptEngine::DismissModalWindows()
{
    QWidget* window = QApplication::activeModalWidget();
    if (!window) return;
    m_Dismissed << WindowPicture::WordsOf(window);
    if (auto* dialog = qobject_cast<QDialog*>(window)) {
        dialog->reject();
    } else {
        window->close();
    }
    // The next one shows when this one's loop has ended.
    QMetaObject::invokeMethod(this, &ScriptEngine::DismissModalWindows, Qt::QueuedConnection);
}

ScriptOutcome ScriptEngine::CollectOutcome(const ScriptFile::Result& result) const
{
    ScriptOutcome outcome;
    if (m_pContext->HasFailed()) {
        outcome = ScriptOutcome::FromThrown(m_pContext->GetFailure());
    } else if (m_isTimedOut) {
        outcome = TimedOut();
    } else if (m_pContext->IsEnding()) {
        outcome.exitCode = m_pContext->GetExitCode();
    } else if (result.hasThrown) {
        outcome = ScriptOutcome::FromThrown(result.thrown);
    }
    if (outcome.kind == ScriptOutcome::Kind::Finished) return outcome;

    outcome.step = m_pContext->GetStep();
    if (outcome.file.isEmpty()) outcome.file = QFileInfo(m_pContext->GetOptions().file).absoluteFilePath();
    outcome.pictureFile = SavePicture(*m_pContext);
    return outcome;
}

ScriptOutcome ScriptEngine::TimedOut() const
{
    ScriptOutcome outcome;
    outcome.kind = ScriptOutcome::Kind::TimedOut;
    const double seconds = m_pContext->GetOptions().timeLimit / 1000.0;
    outcome.message = tr("the script did not end within %1 s").arg(seconds);
    for (const QString& words : m_Dismissed)
        outcome.message += '\n' + tr("  open was: %1").arg(words);
    return outcome;
}
