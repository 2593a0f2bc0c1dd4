#include "scripting/SceneHandles.h"

#include "geometryengine/ControlNode.h"
#include "gui/ZKDocumentView.h"
#include "scripting/ScriptArguments.h"

#include <QGraphicsScene>
#include <QJSEngine>

QList<ControlNode*> SceneHandles::Of(const ZKDocumentView& view)
{
    QList<ControlNode*> handles;
    const QList<QGraphicsItem*> items = view.scene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* item : items) {
        auto* handle = item->isVisible() ? dynamic_cast<ControlNode*>(item) : nullptr;
        if (handle) handles.append(handle);
    }
    return handles;
}

QJSValue SceneHandles::ToValue(QJSEngine& engine, const ZKDocumentView& view, const ControlNode& handle)
{
    const auto set = [](QJSValue& value, const char* name, const QJSValue& part) {
        value.setProperty(QLatin1String(name), part);
    };
    const QPointF place = handle.scenePos();
    QJSValue value = ScriptArguments::OfPoint(engine, place);
    set(value, "label", handle.label());
    set(value, "movable", handle.flags().testFlag(QGraphicsItem::ItemIsMovable));
    set(value, "selected", handle.isSelected());
    set(value, "sunken", handle.isSunken());
    set(value, "inView", ScriptArguments::OfPoint(engine, view.mapFromScene(place)));
    return value;
}
