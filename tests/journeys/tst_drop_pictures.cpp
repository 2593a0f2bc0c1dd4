#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXDocumentManager.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/ZKCMSTransform.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QColorSpace>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFile>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <QWindow>
#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

/// Pictures and files that are dropped on a canvas, and the two pastes that keep a whole picture.
class TestDropPictures : public QObject
{
    Q_OBJECT

private slots:
    void aPictureBecomesALayerWhereItIsDropped();
    void theWindowSystemDropsOnTheCanvas();
    void aPictureOfAnotherProfileLooksTheSame_data();
    void aPictureOfAnotherProfileLooksTheSame();
    void filesBecomeLayersInOneStep();
    void anOwnFileComesAsOneLayer();
    void aLargePictureKeepsItsPixelsBeyondTheCanvas();
    void filesBesideTheCanvasOpen();
    void picturesBesideTheCanvasAreRefused();
    void aFileThatIsNoPictureIsTold();
    void aLockedDocumentTakesNothing();
    void everyDropHasANameOfItsOwn();

    void pasteInPlaceNeedsNoRow();
    void pasteInPlaceReturnsToItsPlaceInAnotherDocument();
    void pastesAreOffWhenTheyCanDoNothing();
};

namespace {
constexpr QRgb Red = 0xFFFF0000u;

QImage Filled(const QSize& size, QRgb color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

QString FileOf(const EditorFixture& editor, const QString& name, const QSize& size, QRgb color)
{
    const QString path = editor.TempFile(name);
    return Filled(size, color).save(path) ? path : QString();
}

/// Drags over the window and drops, as the window system does; false when it isn't taken.
bool DropAt(MainWindow* window, const QPoint& pos, const QMimeData& data)
{
    QDragEnterEvent enter(pos, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(pos, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &move);
    if (!move.isAccepted()) return false;
    QDropEvent drop(pos, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
    return true;
}

bool DropOnCanvas(const EditorFixture& editor, const QPointF& scenePos, const QMimeData& data)
{
    const QPoint viewPos = InputDriver::ViewPoint(editor.View(), scenePos);
    return DropAt(editor.Window(), editor.View()->viewport()->mapTo(editor.Window(), viewPos), data);
}

QRect LayerRect(const EditorFixture& editor, unsigned int id = 1)
{
    return editor.Document()->GetLayerGeometry(id);
}

QAction* ActionOf(const EditorFixture& editor, const char* name)
{
    return editor.Window()->findChild<QAction*>(name);
}
} // namespace

void TestDropPictures::aPictureBecomesALayerWhereItIsDropped()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setImageData(Filled({10, 8}, 0x80FF0000u));
    QVERIFY(DropOnCanvas(editor, {20.5, 15.5}, data));
    QCOMPARE(editor.HistoryTexts(), QStringList("Drop picture"));
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 2);
    // The middle at about (20, 15): a screen pixel is a part of one of the document.
    const QPoint middle = LayerRect(editor).topLeft() + QPoint(5, 4);
    QVERIFY2(QRect(19, 14, 4, 4).contains(middle), qPrintable(QString("%1").arg(middle.x())));
    QCOMPARE(LayerRect(editor).size(), QSize(10, 8));
    QCOMPARE(editor.Pixels(1).pixel(9, 7), 0x80FF0000u);
    QCOMPARE(editor.View()->GetLayerSelection()->selectedRows().value(0).row(), 0);
    editor.History()->undo();
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
}

void TestDropPictures::theWindowSystemDropsOnTheCanvas()
{
    EditorFixture editor(60, 40);
    const QPoint viewPos = InputDriver::ViewPoint(editor.View(), {30, 20});
    const QPoint pos = editor.View()->viewport()->mapTo(editor.Window(), viewPos);
    QWindow* window = editor.Window()->windowHandle();
    QMimeData data;
    data.setImageData(Filled({10, 8}, Red));
    const auto drag = [&] {
        return QWindowSystemInterface::handleDrag(window, &data, pos, Qt::CopyAction, Qt::LeftButton,
                                                  Qt::NoModifier);
    };
    // The view takes no drops, so the window has to be found below it.
    QVERIFY(drag().isAccepted());
    QVERIFY(
        QWindowSystemInterface::handleDrop(window, &data, pos, Qt::CopyAction, Qt::LeftButton, Qt::NoModifier)
            .isAccepted());
    QCOMPARE(editor.HistoryTexts(), QStringList("Drop picture"));
    QCOMPARE(editor.Pixels(1).pixel(9, 7), Red);

    editor.Document()->Lock();
    QVERIFY(!drag().isAccepted());
    editor.Document()->Unlock();
}

void TestDropPictures::aPictureOfAnotherProfileLooksTheSame_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<bool>("changes");
    const QByteArray adobe = QColorSpace(QColorSpace::AdobeRgb).iccProfile();
    const QByteArray display = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    QTest::newRow("another one") << adobe << display << true;
    QTest::newRow("the same") << adobe << adobe << false;
    QTest::newRow("the file has none") << QByteArray() << display << false;
    QTest::newRow("the document has none") << adobe << QByteArray() << false;
}

