#include "CanvasDocument.h"
#include "CommandWalker.h"
#include "UndoLaw.h"

#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"
#include "history/LexoUndoStack.h"
#include "image/LXTileManager.h"
#include "support/TestRegistry.h"

#include <QItemSelectionModel>
#include <QSet>
#include <QTest>

using namespace DocumentFixture;

namespace {
/// The document's state with the selected rows, as one number for each line.
QVector<uint> StateOf(LXDocumentInterface* document, const QItemSelectionModel& selection)
{
    QVector<uint> state;
    for (const QString& line : DescribeWhole(document)) {
        state << qHash(line, 1);
    }
    for (const QModelIndex& index : selection.selectedRows()) {
        state << static_cast<uint>(index.row());
    }
    return state;
}

OwnedDocument MakeDocument()
{
    Random random(31);
    OwnedDocument document = MakeCanvasDocument();
    document->AddLayer("more", Noise(random, QSize(60, 60)), QPoint(20, 10));
    document->SetSelectionMask(MaskNoise(random, QSize(50, 40)), QPoint(20, 30));
    return document;
}
} // namespace

/// A thousand random commands of every kind on a document with something of everything, undone to the start
/// and redone to the end: at every step all layers, masks, rectangles, the selection, paths, samples, guides,
/// the size, the resolution, the selected rows and the merged picture are those of the way there.
class TestCommandWalk : public QObject
{
    Q_OBJECT

private slots:
    void undoneAndRedoneEveryStepIsTheSame();
    void everyStepSurvivesItsFile();
};

void TestCommandWalk::undoneAndRedoneEveryStepIsTheSame()
{
    constexpr int steps = 1000;
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    {
        const OwnedDocument document = MakeDocument();
        QItemSelectionModel selection(document->GetModel());
        selection.select(document->GetModel()->index(1),
                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
        LexoUndoStack stack;
        CommandWalker walker(document.get(), &stack, &selection, 500);
        QVector<QVector<uint>> states{StateOf(document.get(), selection)};
        for (int step = 1; step <= steps; ++step) {
            walker.Step();
            states << StateOf(document.get(), selection);
        }
        stack.commit();
        QCOMPARE(stack.count(), steps);
        QVERIFY2(QSet<QVector<uint>>(states.begin(), states.end()).size() > steps * 8 / 10,
                 "most steps change something");
        for (int index = steps - 1; index >= 0; --index) {
            stack.undo();
            QVERIFY2(StateOf(document.get(), selection) == states[index],
                     qPrintable(QString("undo of %1").arg(stack.text(index))));
        }
        for (int index = 1; index <= steps; ++index) {
            stack.redo();
            QVERIFY2(StateOf(document.get(), selection) == states[index],
                     qPrintable(QString("redo of %1").arg(stack.text(index - 1))));
        }
        stack.setIndex(steps / 2);
        QVERIFY(StateOf(document.get(), selection) == states[steps / 2]);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
}

/// Each single step is undone and redone alone, and once more after its data went into a file and came back.
void TestCommandWalk::everyStepSurvivesItsFile()
{
    constexpr int steps = 200;
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    CommandWalker walker(document.get(), &stack, nullptr, 77);
    QSet<int> kinds;
    for (int step = 0; step < steps; ++step) {
        const QStringList before = DescribeWhole(document.get());
        walker.Step();
        stack.commit();
        const LexoCommand* command = stack.command(stack.index() - 1);
        if (!command->GetCommandData()) continue; // a macro; its steps are like all others
        kinds << command->GetCommandData()->GetDataType();
        const QString broken = UndoLaw::Broken(document.get(), &stack, command, before);
        QVERIFY2(
            broken.isEmpty(),
            qPrintable(
                QString("data of kind %1: %2").arg(command->GetCommandData()->GetDataType()).arg(broken)));
    }
    QVERIFY2(kinds.size() >= 24, qPrintable(QString("only %1 kinds of data").arg(kinds.size())));
}

ZK_REGISTER_TEST(tst_commandwalk, TestCommandWalk)
#include "tst_commandwalk.moc"
