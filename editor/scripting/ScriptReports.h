#pragma once

#include "EditorExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class ScriptContext;

/// `reports`: the lines that the program writes to its log from the script's start on, failure reports of the
/// tools among them. They still go where they went before.
class ZK_EDITOR_EXPORT ScriptReports : public QObject
{
    Q_OBJECT
    /// Oldest first.
    Q_PROPERTY(QStringList lines READ GetLines)

public:
    ScriptReports(ScriptContext& context, QObject* parent);
    ~ScriptReports() override;

    QStringList GetLines() const;

    /// Forgets the lines so far.
    Q_INVOKABLE void clear();
    /// Handles events until a line contains the text, and answers the line. An error when none came within
    /// the limit in milliseconds.
    Q_INVOKABLE QString wait(const QString& part, int limit = DefaultLimit);

private:
    static constexpr int DefaultLimit = 10000;

    ScriptContext& m_Context;
};
