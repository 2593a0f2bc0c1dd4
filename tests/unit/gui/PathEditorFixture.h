#pragma once

#include "ViewFixture.h"

#include "geometryengine/ControlNode.h"
#include "gui/PathGeometryEditor.h"
#include "scripting/InputDriver.h"

#include <QPointer>

/// A view with an editor in its scene. Points of paths and of the mouse are given in viewport pixels, so that
/// they mean the same at any scale.
class PathEditorFixture
{
public:
    explicit PathEditorFixture(double scale = 1)
        : document(GuiFixture::MakeDocument({200, 150})), view(ViewFixture::ShowView(document))
    {
        view->Zoom(scale, ViewFixture::Middle(*view), false);
        editor = new PathGeometryEditor;
        view->scene()->addItem(editor);
    }

    QPointF Scene(const QPointF& pixel) const { return ViewFixture::PointAt(*view, pixel); }

    QPointF Pixel(const QPointF& scene) const { return view->viewportTransform().map(scene); }

    LXPathElement Element(const QPointF& anchor, const QPointF& in, const QPointF& out) const
    {
        return {Scene(anchor), Scene(in), Scene(out)};
    }

    /// A smooth anchor between two corners.
    void ShowCurve() const
    {
        editor->MakeFromPath({Element({60, 150}, {60, 150}, {60, 150}),
                              Element({160, 100}, {110, 100}, {260, 100}),
                              Element({320, 150}, {320, 150}, {320, 150})});
    }

    void Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        input.Drag(view->viewport(), {from, to}, Qt::LeftButton, modifiers);
    }

    void Click(const QPoint& pixel, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        input.Click(view->viewport(), pixel, Qt::LeftButton, modifiers);
    }

    QList<ControlNode*> Handles() const
    {
        QList<ControlNode*> handles;
        for (QGraphicsItem* item : editor->childItems()) {
            if (item->type() == ControlNode::Type && item->isVisible())
                handles.append(static_cast<ControlNode*>(item));
        }
        return handles;
    }

    ControlNode* HandleAt(const QPointF& pixel) const
    {
        for (ControlNode* handle : Handles()) {
            if ((Pixel(handle->scenePos()) - pixel).manhattanLength() < 0.01) return handle;
        }
        return nullptr;
    }

    GuiFixture::OwnedDocument document;
    std::unique_ptr<ZKDocumentView> view;
    QPointer<PathGeometryEditor> editor;
    InputDriver input;
};

/// The handles of PathEditorFixture::ShowCurve().
namespace PathCurve {
const QPoint First(60, 150);
const QPoint Smooth(160, 100);
const QPoint InGuide(110, 100);
const QPoint OutGuide(260, 100);
const QPoint Last(320, 150);
} // namespace PathCurve

#define COMPARE_PIXELS(fixture, scene, pixel) COMPARE_POINTS((fixture).Pixel(scene), QPointF(pixel), 0.01)
