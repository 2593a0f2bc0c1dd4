#include "history/GuideStream.h"

#include <QDataStream>

void GuideStream::Write(QDataStream& stream, const LXGuides& guides)
{
    stream << quint32(guides.size());
    for (const LXGuide& guide : guides) {
        stream << qint32(guide.orientation) << guide.position;
    }
}

LXGuides GuideStream::Read(QDataStream& stream)
{
    quint32 count = 0;
    stream >> count;
    LXGuides guides;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        qint32 orientation = 0;
        LXGuide guide;
        stream >> orientation >> guide.position;
        if (orientation != Qt::Horizontal && orientation != Qt::Vertical) {
            stream.setStatus(QDataStream::ReadCorruptData);
        }
        guide.orientation = orientation == Qt::Vertical ? Qt::Vertical : Qt::Horizontal;
        guides.append(guide);
    }
    return guides;
}
