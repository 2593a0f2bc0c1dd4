#pragma once

#include <QJSValue>
#include <QObject>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>

class QFileDialog;
class QMenu;
class QWidget;
class ScriptContext;

/// What a script expects to open while one of its calls runs: windows and pop-up menus that hold the call
/// until they are closed. Each is met by the longest waiting expectation, checked against it and answered.
/// One that nobody expected, or that is not as expected, is closed and ends the script with its words.
///
/// The progress of jobs isn't a question and is left alone. Main thread only.
class ExpectedWindows : public QObject
{
    Q_OBJECT

public:
    /// Watches the program's windows from now on.
    ExpectedWindows(ScriptContext& context, QObject* parent);

    struct Expectation
    {
        enum class Kind
        {
            Dialog, ///< message boxes too
            File,
            Menu,
        };

        Kind kind = Kind::Dialog;
        QJSValue title;    ///< a text or a regular expression; undefined: any
        QJSValue text;     ///< likewise, of a message box
        QJSValue callback; ///< undefined for none
        bool hasAnswer = false;
        QString answer;      ///< the text of a button; empty closes the window
        QStringList paths;   ///< of a file dialog; empty cancels
        QStringList entries; ///< the way through a menu
    };

    void Add(const Expectation& expectation) { m_Waiting.push_back(expectation); }

    void Clear() { m_Waiting.clear(); }

    int CountWaiting() const { return static_cast<int>(m_Waiting.size()); }

    /// What was expected and has not come, in words; empty for nothing.
    QString WordsOfWaiting() const;

    /// Title and text of all windows that were met, the first one first.
    QStringList GetSeen() const { return m_Seen; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Meet(QWidget* window);
    void MeetMenu(QMenu* menu, int callNumber);
    void Answer(QWidget* window, const Expectation& expectation);
    void AnswerFile(QFileDialog* dialog, const QStringList& paths);
    void Press(QWidget* window, const QString& answer);
    /// Empty when it is as expected.
    QString Complaint(const QWidget* window, const Expectation& expectation) const;
    bool IsMatch(const QJSValue& expected, const QString& seen) const;
    void RunCallback(const QJSValue& callback, QWidget* window);
    /// Closes the window and ends the script.
    void Fail(QWidget* window, const QString& message);

    ScriptContext& m_Context;
    std::deque<Expectation> m_Waiting; ///< the longest waiting first
    QStringList m_Seen;
};
