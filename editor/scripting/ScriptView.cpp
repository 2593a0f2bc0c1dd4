#include "scripting/ScriptView.h"

#include "gui/ZKDocumentView.h"
#include "scripting/ScriptArguments.h"

namespace {
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
