#include "gui/ReusedImage.h"

namespace {
/// A window that has become small gives back what it needed when it was large.
constexpr std::size_t Ample = 4;
} // namespace

bool ReusedImage::IsFitting(std::size_t count) const
{
    return m_Memory && m_Memory.use_count() == 1 && m_Memory->count >= count &&
           m_Memory->count / Ample <= count;
}

QImage ReusedImage::OfSize(const QSize& size)
{
    const std::size_t count = std::size_t(size.width()) * std::size_t(size.height());
    if (!IsFitting(count)) m_Memory = std::make_shared<Memory>(count);
    auto holder = std::make_unique<std::shared_ptr<Memory>>(m_Memory);
    const auto release = [](void* held) { delete static_cast<std::shared_ptr<Memory>*>(held); };
    auto* const bits = reinterpret_cast<uchar*>(m_Memory->pixels.get());
    return QImage(bits, size.width(), size.height(), size.width() * int(sizeof(QRgb)),
                  QImage::Format_ARGB32_Premultiplied, release, holder.release());
}
