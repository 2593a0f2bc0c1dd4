#pragma once

#include "document/TextContent.h"
#include "image/LXAdjustment.h"

class QXmlStreamReader;
class QXmlStreamWriter;

/// What text and adjustment layers are, as elements of an OpenRaster file's list of layers. A text's own
/// pixels stand in the file like those of every layer: others show them, and they are what is shown here too
/// until the text changes, whether its font is at hand or not. Any thread.
namespace OraKinds {
void WriteText(QXmlStreamWriter& xml, const TextContent& text);
void WriteAdjustment(QXmlStreamWriter& xml, const LXAdjustment& adjustment);

/// The reader stands at the element's start, and afterwards at its end. False for what is damaged; numbers
/// beyond what an editor works with are brought to the nearest, words of a later version to the default.
bool ReadText(QXmlStreamReader& xml, TextContent* text);
bool ReadAdjustment(QXmlStreamReader& xml, LXAdjustment* adjustment);
} // namespace OraKinds
