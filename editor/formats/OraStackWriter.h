#pragma once

#include <QByteArray>

struct OraStack;

/// Writes the list of layers, "stack.xml": what OpenRaster has words for in these, the rest in a namespace of
/// our own, and what came from elsewhere as it came. Any thread.
namespace OraStackWriter {
QByteArray Write(const OraStack& stack);
} // namespace OraStackWriter
