#pragma once

#include "document/LXPathElement.h"

#include <QDataStream>

/// Paths in the serial form of command data.
namespace PathStream {
void WritePath(QDataStream& stream, const LXPath& path);
/// Marks the stream as damaged for a length that its bytes can't hold.
LXPath ReadPath(QDataStream& stream);

void WriteSubPaths(QDataStream& stream, const LXSubPaths& path);
LXSubPaths ReadSubPaths(QDataStream& stream);
} // namespace PathStream
