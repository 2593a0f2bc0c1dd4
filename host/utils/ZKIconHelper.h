#pragma once

#include "ZKHostExport.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

/// Icons and pictures of the theme. A name may stand without its ".png". Main thread only.
class ZK_HOST_EXPORT ZKIconHelper
{
public:
    ZKIconHelper() = delete;

    /// An icon that also has a faint form for disabled controls.
    /// @param name  a picture of the theme, "theme:x.png", taken in every size and device ratio that there
    /// is, and of the look of the moment: the icon changes with it. A name that does not exist gives a null
    /// icon.
    static QIcon DisabledIcon(const QString& name);

    /// The same from a picture, whose device pixel ratio is kept.
    static QIcon DisabledIcon(const QPixmap& pixmap);

    /// A picture of the theme in its own size of 24 x 24 device independent pixels, for cursors.
    /// @param ratio  the device pixel ratio to draw for: above 1 "theme:x@2x.png" is taken, if it exists.
    /// 0 means the ratio of the program's densest screen. A name that does not exist gives a null picture.
    static QPixmap ThemePixmap(const QString& name, qreal ratio = 0);
};
