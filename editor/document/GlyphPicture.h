#pragma once

#include <QImage>
#include <QRectF>

#include <optional>

class QRawFont;

/// A letter that its font holds as a picture and not as an outline, as fonts of colored emoji do. A value.
struct GlyphPicture
{
    QImage image; ///< premultiplied
    QRectF box;   ///< where it lies, in the font's pixels, from the letter's place on the baseline

    /// Nothing for a letter that can't be seen. Any thread, of the font's own objects.
    static std::optional<GlyphPicture> Of(const QRawFont& font, quint32 glyph);
};
