#pragma once

class OraAttributes;
class QFont;
class QXmlStreamWriter;

/// The font of a text, as attributes of the text's element. Any thread.
namespace OraFont {
void Write(QXmlStreamWriter& xml, const QFont& font);

/// Numbers beyond what fonts know are brought to the nearest, words of a later version are left out.
void Read(OraAttributes& attributes, QFont* font);
} // namespace OraFont
