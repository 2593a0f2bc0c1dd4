#include "FillDocument.h"

#include "common/PushCommand.h"
#include "document/LXDocumentInterface.h"
#include "fillcan/FillCommand.h"
#include "fillcan/FillJob.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestFillCommand : public QObject
{
    Q_OBJECT

private slots:
    void theHistoryShowsWhatWasFilled();
    void theFirstRedoPaints();
    void withoutAHistoryThePixelsAreFilledAllTheSame();
    void aLockedDocumentIsPaintedAllTheSame();
};

void TestFillCommand::theHistoryShowsWhatWasFilled()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    document.SetMask({"##"}, true);
    const FillJobData data = FillDocument::Click(0, 0, Qt::red);
    QCOMPARE(MakeFillCommand(document, RunLayerFillJob(document, data))->text(), QString("Fill"));
    QCOMPARE(MakeFillCommand(document, RunMaskFillJob(document, data))->text(), QString("Fill with mask"));
}

void TestFillCommand::theFirstRedoPaints()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    LexoUndoStack history;
    PushCommand(&history,
                MakeFillCommand(document, RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red))));
    QCOMPARE(document.Layer(), QStringList({"rr"}));
    history.undo();
    QCOMPARE(document.Layer(), QStringList({"##"}));
    history.redo();
    QCOMPARE(document.Layer(), QStringList({"rr"}));
}

void TestFillCommand::withoutAHistoryThePixelsAreFilledAllTheSame()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    PushCommand(nullptr,
                MakeFillCommand(document, RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red))));
    QCOMPARE(document.Layer(), QStringList({"rr"}));
}

void TestFillCommand::aLockedDocumentIsPaintedAllTheSame()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    document->Lock();
    PushCommand(nullptr,
                MakeFillCommand(document, RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red))));
    QCOMPARE(document.Layer(), QStringList({"rr"}));
    QVERIFY(document->GetLockState());
}

ZK_REGISTER_TEST(tst_fillcommand, TestFillCommand)

#include "tst_fillcommand.moc"
