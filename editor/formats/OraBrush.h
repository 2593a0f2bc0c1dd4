#pragma once

class QBrush;
class QXmlStreamAttributes;
class QXmlStreamWriter;

/// The brush of a text, as attributes of the text's element: a gradient or a texture, beside the color that
/// stands in an attribute of its own. Any thread.
namespace OraBrush {
/// Writes nothing for one color, for hatches, and for a texture of more than 256 KiB as a PNG: the list of
/// layers has to stay small enough to be read.
void Write(QXmlStreamWriter& xml, const QBrush& brush);

/// Changes the brush if the attributes tell of one. False for what is damaged; words of a later version
/// change nothing.
bool Read(const QXmlStreamAttributes& attributes, QBrush* brush);
} // namespace OraBrush
