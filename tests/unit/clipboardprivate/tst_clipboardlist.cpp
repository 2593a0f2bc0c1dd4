#include "ClipboardFixture.h"

#include "gui/ClipboardRole.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/MimeFileReader.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

/// The list of what was copied, and the system clipboard beside it.
class TestClipboardList : public QObject, private ClipboardFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup()
    {
        FaultSeams::Reset();
        MimeFileReader::Set({}, {});
        DropTool();
    }

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
    void anImageFromOutsideThatFindsNoMemoryIsNoRow();
    void textFromOutsideIsNoRow();
    void anImageThatComesWithTextIsNoRow();
    void theToolsOwnCopyIsNoRowOfItsOwn();
    void aCopyThatMissesDoesNotHideTheNextImageFromOutside();
    void pixelsOfTheSameChecksumAreAnotherRow();
    void theSamePixelsFromOutsideKeepTheirPlace();
    void theOwnPictureComesBackScaledAsItself();
    void aFailedCopyLeavesTheRowThatWasCurrent();
    void filesAreReadWhenTheyArePasted_data();
    void filesAreReadWhenTheyArePasted();
    void aChosenRowCountsBeforeFiles();
    void afterTheFilesTheLastRowIsCurrent();
    void filesThatCantBeReadPasteNothing();
    void deletingGoesToTheNextRow();
    void deletingTheLastRowGoesToTheOneBefore();
    void afterTheLastRowNothingIsCurrent();
    void theChosenRowGoesToTheSystemClipboard();
    void theChosenRowIsWhatIsPasted();

private:
    void CopyRects(const QList<QRect>& rects);
    /// Files as a file manager copies them: "7x3.png" is a red picture of that size, all else is broken. Each
    /// that is read is counted.
    void CopyFiles(const QStringList& names);

    int m_FilesRead = 0;
};

void TestClipboardList::CopyFiles(const QStringList& names)
{
    m_FilesRead = 0;
    MimeFileReader::Set([](const QString&) { return true; },
                        [this](const QString& path) {
                            ++m_FilesRead;
                            const QStringList sides = QFileInfo(path).baseName().split('x');
                            if (sides.size() != 2) return LXImage32();
                            LXImage32 image(sides[0].toInt(), sides[1].toInt());
                            image.Fill(LXRGBA32i(0xFFFF0000u));
                            return image;
                        });
    QList<QUrl> urls;
    for (const QString& name : names)
        urls.append(QUrl::fromLocalFile("/pictures/" + name));
    auto* content = new QMimeData; // the clipboard takes it
    content->setUrls(urls);
    QGuiApplication::clipboard()->setMimeData(content);
}

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

void TestClipboardList::anImageFromOutsideThatFindsNoMemoryIsNoRow()
{
    QImage image(9, 6, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolCopy\""));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    PutForeign(image);
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(OpenActions(), QStringList());
    PutForeign(image);
    QCOMPARE(List()->rowCount(), 1);
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

void TestClipboardList::pixelsOfTheSameChecksumAreAnotherRow()
{
    // The difference is the checksum's own polynomial, which it can't see.
    QImage one(2, 1, QImage::Format_ARGB32);
    one.fill(0xFF808080u);
    QImage other = one;
    other.setPixel(0, 0, 0xFF808080u ^ 0xDB710641u);
    other.setPixel(1, 0, 0xFF808080u ^ 1u);
    QCOMPARE(ClipboardPixels::Checksum(one), ClipboardPixels::Checksum(other));
    PutForeign(one);
    PutForeign(other);
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(CurrentRow(), 1);
    PutForeign(one);
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(CurrentRow(), 0);
}

void TestClipboardList::theSamePixelsFromOutsideKeepTheirPlace()
{
    CopyRects({{1, 2, 7, 5}, {20, 10, 4, 4}});
    QImage same(7, 5, QImage::Format_ARGB32);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x)
            same.setPixel(x, y, Begun(x + 1, y + 2).value);
    }
    PutForeign(same);
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(CurrentRow(), 0);
    QCOMPARE(List()->item(0)->data(ClipboardRole::Origin).toPoint(), QPoint(1, 2));

    // Copied elsewhere in the picture, they lie there.
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x)
            Document()->GetLayerImage(1)->SetColor(x + 25, y + 20, Begun(x + 1, y + 2));
    }
    CopyRects({{25, 20, 7, 5}});
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(List()->item(0)->data(ClipboardRole::Origin).toPoint(), QPoint(25, 20));
}