void TestDropPictures::aPictureOfAnotherProfileLooksTheSame()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(bool, changes);
    constexpr QRgb color = 0xFFC85A28u;
    EditorFixture editor(60, 40);
    editor.Document()->SetICCProfile(ZKCMSProfile(to));
    QImage picture = Filled({10, 8}, color);
    picture.setColorSpace(QColorSpace::fromIccProfile(from));
    QVERIFY(picture.save(editor.TempFile("picture.png")));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(editor.TempFile("picture.png"))});
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));

    QColor expected(color);
    ZKCMSTransform(ZKCMSProfile(from), ZKCMSProfile(to))(expected);
    QCOMPARE(editor.Pixels(1).pixel(3, 3), changes ? expected.rgb() : color);
    QVERIFY(!changes || expected.rgb() != color);
}

void TestDropPictures::filesBecomeLayersInOneStep()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(FileOf(editor, "one.png", {10, 8}, Red)),
                  QUrl::fromLocalFile(FileOf(editor, "two.png", {6, 6}, 0xFF0000FFu))});
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 1);
    QCOMPARE(editor.HistoryTexts(), QStringList("Drop picture"));
    QCOMPARE(LayerRect(editor, 1).size(), QSize(6, 6));
    QCOMPARE(LayerRect(editor, 2).size(), QSize(10, 8));
    editor.History()->undo();
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
}

void TestDropPictures::anOwnFileComesAsOneLayer()
{
    EditorFixture editor(60, 40);
    QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile("own.ora")));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(editor.TempFile("own.ora"))});
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 2);
    QCOMPARE(LayerRect(editor).size(), QSize(60, 40));
}

void TestDropPictures::aLargePictureKeepsItsPixelsBeyondTheCanvas()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setImageData(Filled({200, 100}, Red));
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QCOMPARE(LayerRect(editor).size(), QSize(200, 100));
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(60, 40));
    QCOMPARE(editor.Pixels(1).pixel(199, 99), Red);
}

void TestDropPictures::filesBesideTheCanvasOpen()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(FileOf(editor, "one.png", {10, 8}, Red))});
    QVERIFY(DropAt(editor.Window(), {5, 5}, data));
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 2);
    QCOMPARE(editor.Document()->GetDocumentName(), QString("one.png"));
}

void TestDropPictures::picturesBesideTheCanvasAreRefused()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setImageData(Filled({10, 8}, Red));
    QVERIFY(!DropAt(editor.Window(), {5, 5}, data));
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
}

void TestDropPictures::aFileThatIsNoPictureIsTold()
{
    EditorFixture editor(60, 40);
    QFile text(editor.TempFile("letter.png"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    QString told;
    editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        told = box->GetText();
        box->close();
    });
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(text.fileName()), QUrl::fromLocalFile(FileOf(editor, "one.png", {10, 8}, Red))});
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QVERIFY2(told.contains("letter.png"), qPrintable(told));
    // The others come all the same.
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 2);
}

