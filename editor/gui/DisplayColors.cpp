#include "gui/DisplayColors.h"

#include "core/ZKCMSManager.h"
#include "document/LXDocumentInterface.h"

#include <algorithm>

namespace {
void ConvertPremultiplied(const ZKCMSTransform& toScreen, LXRGBA32i* pixels, int count)
{
    LXRGBA32i* const end = pixels + count;
    const bool isOpaque = std::all_of(pixels, end, [](LXRGBA32i pixel) { return pixel.Alpha() == 0xFF; });
    if (!isOpaque) {
        std::transform(pixels, end, pixels,
                       [](LXRGBA32i pixel) { return LXRGBA32i(qUnpremultiply(pixel.value)); });
    }
    toScreen(pixels, count);
    if (!isOpaque) {
        std::transform(pixels, end, pixels,
                       [](LXRGBA32i pixel) { return LXRGBA32i(qPremultiply(pixel.value)); });
    }
}

ZKCMSTransform ToScreen(const LXDocumentInterface* document)
{
    return ZKCMSManager::GetInstance()->ToDisplay(document ? document->GetICCProfile() : ZKCMSProfile());
}
} // namespace

void DisplayColors::Convert(const ZKCMSTransform& toScreen, QImage& image, const QRect& part)
{
    if (toScreen.IsEmpty()) return;

    const bool isPremultiplied = image.format() == QImage::Format_ARGB32_Premultiplied;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        auto* const row = reinterpret_cast<LXRGBA32i*>(image.scanLine(y)) + part.left();
        if (isPremultiplied) {
            ConvertPremultiplied(toScreen, row, part.width());
        } else {
            toScreen(row, part.width());
        }
    }
}

QImage DisplayColors::Shown(const LXDocumentInterface* document, const QImage& picture)
{
    QImage shown = picture;
    Convert(ToScreen(document), shown, shown.rect());
    return shown;
}

QColor DisplayColors::Shown(const LXDocumentInterface* document, const QColor& color)
{
    QColor shown = color;
    ToScreen(document)(shown);
    return shown;
}

QColor DisplayColors::ShownOwn(const QColor& color)
{
    QColor shown = color;
    ZKCMSManager::GetInstance()->OwnToDisplay()(shown);
    return shown;
}

QImage DisplayColors::ShownOwn(const QImage& picture)
{
    QImage shown = picture;
    Convert(ZKCMSManager::GetInstance()->OwnToDisplay(), shown, shown.rect());
    return shown;
}
