#pragma once

#include <QList>
#include <QPair>
#include <QPointF>

/// One anchor of a sub path, with the guide of the curve that comes in and the one of the curve that goes
/// out. A value; any thread. All points are document coordinates, absolute; a guide that lies on its anchor
/// bends nothing.
///
/// A sub path whose last anchor lies on its first is closed. A sub path may hold several contours, as letters
/// do: an anchor that starts a contour isn't joined to the one before it.
class LXPathElement
{
public:
    LXPathElement() = default;

    /// A corner: both guides lie on the anchor.
    explicit LXPathElement(const QPointF& anchor) : m_Anchor(anchor), m_InGuide(anchor), m_OutGuide(anchor) {}

    LXPathElement(const QPointF& anchor, const QPointF& inGuide, const QPointF& outGuide)
        : m_Anchor(anchor), m_InGuide(inGuide), m_OutGuide(outGuide)
    {}

    /// The anchor.
    QPointF GetCenterPoint() const { return m_Anchor; }

    QPointF GetInGuide() const { return m_InGuide; }

    QPointF GetOutGuide() const { return m_OutGuide; }

    /// The anchor alone; its guides stay.
    void SetCenterPoint(const QPointF& anchor) { m_Anchor = anchor; }

    void SetInGuide(const QPointF& guide) { m_InGuide = guide; }

    void SetOutGuide(const QPointF& guide) { m_OutGuide = guide; }

    /// Whether a new contour begins here; of no meaning for the first anchor.
    bool StartsContour() const { return m_bStartsContour; }

    void SetStartsContour(bool starts) { m_bStartsContour = starts; }

    /// Moves the anchor with its guides.
    void Translate(const QPointF& delta)
    {
        m_Anchor += delta;
        m_InGuide += delta;
        m_OutGuide += delta;
    }

    /// To the last bit, unlike QPointF's.
    bool operator==(const LXPathElement& other) const
    {
        return AreSame(m_Anchor, other.m_Anchor) && AreSame(m_InGuide, other.m_InGuide) &&
               AreSame(m_OutGuide, other.m_OutGuide) && m_bStartsContour == other.m_bStartsContour;
    }

    bool operator!=(const LXPathElement& other) const { return !(*this == other); }

private:
    static bool AreSame(const QPointF& a, const QPointF& b) { return a.x() == b.x() && a.y() == b.y(); }

    QPointF m_Anchor;
    QPointF m_InGuide;
    QPointF m_OutGuide;
    bool m_bStartsContour = false;
};

/// The anchors of a sub path.
using LXPath = QList<LXPathElement>;
/// The sub paths of a path, each with its LXPathsListModel::LogicalOp.
using LXSubPaths = QList<QPair<LXPath, int>>;
