#pragma once

#include <QtPlugin>

/// A tool that follows the state bits of the document, whatever view shows it. Main thread only.
class IDocumentState
{
public:
    virtual ~IDocumentState() = default;

    /// The tool's document state bits.
    virtual quint64 GetDocumentState() = 0;

    /// Tells of a change of the document's state bits, after it happened.
    virtual void DocumentStateChanged(const quint64& oldState, const quint64& newState) = 0;
};

Q_DECLARE_INTERFACE(IDocumentState, "IDocumentState/1.0")
