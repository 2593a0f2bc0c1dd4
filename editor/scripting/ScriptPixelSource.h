#pragma once

#include "scripting/ScriptObject.h"

#include <QImage>
#include <QRect>

#include <functional>

/// Pixels that a script reads: of a layer, a mask, the selection or the merged picture. Coordinates are
/// document pixels. Colors read as "#aarrggbb"; masks and the selection as numbers from 0 to 255. What lies
/// outside reads as transparent, as the mask's default, or as not selected.
class ScriptPixelSource : public ScriptObject
{
    Q_OBJECT
    /// The rectangle that has pixels of its own; null for none.
    Q_PROPERTY(QJSValue geometry READ GetGeometry)
    /// The smallest rectangle around what isn't transparent, or isn't 0; null for none.
    Q_PROPERTY(QJSValue bounds READ GetBounds)

public:
    /// What stands behind it. Both may throw a ScriptError.
    struct Access
    {
        std::function<QRect()> geometry;
        /// `Format_ARGB32`, or `Format_Grayscale8` for values.
        std::function<QImage(const QRect&)> read;
    };

    ScriptPixelSource(ScriptContext& context, Access access);

    QJSValue GetGeometry() const;
    QJSValue GetBounds() const;

    Q_INVOKABLE QJSValue pixel(const QJSValue& x, const QJSValue& y) const;
    /// Row by row, as one list.
    Q_INVOKABLE QJSValue region(const QJSValue& x, const QJSValue& y, const QJSValue& width,
                                const QJSValue& height) const;
    /// The same for the same pixels, on every machine. Without a rectangle: of all pixels.
    Q_INVOKABLE QString checksum(const QJSValue& rect = QJSValue()) const;
    /// How often each value from 0 to 255 stands there: `{red, green, blue, alpha}`, or `{value}`.
    Q_INVOKABLE QJSValue histogram(const QJSValue& rect = QJSValue()) const;
    /// Compares all pixels with a picture file. No channel may differ by more than the tolerance.
    /// Gives `{same, count, largest, first}`; colors of transparent pixels count as equal.
    Q_INVOKABLE QJSValue compare(const QString& path, const QJSValue& tolerance = QJSValue()) const;
    /// Writes all pixels to a picture file.
    Q_INVOKABLE void save(const QString& path) const;

private:
    QImage Read(const QJSValue& rect) const;
    QImage ReadAll() const;

    Access m_Access;
};
