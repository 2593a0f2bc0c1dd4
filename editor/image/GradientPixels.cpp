#include "image/GradientPixels.h"

#include "image/PixelMath.h"

#include <QColor>
#include <QGradient>
#include <QLineF>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {
struct Color
{
    double red;
    double green;
    double blue;
    double alpha;
};

/// Premultiplied or not, as the colors are mixed.
Color ToMix(const QColor& color, bool isPremultiplied)
{
    const double factor = isPremultiplied ? color.alphaF() : 1.0;
    return {color.redF() * factor, color.greenF() * factor, color.blueF() * factor, color.alphaF()};
}

Color Mix(const Color& from, const Color& to, double part)
{
    const auto mix = [part](double a, double b) { return a + (b - a) * part; };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue),
            mix(from.alpha, to.alpha)};
}

LXRGBA32i ToPixel(const Color& color, bool isPremultiplied)
{
    const auto toByte = [](double value) {
        return static_cast<quint32>(PixelMath::RoundPositive(std::clamp(value * 255, 0.0, 255.0)));
    };
    const quint32 alpha = toByte(color.alpha);
    if (alpha == 0) return LXRGBA32i();
    const double factor = isPremultiplied ? 1 / color.alpha : 1.0;
    return LXRGBA32i(alpha << PixelMath::AlphaShift | toByte(color.red * factor) << 16 |
                     toByte(color.green * factor) << 8 | toByte(color.blue * factor));
}

/// The colors at even steps from 0 to 1, both included.
std::vector<LXRGBA32i> MakeTable(const QGradient& gradient)
{
    const bool isPremultiplied = gradient.interpolationMode() == QGradient::ColorInterpolation;
    const QGradientStops stops = gradient.stops();
    std::vector<LXRGBA32i> table(GradientRule::TableSize);
    int next = 0;
    for (int i = 0; i < GradientRule::TableSize; ++i) {
        const double position = static_cast<double>(i) / (GradientRule::TableSize - 1);
        while (next < stops.size() && stops[next].first <= position)
            ++next;
        const Color before = ToMix(stops[std::max(next - 1, 0)].second, isPremultiplied);
        Color color = before;
        if (next > 0 && next < stops.size()) {
            const double start = stops[next - 1].first;
            color = Mix(before, ToMix(stops[next].second, isPremultiplied),
                        (position - start) / (stops[next].first - start));
        }
        table[static_cast<std::size_t>(i)] = ToPixel(color, isPremultiplied);
    }
    return table;
}

GradientRule::Spread SpreadOf(const QGradient& gradient)
{
    switch (gradient.spread()) {
    case QGradient::RepeatSpread: return GradientRule::Spread::Repeat;
    case QGradient::ReflectSpread: return GradientRule::Spread::Reflect;
    default: return GradientRule::Spread::Pad;
    }
}

bool IsCommon(const QGradient& gradient)
{
    if (gradient.coordinateMode() != QGradient::LogicalMode) return false;
    if (gradient.type() != QGradient::RadialGradient)
        return gradient.type() == QGradient::LinearGradient || gradient.type() == QGradient::ConicalGradient;
    const auto& radial = static_cast<const QRadialGradient&>(gradient);
    return radial.focalPoint() == radial.center() && radial.focalRadius() == 0 && radial.radius() > 0;
}
} // namespace

std::optional<GradientPixels> GradientPixels::Of(const QBrush& brush)
{
    const QGradient* const gradient = brush.gradient();
    if (gradient == nullptr || !IsCommon(*gradient) || !brush.transform().isAffine() ||
        !brush.transform().isInvertible()) {
        return std::nullopt;
    }
    GradientPixels pixels;
    pixels.m_Rule.spread = SpreadOf(*gradient);
    switch (gradient->type()) {
    case QGradient::RadialGradient: pixels.SetRadial(static_cast<const QRadialGradient&>(*gradient)); break;
    case QGradient::ConicalGradient:
        pixels.SetConical(static_cast<const QConicalGradient&>(*gradient));
        break;
    default: pixels.SetLinear(static_cast<const QLinearGradient&>(*gradient)); break;
    }
    pixels.m_ToPlain = brush.transform().inverted() * pixels.m_ToPlain;
    pixels.m_Table = MakeTable(*gradient);
    return pixels;
}

void GradientPixels::SetLinear(const QLinearGradient& gradient)
{
    m_Kind = Kind::Linear;
    const QPointF way = gradient.finalStop() - gradient.start();
    const double squared = QPointF::dotProduct(way, way);
    // A line without length has its first color everywhere.
    const QPointF step = squared > 0 ? way / squared : QPointF();
    m_ToPlain = QTransform(step.x(), 0, step.y(), 1, -QPointF::dotProduct(step, gradient.start()), 0);
}

void GradientPixels::SetRadial(const QRadialGradient& gradient)
{
    m_Kind = Kind::Radial;
    const double scale = 1 / gradient.radius();
    m_ToPlain = QTransform::fromTranslate(-gradient.center().x(), -gradient.center().y()) *
                QTransform::fromScale(scale, scale);
}

/// Angles count against the clock.
void GradientPixels::SetConical(const QConicalGradient& gradient)
{
    m_Kind = Kind::Conical;
    m_Rule.spread = GradientRule::Spread::Repeat;
    m_Rule.start = gradient.angle() / 360;
    m_ToPlain = QTransform::fromTranslate(-gradient.center().x(), -gradient.center().y());
}

void GradientPixels::Row(int x, int y, int count, LXRGBA32i* pixels) const
{
    const QPointF first = m_ToPlain.map(QPointF(x + 0.5, y + 0.5));
    const GradientRow row{m_Table.data(), first.x(), first.y(), m_ToPlain.m11(), m_ToPlain.m12(), count};
    switch (m_Kind) {
    case Kind::Linear: GradientKernels::LinearRow(m_Rule, row, pixels); break;
    case Kind::Radial: GradientKernels::RadialRow(m_Rule, row, pixels); break;
    case Kind::Conical: GradientKernels::ConicalRow(m_Rule, row, pixels); break;
    }
}
