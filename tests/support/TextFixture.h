#pragma once

#include "document/TextContent.h"

#include <QFont>
#include <QString>

/// Texts in a font that every machine with the packages of the tests has.
namespace TextFixture {
inline QFont Font(int size)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(size);
    return font;
}

inline TextContent Text(const QString& text, int size, const QPointF& position)
{
    TextContent content;
    content.text = text;
    content.font = Font(size);
    content.position = position;
    return content;
}

/// "shalom": reads from the right.
inline QString Hebrew()
{
    return QString::fromUtf8("\u05e9\u05dc\u05d5\u05dd");
}

/// One letter of two code units that the font has, between two of one.
inline QString WithPair()
{
    return QString::fromUtf8("a\U0001d400b");
}
} // namespace TextFixture
