#include "scripting/ScriptLayer.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea_p.h"
#include "gui/ZKDocumentView.h"
#include "history/LayerCommands.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"
#include "scripting/LayerWords.h"
#include "scripting/ScriptArguments.h"

#include <QItemSelectionModel>

namespace {
ZKDocumentView* ViewOfDocument(const LXDocumentInterface* document)
{
    return ViewOf(LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->FindWindow(document));
}
} // namespace

ScriptLayer::ScriptLayer(ScriptContext& context, LXDocumentInterface* document, int row)
    : ScriptObject(context, nullptr), m_Layer(document, row)
{}

int ScriptLayer::GetRow() const
{
    return Call([this] { return m_Layer.Row(); });
}

int ScriptLayer::GetId() const
{
    return Call([this] { return static_cast<int>(m_Layer.Id()); });
}

QString ScriptLayer::GetName() const
{
    return Call([this] { return Model()->GetName(m_Layer.Row()); });
}

void ScriptLayer::SetName(const QString& name)
{
    Call([&] {
        if (name.trimmed().isEmpty()) throw ScriptError(QStringLiteral("A layer needs a name."));
        Push(LayerCommands::Rename(m_Layer.Document(), m_Layer.Id(), name));
    });
}

QString ScriptLayer::GetKind() const
{
    return Call([this] { return LayerWords::OfKind(m_Layer.Document()->GetLayerKind(m_Layer.Id())); });
}

QJSValue ScriptLayer::GetGeometry() const
{
    return Call([this] {
        const QRect geometry = m_Layer.Document()->GetLayerGeometry(m_Layer.Id());
        return ScriptArguments::OfRect(Context().GetEngine(), geometry);
    });
}

QJSValue ScriptLayer::GetOffset() const
{
    return Call([this] {
        const QPoint offset = Model()->GetLayerOffset(m_Layer.Row());
        return ScriptArguments::OfPoint(Context().GetEngine(), offset);
    });
}

double ScriptLayer::GetOpacity() const
{
    return Call([this] { return Model()->GetOpacity(m_Layer.Row()); });
}

void ScriptLayer::SetOpacity(double opacity)
{
    Call([&] {
        if (!(opacity >= 0 && opacity <= 1)) throw ScriptError(QStringLiteral("Opacity goes from 0 to 1."));
        Push(LayerCommands::SetOpacity(m_Layer.Document(), m_Layer.Id(), opacity));
    });
}

QString ScriptLayer::GetBlendMode() const
{
    return Call([this] { return LayerWords::OfBlendMode(Model()->GetBlendMode(m_Layer.Row())); });
}

void ScriptLayer::SetBlendMode(const QString& mode)
{
    Call([&] {
        Push(LayerCommands::SetBlendMode(m_Layer.Document(), m_Layer.Id(), LayerWords::ToBlendMode(mode)));
    });
}

bool ScriptLayer::IsVisible() const
{
    return Call([this] { return Model()->GetVisible(m_Layer.Row()); });
}

void ScriptLayer::SetVisible(bool visible)
{
    Call([&] { Push(LayerCommands::SetVisible(m_Layer.Document(), m_Layer.Id(), visible)); });
}

QStringList ScriptLayer::GetLocks() const
{
    return Call([this] { return LayerWords::OfLocks(m_Layer.Document()->GetLayerLockFlags(m_Layer.Id())); });
}

void ScriptLayer::SetLocks(const QStringList& names)
{
    Call(
        [&] { Push(LayerCommands::SetLocks(m_Layer.Document(), m_Layer.Id(), LayerWords::ToLocks(names))); });
}

bool ScriptLayer::IsSelected() const
{
    return Call([this] {
        const ZKDocumentView* view = ViewOfDocument(m_Layer.Document());
        return view && view->GetLayerSelection()->isSelected(m_Layer.Index());
    });
}

bool ScriptLayer::HasMask() const
{
    return Call([this] { return Model()->HasMask(m_Layer.Row()); });
}

bool ScriptLayer::IsMaskSelected() const
{
    return Call([this] { return Model()->GetMaskSelected(m_Layer.Row()); });
}

bool ScriptLayer::IsLinked() const
{
    return Call([this] { return Model()->GetMaskLinked(m_Layer.Row()); });
}

void ScriptLayer::SetLinked(bool linked)
{
    Call([&] { Push(LayerCommands::SetMaskLinked(m_Layer.Document(), m_Layer.Id(), linked)); });
}

bool ScriptLayer::MaskReveals() const
{
    return Call([this] {
        RequireMask();
        bool reveals = false;
        m_Layer.Document()->GetMaskInverted(m_Layer.Id(), &reveals);
        return reveals;
    });
}

QJSValue ScriptLayer::GetMaskGeometry() const
{
    return Call([this] {
        const QRect geometry = m_Layer.Document()->GetMaskGeometry(m_Layer.Id());
        return ScriptArguments::OfRect(Context().GetEngine(), geometry);
    });
}

QJSValue ScriptLayer::GetMaskOffset() const
{
    return Call([this] {
        RequireMask();
        const QPoint offset = Model()->GetMaskOffset(m_Layer.Row());
        return ScriptArguments::OfPoint(Context().GetEngine(), offset);
    });
}

void ScriptLayer::addMask(const QJSValue& options)
{
    Call([&] {
        constexpr const char* revealsName = "reveals";
        ScriptArguments::CheckOptions(options, {revealsName});
        if (Model()->HasMask(m_Layer.Row())) {
            throw ScriptError(QStringLiteral("The layer has a mask already."));
        }
        const QJSValue reveals = ScriptArguments::Option(options, revealsName);
        Push(LayerCommands::AddMask(m_Layer.Document(), m_Layer.Id(),
                                    reveals.isUndefined() || reveals.toBool()));
    });
}

void ScriptLayer::removeMask()
{
    Call([this] {
        RequireMask();
        Push(LayerCommands::RemoveMask(m_Layer.Document(), m_Layer.Id()));
    });
}

void ScriptLayer::moveToRow(const QJSValue& row)
{
    Call([&] {
        const int last = Model()->rowCount() - 1;
        const auto to = static_cast<unsigned int>(ScriptArguments::ToInteger(row, "row", 0, last)) + 1;
        if (to != m_Layer.Id()) Push(LayerCommands::Move(m_Layer.Document(), m_Layer.Id(), to));
    });
}

void ScriptLayer::remove()
{
    Call([this] {
        if (Model()->rowCount() == 1) {
            throw ScriptError(QStringLiteral("The last layer stays."));
        }
        const ZKDocumentView* view = ViewOfDocument(m_Layer.Document());
        Push(LayerCommands::Remove(m_Layer.Document(), view ? view->GetLayerSelection() : nullptr,
                                   m_Layer.Id()));
    });
}

LXDocumentModel* ScriptLayer::Model() const
{
    return m_Layer.Document()->GetModel();
}

LexoUndoStack* ScriptLayer::History() const
{
    const ZKDocumentView* view = ViewOfDocument(m_Layer.Document());
    return view ? view->GetHistory() : nullptr;
}

void ScriptLayer::CheckFree() const
{
    if (m_Layer.Document()->GetLockState())
        throw ScriptError(QStringLiteral("The document is being changed."));
}

void ScriptLayer::RequireMask() const
{
    if (!Model()->HasMask(m_Layer.Row())) {
        throw ScriptError(QStringLiteral("The layer has no mask."));
    }
}

void ScriptLayer::Push(LexoCommand* command) const
{
    std::unique_ptr<LexoCommand> owned(command);
    CheckFree();
    PushOrRun(History(), std::move(owned));
}
