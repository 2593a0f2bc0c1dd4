#pragma once

#include "ZKHostExport.h"

#include "document/LXDocumentInterface.h"

/// Makes and drops documents. Any thread; the documents themselves belong to the main thread.
class ZK_HOST_EXPORT LXDocumentFactory
{
public:
    static LXDocumentFactory* Instance();

    /// An empty document without layers and without a canvas; the caller releases it.
    LXDocumentInterface* Create(LXDocumentInterface::NativeFormat format);
    /// A document with the same content, sharing all tiles; neither locked nor busy. What floats above layers
    /// is put down in the copy. Null for null.
    LXDocumentInterface* Copy(const LXDocumentInterface* document);
    /// Deletes the document and gives back its tiles. Null is harmless.
    void Release(LXDocumentInterface* document);

private:
    LXDocumentFactory() = default;
};
