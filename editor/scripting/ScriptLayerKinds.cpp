// What ScriptLayer tells and changes of text and adjustment layers.

#include "document/LXDocumentInterface_p.h"
#include "document/LayerKind.h"
#include "history/ChangeCommandHelper.h"
#include "history/LayerCommands.h"
#include "history/LexoUndoStack.h"
#include "scripting/KindOptions.h"
#include "scripting/LayerWords.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptLayer.h"

void ScriptLayer::RequireKind(int kind) const
{
    const int is = m_Layer.Document()->GetLayerKind(m_Layer.Id());
    if (is == kind) return;
    throw ScriptError(QStringLiteral("That is for layers of the kind \"%1\"; this one is of the kind \"%2\".")
                          .arg(LayerWords::OfKind(kind), LayerWords::OfKind(is)));
}

QString ScriptLayer::GetText() const
{
    return Call([this] {
        RequireKind(LayerKind::Text);
        return m_Layer.Document()->GetText(m_Layer.Id());
    });
}

void ScriptLayer::SetText(const QString& text)
{
    Call([&] {
        QJSValue options = Context().GetEngine().newObject();
        options.setProperty(QStringLiteral("text"), text);
        ChangeText(options);
    });
}

QJSValue ScriptLayer::GetTextOptions() const
{
    return Call([this] {
        RequireKind(LayerKind::Text);
        return KindOptions::OfText(Context().GetEngine(),
                                   LXDocumentInterfacePrivate::Get(m_Layer.Document())->Text(m_Layer.Id()));
    });
}

QJSValue ScriptLayer::GetTextBox() const
{
    return Call([this] {
        RequireKind(LayerKind::Text);
        const QRectF box = m_Layer.Document()->GetTextBox(m_Layer.Id());
        QJSValue rect = Context().GetEngine().newObject();
        rect.setProperty(QStringLiteral("x"), box.x());
        rect.setProperty(QStringLiteral("y"), box.y());
        rect.setProperty(QStringLiteral("width"), box.width());
        rect.setProperty(QStringLiteral("height"), box.height());
        return rect;
    });
}

QJSValue ScriptLayer::GetAdjustment() const
{
    return Call([this] {
        RequireKind(LayerKind::Adjustment);
        return KindOptions::OfAdjustment(Context().GetEngine(),
                                         m_Layer.Document()->GetAdjustment(m_Layer.Id()));
    });
}

void ScriptLayer::setText(const QJSValue& options)
{
    Call([&] { ChangeText(options); });
}

void ScriptLayer::ChangeText(const QJSValue& options) const
{
    RequireKind(LayerKind::Text);
    CheckFree();
    ScriptArguments::CheckOptions(options, KindOptions::TextNames());
    LXDocumentInterface* document = m_Layer.Document();
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    const TextContent before = insides->Text(m_Layer.Id());
    const TextContent after = KindOptions::ToText(options, before);
    if (after == before) return;
    LexoUndoStack* history = History();
    ChangeCommandHelper::MakeChangeTextLayerCommand(history, document, m_Layer.Id(), tr("Change text layer"));
    insides->PutText(m_Layer.Id(), after);
    if (history) history->commit();
}

void ScriptLayer::setAdjustment(const QJSValue& options)
{
    Call([&] {
        RequireKind(LayerKind::Adjustment);
        ScriptArguments::CheckOptions(options, KindOptions::AdjustmentNames());
        const LXAdjustment before = m_Layer.Document()->GetAdjustment(m_Layer.Id());
        const LXAdjustment after = KindOptions::ToAdjustment(options, before);
        if (after == before) return;
        Push(LayerCommands::ChangeAdjustment(m_Layer.Document(), m_Layer.Id(), after));
    });
}
