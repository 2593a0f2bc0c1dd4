#pragma once

#include <QPersistentModelIndex>
#include <QPointer>

class LXDocumentInterface;

/// A layer that is kept hold of while layers are added, removed and moved around it. Main thread only.
class LayerReference
{
public:
    LayerReference(LXDocumentInterface* document, int row);

    /// False once the layer or its document is gone.
    bool IsValid() const;

    /// All throw a ScriptError when it is gone.
    LXDocumentInterface* Document() const;
    int Row() const;
    unsigned int Id() const;

    const QPersistentModelIndex& Index() const { return m_Index; }

private:
    QPointer<LXDocumentInterface> m_pDocument;
    QPersistentModelIndex m_Index;
};
