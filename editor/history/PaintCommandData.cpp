#include "history/PaintCommandData.h"

#include "history/DataStream.h"

class PaintCommandDataPrivate
{
public:
    unsigned int id = 0;
    LXImage32 undoImage;
    LXImage32 redoImage;
    QRect before;
    QRect after;
};

namespace {
LXImage32 Part(const LXImage32& image, const QRect& part)
{
    return part.isEmpty() ? image : CopyPart(image, part);
}
} // namespace

PaintCommandData::PaintCommandData() : m_pPrivate(std::make_unique<PaintCommandDataPrivate>()) {}

PaintCommandData::~PaintCommandData() = default;

void PaintCommandData::SetLayerID(unsigned int id)
{
    m_pPrivate->id = id;
}

void PaintCommandData::SetUndoImage(const LXImage32& image, const QRect& part)
{
    m_pPrivate->undoImage = Part(image, part);
}

void PaintCommandData::SetRedoImage(const LXImage32& image, const QRect& part)
{
    m_pPrivate->redoImage = Part(image, part);
}

void PaintCommandData::SetUndoGeometry(const QRect& geometry)
{
    m_pPrivate->before = geometry;
}

void PaintCommandData::SetRedoGeometry(const QRect& geometry)
{
    m_pPrivate->after = geometry;
}

unsigned int PaintCommandData::GetLayerID() const
{
    return m_pPrivate->id;
}

const LXImage32& PaintCommandData::GetUndoImage() const
{
    return m_pPrivate->undoImage;
}

const LXImage32& PaintCommandData::GetRedoImage() const
{
    return m_pPrivate->redoImage;
}

QRect PaintCommandData::GetUndoGeometry() const
{
    return m_pPrivate->before;
}

QRect PaintCommandData::GetRedoGeometry() const
{
    return m_pPrivate->after;
}

bool PaintCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->id << m_pPrivate->before << m_pPrivate->after;
        DataStream::WriteImage(stream, m_pPrivate->undoImage);
        DataStream::WriteImage(stream, m_pPrivate->redoImage);
    });
}

bool PaintCommandData::Deserialize(IReader* reader)
{
    PaintCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.id >> read.before >> read.after;
        read.undoImage = DataStream::ReadImage(stream);
        read.redoImage = DataStream::ReadImage(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void PaintCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoImage = LXImage32();
    m_pPrivate->redoImage = LXImage32();
}

qint64 PaintCommandData::GetMemoryCost() const
{
    return DataStream::BytesOf(m_pPrivate->undoImage) + DataStream::BytesOf(m_pPrivate->redoImage);
}
