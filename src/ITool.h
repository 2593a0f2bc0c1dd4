#pragma once

#include <QtPlugin>

class LToolBoxWidget;
class LXToolWidgetManager;
class LayersWidget;
class ZKActivateAction;
class ZKToolBarManager;

/// A tool that can be chosen. Main thread only.
class ITool
{
public:
    virtual ~ITool() = default;

    /// Makes the tool active or inactive; false means that the change was refused.
    virtual bool Activate(bool active) = 0;

    virtual bool IsActive() = 0;

    /// The action that stands for this tool in the tool group; null before the tool made it.
    virtual ZKActivateAction* GetActivateAction() = 0;

    /// Hand over parts of the editor, which stay the editor's; any may be null.
    virtual void SetToolBox(LToolBoxWidget* toolBox) = 0;
    virtual void SetToolBarManager(ZKToolBarManager* manager) = 0;
    virtual void SetToolWidgetManager(LXToolWidgetManager* manager) = 0;
    virtual void SetLayersWidget(LayersWidget* layersWidget) = 0;

    /// Keeps the tool's state for the next start. Called once, at shut-down.
    virtual void SaveSettings() = 0;

    /// Restores the tool's state. Called once, when all tools stand.
    virtual void LoadSettings() = 0;
};

Q_DECLARE_INTERFACE(ITool, "ITool/1.0")
