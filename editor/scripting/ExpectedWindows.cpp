#include "scripting/ExpectedWindows.h"

#include "gui/LXOperationProgressDlg.h"
#include "guicore/LXMessageBox.h"
#include "scripting/InputDriver.h"
#include "scripting/ScriptContext.h"
#include "scripting/ScriptError.h"
#include "scripting/ScriptObject.h"
#include "scripting/ScriptWidget.h"
#include "scripting/WidgetHand.h"
#include "scripting/WidgetReading.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QJSEngine>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace {
using Kind = ExpectedWindows::Expectation::Kind;

bool IsMessageBox(const QWidget* window)
{
    return qobject_cast<const LXMessageBox*>(window) || qobject_cast<const QMessageBox*>(window);
}

/// Title and, of a message box, its text.
QString WordsOf(const QWidget* window)
{
    if (qobject_cast<const QMenu*>(window)) {
        return QStringLiteral("a menu with %1").arg(WidgetReading::Items(window).join(QStringLiteral(", ")));
    }
    QString words = QStringLiteral("\"%1\"").arg(window->windowTitle());
    if (IsMessageBox(window)) words += QStringLiteral(": \"%1\"").arg(WidgetReading::Text(window));
    return words;
}

QString WordsOf(const QJSValue& expected)
{
    if (expected.isUndefined()) return QStringLiteral("anything");
    return expected.isRegExp() ? expected.toString() : QStringLiteral("\"%1\"").arg(expected.toString());
}

QString WordsOf(const ExpectedWindows::Expectation& expectation)
{
    switch (expectation.kind) {
    case Kind::File: return QStringLiteral("a file dialog");
    case Kind::Menu: return QStringLiteral("a menu");
    case Kind::Dialog: break;
    }
    QString words = WordsOf(expectation.title);
    if (!expectation.text.isUndefined()) words += QStringLiteral(": ") + WordsOf(expectation.text);
    return words;
}

Kind KindOf(const QWidget* window)
{
    if (qobject_cast<const QMenu*>(window)) return Kind::Menu;
    return qobject_cast<const QFileDialog*>(window) ? Kind::File : Kind::Dialog;
}

/// Whatever the window thinks of it.
void CloseWindow(QWidget* window)
{
    const QPointer<QWidget> alive(window);
    auto* dialog = qobject_cast<QDialog*>(window);
    if (dialog) {
        dialog->reject();
    } else {
        window->close();
    }
    if (alive && alive->isVisible() && dialog) dialog->done(QDialog::Rejected);
}
} // namespace

ExpectedWindows::ExpectedWindows(ScriptContext& context, QObject* parent)
    : QObject(parent), m_Context(context)
{
    // Only the program's own file dialogs can be answered.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qApp->installEventFilter(this);
}

QString ExpectedWindows::WordsOfWaiting() const
{
    QStringList words;
    for (const Expectation& expectation : m_Waiting)
        words.append(WordsOf(expectation));
    return words.join(QStringLiteral("; "));
}

bool ExpectedWindows::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
    auto* shown = static_cast<QWidget*>(watched);
    // Not now: the window isn't on the screen yet, and its own loop has not begun.
    if (auto* menu = qobject_cast<QMenu*>(shown)) {
        QTimer::singleShot(
            0, menu,
            [this, menu, self = QPointer<ExpectedWindows>(this), callNumber = ScriptObject::CallNumber()] {
                if (self) MeetMenu(menu, callNumber);
            });
    } else if (shown->isWindow() && shown->isModal() && !qobject_cast<LXOperationProgressDlg*>(shown)) {
        QTimer::singleShot(0, shown, [this, shown, self = QPointer<ExpectedWindows>(this)] {
            if (self) Meet(shown);
        });
    }
    return false;
}

void ExpectedWindows::MeetMenu(QMenu* menu, int callNumber)
{
    if (!menu->isVisible()) return;
    // A menu that lets the call go on is the script's to use; one that holds it has to be answered here.
    const bool isInCall = callNumber % 2 == 1 && callNumber == ScriptObject::CallNumber();
    const bool isExpected = !m_Waiting.empty() && m_Waiting.front().kind == Kind::Menu;
    if (isInCall || isExpected) Meet(menu);
}

void ExpectedWindows::Meet(QWidget* window)
{
    if (!window->isVisible()) return;
    m_Seen.append(WordsOf(window));
    if (m_Context.IsEnding()) {
        // Nobody answers any more.
        CloseWindow(window);
        return;
    }
    if (m_Waiting.empty()) {
        Fail(window, QStringLiteral("Nobody expected %1").arg(WordsOf(window)));
        return;
    }
    // Taken before it is run: the answer may open the next window.
    const Expectation expectation = m_Waiting.front();
    m_Waiting.pop_front();
    const QString complaint = Complaint(window, expectation);
    if (!complaint.isEmpty()) {
        Fail(window, complaint);
        return;
    }
    try {
        Answer(window, expectation);
    } catch (const ScriptError& error) {
        Fail(window, QString::fromUtf8(error.what()));
    }
}

