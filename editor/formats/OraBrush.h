#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

class QBrush;
class QXmlStreamAttributes;
class QXmlStreamWriter;

/// The brush of a text, as attributes of the text's element: what it has beside the color that stands in an
/// attribute of its own. The pixels of a texture are an entry of the archive. Any thread.
namespace OraBrush {
/// Where the pixels of a texture stand.
struct Texture
{
    QString entry;
    QByteArray png; ///< of older files, where the pixels stood among the attributes; then there is no entry

    bool IsNone() const { return entry.isEmpty() && png.isEmpty(); }
};

/// As it is drawn: one of two colors has those of the brush. Null for brushes of another kind.
QImage TextureOf(const QBrush& brush);

/// @param textureEntry  where TextureOf() will stand; empty for a brush without one
void Write(QXmlStreamWriter& xml, const QBrush& brush, const QString& textureEntry);

/// Changes the brush, which has its color, if the attributes tell of more. One with a texture keeps that
/// color and gets the texture's place; the texture itself is told. False for what is damaged; words of a
/// later version change nothing.
bool Read(const QXmlStreamAttributes& attributes, QBrush* brush, Texture* texture);
} // namespace OraBrush
