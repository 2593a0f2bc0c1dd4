#pragma once

#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

#include <QVariant>

class LXDocumentInterface;

/// What of a layer can be set by itself.
enum class LayerProperty
{
    Name,
    Visible,
    Opacity,
    BlendMode,
    Locks,
    MaskLinked
};

struct LayerPropertyValues : PlainValues
{
    unsigned int id = 0;
    LayerProperty property = LayerProperty::Name;
    QVariant before;
    QVariant after;
};

/// Sets one property of a layer. Main thread.
class LayerPropertyCommand : public ValueCommand<LayerPropertyValues, CommandDataType::LayerProperty>
{
public:
    /// Takes the value before from the document.
    LayerPropertyCommand(LXDocumentInterface* document, unsigned int id, LayerProperty property,
                         const QVariant& after);

protected:
    void Redo(LayerPropertyValues& values) override;
    void Undo(LayerPropertyValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
