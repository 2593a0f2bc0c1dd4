#pragma once

#include "scripting/ScriptObject.h"

#include <QString>
#include <QStringList>

class ExpectedWindows;

/// `dialogs`: says before what opens and how it is answered. A window that nobody expected ends the script.
class ScriptDialogs : public ScriptObject
{
    Q_OBJECT
    /// How many expectations wait.
    Q_PROPERTY(int waiting READ GetWaiting)
    /// Title and text of each window that has opened, the first one first.
    Q_PROPERTY(QStringList seen READ GetSeen)

public:
    ScriptDialogs(ScriptContext& context, QObject* parent);

    int GetWaiting() const;
    QStringList GetSeen() const;

    /// A message box or a dialog.
    /// @param what      `{title, text, answer}`: texts, or regular expressions for title and text; the answer
    ///                  is the text of a button, "" closes the window
    /// @param callback  gets the window, before the answer
    Q_INVOKABLE void expect(const QJSValue& what, const QJSValue& callback = QJSValue());
    /// A file dialog.
    /// @param paths    a path, a list of paths, or null to cancel
    /// @param options  `{title}`
    Q_INVOKABLE void expectFile(const QJSValue& paths, const QJSValue& options = QJSValue());
    /// A pop-up menu that holds the call.
    /// @param choice  texts of entries, parted by "/", or a function that gets the menu
    Q_INVOKABLE void expectMenu(const QJSValue& choice);
    /// Forgets what was expected.
    Q_INVOKABLE void clear();

private:
    ExpectedWindows* m_pWindows;
};
