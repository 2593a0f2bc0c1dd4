#pragma once

#include "scripting/ScriptContext.h"
#include "scripting/ScriptError.h"

#include <QJSEngine>
#include <QObject>

#include <exception>
#include <type_traits>

class LXDocumentInterface;
class ZKDocumentView;

/// The base of what scripts see of the editor. Main thread only.
///
/// Properties and invokables are named as scripts write them, in small letters. Each does its work inside
/// Call(), so that whatever goes wrong becomes an error of the script.
class ScriptObject : public QObject
{
    Q_OBJECT

protected:
    ScriptObject(ScriptContext& context, QObject* parent) : QObject(parent), m_Context(context) {}

    ScriptContext& Context() const { return m_Context; }

    /// The result of `body`; when that throws, the script's error and an empty result. What was to be deleted
    /// later is gone when the outermost call returns.
    template <typename Body>
    auto Call(const Body& body) const -> decltype(body())
    {
        using Result = decltype(body());
        const Depth depth;
        try {
            return body();
        } catch (const std::exception& error) {
            // A script that is ending already has its own reason.
            if (!m_Context.IsEnding()) m_Context.ThrowError(QString::fromUtf8(error.what()));
        }
        if constexpr (!std::is_void_v<Result>) return Result();
    }

    /// Of the active window. Both throw a ScriptError when no document is open.
    ZKDocumentView* RequireView() const;
    LXDocumentInterface* RequireDocument() const;

    /// Hands an object without a parent to the script, whose it is from then on. A strict script that sets a
    /// property that isn't there gets an error.
    QJSValue Hand(QObject* object) const;

public:
    /// Counts the outermost calls of the script, so that an event handler can tell whether a call that it
    /// saw begin is still running: the same odd number then. Even between the calls.
    static int CallNumber();

private:
    /// A call that is running.
    struct Depth
    {
        Depth();
        ~Depth();
        Q_DISABLE_COPY(Depth)
    };

    ScriptContext& m_Context;
};
