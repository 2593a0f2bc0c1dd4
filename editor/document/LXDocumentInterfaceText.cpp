// The operations of LXDocumentInterface on text layers.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/TextGeometry.h"
#include "document/TextRaster.h"

#include <QMatrix4x4>

#include <algorithm>
#include <cmath>

namespace {
constexpr double MostPercent = 100;

double Percent(double value)
{
    return std::isnan(value) ? 0 : std::clamp(value, -MostPercent, MostPercent);
}

/// Has an inverse, and all of its numbers are numbers.
bool IsPossible(const QTransform& transform)
{
    const double determinant = transform.determinant();
    return std::isfinite(determinant) && std::isfinite(1 / determinant) && std::isfinite(transform.dx()) &&
           std::isfinite(transform.dy());
}

void Change(LXDocumentInterfacePrivate* insides, unsigned int id,
            const std::function<void(TextContent&)>& change)
{
    const TextContent before = insides->Text(id);
    TextContent content = before;
    change(content);
    if (content != before) insides->PutText(id, content);
}
} // namespace

TextContent LXDocumentInterfacePrivate::Text(unsigned int id) const
{
    const std::shared_ptr<const TextContent> text = layers.Properties(id).text;
    return text ? *text : TextContent();
}

void LXDocumentInterfacePrivate::PutText(unsigned int id, const TextContent& content)
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    if (!layer || !layers.PropertiesOf(*layer).text) return;
    const PlacedImage pixels = TextRaster::Render(content, merged.Size());
    const auto text = std::make_shared<const TextContent>(content);
    const std::shared_ptr<const TextContent> former = layers.PropertiesOf(*layer).text;
    QRect before;
    {
        const PixelWriteScope scope(*locks, layer->key);
        layer->image = pixels.image;
        layers.ChangePropertiesOf(*layer, [&](LayerProperties& properties) {
            before = properties.rect;
            properties.text = text;
            properties.rect = pixels.Rect();
        });
    }
    const QPoint topLeft = pixels.offset;
    OnMainThread([=] {
        if (before.topLeft() != topLeft) emit model->LayerPositionChanged(id, topLeft);
        if (former->font != text->font) emit model->LayerFontChanged(id);
        if (former->brush != text->brush) emit model->LayerBrushChanged(id);
        if (!(former->deformation == text->deformation)) emit model->LayerTextDeformationChanged(id);
        if (CaretId() == id) emit document->TextCaretChanged(id);
    });
    LayerPixelsChanged(id, before | pixels.Rect());
}

void LXDocumentInterfacePrivate::TransformText(unsigned int id, const QTransform& transform,
                                               Precision precision)
{
    const std::shared_ptr<const TextContent> text = layers.Properties(id).text;
    if (!text || !IsPossible(transform) || text->transform == transform) return;
    QPoint delta;
    TextContent content = *text;
    content.transform = transform;
    if (!TextRaster::IsWholeMove(text->transform, transform, &delta)) return PutText(id, content);

    const auto moved = precision == Precision::Single ? TextRaster::Moved(*text, delta)
                                                      : std::make_shared<const TextContent>(content);
    MoveProperties(id, [&](LayerProperties& properties) {
        properties.text = moved;
        properties.rect.translate(delta);
    });
}

unsigned int LXDocumentInterface::AddTextLayer(const QString& name, const QPointF& position, int row)
{
    TextContent content;
    content.position = position;
    const PlacedImage pixels = TextRaster::Render(content, GetDocumentSize());
    LayerState layer;
    layer.properties.name = name;
    layer.properties.kind = LayerKind::Text;
    layer.properties.text = std::make_shared<const TextContent>(content);
    layer.properties.rect = pixels.Rect();
    const int place = qBound(0, row, m_pPrivate->layers.Count());
    m_pPrivate->InsertLayer(place, layer);
    return static_cast<unsigned int>(place) + 1;
}

QString LXDocumentInterface::GetText(unsigned int id) const
{
    return m_pPrivate->Text(id).text;
}

void LXDocumentInterface::SetText(unsigned int id, const QString& text)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) { content.text = text; });
}

