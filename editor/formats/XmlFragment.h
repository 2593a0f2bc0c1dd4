#pragma once

#include <QByteArray>

class QXmlStreamReader;
class QXmlStreamWriter;

/// Whole XML elements as bytes, to be carried along without being understood. Any thread.
namespace XmlFragment {
/// Appends the element at whose start the reader stands; afterwards the reader stands at its end. False for
/// what is damaged, deeper than `depth`, or refers to an entity.
bool Take(QXmlStreamReader& reader, int depth, QByteArray* bytes);

/// Writes elements that Take() gave, one behind the other.
void Put(const QByteArray& bytes, QXmlStreamWriter& writer);

/// The text without what no XML document may hold, such as most control characters.
QString CleanText(const QString& text);
} // namespace XmlFragment
