#include "document/LXImageHelper.h"

#include "document/LXDocumentInterface_p.h"
#include "document/TextGeometry.h"
#include "document/TextRaster.h"

#include <optional>

class LXImageHelperPrivate
{
public:
    TextContent content;
    QPoint topLeft; ///< of the layer's rectangle when nothing has been drawn yet
    std::optional<TextGeometry> geometry;
};

LXImageHelper::LXImageHelper() : m_pPrivate(std::make_unique<LXImageHelperPrivate>()) {}

LXImageHelper::~LXImageHelper() = default;

bool LXImageHelper::InitHelper(const LXDocumentInterface* document, unsigned int id)
{
    m_pPrivate->geometry.reset();
    if (!document || document->GetLayerKind(id) != LayerKind::Text) return false;
    m_pPrivate->content = LXDocumentInterfacePrivate::Get(document)->Text(id);
    m_pPrivate->geometry.emplace(m_pPrivate->content);
    // Not the layer's own: that may show what was drawn through a transform.
    m_pPrivate->topLeft = TextRaster::RectOf(*m_pPrivate->geometry, document->GetDocumentSize()).topLeft();
    return true;
}

void LXImageHelper::SetRenderMode(int mode)
{
    m_pPrivate->content.renderMode = qBound(TextContent::Aliased, mode, TextContent::Antialiased);
}

QTransform LXImageHelper::Transformed(const QTransform& transform) const
{
    const QPoint topLeft = m_pPrivate->topLeft;
    return m_pPrivate->content.transform * QTransform::fromTranslate(-topLeft.x(), -topLeft.y()) * transform;
}

bool LXImageHelper::drawImage(LXDocumentInterface* document, unsigned int id, const QTransform& transform,
                              QRect* drawn) const
{
    if (!m_pPrivate->geometry || !document || document->GetLayerKind(id) != LayerKind::Text) return false;
    TextContent content = m_pPrivate->content;
    content.transform = Transformed(transform);
    const PlacedImage placed = TextRaster::Render(content, document->GetDocumentSize());
    document->SetLayerImage(id, placed.image, placed.offset);
    if (drawn) *drawn = placed.Rect();
    return true;
}

int LXImageHelper::FindSelectedChar(const QPointF& docPos) const
{
    return m_pPrivate->geometry ? m_pPrivate->geometry->IndexAt(docPos) : 0;
}

void LXImageHelper::GetVerticalAndUnderLine(int index, QLineF* vertical, QPolygonF* underline) const
{
    *vertical = m_pPrivate->geometry ? m_pPrivate->geometry->CaretAt(index) : QLineF();
    *underline = m_pPrivate->geometry ? m_pPrivate->geometry->UnderlineAt(index) : QPolygonF();
}
