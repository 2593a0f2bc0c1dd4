#pragma once

#include <QtPlugin>

/// A tool that follows the state bits of the current document view; bit 0 is the view lock. Main thread only.
class IDocumentViewState
{
public:
    virtual ~IDocumentViewState() = default;

    /// The tool's view state bits.
    virtual quint64 GetDocumentViewState() = 0;

    /// Tells of a change of the view's state bits, after it happened.
    virtual void DocumentViewStateChanged(const quint64& oldState, const quint64& newState) = 0;
};

Q_DECLARE_INTERFACE(IDocumentViewState, "IDocumentViewState/1.0")
