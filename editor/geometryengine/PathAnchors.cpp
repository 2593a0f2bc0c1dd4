#include "geometryengine/PathAnchors.h"

#include "geometryengine/CubicCurve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {
/// Closer than this two points are one: painter paths end their contours where they began, but for rounding.
constexpr double SamePlace = 1e-6;
/// Sine of the angle by which guides may miss one line and count as smooth.
constexpr double SmoothSine = 0.01;

bool AreSame(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}

double Cross(const QPointF& a, const QPointF& b)
{
    return a.x() * b.y() - a.y() * b.x();
}

double Length(const QPointF& way)
{
    return std::hypot(way.x(), way.y());
}

/// The element behind the last one of the contour that begins at this element.
int EndOfContour(const LXPath& path, int first)
{
    int end = first + 1;
    while (end < path.size() && !path[end].StartsContour())
        ++end;
    return end;
}

bool IsClosed(const LXPath& path, int first, int last)
{
    const QPointF gap = path[last].GetCenterPoint() - path[first].GetCenterPoint();
    return last > first && gap.manhattanLength() <= SamePlace;
}

void AddContour(const LXPath& path, int first, int end, std::vector<PathAnchor>& anchors)
{
    const int last = end - 1;
    const bool isClosed = IsClosed(path, first, last);
    for (int i = first; i < (isClosed ? last : end); ++i)
        anchors.push_back({i, i});
    if (isClosed) anchors[anchors.size() - std::size_t(last - first)].in = last;
}

CubicCurve CurveTo(const LXPath& path, int element)
{
    const LXPathElement& from = path[element - 1];
    const LXPathElement& to = path[element];
    return {from.GetCenterPoint(), from.GetOutGuide(), to.GetInGuide(), to.GetCenterPoint()};
}

bool IsLine(const CubicCurve& curve)
{
    return AreSame(curve.from, curve.fromGuide) && AreSame(curve.to, curve.toGuide);
}

struct Place
{
    int element = -1; ///< at the end of the curve
    double t = 0;
};

Place NearestPlace(const LXPath& path, const QPointF& point)
{
    Place nearest;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (int i = 1; i < path.size(); ++i) {
        if (path[i].StartsContour()) continue;
        const CubicCurve curve = CurveTo(path, i);
        const double t = curve.NearestParameter(point);
        const double distance = Length(curve.PointAt(t) - point);
        if (!(distance < nearestDistance)) continue;
        nearest = {i, t};
        nearestDistance = distance;
    }
    return nearest;
}

GuideSide Other(GuideSide side)
{
    return side == GuideSide::In ? GuideSide::Out : GuideSide::In;
}
} // namespace

namespace PathAnchors {
std::vector<PathAnchor> Of(const LXPath& path)
{
    std::vector<PathAnchor> anchors;
    for (int first = 0; first < path.size();) {
        const int end = EndOfContour(path, first);
        AddContour(path, first, end, anchors);
        first = end;
    }
    return anchors;
}

int IndexOf(const std::vector<PathAnchor>& anchors, int element)
{
    const auto holds = [element](const PathAnchor& anchor) {
        return anchor.in == element || anchor.out == element;
    };
    const auto found = std::find_if(anchors.begin(), anchors.end(), holds);
    return found == anchors.end() ? -1 : int(found - anchors.begin());
}

QPointF Center(const LXPath& path, const PathAnchor& anchor)
{
    return path[anchor.out].GetCenterPoint();
}

QPointF Guide(const LXPath& path, const PathAnchor& anchor, GuideSide side)
{
    return side == GuideSide::In ? path[anchor.in].GetInGuide() : path[anchor.out].GetOutGuide();
}

bool HasGuide(const LXPath& path, const PathAnchor& anchor, GuideSide side)
{
    const int element = side == GuideSide::In ? anchor.in : anchor.out;
    return !AreSame(Guide(path, anchor, side), path[element].GetCenterPoint());
}

bool IsSmooth(const LXPath& path, const PathAnchor& anchor)
{
    const QPointF in = Guide(path, anchor, GuideSide::In) - Center(path, anchor);
    const QPointF out = Guide(path, anchor, GuideSide::Out) - Center(path, anchor);
    const double scale = Length(in) * Length(out);
    return QPointF::dotProduct(in, out) < 0 && std::abs(Cross(in, out)) <= SmoothSine * scale;
}

void Move(LXPath& path, const PathAnchor& anchor, const QPointF& way)
{
    path[anchor.out].Translate(way);
    if (anchor.in != anchor.out) path[anchor.in].Translate(way);
}

void SetGuide(LXPath& path, const PathAnchor& anchor, GuideSide side, const QPointF& guide)
{
    if (side == GuideSide::In) {
        path[anchor.in].SetInGuide(guide);
    } else {
        path[anchor.out].SetOutGuide(guide);
    }
}

void SetMirroredGuides(LXPath& path, const PathAnchor& anchor, const QPointF& outGuide)
{
    SetGuide(path, anchor, GuideSide::Out, outGuide);
    SetGuide(path, anchor, GuideSide::In, 2 * Center(path, anchor) - outGuide);
}

void AlignGuide(LXPath& path, const PathAnchor& anchor, GuideSide side)
{
    const QPointF center = Center(path, anchor);
    const QPointF leading = Guide(path, anchor, Other(side)) - center;
    const double length = Length(leading);
    if (!(length > 0)) return;
    const double kept = Length(Guide(path, anchor, side) - center);
    SetGuide(path, anchor, side, center - leading * (kept / length));
}

int Insert(LXPath& path, const QPointF& near)
{
    const Place place = NearestPlace(path, near);
    if (place.element < 0 || place.t <= 0 || place.t >= 1) return -1;

    const CubicCurve curve = CurveTo(path, place.element);
    const auto [before, after] = curve.SplitAt(place.t);
    // Halves of a line stay lines, which have no guides.
    const LXPathElement added =
        IsLine(curve) ? LXPathElement(before.to) : LXPathElement(before.to, before.toGuide, after.fromGuide);
    if (!IsLine(curve)) {
        path[place.element - 1].SetOutGuide(before.fromGuide);
        path[place.element].SetInGuide(after.toGuide);
    }
    path.insert(place.element, added);
    return place.element;
}

void Remove(LXPath& path, const PathAnchor& anchor)
{
    const bool startsContour = path[anchor.out].StartsContour();
    const int next = anchor.out + 1;
    if (anchor.in == next) {
        path.removeAt(next);
    } else if (anchor.in != anchor.out) {
        // The next anchor begins the contour now, so it ends it too.
        path[anchor.in] = path[next];
    }
    path.removeAt(anchor.out);
    const bool isContourLeft = anchor.out < path.size() && !path[anchor.out].StartsContour();
    if (startsContour && isContourLeft) path[anchor.out].SetStartsContour(true);
    if (!path.isEmpty()) path.first().SetStartsContour(false);
}

QPointF SnappedToDirections(const QPointF& origin, const QPointF& point)
{
    static const double diagonal = std::sqrt(0.5);
    const std::array<QPointF, 4> directions = {QPointF(1, 0), QPointF(0, 1), QPointF(diagonal, diagonal),
                                               QPointF(diagonal, -diagonal)};
    QPointF nearest;
    for (const QPointF& direction : directions) {
        const QPointF foot = direction * QPointF::dotProduct(point - origin, direction);
        if (Length(foot) > Length(nearest)) nearest = foot;
    }
    return origin + nearest;
}
} // namespace PathAnchors