void TestDropPictures::aLockedDocumentTakesNothing()
{
    EditorFixture editor(60, 40);
    editor.Document()->Lock();
    QMimeData data;
    data.setImageData(Filled({10, 8}, Red));
    QVERIFY(!DropOnCanvas(editor, {30, 20}, data));
    data.setUrls({QUrl::fromLocalFile(FileOf(editor, "one.png", {10, 8}, Red))});
    QVERIFY(!DropOnCanvas(editor, {30, 20}, data));
    // A lock that comes between moving and letting go.
    const QPoint pos = editor.View()->viewport()->mapTo(editor.Window(), QPoint(50, 50));
    QDropEvent drop(pos, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(editor.Window(), &drop);
    QVERIFY(!drop.isAccepted());
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
    QVERIFY(editor.Document()->Unlock());

    editor.View()->BlockLayerOrderOperations(true);
    QVERIFY(!DropOnCanvas(editor, {30, 20}, data));
    editor.View()->BlockLayerOrderOperations(false);
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
}

void TestDropPictures::everyDropHasANameOfItsOwn()
{
    EditorFixture editor(60, 40);
    QMimeData data;
    data.setImageData(Filled({10, 8}, Red));
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QVERIFY(DropOnCanvas(editor, {30, 20}, data));
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 3);
    QCOMPARE(editor.Document()->GetModel()->GetName(0), QString("Layer 2"));
}

void TestDropPictures::pasteInPlaceNeedsNoRow()
{
    // Copied before the program began, so that no row has come of it.
    QGuiApplication::clipboard()->setImage(Filled({10, 8}, Red));
    EditorFixture editor(60, 40);
    QVERIFY(ActionOf(editor, "pasteInPlaceAction")->isEnabled());
    editor.GetInput().Key(Qt::Key_V, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(editor.HistoryTexts(), QStringList("Paste in place"));
    QCOMPARE(LayerRect(editor), QRect(25, 16, 10, 8));
}

void TestDropPictures::pasteInPlaceReturnsToItsPlaceInAnotherDocument()
{
    EditorFixture editor(60, 40, Qt::red);
    LXImage32 mask(10, 8);
    mask.Fill(LXRGBA32i(0xFF000000u));
    editor.Document()->SetSelectionMask(mask, {45, 3});
    editor.GetInput().Key(Qt::Key_C, Qt::ControlModifier);
    QTRY_VERIFY(!QGuiApplication::clipboard()->image().isNull());
    QVERIFY(editor.Files()->New({200, 100}, Qt::white));
    editor.GetInput().Key(Qt::Key_V, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(LayerRect(editor), QRect(45, 3, 10, 8));
    QCOMPARE(editor.Pixels(1).pixel(0, 0), Red);

    editor.View()->Zoom(8, {0, 0}, false);
    editor.View()->centerOn(150, 60);
    editor.GetInput().Key(Qt::Key_V, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
    QCOMPARE(editor.HistoryTexts().last(), QString("Paste into view"));
    QVERIFY(QRect(144, 55, 3, 3).contains(LayerRect(editor).topLeft()));
}

void TestDropPictures::pastesAreOffWhenTheyCanDoNothing()
{
    QGuiApplication::clipboard()->clear();
    EditorFixture editor;
    const QList<const char*> names{"pasteInPlaceAction", "pasteIntoViewAction", "newFromClipboardAction"};
    for (const char* name : names)
        QVERIFY2(!ActionOf(editor, name)->isEnabled(), name);
    QGuiApplication::clipboard()->setImage(Filled({10, 8}, Red));
    QVERIFY(!ActionOf(editor, "pasteInPlaceAction")->isEnabled());
    QVERIFY(ActionOf(editor, "newFromClipboardAction")->isEnabled());
    ActionOf(editor, "newFromClipboardAction")->trigger();
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(10, 8));
    QVERIFY(ActionOf(editor, "pasteIntoViewAction")->isEnabled());
    editor.Document()->Lock();
    QVERIFY(!ActionOf(editor, "pasteIntoViewAction")->isEnabled());
    editor.Document()->Unlock();
    QVERIFY(ActionOf(editor, "pasteIntoViewAction")->isEnabled());
}

ZK_REGISTER_TEST(tst_drop_pictures, TestDropPictures)
#include "tst_drop_pictures.moc"
