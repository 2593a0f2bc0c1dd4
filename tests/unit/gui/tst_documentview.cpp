#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView_p.h"
#include "image/LXImage.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

/// What a view tells of itself and of its document.
class TestDocumentView : public QObject
{
    Q_OBJECT

private slots:
    void topLayerIsSelectedAtFirst();
    void someLayerStaysSelectedWhenLayersGo();
    void theDocumentTellsOfTheCurrentLayer();
    void layerOrderBlockIsASwitch();
    void aboutDestroyIsToldOnceWhileTheViewStands();
    void cursorIsToldInSceneCoordinates();
};

void TestDocumentView::topLayerIsSelectedAtFirst()
{
    const auto document = MakeDocument({64, 48});
    document->AddLayer("Top", LXImage32(64, 48), {0, 0});
    const auto view = ShowView(document);
    QCOMPARE(view->GetModel(), document->GetModel());
    QCOMPARE(view->GetLayerSelection()->model(), document->GetModel());
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
    QCOMPARE(view->GetLayerSelection()->currentIndex().row(), 0);
}

void TestDocumentView::someLayerStaysSelectedWhenLayersGo()
{
    const auto document = MakeDocument({64, 48});
    document->AddLayer("Top", LXImage32(64, 48), {0, 0});
    const auto view = ShowView(document);
    document->RemoveLayer(1);
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
    QCOMPARE(view->GetLayerSelection()->currentIndex().row(), 0);
    document->RemoveLayer(1);
    QVERIFY(!view->GetLayerSelection()->hasSelection());
    document->AddLayer("New", LXImage32(64, 48), {0, 0});
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
}

void TestDocumentView::theDocumentTellsOfTheCurrentLayer()
{
    const auto document = MakeDocument({64, 48});
    document->AddLayer("Top", LXImage32(64, 48), {0, 0});
    const auto view = ShowView(document);
    QSignalSpy told(document.get(), &LXDocumentInterface::CurrentLayerChanged);
    view->GetLayerSelection()->setCurrentIndex(document->GetModel()->index(1),
                                               QItemSelectionModel::ClearAndSelect);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.takeFirst().at(0).toUInt(), 2u);
    view->GetLayerSelection()->clearCurrentIndex();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.takeFirst().at(0).toUInt(), 0u);
}

void TestDocumentView::layerOrderBlockIsASwitch()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QSignalSpy blocked(view.get(), &ZKDocumentView::LayerOrderOperationsBlocked);
    view->BlockLayerOrderOperations(true);
    view->BlockLayerOrderOperations(true);
    QVERIFY(view->IsLayerOrderBlocked());
    view->BlockLayerOrderOperations(false);
    QVERIFY(!view->IsLayerOrderBlocked());
    QCOMPARE(blocked.count(), 2);
}

void TestDocumentView::aboutDestroyIsToldOnceWhileTheViewStands()
{
    const auto document = MakeDocument({64, 48});
    auto view = ShowView(document);
    int told = 0;
    connect(view.get(), &ZKDocumentView::AboutDestroy, view.get(), [&](ZKDocumentView* going) {
        ++told;
        QCOMPARE(going->GetModel()->GetDocument(), document.get());
        QVERIFY(going->scene());
    });
    ZKDocumentViewPrivate::Get(view.get())->AnnounceDestroy();
    QCOMPARE(told, 1);
    view.reset();
    QCOMPARE(told, 1);
}

void TestDocumentView::cursorIsToldInSceneCoordinates()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QSignalSpy moved(view.get(), &ZKDocumentView::CursorMoved);
    QSignalSpy left(view.get(), &ZKDocumentView::CursorLeft);
    QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(10, 20)));
    QTRY_COMPARE(moved.count(), 1);
    QCOMPARE(moved[0][0].toPointF(), QPointF(10, 20));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(view->viewport(), &leave);
    QCOMPARE(left.count(), 1);
}

ZK_REGISTER_TEST(tst_documentview, TestDocumentView)
#include "tst_documentview.moc"
