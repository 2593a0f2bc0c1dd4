#pragma once

#include "document/TextContent.h"
#include "formats/OraBrush.h"
#include "image/LXAdjustment.h"

class QXmlStreamReader;
class QXmlStreamWriter;

/// What text and adjustment layers are, as elements of an OpenRaster file's list of layers. A text's own
/// pixels stand in the file like those of every layer: others show them, and they are what is shown here too
/// until the text changes, whether its font is at hand or not. Any thread.
namespace OraKinds {
/// @param textureEntry  as in OraBrush::Write()
void WriteText(QXmlStreamWriter& xml, const TextContent& text, const QString& textureEntry);
void WriteAdjustment(QXmlStreamWriter& xml, const LXAdjustment& adjustment);

/// The reader stands at the element's start, and afterwards at its end. False for what is damaged; numbers
/// beyond what an editor works with are brought to the nearest, words of a later version to the default.
/// @param texture  what is to be read into the text's brush
bool ReadText(QXmlStreamReader& xml, TextContent* text, OraBrush::Texture* texture);
bool ReadAdjustment(QXmlStreamReader& xml, LXAdjustment* adjustment);
} // namespace OraKinds
