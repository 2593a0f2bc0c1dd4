#include "ClipboardFixture.h"

#include "gui/ClipboardRole.h"
#include "support/TestRegistry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QRegularExpression>
#include <QTest>

/// The list of what was copied, and the system clipboard beside it.
class TestClipboardList : public QObject, private ClipboardFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup() { DropTool(); }

    void aRowTellsWhatWasCopied();
    void theLastCopyIsCurrent();
    void theSamePixelsAreOneRow();
    void theSamePixelsRefreshTheSystemClipboard();
    void theSamePixelsAgainAreCurrent();
    void pixelsOfAnotherShapeAreAnotherRow();
    void aSelectionBesideTheLayerAddsNoRow();
    void anImageFromOutsideIsARow();
    void anImageFromOutsideIsImportedWhileTheProgramIsNotInFront();
    void anImageFromOutsideKeepsItsColorsUnderSmallAlphas();
    void textFromOutsideIsNoRow();
    void anImageThatComesWithTextIsNoRow();
    void theToolsOwnCopyIsNoRowOfItsOwn();
    void aCopyThatMissesDoesNotHideTheNextImageFromOutside();
    void deletingGoesToTheNextRow();
    void deletingTheLastRowGoesToTheOneBefore();
    void afterTheLastRowNothingIsCurrent();
    void theChosenRowGoesToTheSystemClipboard();
    void theChosenRowIsWhatIsPasted();

private:
    void CopyRects(const QList<QRect>& rects);
};

void TestClipboardList::CopyRects(const QList<QRect>& rects)
{
    for (const QRect& rect : rects) {
        Select(rect);
        m_pTool->Copy();
    }
}

void TestClipboardList::aRowTellsWhatWasCopied()
{
    CopyRects({{1, 2, 7, 5}});
    QCOMPARE(List()->columnCount(), 4);
    QCOMPARE(Cell(0, 0), QString());
    QCOMPARE(Cell(0, 1), QString("Untitled 1\n7x5 px"));
    QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d\\n140 bytes$").match(Cell(0, 2)).hasMatch());
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    for (int column = 0; column < 4; ++column) {
        const QStandardItem* cell = List()->item(0, column);
        QVERIFY(!cell->isEditable());
        QVERIFY(!cell->isCheckable());
        if (column > 0) QCOMPARE(int(cell->textAlignment()), 132);
    }
    QCOMPARE(List()->item(0)->data(ClipboardRole::Origin).toPoint(), QPoint(1, 2));
    QCOMPARE(ItemImage(0).GetColor(6, 4).value, Begun(7, 6).value);

    // 7 x 5 pixels in a square of 32 are 32 x 22, from the top left.
    const QImage thumbnail = List()->item(0)->icon().pixmap(32, 32).toImage();
    QCOMPARE(thumbnail.size(), QSize(32, 32));
    QVERIFY(qAlpha(thumbnail.pixel(31, 21)) > 200);
    QCOMPARE(qAlpha(thumbnail.pixel(31, 22)), 0);
}

void TestClipboardList::theLastCopyIsCurrent()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 4, 4}, {9, 9, 4, 4}});
    QCOMPARE(List()->rowCount(), 3);
    QCOMPARE(CurrentRow(), 2);
    QCOMPARE(m_pPanel->GetClipboardSelection()->selectedRows().value(0).row(), 2);
    QCOMPARE(Cell(2, 1), QString("Untitled 3\n4x4 px"));
}

void TestClipboardList::theSamePixelsAreOneRow()
{
    CopyRects({{0, 0, 4, 4}, {0, 0, 4, 4}});
    QCOMPARE(List()->rowCount(), 1);
}

void TestClipboardList::theSamePixelsRefreshTheSystemClipboard()
{
    CopyRects({{0, 0, 4, 4}});
    QGuiApplication::clipboard()->setText("something else");
    QVERIFY(SystemImage().isNull());
    CopyRects({{0, 0, 4, 4}});
    QCOMPARE(SystemImage().size(), QSize(4, 4));
    QCOMPARE(List()->rowCount(), 1);
}

void TestClipboardList::theSamePixelsAgainAreCurrent()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 4, 4}, {0, 0, 4, 4}});
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(CurrentRow(), 0);
}

void TestClipboardList::pixelsOfAnotherShapeAreAnotherRow()
{
    LXImage32 white(40, 30);
    white.Fill(LXRGBA32i(0xFFFFFFFFu));
    Document()->SetLayerImage(1, white, {});
    CopyRects({{0, 0, 6, 2}, {0, 0, 2, 6}});
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(Cell(1, 1), QString("Untitled 2\n2x6 px"));
}

void TestClipboardList::aSelectionBesideTheLayerAddsNoRow()
{
    Document()->SetLayerOffset(1, {20, 0});
    CopyRects({{0, 0, 10, 10}});
    QCOMPARE(List()->rowCount(), 0);
}

void TestClipboardList::anImageFromOutsideIsARow()
{
    QImage image(9, 6, QImage::Format_ARGB32);
    image.fill(qRgba(10, 20, 30, 40));
    PutForeign(image);
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(Cell(0, 1), QString("Untitled 1\n9x6 px"));
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    QVERIFY(!List()->item(0)->data(ClipboardRole::Origin).isValid());
    QCOMPARE(OpenActions(), QStringList({"Paste", "New image", "New layer", "Paste as a new image",
                                         "Delete from clipboard", "Copy to system clipboard"}));
}

