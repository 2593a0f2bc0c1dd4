#include "gui/SelectionTint.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "gui/CoverageRows.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace {
// The red of masking film, half transparent.
constexpr int FullOpacity = 128;

/// The premultiplied tint of each coverage.
std::vector<QRgb> TintOfCoverage()
{
    std::vector<QRgb> tints;
    for (int coverage = 0; coverage < 256; ++coverage) {
        const int opacity = ((255 - coverage) * FullOpacity + 127) / 255;
        tints.push_back(qRgba(opacity, 0, 0, opacity));
    }
    return tints;
}
} // namespace

SelectionTint::SelectionTint(const LXDocumentInterface* document, QWidget* viewport)
    : m_pDocument(document), m_pViewport(viewport)
{}

void SelectionTint::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    const QRect part = exposed & place.Rect();
    if (!m_bShown || part.isEmpty()) return;
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    if (!m_pDocument->HasSelection()) return;

    static const std::vector<QRgb> tints = TintOfCoverage();
    CoverageRows rows(m_pDocument->GetSelectionMask(), m_pDocument->GetSelectionMaskOffset(), place,
                      part.left(), part.width());
    std::vector<quint8> coverage;
    QImage tinted(part.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < part.height(); ++y) {
        rows.Read(part.top() + y, coverage);
        std::transform(coverage.begin(), coverage.end(), reinterpret_cast<QRgb*>(tinted.scanLine(y)),
                       [](quint8 covered) { return tints[covered]; });
    }
    painter.drawImage(part.topLeft(), tinted);
}

void SelectionTint::Update(const CanvasPlace& place)
{
    const QRect selection = m_pDocument->GetSelectionGeometry();
    if (m_bShown) {
        // Where neither is, the tint stays; with the first selection it comes, with the last it goes.
        const bool isEverywhere = m_Seen.isEmpty() != selection.isEmpty();
        m_pViewport->update(isEverywhere ? place.Rect() : place.ToViewport(m_Seen | selection));
    }
    m_Seen = selection;
}

void SelectionTint::SetShown(bool shown, const CanvasPlace& place)
{
    if (m_bShown == shown) return;
    m_bShown = shown;
    m_Seen = m_pDocument->GetSelectionGeometry();
    if (!m_Seen.isEmpty()) m_pViewport->update(place.Rect());
}
