#pragma once

#include "document/LXGuide.h"

class QDataStream;

/// Guides in the serial form of commands.
namespace GuideStream {
void Write(QDataStream& stream, const LXGuides& guides);
/// What is too short or names no orientation leaves the stream in an error state.
LXGuides Read(QDataStream& stream);
} // namespace GuideStream