QString ExpectedWindows::Complaint(const QWidget* window, const Expectation& expectation) const
{
    const QString text = WidgetReading::Text(window);
    if (IsMessageBox(window) && expectation.text.isUndefined()) {
        return QStringLiteral("What is expected has no text, but a message box opened: %1")
            .arg(WordsOf(window));
    }
    const bool isRight = KindOf(window) == expectation.kind &&
                         IsMatch(expectation.title, window->windowTitle()) &&
                         (!IsMessageBox(window) || IsMatch(expectation.text, text));
    if (isRight) return {};
    return QStringLiteral("Another window opened than was expected\n  expected: %1\n  seen:     %2")
        .arg(WordsOf(expectation), WordsOf(window));
}

bool ExpectedWindows::IsMatch(const QJSValue& expected, const QString& seen) const
{
    if (expected.isUndefined()) return true;
    if (!expected.isRegExp()) return expected.toString() == seen;
    return expected.property(QStringLiteral("test")).callWithInstance(expected, {seen}).toBool();
}

void ExpectedWindows::Answer(QWidget* window, const Expectation& expectation)
{
    const QPointer<QWidget> alive(window);
    // The key that has opened the window is let go before another one is pressed.
    m_Context.GetInput().HoldModifiers(Qt::NoModifier);
    // As a window manager does; off screen there is none.
    if (expectation.kind != Kind::Menu) window->activateWindow();
    if (expectation.callback.isCallable()) RunCallback(expectation.callback, window);
    if (m_Context.IsEnding()) {
        if (alive) CloseWindow(window);
        return;
    }
    if (!alive || !alive->isVisible()) return;

    if (expectation.kind == Kind::File) {
        AnswerFile(static_cast<QFileDialog*>(window), expectation.paths);
    } else if (expectation.kind == Kind::Menu && !expectation.entries.isEmpty()) {
        WidgetHand(m_Context.GetInput()).ChooseInMenu(static_cast<QMenu*>(window), expectation.entries);
    } else if (expectation.hasAnswer) {
        Press(window, expectation.answer);
    } else {
        Fail(window, QStringLiteral("The script left %1 open").arg(WordsOf(window)));
    }
}

void ExpectedWindows::RunCallback(const QJSValue& callback, QWidget* window)
{
    // What is thrown need not be an error object, so it is caught over there.
    QJSEngine& engine = m_Context.GetEngine();
    QJSValue run = engine.evaluate(QStringLiteral(
        "(function(run, window) { try { run(window); } catch (error) { return { error: error }; } })"));
    const QJSValue handle = engine.newQObject(new ScriptWidget(m_Context, window));
    const QJSValue result = run.call({callback, handle});
    if (result.isObject()) m_Context.Fail(result.property(QStringLiteral("error")));
}

void ExpectedWindows::Press(QWidget* window, const QString& answer)
{
    if (answer.isEmpty()) {
        window->close();
        return;
    }
    QStringList texts;
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        const QString text = WidgetReading::WithoutMnemonic(button->text());
        if (text == answer && button->isVisible()) {
            WidgetHand(m_Context.GetInput()).Click(button);
            return;
        }
        if (!text.isEmpty() && button->isVisible()) texts.append(text);
    }
    throw ScriptError(QStringLiteral("%1 has no button \"%2\"; there are: %3")
                          .arg(WordsOf(window), answer, texts.join(QStringLiteral(", "))));
}

void ExpectedWindows::AnswerFile(QFileDialog* dialog, const QStringList& paths)
{
    if (paths.isEmpty()) {
        dialog->reject();
        return;
    }
    QStringList names;
    for (const QString& path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        names.append(paths.size() == 1 ? absolute : QStringLiteral("\"%1\"").arg(absolute));
    }
    auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (!field) throw ScriptError(QStringLiteral("The file dialog has no field for a name."));
    // What is selected in the list would count more than the name.
    if (auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView")))
        list->clearSelection();
    // At once: typing would open the list of completions.
    field->setText(names.join(' '));
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
        const auto* box = qobject_cast<QDialogButtonBox*>(button->parentWidget());
        if (!box || box->buttonRole(button) != QDialogButtonBox::AcceptRole) continue;
        WidgetHand(m_Context.GetInput()).Click(button);
        return;
    }
}

void ExpectedWindows::Fail(QWidget* window, const QString& message)
{
    m_Context.Fail(message);
    CloseWindow(window);
}
