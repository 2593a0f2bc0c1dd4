#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QObject>
#include <QString>

class ScriptContext;

/// `expect`: what a script takes for granted. When something differs, the error says what was expected, what
/// was seen and, inside lists and objects, where they differ first. The last argument of each call names the
/// thing.
class ZK_EDITOR_EXPORT ScriptExpect : public QObject
{
    Q_OBJECT

public:
    ScriptExpect(ScriptContext& context, QObject* parent);

    /// Same type and value; lists and objects by their contents.
    Q_INVOKABLE void equal(const QJSValue& seen, const QJSValue& expected, const QString& what = QString());
    Q_INVOKABLE void notEqual(const QJSValue& seen, const QJSValue& unwanted,
                              const QString& what = QString());
    /// Anything but false, 0, "", null, undefined and NaN.
    Q_INVOKABLE void ok(const QJSValue& seen, const QString& what = QString());
    /// Numbers, or lists of numbers, of which none differs by more than the tolerance.
    Q_INVOKABLE void near(const QJSValue& seen, const QJSValue& expected, double tolerance,
                          const QString& what = QString());
    /// A text that contains a text, or a list that contains an item.
    Q_INVOKABLE void contains(const QJSValue& seen, const QJSValue& part, const QString& what = QString());
    /// The function throws, and the message contains the part.
    Q_INVOKABLE void throws(QJSValue function, const QString& part = QString(),
                            const QString& what = QString());
    Q_INVOKABLE void fail(const QString& message);

private:
    void Complain(const QString& what, const QString& complaint, const QString& expected, const QString& seen,
                  const QString& difference = QString());

    ScriptContext& m_Context;
};
