#pragma once

#include <QtPlugin>

class IDocumentView;

/// A tool that works on the current document view. Main thread only.
class IDocumentViewTool
{
public:
    virtual ~IDocumentViewTool() = default;

    /// @param view  the one view object of the plug-in, not owned; null means that no view is current.
    /// False when the tool can't follow.
    virtual bool SetDocumentView(IDocumentView* view) = 0;
};

Q_DECLARE_INTERFACE(IDocumentViewTool, "IDocumentViewTool/1.0")
