#include "history/LayerCommands.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXLayerNameHelper.h"
#include "history/AdjustmentCommand.h"
#include "history/LayerContentCommand.h"
#include "history/LayerMaskCommand.h"
#include "history/LayerOrderCommand.h"
#include "history/LayerPropertyCommand.h"
#include "image/AdjustmentPixels.h"

#include <QCoreApplication>

namespace {
int RowOf(unsigned int id)
{
    return static_cast<int>(id) - 1;
}

LexoCommand* Named(LexoCommand* command, const char* text)
{
    command->setText(QCoreApplication::translate("LayerCommands", text));
    return command;
}
} // namespace

LexoCommand* LayerCommands::Remove(LXDocumentInterface* document, QItemSelectionModel* selection,
                                   unsigned int id)
{
    return Named(LayerContentCommand::Removing(document, selection, RowOf(id)),
                 QT_TRANSLATE_NOOP("LayerCommands", "Delete layer"));
}

LexoCommand* LayerCommands::Duplicate(LXDocumentInterface* document, QItemSelectionModel* selection,
                                      unsigned int id, const QString& name)
{
    constexpr int noRow = -1;
    // Whatever floats above the layer belongs to the copy as well.
    emit document->AboutRequesAdditionalLayer(id);
    emit document->AboutRequesAdditionalMask(id);
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    LayerState layer = insides->GetLayerState(id);
    layer.properties.name = name;
    const int row = insides->layers.Find(id) ? RowOf(id) : noRow;
    return Named(LayerContentCommand::Adding(document, selection, row, layer),
                 QT_TRANSLATE_NOOP("LayerCommands", "Duplicate layer"));
}

LexoCommand* LayerCommands::AddPicture(LXDocumentInterface* document, QItemSelectionModel* selection,
                                       unsigned int id, const LXImage32& image, const QPoint& topLeft)
{
    LayerState layer;
    layer.properties.name = LXLayerNameHelper::MakeDefaultName(document, LXLayerNameHelper::New, id);
    layer.properties.rect = QRect(topLeft, image.Rect().size());
    layer.image = image;
    return LayerContentCommand::Adding(document, selection, RowOf(id), layer);
}

LexoCommand* LayerCommands::Move(LXDocumentInterface* document, unsigned int from, unsigned int to)
{
    return Named(new LayerOrderCommand(document, RowOf(from), RowOf(to)),
                 QT_TRANSLATE_NOOP("LayerCommands", "Move layer in the stack"));
}

LexoCommand* LayerCommands::AddAdjustment(LXDocumentInterface* document, QItemSelectionModel* selection,
                                          int row, const QString& name, const LXAdjustment& adjustment)
{
    LayerState layer;
    layer.properties.name = name;
    layer.properties.kind = LayerKind::Adjustment;
    layer.properties.adjustment = AdjustmentPixels::Clamped(adjustment);
    return Named(LayerContentCommand::Adding(document, selection, row, layer),
                 QT_TRANSLATE_NOOP("LayerCommands", "New adjustment layer"));
}

LexoCommand* LayerCommands::ChangeAdjustment(LXDocumentInterface* document, unsigned int id,
                                             const LXAdjustment& adjustment)
{
    return Named(new AdjustmentCommand(document, id, AdjustmentPixels::Clamped(adjustment)),
                 QT_TRANSLATE_NOOP("LayerCommands", "Change adjustment"));
}

LexoCommand* LayerCommands::Rename(LXDocumentInterface* document, unsigned int id, const QString& name)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::Name, name),
                 QT_TRANSLATE_NOOP("LayerCommands", "Rename layer"));
}

LexoCommand* LayerCommands::SetVisible(LXDocumentInterface* document, unsigned int id, bool visible)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::Visible, visible),
                 visible ? QT_TRANSLATE_NOOP("LayerCommands", "Show layer")
                         : QT_TRANSLATE_NOOP("LayerCommands", "Hide layer"));
}

LexoCommand* LayerCommands::SetOpacity(LXDocumentInterface* document, unsigned int id, double opacity)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::Opacity, opacity),
                 QT_TRANSLATE_NOOP("LayerCommands", "Layer opacity"));
}

LexoCommand* LayerCommands::SetBlendMode(LXDocumentInterface* document, unsigned int id, unsigned int mode)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::BlendMode, mode),
                 QT_TRANSLATE_NOOP("LayerCommands", "Layer blend mode"));
}

LexoCommand* LayerCommands::SetLocks(LXDocumentInterface* document, unsigned int id, unsigned int flags)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::Locks, flags),
                 QT_TRANSLATE_NOOP("LayerCommands", "Layer locks"));
}

LexoCommand* LayerCommands::SetMaskLinked(LXDocumentInterface* document, unsigned int id, bool linked)
{
    return Named(new LayerPropertyCommand(document, id, LayerProperty::MaskLinked, linked),
                 linked ? QT_TRANSLATE_NOOP("LayerCommands", "Link mask")
                        : QT_TRANSLATE_NOOP("LayerCommands", "Unlink mask"));
}

LexoCommand* LayerCommands::AddMask(LXDocumentInterface* document, unsigned int id, bool reveals)
{
    return Named(LayerMaskCommand::Adding(document, id, reveals),
                 QT_TRANSLATE_NOOP("LayerCommands", "Add mask"));
}

LexoCommand* LayerCommands::RemoveMask(LXDocumentInterface* document, unsigned int id)
{
    // Whatever floats above the mask is put down on it before it goes.
    emit document->AboutRequesAdditionalMask(id);
    return Named(LayerMaskCommand::Removing(document, id), QT_TRANSLATE_NOOP("LayerCommands", "Remove mask"));
}