QFont LXDocumentInterface::GetTextFont(unsigned int id) const
{
    return m_pPrivate->Text(id).font;
}

void LXDocumentInterface::SetTextFont(unsigned int id, const QFont& font)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) { content.font = font; });
}

QBrush LXDocumentInterface::GetTextBrush(unsigned int id) const
{
    return m_pPrivate->Text(id).brush;
}

void LXDocumentInterface::SetTextBrush(unsigned int id, const QBrush& brush)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) { content.brush = brush; });
}

QPointF LXDocumentInterface::GetTextPosition(unsigned int id) const
{
    return m_pPrivate->Text(id).position;
}

void LXDocumentInterface::SetTextPosition(unsigned int id, const QPointF& position)
{
    if (!std::isfinite(position.x()) || !std::isfinite(position.y())) return;
    Change(m_pPrivate.get(), id, [&](TextContent& content) { content.position = position; });
}

int LXDocumentInterface::GetTextStyle(unsigned int id) const
{
    return m_pPrivate->Text(id).deformation.style;
}

void LXDocumentInterface::SetTextStyle(unsigned int id, int style)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) {
        content.deformation.style = qBound(TextDeformation::None, style, TextDeformation::Flag);
    });
}

int LXDocumentInterface::GetTextOrientation(unsigned int id) const
{
    return m_pPrivate->Text(id).deformation.orientation;
}

void LXDocumentInterface::SetTextOrientation(unsigned int id, int orientation)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) {
        content.deformation.orientation =
            qBound(TextDeformation::Horizontal, orientation, TextDeformation::Vertical);
    });
}

double LXDocumentInterface::GetTextBend(unsigned int id) const
{
    return m_pPrivate->Text(id).deformation.bend;
}

void LXDocumentInterface::SetTextBend(unsigned int id, double percent)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) { content.deformation.bend = Percent(percent); });
}

double LXDocumentInterface::GetTextHDistortion(unsigned int id) const
{
    return m_pPrivate->Text(id).deformation.hDistortion;
}

void LXDocumentInterface::SetTextHDistortion(unsigned int id, double percent)
{
    Change(m_pPrivate.get(), id,
           [&](TextContent& content) { content.deformation.hDistortion = Percent(percent); });
}

double LXDocumentInterface::GetTextVDistortion(unsigned int id) const
{
    return m_pPrivate->Text(id).deformation.vDistortion;
}

void LXDocumentInterface::SetTextVDistortion(unsigned int id, double percent)
{
    Change(m_pPrivate.get(), id,
           [&](TextContent& content) { content.deformation.vDistortion = Percent(percent); });
}

int LXDocumentInterface::GetTextRenderMode(unsigned int id) const
{
    return m_pPrivate->Text(id).renderMode;
}

void LXDocumentInterface::SetTextRenderMode(unsigned int id, int mode)
{
    Change(m_pPrivate.get(), id, [&](TextContent& content) {
        content.renderMode = qBound(TextContent::Aliased, mode, TextContent::Antialiased);
    });
}

QMatrix4x4 LXDocumentInterface::GetTextLayerMatrix(unsigned int id) const
{
    return QMatrix4x4(m_pPrivate->Text(id).transform);
}

void LXDocumentInterface::SetTextLayerTransformation(unsigned int id, const QMatrix4x4& matrix)
{
    m_pPrivate->TransformText(id, matrix.toTransform(), LXDocumentInterfacePrivate::Precision::Single);
}

QRectF LXDocumentInterface::GetTextBox(unsigned int id) const
{
    const std::shared_ptr<const TextContent> text = m_pPrivate->layers.Properties(id).text;
    return text ? TextGeometry(*text).Box() : QRectF();
}

void LXDocumentInterface::SetTextCaret(unsigned int id, int index, bool visible)
{
    if (visible && GetLayerKind(id) != LayerKind::Text) return;
    m_pPrivate->caret = LXDocumentInterfacePrivate::Caret();
    if (visible) m_pPrivate->caret = {m_pPrivate->layers.Find(id), index};
    emit TextCaretChanged(visible ? id : 0);
}
