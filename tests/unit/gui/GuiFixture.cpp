#include "GuiFixture.h"

#include "image/LXImage.h"
#include "image/LXImageConvert.h"

#include <random>

namespace GuiFixture {
LXImage32 MakeImage(const QSize& size, const std::function<QRgb(int, int)>& colorAt)
{
    QImage pixels(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(pixels.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = colorAt(x, y);
    }
    LXImage32 image;
    ConvertImage(pixels, image);
    return image;
}

OwnedDocument MakeDocument(const QSize& size, const std::function<QRgb(int, int)>& colorAt)
{
    OwnedDocument document(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    document->SetDocumentSize(size);
    document->AddLayer("Background", MakeImage(size, colorAt), QPoint(0, 0));
    document->SetDocumentName("Picture");
    return document;
}

OwnedDocument MakeDocument(const QSize& size, const QColor& color)
{
    return MakeDocument(size, [&](int, int) { return color.rgba(); });
}

OwnedDocument MakePhoto(const QSize& size)
{
    std::mt19937 random(7);
    return MakeDocument(size, [&](int x, int y) {
        const double down = double(y) / size.height();
        const double across = double(x) / size.width();
        const int grain = int(random() % 12);
        const double hill = 0.62 + 0.06 * std::sin(across * 9) + 0.03 * std::sin(across * 31);
        if (down < hill) return qRgb(int(120 + 90 * down) + grain, int(150 + 60 * down) + grain, 235 - grain);
        return qRgb(int(70 + 60 * across) + grain, int(110 - 70 * (down - hill)) + grain, 60 + grain);
    });
}

QString Hex(const QColor& color)
{
    return color.name(QColor::HexArgb);
}
} // namespace GuiFixture
