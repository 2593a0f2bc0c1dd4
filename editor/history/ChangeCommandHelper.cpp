#include "history/ChangeCommandHelper.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "history/CropCommand.h"
#include "history/LayerCommands.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/TextLayerChangeCommand.h"
#include "history/TextLayerChangeCommandData_p.h"

#include <QBrush>
#include <QFont>

#include <algorithm>
#include <cmath>

namespace {
void PushOrRun(std::unique_ptr<LexoCommand> command, LexoUndoStack* stack)
{
    if (stack) {
        stack->push(command.release());
    } else {
        command->redo();
    }
}

/// All nine numbers are numbers, and the picture keeps its two dimensions.
bool IsPossible(const QTransform& transform)
{
    const double determinant = transform.determinant();
    const double values[] = {transform.m11(), transform.m12(), transform.m13(),  transform.m21(),
                             transform.m22(), transform.m23(), transform.m31(),  transform.m32(),
                             transform.m33(), determinant,     1.0 / determinant};
    return std::all_of(std::begin(values), std::end(values),
                       [](double value) { return std::isfinite(value); });
}

bool IsPossible(const QSize& size)
{
    return !size.isEmpty() && size.width() <= LXDocumentInterface::MAX_DOC_DIMENSION &&
           size.height() <= LXDocumentInterface::MAX_DOC_DIMENSION;
}
} // namespace

bool ChangeCommandHelper::RemoveLayer(LexoUndoStack* stack, LXDocumentInterface* document,
                                      QItemSelectionModel* selection, uint id, const QString& text)
{
    if (id == 0 || id > static_cast<uint>(document->GetModel()->rowCount())) return false;

    // Whatever floats above the layer is put down on it before it goes.
    emit document->AboutRequesAdditionalLayer(id);
    emit document->AboutRequesAdditionalMask(id);
    std::unique_ptr<LexoCommand> command(LayerCommands::Remove(document, selection, id));
    command->setText(text);
    PushOrRun(std::move(command), stack);
    return true;
}

bool ChangeCommandHelper::MakeChangeTextLayerCommand(LexoUndoStack* stack, LXDocumentInterface* document,
                                                     uint id, const QString& text)
{
    if (!stack || document->GetLayerKind(id) != LayerKind::Text) return false;

    // An older open step ends before what the layer is now is read.
    stack->commit();
    auto* data = new TextLayerChangeCommandData;
    data->SetLayerID(id);
    data->SetUndoText(document->GetText(id));
    data->SetUndoFont(document->GetTextFont(id));
    data->SetUndoBrush(document->GetTextBrush(id));
    data->SetUndoPosition(document->GetTextPosition(id));
    data->SetUndoStyle(document->GetTextStyle(id));
    data->SetUndoOrientation(document->GetTextOrientation(id));
    data->SetUndoBend(document->GetTextBend(id));
    data->SetUndoHDistortion(document->GetTextHDistortion(id));
    data->SetUndoVDistortion(document->GetTextVDistortion(id));
    data->SetUndoRenderMode(document->GetTextRenderMode(id));
    // The setter would take it in single precision.
    TextLayerChangeCommandDataPrivate::Get(data)->undo.transform =
        document->GetModel()->GetTextLayerTransformation(static_cast<int>(id) - 1);
    auto command = std::make_unique<TextLayerChangeCommand>(document);
    command->SetCommandData(data);
    command->setText(text);
    stack->pushDelayed(command.release());
    return true;
}

bool ChangeCommandHelper::MakeCropCommand(LXDocumentInterface* document, const QString& text,
                                          const QTransform& transform, const QSize& size, bool hide,
                                          bool resample, LexoUndoStack* stack)
{
    return MakeCropCommand(document, text, transform, size, hide, resample, QColor(), stack);
}

bool ChangeCommandHelper::MakeCropCommand(LXDocumentInterface* document, const QString& text,
                                          const QTransform& transform, const QSize& size, bool hide,
                                          bool resample, const QColor& extension, LexoUndoStack* stack)
{
    if (!IsPossible(transform) || !IsPossible(size)) return false;
    const CanvasCrop crop{transform, size, hide, resample, extension};
    const bool isSameCanvas = size == document->GetDocumentSize();
    if (isSameCanvas && CanvasTransform::IsIdle(CanvasTransform::Exact(crop), size)) return false;

    auto command = std::make_unique<CropCommand>(document, crop);
    command->setText(text);
    PushOrRun(std::move(command), stack);
    return true;
}
