#include "geometryengine/PathDrag.h"

using namespace PathAnchors;

namespace {
QPointF Followed(const QPointF& origin, const QPointF& point, Qt::KeyboardModifiers modifiers)
{
    return modifiers & Qt::ShiftModifier ? SnappedToDirections(origin, point) : point;
}

void DragAnchor(LXPath& path, const PathAnchor& anchor, const QPointF& way, Qt::KeyboardModifiers modifiers)
{
    const QPointF taken = Followed(QPointF(), way, modifiers);
    if (modifiers & Qt::AltModifier) {
        SetMirroredGuides(path, anchor, Center(path, anchor) + taken);
    } else {
        Move(path, anchor, taken);
    }
}

void DragGuide(LXPath& path, const PathAnchor& anchor, GuideSide side, const QPointF& way,
               Qt::KeyboardModifiers modifiers)
{
    const bool turnsOther = IsSmooth(path, anchor) && !(modifiers & Qt::AltModifier);
    const QPointF pointer = Guide(path, anchor, side) + way;
    SetGuide(path, anchor, side, Followed(Center(path, anchor), pointer, modifiers));
    if (turnsOther) AlignGuide(path, anchor, side == GuideSide::In ? GuideSide::Out : GuideSide::In);
}

void TakeOff(LXPath& path, const PathAnchor& anchor, GuideSide side)
{
    const int element = side == GuideSide::In ? anchor.in : anchor.out;
    SetGuide(path, anchor, side, path[element].GetCenterPoint());
}
} // namespace

namespace PathDrag {
LXPath Dragged(const LXPath& path, const PathAnchor& anchor, PathGrip grip, const QPointF& way,
               Qt::KeyboardModifiers modifiers)
{
    LXPath dragged = path;
    switch (grip) {
    case PathGrip::Anchor: DragAnchor(dragged, anchor, way, modifiers); break;
    case PathGrip::InGuide: DragGuide(dragged, anchor, GuideSide::In, way, modifiers); break;
    case PathGrip::OutGuide: DragGuide(dragged, anchor, GuideSide::Out, way, modifiers); break;
    }
    return dragged;
}

LXPath Clicked(const LXPath& path, const PathAnchor& anchor, PathGrip grip, Qt::KeyboardModifiers modifiers)
{
    LXPath clicked = path;
    if (!(modifiers & Qt::AltModifier)) return clicked;
    if (grip != PathGrip::OutGuide) TakeOff(clicked, anchor, GuideSide::In);
    if (grip != PathGrip::InGuide) TakeOff(clicked, anchor, GuideSide::Out);
    return clicked;
}

LXPath Bent(const LXPath& path, int element, const QPointF& pointer, Qt::KeyboardModifiers modifiers)
{
    LXPath bent = path;
    const std::vector<PathAnchor> anchors = Of(path);
    const int index = IndexOf(anchors, element);
    if (index < 0) return bent;

    const PathAnchor& anchor = anchors[std::size_t(index)];
    const QPointF guide = Followed(Center(path, anchor), pointer, modifiers);
    if (!(modifiers & Qt::AltModifier)) {
        SetMirroredGuides(bent, anchor, guide);
    } else if (anchor.in != anchor.out) {
        SetGuide(bent, anchor, GuideSide::In, 2 * Center(path, anchor) - guide);
    } else {
        SetGuide(bent, anchor, GuideSide::Out, guide);
    }
    return bent;
}
} // namespace PathDrag
