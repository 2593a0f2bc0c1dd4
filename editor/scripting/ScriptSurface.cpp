#include "scripting/ScriptSurface.h"

#include "scripting/ScriptProgram.h"

namespace {
template <typename Class>
QObject* Make(ScriptContext& context, QObject* parent)
{
    return new Class(context, parent);
}
} // namespace

const QVector<ScriptSurface::Entry>& ScriptSurface::Entries()
{
    static const QVector<Entry> entries{
        {"script", Make<ScriptProgram>},
    };
    return entries;
}

const QVector<const char*>& ScriptSurface::GlobalFunctions()
{
    static const QVector<const char*> names{"print", "step", "include"};
    return names;
}
