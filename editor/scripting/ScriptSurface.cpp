#include "scripting/ScriptSurface.h"

#include "scripting/ScriptExpect.h"
#include "scripting/ScriptFaults.h"
#include "scripting/ScriptProgram.h"
#include "scripting/ScriptReports.h"

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
        {"expect", Make<ScriptExpect>},
        {"reports", Make<ScriptReports>},
        {"faults", Make<ScriptFaults>, true},
    };
    return entries;
}

const QVector<const char*>& ScriptSurface::GlobalFunctions()
{
    static const QVector<const char*> names{"print", "step", "include", "wait", "idle", "random", "grab"};
    return names;
}
