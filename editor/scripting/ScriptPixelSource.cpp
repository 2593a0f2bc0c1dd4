#include "scripting/ScriptPixelSource.h"

#include "scripting/PictureStatistics.h"
#include "scripting/ScriptArguments.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <limits>
#include <utility>

namespace {
constexpr int Far = std::numeric_limits<int>::max() / 4;
constexpr int LargestRegion = 1 << 20; ///< pixels; a script wants to see single ones

QJSValue ValueAt(const QImage& picture, int x, int y)
{
    if (picture.format() == QImage::Format_Grayscale8) return QJSValue(int(picture.constScanLine(y)[x]));
    return QJSValue(ScriptArguments::OfColor(QColor::fromRgba(picture.pixel(x, y))));
}

QJSValue CountsToArray(QJSEngine& engine, const PictureStatistics::Counts& counts)
{
    QJSValue array = engine.newArray(static_cast<uint>(counts.size()));
    for (std::size_t i = 0; i < counts.size(); ++i)
        array.setProperty(static_cast<quint32>(i), counts[i]);
    return array;
}
} // namespace

ScriptPixelSource::ScriptPixelSource(ScriptContext& context, Access access)
    : ScriptObject(context, nullptr), m_Access(std::move(access))
{}

QImage ScriptPixelSource::ReadAll() const
{
    const QRect geometry = m_Access.geometry();
    if (geometry.isEmpty()) throw ScriptError(QStringLiteral("There are no pixels."));
    return m_Access.read(geometry);
}

QImage ScriptPixelSource::Read(const QJSValue& rect) const
{
    return rect.isUndefined() ? ReadAll() : m_Access.read(ScriptArguments::ToRect(rect));
}

QJSValue ScriptPixelSource::GetGeometry() const
{
    return Call([this] { return ScriptArguments::OfRect(Context().GetEngine(), m_Access.geometry()); });
}

QJSValue ScriptPixelSource::GetBounds() const
{
    return Call([this] {
        const QRect geometry = m_Access.geometry();
        const QRect bounds =
            geometry.isEmpty() ? QRect() : PictureStatistics::Bounds(m_Access.read(geometry));
        return ScriptArguments::OfRect(Context().GetEngine(), bounds.translated(geometry.topLeft()));
    });
}

QJSValue ScriptPixelSource::pixel(const QJSValue& x, const QJSValue& y) const
{
    return Call([&] {
        const QPoint point(ScriptArguments::ToInteger(x, "x", -Far, Far),
                           ScriptArguments::ToInteger(y, "y", -Far, Far));
        return ValueAt(m_Access.read(QRect(point, QSize(1, 1))), 0, 0);
    });
}

QJSValue ScriptPixelSource::region(const QJSValue& x, const QJSValue& y, const QJSValue& width,
                                   const QJSValue& height) const
{
    return Call([&] {
        const QRect rect(ScriptArguments::ToInteger(x, "x", -Far, Far),
                         ScriptArguments::ToInteger(y, "y", -Far, Far),
                         ScriptArguments::ToInteger(width, "width", 1, Far),
                         ScriptArguments::ToInteger(height, "height", 1, Far));
        if (qint64(rect.width()) * rect.height() > LargestRegion) {
            throw ScriptError(QStringLiteral("A region has at most %1 pixels.").arg(LargestRegion));
        }
        const QImage picture = m_Access.read(rect);
        QJSValue list = Context().GetEngine().newArray(static_cast<uint>(rect.width() * rect.height()));
        for (int row = 0; row < rect.height(); ++row) {
            for (int column = 0; column < rect.width(); ++column) {
                list.setProperty(static_cast<quint32>(row * rect.width() + column),
                                 ValueAt(picture, column, row));
            }
        }
        return list;
    });
}

QString ScriptPixelSource::checksum(const QJSValue& rect) const
{
    return Call([&] {
        const QImage picture = Read(rect);
        const int rowBytes = picture.width() * picture.depth() / 8;
        QCryptographicHash hash(QCryptographicHash::Sha1);
        for (int y = 0; y < picture.height(); ++y)
            hash.addData(reinterpret_cast<const char*>(picture.constScanLine(y)), rowBytes);
        return QString::fromLatin1(hash.result().toHex());
    });
}

QJSValue ScriptPixelSource::histogram(const QJSValue& rect) const
{
    return Call([&] {
        QJSEngine& engine = Context().GetEngine();
        QJSValue histogram = engine.newObject();
        const auto channels = PictureStatistics::Histogram(Read(rect));
        for (const auto& [name, counts] : channels)
            histogram.setProperty(name, CountsToArray(engine, counts));
        return histogram;
    });
}

QJSValue ScriptPixelSource::compare(const QString& path, const QJSValue& tolerance) const
{
    return Call([&] {
        const int allowed =
            tolerance.isUndefined() ? 0 : ScriptArguments::ToInteger(tolerance, "tolerance", 0, 255);
        const QImage other(path);
        if (other.isNull())
            throw ScriptError(QStringLiteral("\"%1\" is no picture that can be read.").arg(path));
        const QImage own = ReadAll();
        if (own.size() != other.size()) {
            throw ScriptError(QStringLiteral("\"%1\" has %2 × %3 pixels, and %4 × %5 are expected.")
                                  .arg(path, QString::number(other.width()), QString::number(other.height()),
                                       QString::number(own.width()), QString::number(own.height())));
        }
        const PictureStatistics::Difference difference = PictureStatistics::Compare(own, other, allowed);
        QJSValue result = Context().GetEngine().newObject();
        result.setProperty(QStringLiteral("same"), difference.count == 0);
        result.setProperty(QStringLiteral("count"), difference.count);
        result.setProperty(QStringLiteral("largest"), difference.largest);
        result.setProperty(QStringLiteral("first"),
                           difference.count == 0
                               ? QJSValue(QJSValue::NullValue)
                               : ScriptArguments::OfPoint(Context().GetEngine(),
                                                          difference.first + m_Access.geometry().topLeft()));
        return result;
    });
}

void ScriptPixelSource::save(const QString& path) const
{
    Call([&] {
        if (!ReadAll().save(path)) throw ScriptError(QStringLiteral("\"%1\" can't be written.").arg(path));
    });
}