void TestClipboardList::anImageFromOutsideIsImportedWhileTheProgramIsNotInFront()
{
    CopyRects({{0, 0, 4, 4}});
    m_pFixture->Widget()->hide();
    QTRY_VERIFY(!QApplication::activeWindow());
    QImage image(9, 6, QImage::Format_ARGB32);
    image.fill(Qt::red);
    PutForeign(image);
    QCOMPARE(Cell(1, 1), QString("Imported 2\n9x6 px"));
}

void TestClipboardList::anImageFromOutsideKeepsItsColorsUnderSmallAlphas()
{
    QImage image(3, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(200, 150, 100, 1));
    image.setPixel(1, 0, qRgba(1, 2, 3, 0));
    image.setPixel(2, 0, qRgba(77, 88, 99, 130));
    PutForeign(image);
    for (int x = 0; x < 3; ++x)
        QCOMPARE(ItemImage(0).GetColor(x, 0).value, image.pixel(x, 0));
}

void TestClipboardList::textFromOutsideIsNoRow()
{
    QGuiApplication::clipboard()->setText("words");
    QCOMPARE(List()->rowCount(), 0);
}

void TestClipboardList::anImageThatComesWithTextIsNoRow()
{
    auto* content = new QMimeData;
    content->setImageData(QImage(4, 4, QImage::Format_ARGB32));
    content->setText("a table");
    QGuiApplication::clipboard()->setMimeData(content);
    QCOMPARE(List()->rowCount(), 0);
}

void TestClipboardList::theToolsOwnCopyIsNoRowOfItsOwn()
{
    // Larger than the system clipboard takes: read back, it would be another picture.
    LXImage32 wide(6000, 2);
    wide.Fill(LXRGBA32i(0xFF00FF00u));
    Document()->SetDocumentSize({6000, 2});
    Document()->SetLayerImage(1, wide, {});
    CopyRects({{0, 0, 6000, 2}});
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(SystemImage().size(), QSize(5000, 1));
    QCOMPARE(ItemImage(0).Width(), 6000);
}

void TestClipboardList::aCopyThatMissesDoesNotHideTheNextImageFromOutside()
{
    Document()->SetLayerOffset(1, {20, 0});
    CopyRects({{0, 0, 10, 10}});
    PutForeign(QImage(9, 6, QImage::Format_ARGB32));
    QCOMPARE(List()->rowCount(), 1);
}

void TestClipboardList::deletingGoesToTheNextRow()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 5, 5}, {9, 9, 6, 6}});
    m_pPanel->GetClipboardSelection()->setCurrentIndex(List()->index(1, 0),
                                                       QItemSelectionModel::ClearAndSelect);
    m_pTool->Delete();
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(CurrentRow(), 1);
    m_pTool->OnCopyToSystemClipboard();
    QCOMPARE(SystemImage().size(), QSize(6, 6));
}

void TestClipboardList::deletingTheLastRowGoesToTheOneBefore()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 5, 5}});
    m_pTool->Delete();
    QCOMPARE(CurrentRow(), 0);
    m_pTool->OnCopyToSystemClipboard();
    QCOMPARE(SystemImage().size(), QSize(4, 4));
}

void TestClipboardList::afterTheLastRowNothingIsCurrent()
{
    CopyRects({{0, 0, 4, 4}});
    m_pTool->Delete();
    m_pTool->Delete();
    QCOMPARE(CurrentRow(), -1);
    m_pTool->Paste();
    m_pTool->PasteAsNew();
    m_pTool->PasteAsNewLayer();
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(Layers()->rowCount(), 1);

    // The next copy begins the list anew.
    CopyRects({{5, 5, 4, 4}});
    QCOMPARE(Cell(0, 1), QString("Untitled 1\n4x4 px"));
    QCOMPARE(CurrentRow(), 0);
}

void TestClipboardList::theChosenRowGoesToTheSystemClipboard()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 5, 5}});
    m_pPanel->GetClipboardSelection()->setCurrentIndex(List()->index(0, 0),
                                                       QItemSelectionModel::ClearAndSelect);
    Action("Copy to system clipboard")->trigger();
    QCOMPARE(SystemImage().size(), QSize(4, 4));
    QCOMPARE(List()->rowCount(), 2);

    // The tool listens again afterwards.
    PutForeign(QImage(9, 6, QImage::Format_ARGB32));
    QCOMPARE(List()->rowCount(), 3);
}

void TestClipboardList::theChosenRowIsWhatIsPasted()
{
    CopyRects({{0, 0, 4, 4}, {30, 20, 4, 4}});
    m_pPanel->GetClipboardSelection()->setCurrentIndex(List()->index(0, 0),
                                                       QItemSelectionModel::ClearAndSelect);
    m_pTool->Paste();
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
    QCOMPARE(Cell(1, 3), QString("ARGB32\nCopied"));
    QCOMPARE(m_pFixture->Pixel(30, 20), Begun(0, 0).value);
}

ZK_REGISTER_TEST(tst_clipboardlist, TestClipboardList)
#include "tst_clipboardlist.moc"
