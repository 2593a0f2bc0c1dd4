#include "gui/SelectionAnts.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>
#include <QtMath>

#include <optional>

namespace {
constexpr int StepMilliseconds = 120;
constexpr int DashLength = 4;
constexpr int CellSize = 32; ///< a step repaints whole squares of the viewport
constexpr int HalfCoverage = 128;
constexpr int MaskTileSize = 128;
constexpr int Outside = -1;

/// Tells for rows of viewport pixels whether their middles are selected.
class SelectedRows
{
public:
    /// @param columns  the first viewport column, and how many
    SelectedRows(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place, int firstColumn,
                 int columns)
        : m_Mask(mask), m_Offset(offset), m_Place(place), m_MaskColumns(std::size_t(columns))
    {
        for (int i = 0; i < columns; ++i) {
            const int x = ToDocument(firstColumn + i, place.origin.x()) - offset.x();
            m_MaskColumns[std::size_t(i)] = x >= 0 && x < mask.Width() ? x : Outside;
        }
    }

    void Read(int viewRow, std::vector<quint8>& selected) const
    {
        std::fill(selected.begin(), selected.end(), quint8(0));
        const int y = ToDocument(viewRow, m_Place.origin.y()) - m_Offset.y();
        if (y < 0 || y >= m_Mask.Height()) return;

        std::optional<LXTileReader<LXRGBA32i>> tile;
        int tileColumn = Outside;
        for (std::size_t i = 0; i < m_MaskColumns.size(); ++i) {
            const int x = m_MaskColumns[i];
            if (x == Outside) continue;
            if (x / MaskTileSize != tileColumn) {
                tileColumn = x / MaskTileSize;
                tile.reset();
                tile.emplace(m_Mask.ReadTile(tileColumn, y / MaskTileSize));
            }
            const int inTile = y % MaskTileSize * MaskTileSize + x % MaskTileSize;
            selected[i] = tile->Pixels()[inTile].Alpha() >= HalfCoverage;
        }
    }

private:
    int ToDocument(int viewPos, int origin) const { return qFloor((viewPos + 0.5 - origin) / m_Place.scale); }

    const LXImage32& m_Mask;
    QPoint m_Offset;
    const CanvasPlace& m_Place;
    std::vector<int> m_MaskColumns;
};

QRect CellOf(const QPoint& viewPos)
{
    return QRect(viewPos.x() / CellSize * CellSize, viewPos.y() / CellSize * CellSize, CellSize, CellSize);
}
} // namespace

SelectionAnts::SelectionAnts(const LXDocumentInterface* document, QWidget* viewport)
    : m_pDocument(document), m_pViewport(viewport)
{}

void SelectionAnts::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place)
{
    m_Marching -= exposed;
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    const QRect selection = m_pDocument->GetSelectionGeometry();
    const QRect part = exposed & place.ToViewport(selection).adjusted(-1, -1, 1, 1);
    if (selection.isEmpty() || part.isEmpty()) return;

    // A pixel is on the outline when its left or upper neighbour is on the other side.
    const SelectedRows rows(m_pDocument->GetSelectionMask(), selection.topLeft(), place, part.left() - 1,
                            part.width() + 1);
    std::vector<quint8> above(std::size_t(part.width()) + 1);
    std::vector<quint8> row(above.size());
    rows.Read(part.top() - 1, above);
    QImage dashes(part.size(), QImage::Format_ARGB32_Premultiplied);
    dashes.fill(Qt::transparent);
    for (int y = 0; y < part.height(); ++y) {
        rows.Read(part.top() + y, row);
        auto* const out = reinterpret_cast<QRgb*>(dashes.scanLine(y));
        for (int x = 0; x < part.width(); ++x) {
            const std::size_t i = std::size_t(x) + 1;
            if (row[i] == row[i - 1] && row[i] == above[i]) continue;
            const QPoint viewPos = part.topLeft() + QPoint(x, y);
            const QPoint fromCanvas = viewPos - place.origin;
            const int dash = (fromCanvas.x() + fromCanvas.y() + m_Phase) & (2 * DashLength - 1);
            out[x] = dash < DashLength ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
            if (!m_Marching.contains(viewPos)) m_Marching += CellOf(viewPos);
        }
        above.swap(row);
    }
    painter.drawImage(part.topLeft(), dashes);
}

void SelectionAnts::Update(const CanvasPlace& place)
{
    const QRect selection = m_pDocument->GetSelectionGeometry();
    for (const QRect& rect : {m_Shown, selection}) {
        if (!rect.isEmpty()) m_pViewport->update(place.ToViewport(rect).adjusted(-1, -1, 1, 1));
    }
    m_Shown = selection;

    // Desktops that want less motion tell it as animations of no duration.
    const bool moves = m_pViewport->style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
    if (selection.isEmpty() || !moves)
        m_Timer.stop();
    else if (!m_Timer.isActive())
        m_Timer.start(StepMilliseconds, this);
}

void SelectionAnts::timerEvent(QTimerEvent*)
{
    if (!m_pViewport->isVisible()) return;
    m_Phase = (m_Phase + 2 * DashLength - 1) & (2 * DashLength - 1);
    m_pViewport->update(m_Marching);
}
