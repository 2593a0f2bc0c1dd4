#pragma once

#include "document/ColorSample.h"
#include "document/DocumentPath.h"

class QXmlStreamReader;
class QXmlStreamWriter;

/// Paths and color samples as elements of an OpenRaster file's list of layers. Any thread.
///
/// A sub path is a text of one anchor a line: "x y" for a corner, "x y inX inY outX outY" for a bend; an "m"
/// before it starts a contour.
namespace OraPaths {
void WritePath(QXmlStreamWriter& xml, const DocumentPath& path);
void WriteSample(QXmlStreamWriter& xml, const ColorSample& sample);

/// The reader stands at the element's start, and afterwards at its end. False for what is damaged; numbers
/// beyond what an editor works with are brought to the nearest.
bool ReadPath(QXmlStreamReader& xml, DocumentPath* path);
bool ReadSample(QXmlStreamReader& xml, ColorSample* sample);
} // namespace OraPaths
