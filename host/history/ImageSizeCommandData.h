#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QSize>

#include <memory>

class ImageSizeCommandDataPrivate;
class LXDocumentInterface;

/// A document's size and resolution before and after.
class ZK_HOST_EXPORT ImageSizeCommandData : public LexoCommandData
{
public:
    /// How pixels are made; the rows in which a dialog offers them.
    enum ResampleType : int
    {
        NearestNeighbour = 0,
        Bilinear = 1,
        Bicubic = 2
    };

    ImageSizeCommandData();
    ~ImageSizeCommandData() override;

    /// Sizes in pixels, resolutions in pixels per inch.
    /// @param resample  false: the pixels stay and only the resolution changes
    void Init(LXDocumentInterface* document, const QSize& oldSize, double oldResolution, const QSize& newSize,
              double newResolution, bool resample, ResampleType type);

    QSize GetOldSize() const;
    double GetOldResolution() const;
    QSize GetNewSize() const;
    double GetNewResolution() const;
    bool IsResampled() const;
    ResampleType GetResampleType() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    friend class ImageSizeCommandDataPrivate;

    std::unique_ptr<ImageSizeCommandDataPrivate> m_pPrivate;
};
