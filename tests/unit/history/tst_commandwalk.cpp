#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentModel.h"
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
#include "image/LXTileManager.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QSet>
#include <QTest>

using namespace DocumentFixture;

namespace {
/// Pushes random commands as the tools would: their values before are read from the document.
class Walker
{
public:
    Walker(LXDocumentInterface* document, LexoUndoStack* stack, unsigned int seed)
        : m_pDocument(document), m_pStack(stack), m_Random(seed)
    {}

    void Step();

private:
    int PickRow() { return Pick(m_Random, 0, m_pDocument->GetModel()->rowCount() - 1); }

    unsigned int PickId() { return static_cast<unsigned int>(PickRow()) + 1; }

    bool PickBool() { return Pick(m_Random, 0, 1) == 0; }

    QPoint PickDelta() { return {Pick(m_Random, -20, 20), Pick(m_Random, -20, 20)}; }

    template <class Command, class Data>
    void PaintOn(unsigned int id, const QRect& before, LXImage32* image, bool isMask);
    void PaintLayer();
    void PaintMask();
    void SelectPath();
    void SelectMask();
    void MoveSelection();
    void MoveLayers();
    void CreateLayer();
    void ChangeLayer();
    void PushMacro();

    LXDocumentInterface* m_pDocument;
    LexoUndoStack* m_pStack;
    Random m_Random;
};

void Walker::Step()
{
    switch (Pick(m_Random, 0, 9)) {
    case 0:
    case 1: return PaintLayer();
    case 2:
    case 3: return PaintMask();
    case 4: return SelectPath();
    case 5: return SelectMask();
    case 6: return MoveSelection();
    case 7: return MoveLayers();
    case 8: return ChangeLayer();
    default: return PushMacro();
    }
}

/// Half of the paints are in the document before they are pushed.
template <class Command, class Data>
void Walker::PaintOn(unsigned int id, const QRect& before, LXImage32* image, bool isMask)
{
    const QRect after = PickRect(m_Random, m_pDocument->GetLayerGeometry(0), 15);
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

void Walker::PaintLayer()
{
    const unsigned int id = PickId();
    PaintOn<LayerPaintCommand, LayerPaintCommandData>(id, m_pDocument->GetLayerGeometry(id),
                                                      m_pDocument->GetLayerImage(id), false);
}

void Walker::PaintMask()
{
    const unsigned int id = PickId();
    if (!m_pDocument->GetMaskImage(id)) return PaintLayer();
    PaintOn<LayerMaskPaintCommand, LayerMaskPaintCommandData>(id, m_pDocument->GetMaskGeometry(id),
                                                              m_pDocument->GetMaskImage(id), true);
}

void Walker::SelectPath()
{
    auto* data = new SelectionCommandData;
    QPainterPath path;
    path.addEllipse(QRectF(PickRect(m_Random, m_pDocument->GetLayerGeometry(0), 20)).translated(0.3, 0.6));
    data->SetSelectionGeometry(path);
    data->SetSelectionOp(static_cast<SelectionCommandData::LogicalOp>(Pick(m_Random, 0, 3)));
    data->SetUndoSel(m_pDocument->GetSelectionMaskOffset(), m_pDocument->GetSelectionMask());
    auto* command = new SelectionCommand(m_pDocument);
    command->SetCommandData(data);
    m_pStack->push(command);
}

void Walker::SelectMask()
{
    auto* data = new MWSelectionCommandData;
    const QRect rect = PickRect(m_Random, m_pDocument->GetLayerGeometry(0), 20);
    data->SetNoUndoSelection(!m_pDocument->HasSelection());
    data->SetUndoSel(m_pDocument->GetSelectionMaskOffset(), m_pDocument->GetSelectionMask());
    data->SetRedoSel(rect.topLeft(), MaskNoise(m_Random, rect.size()),
                     static_cast<SelectionCommandData::LogicalOp>(Pick(m_Random, 0, 3)));
    auto* command = new MWSelectionCommand(m_pDocument, true);
    command->SetCommandData(data);
    m_pStack->push(command);
}

/// A delayed command; half of them are left open for the next step to close.
void Walker::MoveSelection()
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

void Walker::MoveLayers()
{
    const unsigned int id = PickId();
    const QPoint delta = PickDelta();
    const bool isApplied = PickBool();
    auto* data = new MoveCommandData;
    data->SetDelta(delta);
    if (PickBool()) data->SetLayers({id});
    if (PickBool() && m_pDocument->GetMaskImage(id)) data->SetMasks({id});
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

void Walker::CreateLayer()
{
    auto* data = new LayerCreateCommandData(nullptr, LayerCreateCommandData::Raster, PickRow());
    data->SetLayerName("new");
    data->SetOpacity(Pick(m_Random, 0, 4) / 4.0);
    auto* command = new LayerCreateCommand(m_pDocument, true);
    command->SetCommandData(data);
    m_pStack->push(command);
}

void Walker::ChangeLayer()
{
    const unsigned int id = PickId();
    const int count = m_pDocument->GetModel()->rowCount();
    switch (Pick(m_Random, 0, 9)) {
    case 0:
        return count < 8 ? CreateLayer() : m_pStack->push(LayerCommands::Remove(m_pDocument, nullptr, id));
    case 1:
        return count > 2 ? m_pStack->push(LayerCommands::Remove(m_pDocument, nullptr, id)) : CreateLayer();
    case 2:
        if (count >= 8) return m_pStack->push(LayerCommands::Remove(m_pDocument, nullptr, id));
        return m_pStack->push(LayerCommands::Duplicate(m_pDocument, nullptr, id, "copy"));
    case 3: return m_pStack->push(LayerCommands::Move(m_pDocument, id, PickId()));
    case 4: return m_pStack->push(LayerCommands::SetOpacity(m_pDocument, id, Pick(m_Random, 0, 4) / 4.0));
    case 5: return m_pStack->push(LayerCommands::SetVisible(m_pDocument, id, PickBool()));
    case 6: return m_pStack->push(LayerCommands::SetBlendMode(m_pDocument, id, BlendMode::Multiply));
    case 7: return m_pStack->push(LayerCommands::AddMask(m_pDocument, id, PickBool()));
    case 8: return m_pStack->push(LayerCommands::RemoveMask(m_pDocument, id));
    default: return m_pStack->push(LayerCommands::Rename(m_pDocument, id, QString::number(m_Random())));
    }
}

void Walker::PushMacro()
{
    m_pStack->beginMacro("several");
    for (int i = Pick(m_Random, 1, 3); i > 0; --i) {
        PaintLayer();
        ChangeLayer();
        SelectMask();
    }
    m_pStack->endMacro();
}

QString MergedChecksum(LXDocumentInterface* document)
{
    const LXDocumentLayerLockerForRead locker(document, 0);
    return QString("merged %1").arg(Checksum(*document->GetLayerImage(0)), 0, 16);
}

QStringList DescribeAll(LXDocumentInterface* document)
{
    return Describe(document) << MergedChecksum(document);
}
} // namespace

/// Five hundred random commands on a document with masks and a soft selection, undone to the start and redone
/// to the end: at every step all layers, masks, rectangles, the selection and the merged picture are those of
/// the way there.
class TestCommandWalk : public QObject
{
    Q_OBJECT

private slots:
    void undoneAndRedoneEveryStepIsTheSame();
};

void TestCommandWalk::undoneAndRedoneEveryStepIsTheSame()
{
    constexpr int steps = 500;
    Random random(31);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    {
        const OwnedDocument document = Make(QSize(200, 150));
        document->AddLayer("bottom", Noise(random, QSize(200, 150)), QPoint());
        document->AddLayer("middle", Noise(random, QSize(90, 100)), QPoint(-10, 20));
        document->AddLayer("top", Noise(random, QSize(60, 60)), QPoint(120, 70));
        document->AddMask(1, true);
        document->AddMask(2, false);
        document->SetMaskImage(2, MaskNoise(random, QSize(70, 70)), QPoint(5, 5));
        document->SetSelectionMask(MaskNoise(random, QSize(80, 60)), QPoint(20, 30));

        LexoUndoStack stack;
        Walker walker(document.get(), &stack, 500);
        QList<QStringList> states{DescribeAll(document.get())};
        for (int step = 1; step <= steps; ++step) {
            walker.Step();
            states << DescribeAll(document.get());
        }
        stack.commit();
        QCOMPARE(stack.count(), steps);
        QVERIFY2(QSet<QStringList>(states.begin(), states.end()).size() > steps * 9 / 10,
                 "most steps change something");
        for (int index = steps - 1; index >= 0; --index) {
            stack.undo();
            QCOMPARE(DescribeAll(document.get()), states[index]);
        }
        for (int index = 1; index <= steps; ++index) {
            stack.redo();
            QCOMPARE(DescribeAll(document.get()), states[index]);
        }
        stack.setIndex(steps / 2);
        QCOMPARE(DescribeAll(document.get()), states[steps / 2]);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
}

ZK_REGISTER_TEST(tst_commandwalk, TestCommandWalk)
#include "tst_commandwalk.moc"
