#include "history/LayerPropertyCommand.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"

namespace {
QVariant Read(const LXDocumentModel* model, unsigned int id, LayerProperty property)
{
    const int row = static_cast<int>(id) - 1;
    switch (property) {
    case LayerProperty::Name: return model->GetName(row);
    case LayerProperty::Visible: return model->GetVisible(row);
    case LayerProperty::Opacity: return model->GetOpacity(row);
    case LayerProperty::BlendMode: return model->GetBlendMode(row);
    case LayerProperty::Locks: return model->GetLockFlags(row);
    case LayerProperty::MaskLinked: return model->GetMaskLinked(row);
    }
    return QVariant();
}

void Write(LXDocumentModel* model, unsigned int id, LayerProperty property, const QVariant& value)
{
    const int row = static_cast<int>(id) - 1;
    switch (property) {
    case LayerProperty::Name: return model->SetName(row, value.toString());
    case LayerProperty::Visible: return model->SetVisible(row, value.toBool());
    case LayerProperty::Opacity: return model->SetOpacity(row, value.toDouble());
    case LayerProperty::BlendMode: return model->SetBlendMode(row, value.toUInt());
    case LayerProperty::Locks: return model->SetLockFlags(row, value.toUInt());
    case LayerProperty::MaskLinked: return model->SetMaskLinked(row, value.toBool());
    }
}

LayerPropertyValues ValuesFor(const LXDocumentInterface* document, unsigned int id, LayerProperty property,
                              const QVariant& after)
{
    LayerPropertyValues values;
    values.id = id;
    values.property = property;
    values.before = Read(document->GetModel(), id, property);
    values.after = after;
    return values;
}
} // namespace

static QDataStream& operator<<(QDataStream& stream, const LayerPropertyValues& values)
{
    return stream << values.id << qint32(values.property) << values.before << values.after;
}

static QDataStream& operator>>(QDataStream& stream, LayerPropertyValues& values)
{
    stream >> values.id;
    DataStream::ReadEnum(stream, values.property, LayerProperty::MaskLinked);
    return stream >> values.before >> values.after;
}

LayerPropertyCommand::LayerPropertyCommand(LXDocumentInterface* document, unsigned int id,
                                           LayerProperty property, const QVariant& after)
    : ValueCommand(ValuesFor(document, id, property, after)), m_pDocument(document)
{}

void LayerPropertyCommand::Redo(LayerPropertyValues& values)
{
    Write(m_pDocument->GetModel(), values.id, values.property, values.after);
}

void LayerPropertyCommand::Undo(LayerPropertyValues& values)
{
    Write(m_pDocument->GetModel(), values.id, values.property, values.before);
}
