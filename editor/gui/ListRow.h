#pragma once

#include <QRect>
#include <QString>

class QImage;
class QPainter;
class QPalette;
class QStyleOptionViewItem;

/// What the rows of the lists of layers and of paths have in common. Sizes are viewport pixels.
namespace ListRow {
constexpr int Height = 48;
constexpr int PictureSize = 36;
constexpr int EyeWidth = 32; ///< the eye stands first, over the whole height
constexpr int Gap = 8;
constexpr int SmallIcon = 16;

/// The place of the eye, and of the first picture after it.
QRect EyeOf(const QRect& row);
QRect PictureOf(const QRect& row);

/// The ground of the row as the style has it: selected, under the pointer.
void PaintGround(QPainter& painter, const QStyleOptionViewItem& option);
/// A picture in its frame, over the checker that tells transparency; the target of painting has an accent.
void PaintPicture(QPainter& painter, const QRect& frame, const QImage& picture, bool isTarget,
                  const QPalette& palette);
/// What has no picture shows what it is, in the same frame.
/// @param name  of an icon of the theme
void PaintSign(QPainter& painter, const QRect& frame, const QString& name, bool isTarget,
               const QPalette& palette);
/// A small icon of the theme in the middle of the place.
void PaintIcon(QPainter& painter, const QRect& place, const QString& name, bool dim);
void PaintEye(QPainter& painter, const QRect& row, bool isOpen);
/// The name, elided, dim when what it names isn't shown, and the frame of the focus.
void PaintName(QPainter& painter, const QRect& place, const QString& name, bool dim,
               const QStyleOptionViewItem& option);
} // namespace ListRow
