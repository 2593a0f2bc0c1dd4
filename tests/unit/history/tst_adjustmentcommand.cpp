#include "UndoLaw.h"

#include "history/AdjustmentCommand.h"
#include "history/LayerCommands.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <limits>

using namespace DocumentFixture;

namespace {
LXAdjustment Levels(int inBlack)
{
    LXAdjustment adjustment;
    adjustment.kind = LXAdjustment::Levels;
    adjustment.inBlack = inBlack;
    adjustment.gamma = 0.7;
    return adjustment;
}

OwnedDocument MakeDocument()
{
    Random random(9);
    OwnedDocument document = Make(QSize(60, 40));
    document->AddLayer("ground", Noise(random, QSize(60, 40)), QPoint());
    document->AddAdjustmentLayer("Levels", Levels(10));
    return document;
}
} // namespace

class TestAdjustmentCommand : public QObject
{
    Q_OBJECT

private slots:
    void aChangeIsUndoneAndRedone();
    void aDelayedOneEndsWithWhatTheLayerHasBecome();
    void aNewLayerIsUndoneAndRedone();
    void valuesOutOfRangeAreBroughtIn();
};

void TestAdjustmentCommand::aChangeIsUndoneAndRedone()
{
    const OwnedDocument document = MakeDocument();
    QCOMPARE(
        UndoLaw::BrokenBy(document.get(), LayerCommands::ChangeAdjustment(document.get(), 1, Levels(90))),
        QString());
    QVERIFY(document->GetAdjustment(1) == Levels(90));
}

void TestAdjustmentCommand::aDelayedOneEndsWithWhatTheLayerHasBecome()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    stack.pushDelayed(LayerCommands::ChangeAdjustment(document.get(), 1, Levels(10)));
    QCOMPARE(DescribeWhole(document.get()), before);
    document->SetAdjustment(1, Levels(50));
    document->SetAdjustment(1, Levels(70));
    stack.commit();
    QCOMPARE(stack.text(0), QString("Change adjustment"));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
    QVERIFY(document->GetAdjustment(1) == Levels(70));
}

void TestAdjustmentCommand::aNewLayerIsUndoneAndRedone()
{
    const OwnedDocument document = MakeDocument();
    QCOMPARE(UndoLaw::BrokenBy(document.get(), LayerCommands::AddAdjustment(document.get(), nullptr, 1,
                                                                            "Middle", Levels(33))),
             QString());
    QCOMPARE(document->GetModel()->GetName(1), QString("Middle"));
    QVERIFY(document->GetAdjustment(2) == Levels(33));
}

void TestAdjustmentCommand::valuesOutOfRangeAreBroughtIn()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    LXAdjustment wild = Levels(-5);
    wild.gamma = std::numeric_limits<double>::infinity();
    stack.push(LayerCommands::ChangeAdjustment(document.get(), 1, wild));
    QCOMPARE(document->GetAdjustment(1).inBlack, 0);
    QCOMPARE(document->GetAdjustment(1).gamma, 10.0);
}

ZK_REGISTER_TEST(tst_adjustmentcommand, TestAdjustmentCommand)
#include "tst_adjustmentcommand.moc"
