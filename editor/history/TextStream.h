#pragma once

#include "document/TextContent.h"

#include <QDataStream>

#include <memory>

/// The serial form of texts in command data.
namespace TextStream {
/// Null is written as what it is.
void Write(QDataStream& stream, const std::shared_ptr<const TextContent>& text);
std::shared_ptr<const TextContent> Read(QDataStream& stream);
} // namespace TextStream

QDataStream& operator<<(QDataStream& stream, const TextContent& text);
QDataStream& operator>>(QDataStream& stream, TextContent& text);
