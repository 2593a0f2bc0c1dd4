#include "history/TextStream.h"

void TextStream::Write(QDataStream& stream, const std::shared_ptr<const TextContent>& text)
{
    stream << (text != nullptr);
    if (text) stream << *text;
}

std::shared_ptr<const TextContent> TextStream::Read(QDataStream& stream)
{
    bool isThere = false;
    stream >> isThere;
    if (!isThere) return nullptr;
    auto text = std::make_shared<TextContent>();
    stream >> *text;
    return text;
}

QDataStream& operator<<(QDataStream& stream, const TextContent& text)
{
    const TextDeformation& bent = text.deformation;
    return stream << text.text << text.font << text.brush << text.position << qint32(bent.style)
                  << qint32(bent.orientation) << bent.bend << bent.hDistortion << bent.vDistortion
                  << qint32(text.renderMode) << text.transform;
}

QDataStream& operator>>(QDataStream& stream, TextContent& text)
{
    TextDeformation& bent = text.deformation;
    qint32 style = 0;
    qint32 orientation = 0;
    qint32 mode = 0;
    stream >> text.text >> text.font >> text.brush >> text.position >> style >> orientation >> bent.bend >>
        bent.hDistortion >> bent.vDistortion >> mode >> text.transform;
    bent.style = style;
    bent.orientation = orientation;
    text.renderMode = mode;
    return stream;
}
