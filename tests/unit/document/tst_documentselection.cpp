#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>

#include <thread>

using namespace DocumentFixture;

class TestDocumentSelection : public QObject
{
    Q_OBJECT

private slots:
    void withoutASelectionThereIsNothing();
    void aSelectionHasItsMasksRectangleAndItsPixelsBounds();
    void aMaskWithoutCoverageMeansNoSelection_data();
    void aMaskWithoutCoverageMeansNoSelection();
    void translateMovesWithoutAsking();
    void moveToAsksBeforeItMoves();
    void aMoveByAWorkerIsHeardByWhoIsConnectedAtThatMoment();
    void nothingIsMovedWithoutASelection();
    void hasAboveSelectedComparesStrictly();
    void boundsAreFoundInEveryTile();
};

void TestDocumentSelection::withoutASelectionThereIsNothing()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QVERIFY(!document->HasSelection());
    QCOMPARE(document->GetSelectionGeometry(), QRect());
    QCOMPARE(document->GetSelectionBoundingRect(), QRect());
    QCOMPARE(document->GetSelectionMaskOffset(), QPoint(0, 0));
    QVERIFY(document->GetSelectionMask().IsNull());
    QVERIFY(!document->HasAboveSelected(0));
}

void TestDocumentSelection::aSelectionHasItsMasksRectangleAndItsPixelsBounds()
{
    const OwnedDocument document = Make(QSize(10, 10));
    LXImage32 mask(6, 5);
    mask.SetColor(1, 2, LXRGBA32i(0x01000000));
    mask.SetColor(3, 3, LXRGBA32i(0xFF000000));
    SignalLog log(document.get());
    document->SetSelectionMask(mask, QPoint(-2, 7));
    QVERIFY(document->HasSelection());
    QCOMPARE(document->GetSelectionGeometry(), QRect(-2, 7, 6, 5));
    QCOMPARE(document->GetSelectionMaskOffset(), QPoint(-2, 7));
    QCOMPARE(document->GetSelectionBoundingRect(), QRect(-1, 9, 3, 2));
    QCOMPARE(log.Take(), QStringList({"SelectionChanged"}));
    const LXDocumentSelectionLockerForRead locker(document.get());
    QVERIFY(AreEqual(document->GetSelectionMask(), mask));
}

void TestDocumentSelection::aMaskWithoutCoverageMeansNoSelection_data()
{
    QTest::addColumn<int>("side");
    QTest::newRow("empty image") << 0;
    QTest::newRow("all-zero image") << 200;
}

void TestDocumentSelection::aMaskWithoutCoverageMeansNoSelection()
{
    QFETCH(int, side);
    const OwnedDocument document = Make(QSize(10, 10));
    SignalLog log(document.get());
    document->SetSelectionMask(LXImage32(side, side), QPoint(3, 3));
    QCOMPARE(log.Take(), QStringList());
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(1, 1));
    log.Take();
    document->SetSelectionMask(LXImage32(side, side), QPoint(3, 3));
    QVERIFY(!document->HasSelection());
    QCOMPARE(document->GetSelectionGeometry(), QRect());
    QCOMPARE(log.Take(), QStringList({"SelectionChanged"}));
}

void TestDocumentSelection::translateMovesWithoutAsking()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(1, 1));
    SignalLog log(document.get());
    document->TranslateSelection(QPoint(-3, 2));
    QCOMPARE(document->GetSelectionGeometry(), QRect(-2, 3, 4, 4));
    QCOMPARE(document->GetSelectionBoundingRect(), QRect(-2, 3, 4, 4));
    QCOMPARE(log.Take(), QStringList({"SelectionChanged"}));
}

void TestDocumentSelection::moveToAsksBeforeItMoves()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(1, 1));
    SignalLog log(document.get());
    QPoint whenAsked;
    connect(document.get(), &LXDocumentInterface::AboutSelectionMove,
            [&] { whenAsked = document->GetSelectionMaskOffset(); });
    document->MoveToSelection(QPoint(5, 6));
    QCOMPARE(whenAsked, QPoint(1, 1));
    QCOMPARE(document->GetSelectionGeometry(), QRect(5, 6, 4, 4));
    QCOMPARE(log.Take(), QStringList({"AboutSelectionMove", "SelectionChanged"}));
}

void TestDocumentSelection::aMoveByAWorkerIsHeardByWhoIsConnectedAtThatMoment()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(1, 1));
    const auto moveByAWorker = [&document](const QPoint& topLeft) {
        std::thread([&] { document->MoveToSelection(topLeft); }).join();
    };
    QObject listener;
    int heard = 0;

    moveByAWorker(QPoint(2, 2));
    connect(document.get(), &LXDocumentInterface::AboutSelectionMove, &listener, [&heard] { ++heard; });
    QCoreApplication::sendPostedEvents();
    QCOMPARE(heard, 0);

    moveByAWorker(QPoint(3, 3));
    QCOMPARE(heard, 0);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(heard, 1);
    QCOMPARE(document->GetSelectionMaskOffset(), QPoint(3, 3));
}

void TestDocumentSelection::nothingIsMovedWithoutASelection()
{
    const OwnedDocument document = Make(QSize(10, 10));
    SignalLog log(document.get());
    document->TranslateSelection(QPoint(1, 1));
    document->MoveToSelection(QPoint(5, 6));
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(!document->HasSelection());
}

void TestDocumentSelection::hasAboveSelectedComparesStrictly()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetSelectionMask(Filled(QSize(4, 4), 0x80000000), QPoint(1, 1));
    QVERIFY(document->HasAboveSelected(0x7F));
    QVERIFY(!document->HasAboveSelected(0x80));
}

void TestDocumentSelection::boundsAreFoundInEveryTile()
{
    const OwnedDocument document = Make(QSize(10, 10));
    LXImage32 mask(400, 300);
    mask.SetColor(300, 129, LXRGBA32i(0x02000000));
    mask.SetColor(127, 299, LXRGBA32i(0x02000000));
    document->SetSelectionMask(mask, QPoint(0, 0));
    QCOMPARE(document->GetSelectionBoundingRect(), QRect(QPoint(127, 129), QPoint(300, 299)));
}

ZK_REGISTER_TEST(tst_documentselection, TestDocumentSelection)
#include "tst_documentselection.moc"
