#pragma once

#include "scripting/ScriptObject.h"

/// `layers`: the layers of the active document.
class ScriptLayers : public ScriptObject
{
    Q_OBJECT
    Q_PROPERTY(int count READ GetCount)
    /// From the top.
    Q_PROPERTY(QJSValue all READ GetAll)
    /// Those that are selected, from the top.
    Q_PROPERTY(QJSValue selected READ GetSelected)
    /// The one selected layer; null when none or several are.
    Q_PROPERTY(QJSValue current READ GetCurrent)

public:
    ScriptLayers(ScriptContext& context, QObject* parent);

    int GetCount() const;
    QJSValue GetAll() const;
    QJSValue GetSelected() const;
    QJSValue GetCurrent() const;

    /// By row, 0 being the topmost.
    Q_INVOKABLE QJSValue at(const QJSValue& row) const;
    /// The topmost one of that name.
    Q_INVOKABLE QJSValue named(const QString& name) const;
    /// A layer, or a list of layers. Painting goes to the pixels then.
    Q_INVOKABLE void select(const QJSValue& which);
    /// Selects the layer, and its mask to paint on.
    Q_INVOKABLE void selectMask(const QJSValue& layer);
    /// A transparent layer above the selected one, which is selected then.
    /// @param options  `{name, row}`
    Q_INVOKABLE QJSValue add(const QJSValue& options = QJSValue());
    /// A text layer there, which is selected then.
    /// @param options  `{name, row}` and those of the text
    Q_INVOKABLE QJSValue addText(const QJSValue& options);
    /// A layer there that changes the colors below it, which is selected then.
    /// @param options  `{name, row}` and those of the adjustment
    Q_INVOKABLE QJSValue addAdjustment(const QJSValue& options);

private:
    QJSValue HandLayer(int row) const;
    QJSValue HandLayers(const QVector<int>& rows) const;
    QVector<int> SelectedRows() const;
    void SelectRows(const QVector<int>& rows) const;
    int RowOf(const QJSValue& layer) const;
    /// Where a new layer goes in; fails while the document is being changed.
    int RowForNew(const QJSValue& options) const;
};
