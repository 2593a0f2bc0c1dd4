#include "history/ImageSizeCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/ImageSizeCommandData_p.h"

ImageSizeCommandData::ImageSizeCommandData() : m_pPrivate(std::make_unique<ImageSizeCommandDataPrivate>()) {}

ImageSizeCommandData::~ImageSizeCommandData() = default;

void ImageSizeCommandData::Init(LXDocumentInterface*, const QSize& oldSize, double oldResolution,
                                const QSize& newSize, double newResolution, bool resample, ResampleType type)
{
    m_pPrivate->oldSize = oldSize;
    m_pPrivate->oldResolution = oldResolution;
    m_pPrivate->newSize = newSize;
    m_pPrivate->newResolution = newResolution;
    m_pPrivate->isResampled = resample;
    m_pPrivate->type = type;
}

QSize ImageSizeCommandData::GetOldSize() const
{
    return m_pPrivate->oldSize;
}

double ImageSizeCommandData::GetOldResolution() const
{
    return m_pPrivate->oldResolution;
}

QSize ImageSizeCommandData::GetNewSize() const
{
    return m_pPrivate->newSize;
}

double ImageSizeCommandData::GetNewResolution() const
{
    return m_pPrivate->newResolution;
}

bool ImageSizeCommandData::IsResampled() const
{
    return m_pPrivate->isResampled;
}

ImageSizeCommandData::ResampleType ImageSizeCommandData::GetResampleType() const
{
    return m_pPrivate->type;
}

int ImageSizeCommandData::GetDataType() const
{
    return CommandDataType::ImageSize;
}

bool ImageSizeCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->oldSize << m_pPrivate->oldResolution << m_pPrivate->newSize
               << m_pPrivate->newResolution << m_pPrivate->isResampled << qint32(m_pPrivate->type)
               << m_pPrivate->before;
    });
}

bool ImageSizeCommandData::Deserialize(IReader* reader)
{
    ImageSizeCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.oldSize >> read.oldResolution >> read.newSize >> read.newResolution >>
            read.isResampled;
        DataStream::ReadEnum(stream, read.type, Bicubic);
        stream >> read.before;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void ImageSizeCommandData::ReleaseSerializeData()
{
    m_pPrivate->before.ReleaseImages();
}

qint64 ImageSizeCommandData::GetMemoryCost() const
{
    return m_pPrivate->before.GetMemoryCost();
}
