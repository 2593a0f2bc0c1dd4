#include "scripting/ScriptPixels.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "scripting/PixelReading.h"
#include "scripting/ScriptLayer.h"
#include "scripting/ScriptPixelSource.h"

#include <QPointer>

namespace {
using Access = ScriptPixelSource::Access;

LXDocumentInterface* Alive(const QPointer<LXDocumentInterface>& document)
{
    if (!document) throw ScriptError(QStringLiteral("The document is closed."));
    return document;
}

Access MergedAccess(const QPointer<LXDocumentInterface>& document)
{
    return {[document] { return QRect(QPoint(0, 0), Alive(document)->GetDocumentSize()); },
            [document](const QRect& rect) { return PixelReading::OfLayer(Alive(document), 0, rect); }};
}

Access SelectionAccess(const QPointer<LXDocumentInterface>& document)
{
    return {[document] { return Alive(document)->GetSelectionGeometry(); },
            [document](const QRect& rect) { return PixelReading::OfSelection(Alive(document), rect); }};
}

Access PictureAccess(const QImage& picture)
{
    return {[picture] { return picture.rect(); },
            [picture](const QRect& rect) { return picture.copy(rect); }};
}

Access LayerAccess(const LayerReference& layer)
{
    return {[layer] { return layer.Document()->GetLayerGeometry(layer.Id()); },
            [layer](const QRect& rect) { return PixelReading::OfLayer(layer.Document(), layer.Id(), rect); }};
}

Access MaskAccess(const LayerReference& layer)
{
    const auto requireMask = [layer] {
        if (!layer.Document()->GetModel()->HasMask(layer.Row())) {
            throw ScriptError(QStringLiteral("The layer has no mask."));
        }
    };
    return {[=] {
                requireMask();
                return layer.Document()->GetMaskGeometry(layer.Id());
            },
            [=](const QRect& rect) {
                requireMask();
                return PixelReading::OfMask(layer.Document(), layer.Id(), rect);
            }};
}

const LayerReference& ToLayer(const QJSValue& value)
{
    const auto* layer = qobject_cast<ScriptLayer*>(value.toQObject());
    if (!layer) throw ScriptError(QStringLiteral("A layer is needed, as layers.at() gives one."));
    return layer->Reference();
}
} // namespace

ScriptPixels::ScriptPixels(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QJSValue ScriptPixels::GetMerged() const
{
    return Call([this] { return Hand(new ScriptPixelSource(Context(), MergedAccess(RequireDocument()))); });
}

QJSValue ScriptPixels::GetSelection() const
{
    return Call(
        [this] { return Hand(new ScriptPixelSource(Context(), SelectionAccess(RequireDocument()))); });
}

bool ScriptPixels::HasSelection() const
{
    return Call([this] { return RequireDocument()->HasSelection(); });
}

QJSValue ScriptPixels::layer(const QJSValue& layer) const
{
    return Call([&] { return Hand(new ScriptPixelSource(Context(), LayerAccess(ToLayer(layer)))); });
}

QJSValue ScriptPixels::mask(const QJSValue& layer) const
{
    return Call([&] {
        const Access access = MaskAccess(ToLayer(layer));
        access.geometry(); // tells at once that there is none
        return Hand(new ScriptPixelSource(Context(), access));
    });
}

QJSValue ScriptPixels::file(const QString& path) const
{
    return Call([&] {
        const QImage picture = QImage(path).convertToFormat(QImage::Format_ARGB32);
        if (picture.isNull()) {
            throw ScriptError(QStringLiteral("\"%1\" is no picture that can be read.").arg(path));
        }
        return Hand(new ScriptPixelSource(Context(), PictureAccess(picture)));
    });
}
