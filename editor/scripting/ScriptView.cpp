#include "scripting/ScriptView.h"

#include "geometryengine/ControlNode.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "scripting/SceneHandles.h"
#include "scripting/ScriptArguments.h"
#include "scripting/WidgetHand.h"

namespace {
constexpr int DefaultSteps = 4; // of the way of a handle
constexpr int MostSteps = 10000;

QRectF VisiblePart(const ZKDocumentView* view)
{
    const QRectF viewport(QPointF(0, 0), QSizeF(view->viewport()->size()));
    return view->viewportTransform().inverted().mapRect(viewport);
}
} // namespace

ScriptView::ScriptView(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

double ScriptView::GetScale() const
{
    return Call([this] { return RequireView()->GetScale(); });
}

void ScriptView::SetScale(double scale)
{
    Call([&] {
        if (!(scale >= ZKDocumentView::MinScale && scale <= ZKDocumentView::MaxScale)) {
            throw ScriptError(QStringLiteral("The scale goes from %1 to %2.")
                                  .arg(ZKDocumentView::MinScale)
                                  .arg(ZKDocumentView::MaxScale));
        }
        ZKDocumentView* view = RequireView();
        view->Zoom(scale, view->viewport()->rect().center(), false);
    });
}

QJSValue ScriptView::GetCenter() const
{
    return Call([this] {
        return ScriptArguments::OfPoint(Context().GetEngine(), VisiblePart(RequireView()).center());
    });
}

QJSValue ScriptView::GetVisible() const
{
    return Call([this] {
        const QRectF part = VisiblePart(RequireView());
        QJSValue value = ScriptArguments::OfPoint(Context().GetEngine(), part.topLeft());
        value.setProperty(QStringLiteral("width"), part.width());
        value.setProperty(QStringLiteral("height"), part.height());
        return value;
    });
}

bool ScriptView::IsPanning() const
{
    return Call([this] { return RequireView()->IsPanningEnabled(); });
}

QJSValue ScriptView::GetHandles() const
{
    return Call([this] {
        const ZKDocumentView* view = RequireView();
        const QList<ControlNode*> handles = SceneHandles::Of(*view);
        QJSEngine& engine = Context().GetEngine();
        QJSValue list = engine.newArray(static_cast<uint>(handles.size()));
        for (int i = 0; i < handles.size(); ++i)
            list.setProperty(static_cast<quint32>(i), SceneHandles::ToValue(engine, *view, *handles[i]));
        return list;
    });
}

void ScriptView::fit()
{
    Call([this] { RequireView()->FitSizeToViewPort(); });
}

void ScriptView::centerOn(const QJSValue& x, const QJSValue& y)
{
    Call([&] {
        RequireView()->centerOn(ScriptArguments::ToNumber(x, "x"), ScriptArguments::ToNumber(y, "y"));
    });
}

void ScriptView::dragHandle(const QJSValue& index, const QJSValue& x, const QJSValue& y,
                            const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, {QStringLiteral("modifiers"), QStringLiteral("steps")});
        ZKDocumentView* view = RequireView();
        const QList<ControlNode*> handles = SceneHandles::Of(*view);
        if (handles.isEmpty()) throw ScriptError(QStringLiteral("There are no handles."));
        const int wanted = ScriptArguments::ToInteger(index, "index", 0, handles.size() - 1);
        const QPointF end(ScriptArguments::ToNumber(x, "x"), ScriptArguments::ToNumber(y, "y"));
        const QJSValue steps = ScriptArguments::Option(options, "steps");
        const QPoint from = view->mapFromScene(handles[wanted]->scenePos());
        WidgetHand::RequireUsable(view->viewport());
        if (!view->viewport()->rect().contains(from)) {
            throw ScriptError(
                QStringLiteral("The handle %1 isn't in sight: scroll or zoom before.").arg(wanted));
        }
        Context().GetInput().Drag(
            view->viewport(), {from, view->mapFromScene(end)}, Qt::LeftButton,
            ScriptArguments::ToModifiers(ScriptArguments::Option(options, "modifiers")),
            steps.isUndefined() ? DefaultSteps : ScriptArguments::ToInteger(steps, "steps", 1, MostSteps));
    });
}
