#include "scripting/ScriptSurface.h"

#include "scripting/ScriptApplication.h"
#include "scripting/ScriptDialogs.h"
#include "scripting/ScriptDocuments.h"
#include "scripting/ScriptExpect.h"
#include "scripting/ScriptFaults.h"
#include "scripting/ScriptHistory.h"
#include "scripting/ScriptInput.h"
#include "scripting/ScriptLayers.h"
#include "scripting/ScriptMenus.h"
#include "scripting/ScriptPixels.h"
#include "scripting/ScriptProgram.h"
#include "scripting/ScriptReports.h"
#include "scripting/ScriptTools.h"
#include "scripting/ScriptView.h"
#include "scripting/ScriptWidgets.h"

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
        {"application", Make<ScriptApplication>},
        {"dialogs", Make<ScriptDialogs>},
        {"documents", Make<ScriptDocuments>},
        {"expect", Make<ScriptExpect>},
        {"faults", Make<ScriptFaults>, true},
        {"history", Make<ScriptHistory>},
        {"input", Make<ScriptInput>},
        {"layers", Make<ScriptLayers>},
        {"menus", Make<ScriptMenus>},
        {"pixels", Make<ScriptPixels>},
        {"reports", Make<ScriptReports>},
        {"script", Make<ScriptProgram>},
        {"tools", Make<ScriptTools>},
        {"view", Make<ScriptView>},
        {"widgets", Make<ScriptWidgets>},
    };
    return entries;
}

const QVector<const char*>& ScriptSurface::GlobalFunctions()
{
    static const QVector<const char*> names{"print", "step", "include", "wait", "idle", "random", "grab"};
    return names;
}
