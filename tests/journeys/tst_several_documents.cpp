#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXTileManager.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QListView>
#include <QTest>

/// Documents come, take turns and go.
class TestSeveralDocuments : public QObject
{
    Q_OBJECT

private slots:
    void theToolFollowsTheActiveDocument();
    void undoFollowsTheActiveDocument();
    void theLayersPanelFollowsTheActiveDocument();
    void withoutADocumentTheToolWaits();
    void aFileIsOpenedOnce();
    void closingGivesTheTilesBack();
};

namespace {
QAction* UndoAction(const MainWindow* window)
{
    return window->findChild<QAction*>("undoAction");
}
} // namespace

void TestSeveralDocuments::theToolFollowsTheActiveDocument()
{
    EditorFixture editor(40, 30);
    LXMdiArea* area = editor.Window()->GetDocumentArea();
    LXMdiSubWindow* first = area->GetActiveWindow();
    QVERIFY(editor.Files()->New(QSize(50, 20), Qt::white));
    LXMdiSubWindow* second = area->GetActiveWindow();
    QVERIFY(first != second);

    ZKApplication::SetForeground(Qt::red);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click(QPointF(45, 10));
    QCOMPARE(editor.Pixels().pixelColor(45, 10), QColor(Qt::red));

    area->setActiveSubWindow(first);
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(40, 30));
    QCOMPARE(editor.HistoryTexts(), QStringList());
    ZKApplication::SetForeground(Qt::blue);
    can.Click(QPointF(10, 25));
    QCOMPARE(editor.Pixels().pixelColor(10, 25), QColor(Qt::blue));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});

    area->setActiveSubWindow(second);
    QCOMPARE(editor.Pixels().pixelColor(45, 10), QColor(Qt::red));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestSeveralDocuments::undoFollowsTheActiveDocument()
{
    EditorFixture editor(40, 30);
    LXMdiArea* area = editor.Window()->GetDocumentArea();
    LXMdiSubWindow* first = area->GetActiveWindow();
    QAction* undo = UndoAction(editor.Window());
    QVERIFY(undo);
    QVERIFY(!undo->isEnabled());

    editor.Tool("Fillcan").Click(QPointF(5, 5));
    QVERIFY(undo->isEnabled());
    QCOMPARE(undo->text().remove('&'), QString("Undo Fill"));

    QVERIFY(editor.Files()->New(QSize(50, 20), Qt::white));
    QVERIFY(!undo->isEnabled());
    area->setActiveSubWindow(first);
    QVERIFY(undo->isEnabled());
}

void TestSeveralDocuments::theLayersPanelFollowsTheActiveDocument()
{
    EditorFixture editor(40, 30);
    LXMdiSubWindow* first = editor.Window()->GetDocumentArea()->GetActiveWindow();
    const auto* list = LayersWidget::GetInstance()->findChild<QListView*>("m_pList");
    QVERIFY(list);
    const ZKDocumentView* firstView = editor.View();
    QCOMPARE(list->model(), firstView->GetModel());

    QVERIFY(editor.Files()->New(QSize(50, 20), Qt::white));
    QCOMPARE(list->model(), editor.View()->GetModel());
    editor.Window()->GetDocumentArea()->setActiveSubWindow(first);
    QCOMPARE(list->model(), firstView->GetModel());
    QCOMPARE(list->selectionModel(), firstView->GetLayerSelection());
}

void TestSeveralDocuments::withoutADocumentTheToolWaits()
{
    EditorFixture editor(40, 30);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click(QPointF(5, 5));
    QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile("done.png")));
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!editor.View());
    QVERIFY(!UndoAction(editor.Window())->isEnabled());
    editor.CheckNothingIsLeft();

    // Still chosen: it fills the next document.
    QVERIFY(editor.Files()->New(QSize(20, 20), Qt::white));
    ZKApplication::SetForeground(Qt::green);
    can.Click(QPointF(5, 5));
    QCOMPARE(editor.Pixels().pixelColor(5, 5), QColor(Qt::green));
}

void TestSeveralDocuments::aFileIsOpenedOnce()
{
    EditorFixture editor(40, 30);
    const QString path = editor.TempFile("once.png");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    LXDocumentInterface* document = editor.Document();
    QVERIFY(editor.Files()->New(QSize(20, 20), Qt::white));

    QCOMPARE(editor.Files()->Open(path), document);
    QCOMPARE(editor.Document(), document);
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 2);
}

void TestSeveralDocuments::closingGivesTheTilesBack()
{
    EditorFixture editor;
    const auto tiles = LXTileManager::Instance().LiveTileCount();
    QVERIFY(editor.Files()->New(QSize(700, 500), Qt::white));
    ToolDriver can = editor.Tool("Fillcan");
    ZKApplication::SetForeground(Qt::red);
    can.Click(QPointF(5, 5));
    can.Key(Qt::Key_Z, Qt::ControlModifier);
    can.Key(Qt::Key_Y, Qt::ControlModifier);
    QVERIFY(LXTileManager::Instance().LiveTileCount() > tiles);

    QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile("large.png")));
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!editor.View());
    QTRY_COMPARE(LXTileManager::Instance().LiveTileCount(), tiles);
}

ZK_REGISTER_TEST(tst_several_documents, TestSeveralDocuments)
#include "tst_several_documents.moc"
