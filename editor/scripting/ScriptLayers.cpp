#include "scripting/ScriptLayers.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LayerCommands.h"
#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/NewLayerCommand.h"
#include "history/NewTextLayerData.h"
#include "scripting/KindOptions.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptLayer.h"

#include <QItemSelectionModel>

#include <algorithm>
#include <numeric>

ScriptLayers::ScriptLayers(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QJSValue ScriptLayers::HandLayer(int row) const
{
    return Hand(new ScriptLayer(Context(), RequireDocument(), row));
}

QJSValue ScriptLayers::HandLayers(const QVector<int>& rows) const
{
    QJSValue layers = Context().GetEngine().newArray(static_cast<uint>(rows.size()));
    for (int i = 0; i < rows.size(); ++i)
        layers.setProperty(static_cast<quint32>(i), HandLayer(rows[i]));
    return layers;
}

QVector<int> ScriptLayers::SelectedRows() const
{
    QVector<int> rows;
    const QModelIndexList selected = RequireView()->GetLayerSelection()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int ScriptLayers::GetCount() const
{
    return Call([this] { return RequireView()->GetModel()->rowCount(); });
}

QJSValue ScriptLayers::GetAll() const
{
    return Call([this] {
        QVector<int> rows(RequireView()->GetModel()->rowCount());
        std::iota(rows.begin(), rows.end(), 0);
        return HandLayers(rows);
    });
}

QJSValue ScriptLayers::GetSelected() const
{
    return Call([this] { return HandLayers(SelectedRows()); });
}

QJSValue ScriptLayers::GetCurrent() const
{
    return Call([this] {
        const QVector<int> rows = SelectedRows();
        return rows.size() == 1 ? HandLayer(rows.first()) : QJSValue(QJSValue::NullValue);
    });
}

QJSValue ScriptLayers::at(const QJSValue& row) const
{
    return Call([&] {
        return HandLayer(
            ScriptArguments::ToInteger(row, "row", 0, RequireView()->GetModel()->rowCount() - 1));
    });
}

QJSValue ScriptLayers::named(const QString& name) const
{
    return Call([&] {
        const LXDocumentModel* model = RequireView()->GetModel();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->GetName(row) == name) return HandLayer(row);
        }
        throw ScriptError(QStringLiteral("There is no layer \"%1\".").arg(name));
    });
}

int ScriptLayers::RowOf(const QJSValue& layer) const
{
    const auto* held = qobject_cast<ScriptLayer*>(layer.toQObject());
    if (!held) throw ScriptError(QStringLiteral("A layer is needed, as layers.at() gives one."));
    if (held->Reference().Document() != RequireDocument()) {
        throw ScriptError(QStringLiteral("The layer belongs to another document."));
    }
    return held->Reference().Row();
}

void ScriptLayers::SelectRows(const QVector<int>& rows) const
{
    const LXDocumentModel* model = RequireView()->GetModel();
    QItemSelection selection;
    for (const int row : rows)
        selection.select(model->index(row), model->index(row));
    RequireView()->GetLayerSelection()->select(selection, QItemSelectionModel::ClearAndSelect |
                                                              QItemSelectionModel::Rows);
}

void ScriptLayers::select(const QJSValue& which)
{
    Call([&] {
        QVector<int> rows;
        if (which.isArray()) {
            const quint32 count = which.property(QStringLiteral("length")).toUInt();
            for (quint32 i = 0; i < count; ++i)
                rows.append(RowOf(which.property(i)));
        } else {
            rows.append(RowOf(which));
        }
        for (const int row : qAsConst(rows))
            RequireView()->GetModel()->SetMaskSelected(row, false);
        SelectRows(rows);
    });
}

void ScriptLayers::selectMask(const QJSValue& layer)
{
    Call([&] {
        const int row = RowOf(layer);
        LXDocumentModel* model = RequireView()->GetModel();
        if (!model->HasMask(row)) throw ScriptError(QStringLiteral("The layer has no mask."));
        SelectRows({row});
        model->SetMaskSelected(row, true);
    });
}

int ScriptLayers::RowForNew(const QJSValue& options) const
{
    const LXDocumentInterface* document = RequireDocument();
    if (document->GetLockState()) throw ScriptError(QStringLiteral("The document is being changed."));
    const QJSValue wanted = ScriptArguments::Option(options, "row");
    return wanted.isUndefined()
               ? SelectedRows().value(0, 0)
               : ScriptArguments::ToInteger(wanted, "row", 0, document->GetModel()->rowCount());
}

QJSValue ScriptLayers::addText(const QJSValue& options)
{
    return Call([&] {
        ScriptArguments::CheckOptions(options, KindOptions::TextNames() + QVector<QString>{"name", "row"});
        const TextContent text = KindOptions::ToText(options, TextContent());
        const int row = RowForNew(options);
        const QJSValue name = ScriptArguments::Option(options, "name");
        LXDocumentInterface* document = RequireDocument();
        LexoUndoStack* history = RequireView()->GetHistory();

        // As a person does it: the layer is there before its step.
        history->commit();
        auto data = std::make_unique<NewTextLayerData>();
        data->SetLayerID(static_cast<uint>(row) + 1);
        data->SetName(name.isUndefined() ? tr("Text Layer") : name.toString());
        auto command =
            std::make_unique<NewLayerCommand>(document->GetModel(), RequireView()->GetLayerSelection(), true);
        command->setText(tr("New text layer"));
        const unsigned int id = document->AddTextLayer(data->GetName(), text.position, row);
        if (command->SetCommandData(data.get())) static_cast<void>(data.release());
        LXDocumentInterfacePrivate::Get(document)->PutText(id, text);
        history->pushDelayed(command.release());
        history->commit();
        return HandLayer(row);
    });
}

QJSValue ScriptLayers::addAdjustment(const QJSValue& options)
{
    return Call([&] {
        ScriptArguments::CheckOptions(options,
                                      KindOptions::AdjustmentNames() + QVector<QString>{"name", "row"});
        const LXAdjustment adjustment = KindOptions::ToAdjustment(options, LXAdjustment());
        const int row = RowForNew(options);
        const QJSValue name = ScriptArguments::Option(options, "name");
        RequireView()->GetHistory()->push(LayerCommands::AddAdjustment(
            RequireDocument(), RequireView()->GetLayerSelection(), row,
            name.isUndefined() ? KindOptions::NameOf(adjustment.kind) : name.toString(), adjustment));
        return HandLayer(row);
    });
}

QJSValue ScriptLayers::add(const QJSValue& options)
{
    return Call([&] {
        constexpr const char* nameName = "name";
        constexpr const char* rowName = "row";
        ScriptArguments::CheckOptions(options, {nameName, rowName});
        LXDocumentInterface* document = RequireDocument();
        const LXDocumentModel* model = document->GetModel();
        const int row = RowForNew(options);
        const QJSValue name = ScriptArguments::Option(options, nameName);
        auto data = std::make_unique<LayerCreateCommandData>(RequireView()->GetLayerSelection(),
                                                             LayerCreateCommandData::Raster, row);
        data->SetLayerName(name.isUndefined() ? tr("Layer %1").arg(model->rowCount()) : name.toString());
        auto command = std::make_unique<LayerCreateCommand>(document, true);
        command->setText(tr("New layer"));
        if (command->SetCommandData(data.get())) static_cast<void>(data.release());
        RequireView()->GetHistory()->push(command.release());
        return HandLayer(row);
    });
}