void TestClipboardList::theOwnPictureComesBackScaledAsItself()
{
    LXImage32 wide(6000, 2);
    wide.Fill(LXRGBA32i(0xFF00FF00u));
    Document()->SetDocumentSize({6000, 2});
    Document()->SetLayerImage(1, wide, {});
    CopyRects({{0, 0, 6000, 2}});
    // As a program does that keeps what was copied.
    const QImage offered = SystemImage();
    QCOMPARE(offered.size(), QSize(5000, 1));
    PutForeign(offered);
    QCOMPARE(List()->rowCount(), 1);
    CopyRects({{0, 0, 4, 2}});
    PutForeign(QImage(9, 6, QImage::Format_ARGB32));
    QCOMPARE(List()->rowCount(), 3);

    m_pPanel->GetClipboardSelection()->setCurrentIndex(List()->index(0, 0),
                                                       QItemSelectionModel::ClearAndSelect);
    m_pTool->OnCopyToSystemClipboard();
    QCOMPARE(SystemImage().size(), QSize(5000, 1));
    PutForeign(offered);
    QCOMPARE(List()->rowCount(), 3);
    QCOMPARE(CurrentRow(), 0);
}

void TestClipboardList::aFailedCopyLeavesTheRowThatWasCurrent()
{
    CopyRects({{0, 0, 4, 4}});
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolCopy\""));
    Select({5, 5, 5, 5});
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    BoxesDuring([this] { m_pTool->Copy(); });
    FaultSeams::Reset();
    m_pTool->Paste();
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
}

void TestClipboardList::filesAreReadWhenTheyArePasted_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("Paste") << "Paste";
    QTest::newRow("New layer") << "New layer";
    QTest::newRow("Paste as a new image") << "Paste as a new image";
}

void TestClipboardList::filesAreReadWhenTheyArePasted()
{
    QFETCH(QString, action);
    const std::unique_ptr<LXMdiArea> area(LXDocumentManager::GetDocumentArea());
    CopyRects({{0, 0, 4, 4}});
    Document()->SetSelectionMask({}, {});
    CopyFiles({"3x3.png", "7x5.png"});
    QCOMPARE(m_FilesRead, 0);
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(CurrentRow(), -1);
    QVERIFY(Action(action)->isEnabled());

    Action(action)->trigger();
    QCOMPARE(m_FilesRead, 2);
    QCOMPARE(List()->rowCount(), 3);
    QCOMPARE(CurrentRow(), 2);
    QCOMPARE(Cell(2, 1), QString("Untitled 3\n7x5 px"));
    const QList<LXDocumentInterface*> made = LXDocumentManager::Instance()->GetDocuments();
    if (made.isEmpty()) {
        QCOMPARE(m_pFixture->Pixel(16, 12), 0xFFFF0000u);
    } else {
        QCOMPARE(made.first()->GetDocumentSize(), QSize(7, 5));
        return;
    }
    // Once.
    Action(action)->trigger();
    QCOMPARE(m_FilesRead, 2);
}

void TestClipboardList::aChosenRowCountsBeforeFiles()
{
    CopyRects({{0, 0, 4, 4}});
    CopyFiles({"7x5.png"});
    m_pPanel->GetClipboardSelection()->setCurrentIndex(List()->index(0, 0),
                                                       QItemSelectionModel::ClearAndSelect);
    m_pTool->Paste();
    QCOMPARE(m_FilesRead, 0);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
}

void TestClipboardList::afterTheFilesTheLastRowIsCurrent()
{
    CopyRects({{0, 0, 4, 4}, {5, 5, 4, 4}});
    CopyFiles({"7x5.png"});
    QGuiApplication::clipboard()->setText("words");
    QCOMPARE(CurrentRow(), 1);
    m_pTool->Paste();
    QCOMPARE(m_FilesRead, 0);
    QCOMPARE(Cell(1, 3), QString("ARGB32\nPasted"));
}

void TestClipboardList::filesThatCantBeReadPasteNothing()
{
    CopyRects({{0, 0, 4, 4}});
    CopyFiles({"broken.png"});
    m_pTool->Paste();
    m_pTool->PasteAsNewLayer();
    m_pTool->PasteAsNew();
    QCOMPARE(m_FilesRead, 1);
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(Layers()->rowCount(), 1);
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
