#include "app/PathSamples.h"

#include "app/WidgetGallery.h"
#include "document/LXPathConvert.h"
#include "gui/PathGeometryCreator.h"
#include "gui/PathGeometryEditor.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPen>

namespace {
const LXPath Hill = {LXPathElement({20, 92}), LXPathElement({60, 36}, {30, 36}, {88, 36}),
                     LXPathElement({100, 92}, {104, 66}, {100, 92})};

void AddOutline(QGraphicsItem* item, const LXPath& path)
{
    for (const QPen& pen : {QPen(QColor(255, 255, 255, 0xd0), 3), QPen(QColor(0x1e, 0x1e, 0x1e), 1)}) {
        auto* outline = new QGraphicsPathItem(ConvertFrom(path), item);
        outline->setPen(pen);
        outline->setFlag(QGraphicsItem::ItemStacksBehindParent);
    }
}

void Add(QGraphicsScene& scene, QGraphicsItem* item, int ground)
{
    item->setPos(ground * WidgetGallery::GroundSize, 0);
    scene.addItem(item);
}
} // namespace

void PathSamples::AddEditors(QGraphicsScene& scene)
{
    for (int ground = 0; ground < WidgetGallery::GroundCount; ++ground) {
        auto* editor = new PathGeometryEditor;
        editor->MakeFromPath(Hill);
        editor->InsertNode({86, 50});
        AddOutline(editor, editor->GetPath());
        Add(scene, editor, ground);
    }
}

void PathSamples::AddCreators(QGraphicsScene& scene)
{
    for (int ground = 0; ground < WidgetGallery::GroundCount; ++ground) {
        auto* creator = new PathGeometryCreator;
        creator->MakeFromPath(Hill.mid(0, 2));
        creator->AddPoint({100, 92});
        creator->SetCurrentEditNodeIndex(1);
        AddOutline(creator, creator->GetPath());
        Add(scene, creator, ground);
    }
}
