#include "CommandWalker.h"

#include "document/LXDocumentLayerLockerForWrite.h"
#include "history/ChangeCommandHelper.h"
#include "history/LayerCommands.h"
#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "history/SelectionMoveCommand.h"
#include "history/SelectionMoveCommandData.h"

#include <QPainterPath>

using namespace DocumentFixture;

void CommandWalker::Step()
{
    switch (Pick(0, 22)) {
    case 0:
    case 1: return PaintLayer();
    case 2: return PaintMask();
    case 3: return SelectPath();
    case 4: return SelectMask();
    case 5: return MoveSelection();
    case 6: return MoveLayers();
    case 7: return ChangeLayer();
    case 8: return ChangeLayerProperty();
    case 9: return PushMacro();
    case 10: return TransformLayer();
    case 11: return TransformSelection();
    case 12: return ChangeCanvas();
    case 13: return ChangeImageSize();
    case 14:
    case 15: return ChangePath();
    case 16: return ChangeGuides();
    case 17: return ChangeChannels();
    case 18:
    case 19: return WorkOnText();
    case 20: return WorkOnAdjustment();
    case 21: return ChangeProfile();
    default: return ChangeSample();
    }
}

unsigned int CommandWalker::PickIdOf(int kind)
{
    QVector<unsigned int> ids;
    for (int row = 0; row < m_pDocument->GetModel()->rowCount(); ++row) {
        const auto id = static_cast<unsigned int>(row) + 1;
        if (m_pDocument->GetLayerKind(id) == kind) ids << id;
    }
    return ids.isEmpty() ? 0 : ids[Pick(0, ids.size() - 1)];
}

QRect CommandWalker::PickRect(int beyond)
{
    return DocumentFixture::PickRect(m_Random, m_pDocument->GetLayerGeometry(0), beyond);
}

/// Half of the paints are in the document before they are pushed.
template <class Command, class Data>
void CommandWalker::PaintOn(unsigned int id, const QRect& before, LXImage32* image, bool isMask)
{
    const QRect after = PickRect(15);
    const QRect common = before & after;
    const bool isApplied = PickBool() && !common.isEmpty();
    const QRect painted = isApplied ? common : after;
    const QSize size = painted.size();
    const LXImage32 paint = isMask ? MaskNoise(m_Random, size) : Noise(m_Random, size);

    auto* data = new Data;
    data->SetLayerID(id);
    data->SetUndoGeometry(before);
    data->SetRedoGeometry(painted);
    // The part that is covered, or everything.
    const bool keepsPart = PickBool() && !common.isEmpty();
    data->SetUndoImage(*image, keepsPart ? common.translated(-before.topLeft()) : QRect());
    data->SetRedoImage(paint, QRect());
    if (isApplied) {
        const LXDocumentLayerLockerForWrite locker(m_pDocument, id);
        BlendOn(paint, paint.Rect(), BlendMode::Source, *image, painted.translated(-before.topLeft()), 1.0,
                false);
    }
    auto* command = new Command(m_pDocument, !isApplied);
    command->SetCommandData(data);
    m_pStack->push(command);
}

/// Only pixels are painted on, as tools do; where there are none, there will be.
void CommandWalker::PaintLayer()
{
    const unsigned int id = PickIdOf(LayerKind::Raster);
    if (id == 0) return CreateLayer();
    PaintOn<LayerPaintCommand, LayerPaintCommandData>(id, m_pDocument->GetLayerGeometry(id),
                                                      m_pDocument->GetLayerImage(id), false);
}

void CommandWalker::PaintMask()
{
    const unsigned int id = PickId();
    if (!m_pDocument->GetMaskImage(id)) return PaintLayer();
    PaintOn<LayerMaskPaintCommand, LayerMaskPaintCommandData>(id, m_pDocument->GetMaskGeometry(id),
                                                              m_pDocument->GetMaskImage(id), true);
}

void CommandWalker::SelectPath()
{
    auto* data = new SelectionCommandData;
    QPainterPath path;
    path.addEllipse(QRectF(PickRect(20)).translated(0.3, 0.6));
    data->SetSelectionGeometry(path);
    data->SetSelectionOp(static_cast<SelectionCommandData::LogicalOp>(Pick(0, 3)));
    data->SetUndoSel(m_pDocument->GetSelectionMaskOffset(), m_pDocument->GetSelectionMask());
    auto* command = new SelectionCommand(m_pDocument);
    command->SetCommandData(data);
    m_pStack->push(command);
}

void CommandWalker::SelectMask()
{
    auto* data = new MWSelectionCommandData;
    const QRect rect = PickRect(20);
    data->SetNoUndoSelection(!m_pDocument->HasSelection());
    data->SetUndoSel(m_pDocument->GetSelectionMaskOffset(), m_pDocument->GetSelectionMask());
    data->SetRedoSel(rect.topLeft(), MaskNoise(m_Random, rect.size()),
                     static_cast<SelectionCommandData::LogicalOp>(Pick(0, 3)));
    auto* command = new MWSelectionCommand(m_pDocument, true);
    command->SetCommandData(data);
    m_pStack->push(command);
}

