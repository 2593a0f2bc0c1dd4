// The calls of ScriptLayer that change pixels and places without a step of the history.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LayerKind.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"
#include "image/LXImage.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptLayer.h"

#include <limits>

namespace {
constexpr int Far = std::numeric_limits<int>::max() / 4;
constexpr int AlphaShift = 24;

QPoint ToPixel(const QJSValue& x, const QJSValue& y)
{
    return {ScriptArguments::ToInteger(x, "x", -Far, Far), ScriptArguments::ToInteger(y, "y", -Far, Far)};
}

quint32 ToMaskPixel(const QJSValue& value)
{
    return static_cast<quint32>(ScriptArguments::ToInteger(value, "value", 0, 255)) << AlphaShift;
}
} // namespace

void ScriptLayer::BeginSetUp() const
{
    CheckFree();
    LexoUndoStack* history = History();
    if (!history) return;
    history->commit();
    // No state of the history holds what is changed now.
    history->resetClean();
}

void ScriptLayer::Paint(bool isMask, quint32 pixel, const QRect& rect) const
{
    if (!isMask) RequireKind(LayerKind::Raster);
    BeginSetUp();
    LXDocumentInterface* document = m_Layer.Document();
    const unsigned int id = m_Layer.Id();
    const QRect place = isMask ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id);
    const QRect part = rect.isNull() ? place : rect & place;
    if (part.isEmpty()) throw ScriptError(QStringLiteral("The rectangle lies outside."));

    LXImage32 paint(part.width(), part.height());
    paint.Fill(LXRGBA32i(pixel));
    {
        const LXDocumentLayerLockerForWrite locker(document, id);
        LXImage32* image = isMask ? document->GetMaskImage(id) : document->GetLayerImage(id);
        BlendOn(paint, paint.Rect(), BlendMode::Source, *image, part.translated(-place.topLeft()), 1.0,
                false);
    }
    document->LayerImageChanged(id, part);
    document->EndLayerChange(id);
}

void ScriptLayer::fill(const QString& color, const QJSValue& rect)
{
    Call([&] {
        const quint32 pixel = ScriptArguments::ToColor(color).rgba();
        Paint(false, pixel, rect.isUndefined() ? QRect() : ScriptArguments::ToRect(rect));
    });
}

void ScriptLayer::fillMask(const QJSValue& value, const QJSValue& rect)
{
    Call([&] {
        RequireMask();
        Paint(true, ToMaskPixel(value), rect.isUndefined() ? QRect() : ScriptArguments::ToRect(rect));
    });
}

void ScriptLayer::setPixel(const QJSValue& x, const QJSValue& y, const QString& color)
{
    Call([&] { Paint(false, ScriptArguments::ToColor(color).rgba(), QRect(ToPixel(x, y), QSize(1, 1))); });
}

void ScriptLayer::setMaskPixel(const QJSValue& x, const QJSValue& y, const QJSValue& value)
{
    Call([&] {
        RequireMask();
        Paint(true, ToMaskPixel(value), QRect(ToPixel(x, y), QSize(1, 1)));
    });
}

void ScriptLayer::place(const QJSValue& x, const QJSValue& y)
{
    Call([&] {
        BeginSetUp();
        m_Layer.Document()->SetLayerOffset(m_Layer.Id(), ToPixel(x, y));
    });
}

void ScriptLayer::placeMask(const QJSValue& x, const QJSValue& y)
{
    Call([&] {
        RequireMask();
        BeginSetUp();
        m_Layer.Document()->SetMaskOffset(m_Layer.Id(), ToPixel(x, y));
    });
}
