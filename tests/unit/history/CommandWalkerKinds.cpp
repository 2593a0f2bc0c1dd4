// The steps of the walker on text and adjustment layers.

#include "CommandWalker.h"

#include "history/AdjustmentCommand.h"
#include "history/ChangeCommandHelper.h"
#include "history/LayerCommands.h"
#include "history/LexoUndoStack.h"
#include "history/NewLayerCommand.h"
#include "history/NewLayerData.h"
#include "history/NewTextLayerData.h"
#include "support/TextFixture.h"

#include <QMatrix4x4>

using namespace DocumentFixture;

namespace {
constexpr int MostLayers = 8;
}

void CommandWalker::WorkOnText()
{
    const unsigned int id = PickIdOf(LayerKind::Text);
    const bool mayAdd = m_pDocument->GetModel()->rowCount() < MostLayers;
    if (mayAdd && (id == 0 || Pick(0, 3) == 0)) return AddText();
    if (id == 0) return RemoveLayer();
    ChangeText(id);
}

/// As the text tool does: the layer is there before its command, which is delayed and closed at once. Or all
/// of it by one redo.
void CommandWalker::AddText()
{
    const bool isThere = PickBool();
    const unsigned int row = static_cast<unsigned int>(PickRow());
    auto* data = new NewTextLayerData;
    data->SetLayerID(row + 1);
    data->SetName("Text Layer");
    data->SetOpacity(Pick(1, 4) / 4.0);
    data->SetMaskCreated(PickBool());
    data->SetFont(TextFixture::Font(Pick(8, 40)));
    data->SetBrush(QColor::fromRgba(m_Random()));
    data->SetPosition(QPointF(Pick(-10, 80), Pick(10, 80) + 0.25));
    m_pStack->commit();
    auto* command = new NewLayerCommand(m_pDocument->GetModel(), m_pSelection, true);
    if (isThere) {
        data->SetOpacity(1);
        data->SetMaskCreated(false);
        m_pDocument->AddTextLayer("Text Layer", QPointF(Pick(0, 60), Pick(10, 80)), static_cast<int>(row));
        SetSomeOfText(row + 1);
    }
    command->SetCommandData(data);
    command->setText("text");
    if (isThere) {
        m_pStack->pushDelayed(command);
        m_pStack->commit();
    } else {
        m_pStack->push(command);
    }
}

/// Some of these steps stay open for the next one to close.
void CommandWalker::ChangeText(unsigned int id)
{
    ChangeCommandHelper::MakeChangeTextLayerCommand(m_pStack, m_pDocument, id, "change text");
    for (int i = Pick(1, 3); i > 0; --i)
        SetSomeOfText(id);
    if (PickBool()) m_pStack->commit();
}

void CommandWalker::SetSomeOfText(unsigned int id)
{
    switch (Pick(0, 8)) {
    case 0: return m_pDocument->SetTextFont(id, TextFixture::Font(Pick(6, 40)));
    case 1: return m_pDocument->SetTextBrush(id, QColor::fromRgba(m_Random()));
    case 2: return m_pDocument->SetTextPosition(id, QPointF(Pick(-20, 99) / 2.0, Pick(0, 80)));
    case 3: return m_pDocument->SetTextRenderMode(id, Pick(0, 1));
    case 4: m_pDocument->SetTextStyle(id, 1); return m_pDocument->SetTextBend(id, Pick(-100, 100));
    case 5: return m_pDocument->SetTextHDistortion(id, Pick(-100, 100));
    case 6: return m_pDocument->SetTextOrientation(id, Pick(0, 1));
    case 7:
        return m_pDocument->SetTextLayerTransformation(
            id, QMatrix4x4(QTransform().translate(Pick(0, 50), Pick(0, 50)).rotate(Pick(0, 359))));
    default: return m_pDocument->SetText(id, QString::number(m_Random() % 10000) + TextFixture::Hebrew());
    }
}

LXAdjustment CommandWalker::PickAdjustment()
{
    LXAdjustment adjustment;
    adjustment.kind = static_cast<LXAdjustment::Kind>(Pick(0, 3));
    adjustment.brightness = Pick(-100, 100);
    adjustment.contrast = Pick(-100, 100);
    adjustment.inBlack = Pick(0, 100);
    adjustment.gamma = Pick(1, 30) / 10.0;
    adjustment.hue = Pick(-180, 180);
    adjustment.saturation = Pick(-100, 100);
    return adjustment;
}

void CommandWalker::WorkOnAdjustment()
{
    const unsigned int id = PickIdOf(LayerKind::Adjustment);
    if (id == 0 || Pick(0, 3) == 0) {
        if (m_pDocument->GetModel()->rowCount() >= MostLayers) return RemoveLayer();
        return m_pStack->push(LayerCommands::AddAdjustment(m_pDocument, m_pSelection, PickRow(), "adjustment",
                                                           PickAdjustment()));
    }
    if (PickBool()) return m_pStack->push(LayerCommands::ChangeAdjustment(m_pDocument, id, PickAdjustment()));
    // A slider that is drawn about.
    m_pStack->commit();
    m_pStack->pushDelayed(LayerCommands::ChangeAdjustment(m_pDocument, id, m_pDocument->GetAdjustment(id)));
    m_pDocument->SetAdjustment(id, PickAdjustment());
    m_pDocument->SetAdjustment(id, PickAdjustment());
    if (PickBool()) m_pStack->commit();
}