/// A delayed command; half of them are left open for the next step to close.
void CommandWalker::MoveSelection()
{
    if (!m_pDocument->HasSelection()) return SelectMask();
    auto* data = new SelectionMoveCommandData;
    data->SetUndoPosition(m_pDocument->GetSelectionMaskOffset());
    data->SetRedoPosition(m_pDocument->GetSelectionMaskOffset());
    auto* command = new SelectionMoveCommand(m_pDocument);
    command->SetCommandData(data);
    m_pStack->pushDelayed(command);
    m_pDocument->TranslateSelection(PickDelta());
    m_pDocument->TranslateSelection(PickDelta());
    if (PickBool()) m_pStack->commit();
}

void CommandWalker::MoveLayers()
{
    const unsigned int id = PickId();
    const QPoint delta = PickDelta();
    const bool isApplied = PickBool();
    auto* data = new MoveCommandData;
    data->SetDelta(delta);
    if (PickBool()) data->SetLayers({id});
    if (PickBool() && m_pDocument->GetMaskImage(id)) data->SetMasks({id});
    const bool isText = m_pDocument->GetLayerKind(id) == LayerKind::Text;
    if (isText && PickBool()) {
        const QTransform old = m_pDocument->GetModel()->GetTextLayerTransformation(static_cast<int>(id) - 1);
        data->SetTextLayerOldTransformation(old);
        data->SetTextLayerNewTransformation(old * QTransform::fromTranslate(delta.x(), delta.y()));
    }
    if (isApplied) {
        // An open move of the selection ends where the selection lies now.
        m_pStack->commit();
        if (!data->GetLayers().isEmpty()) {
            m_pDocument->SetLayerOffset(id, m_pDocument->GetLayerGeometry(id).topLeft() + delta);
        }
        if (!data->GetMasks().isEmpty()) {
            m_pDocument->SetMaskOffset(id, m_pDocument->GetMaskGeometry(id).topLeft() + delta);
        }
        m_pDocument->TranslateSelection(delta);
    }
    auto* command = new MoveCommand(m_pDocument, !isApplied);
    command->SetCommandData(data);
    m_pStack->push(command);
}

void CommandWalker::CreateLayer()
{
    auto* data = new LayerCreateCommandData(m_pSelection, LayerCreateCommandData::Raster, PickRow());
    data->SetLayerName("new");
    data->SetOpacity(Pick(0, 4) / 4.0);
    auto* command = new LayerCreateCommand(m_pDocument, true);
    command->SetCommandData(data);
    m_pStack->push(command);
}

void CommandWalker::RemoveLayer()
{
    ChangeCommandHelper::RemoveLayer(m_pStack, m_pDocument, m_pSelection, PickId(), "remove");
}

void CommandWalker::ChangeLayer()
{
    const int count = m_pDocument->GetModel()->rowCount();
    constexpr int most = 8;
    switch (Pick(0, 3)) {
    case 0: return count < most ? CreateLayer() : RemoveLayer();
    case 1: return count > 2 ? RemoveLayer() : CreateLayer();
    case 2:
        if (count >= most) return RemoveLayer();
        m_pStack->commit();
        return m_pStack->push(LayerCommands::Duplicate(m_pDocument, m_pSelection, PickId(), "copy"));
    default: return m_pStack->push(LayerCommands::Move(m_pDocument, PickId(), PickId()));
    }
}

void CommandWalker::ChangeLayerProperty()
{
    const unsigned int id = PickId();
    switch (Pick(0, 7)) {
    case 0: return m_pStack->push(LayerCommands::SetOpacity(m_pDocument, id, Pick(0, 4) / 4.0));
    case 1: return m_pStack->push(LayerCommands::SetVisible(m_pDocument, id, PickBool()));
    case 2: return m_pStack->push(LayerCommands::SetBlendMode(m_pDocument, id, BlendMode::Multiply));
    case 3: return m_pStack->push(LayerCommands::AddMask(m_pDocument, id, PickBool()));
    case 4: return m_pStack->push(LayerCommands::RemoveMask(m_pDocument, id));
    case 5: return m_pStack->push(LayerCommands::SetMaskLinked(m_pDocument, id, PickBool()));
    case 6:
        return m_pStack->push(
            LayerCommands::SetLocks(m_pDocument, id, static_cast<unsigned int>(Pick(0, 15))));
    default: return m_pStack->push(LayerCommands::Rename(m_pDocument, id, QString::number(m_Random())));
    }
}

void CommandWalker::PushMacro()
{
    m_pStack->beginMacro("several");
    for (int i = Pick(1, 3); i > 0; --i) {
        PaintLayer();
        ChangeLayer();
        SelectMask();
    }
    m_pStack->endMacro();
}
