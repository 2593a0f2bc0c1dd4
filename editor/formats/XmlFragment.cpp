#include "formats/XmlFragment.h"

#include <QSet>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {
/// Keeps the prefixes that the author chose; the writer would invent others.
void PutNamespaces(const QXmlStreamReader& reader, QXmlStreamWriter& writer)
{
    QSet<QString> declared;
    const auto declare = [&](const QString& prefix, const QString& space) {
        if (prefix.isEmpty() || prefix == QLatin1String("xml") || declared.contains(prefix)) return;
        declared.insert(prefix);
        writer.writeNamespace(space, prefix);
    };
    declare(reader.prefix().toString(), reader.namespaceUri().toString());
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        declare(attribute.prefix().toString(), attribute.namespaceUri().toString());
    }
}

void PutToken(const QXmlStreamReader& reader, QXmlStreamWriter& writer)
{
    if (reader.tokenType() != QXmlStreamReader::StartElement) {
        writer.writeCurrentToken(reader);
        return;
    }
    PutNamespaces(reader, writer);
    writer.writeStartElement(reader.namespaceUri().toString(), reader.name().toString());
    writer.writeAttributes(reader.attributes());
}

bool IsContent(const QXmlStreamReader& reader)
{
    switch (reader.tokenType()) {
    case QXmlStreamReader::StartElement:
    case QXmlStreamReader::EndElement:
    case QXmlStreamReader::Characters:
    case QXmlStreamReader::Comment: return true;
    default: return false;
    }
}
} // namespace

bool XmlFragment::Take(QXmlStreamReader& reader, int depth, QByteArray* bytes)
{
    // On its own: a writer begins at the front of what it is given.
    QByteArray taken;
    QXmlStreamWriter writer(&taken);
    int level = 0;
    while (!reader.atEnd()) {
        if (reader.tokenType() == QXmlStreamReader::EntityReference) return false;
        if (reader.isStartElement() && ++level > depth) return false;
        if (IsContent(reader)) PutToken(reader, writer);
        if (reader.isEndElement() && --level == 0) {
            bytes->append(taken);
            return true;
        }
        reader.readNext();
    }
    return false;
}

void XmlFragment::Put(const QByteArray& bytes, QXmlStreamWriter& writer)
{
    if (bytes.isEmpty()) return;
    // Space between words of others may mean something.
    const bool isFormatting = writer.autoFormatting();
    writer.setAutoFormatting(false);
    // Closes the tag before: namespaces would go into it, and out with it.
    writer.writeCharacters(QString());
    QXmlStreamReader reader("<f>" + bytes + "</f>");
    int level = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement()) --level;
        if (level > 0 && IsContent(reader)) PutToken(reader, writer);
        if (reader.isStartElement()) ++level;
    }
    writer.setAutoFormatting(isFormatting);
}

QString XmlFragment::CleanText(const QString& text)
{
    QString clean;
    clean.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar letter = text[i];
        if (letter.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            clean += letter;
            clean += text[++i];
            continue;
        }
        const ushort code = letter.unicode();
        const bool isSpace = code == '\t' || code == '\n' || code == '\r';
        if (letter.isSurrogate() || code >= 0xFFFE || (code < 0x20 && !isSpace)) continue;
        clean += letter;
    }
    return clean;
}
