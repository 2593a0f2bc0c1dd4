#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>
#include <memory>

/// The memory of an image that is made anew at every repaint. What is taken from the system each time costs
/// more than the pixels that are written into it: a page fault for each four kilobytes.
///
/// One thread at a time.
class ReusedImage
{
public:
    /// An image of this size, Format_ARGB32_Premultiplied, whose pixels are whatever stood there before. It
    /// may be kept as long as one likes: the memory is used again only when nobody holds the image any
    /// longer.
    /// @param size  not empty; throws std::bad_alloc when there is no memory for it
    QImage OfSize(const QSize& size);

private:
    struct Memory
    {
        explicit Memory(std::size_t pixelCount) : pixels(new QRgb[pixelCount]), count(pixelCount) {}

        std::unique_ptr<QRgb[]> pixels; ///< not cleared
        std::size_t count;
    };

    bool IsFitting(std::size_t count) const;

    std::shared_ptr<Memory> m_Memory;
};
