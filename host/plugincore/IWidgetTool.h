#pragma once

#include <QtPlugin>

class QWidget;

/// A tool that wants to know the editor's main widget, for instance as the parent of its shortcuts and
/// dialogs. Main thread only.
class IWidgetTool
{
public:
    virtual ~IWidgetTool() = default;

    /// Called once between the plug-in's start and the first show of the main window.
    /// @param widget  stays the caller's; may be null.
    virtual void SetMainWidget(QWidget* widget) = 0;
};

Q_DECLARE_INTERFACE(IWidgetTool, "IWidgetTool/1.0")
