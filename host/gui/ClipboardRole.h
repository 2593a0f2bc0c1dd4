#pragma once

#include "image/LXImage.h"

#include <QMetaType>

Q_DECLARE_METATYPE(LXImage32)

/// What the first column of a clipboard's list holds of each row, beside what is seen.
namespace ClipboardRole {
enum : int
{
    Image = Qt::UserRole, ///< LXImage32: the pixels
    Origin, ///< QPoint: where in its document the top left was; invalid for a picture from elsewhere
};
} // namespace ClipboardRole
