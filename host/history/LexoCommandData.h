#pragma once

#include "ZKHostExport.h"

#include <QtGlobal>

class IReader;
class IWriter;

/// The values of a command before and after, apart from what the command does with them, so that they can be
/// kept elsewhere. Images in it share their tiles with the document. Main thread.
class ZK_HOST_EXPORT LexoCommandData
{
public:
    virtual ~LexoCommandData();

    /// Which record this is; a CommandDataType number.
    virtual int GetDataType() const = 0;
    /// Writes all values; false when the writer fails.
    virtual bool Serialize(IWriter* writer) const = 0;
    /// Replaces all values; on false (short or damaged input) they are unchanged.
    virtual bool Deserialize(IReader* reader) = 0;
    /// Drops what Deserialize brings back, so that it costs no memory meanwhile. The base, for data that
    /// costs next to nothing, keeps all.
    virtual void ReleaseSerializeData();

    /// About how many bytes the values hold; tiles shared with the document count too.
    virtual qint64 GetMemoryCost() const;
};
