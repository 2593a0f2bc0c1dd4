#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QFileInfo>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

/// What becomes of changes: saving, and the question before a document or the program closes.
class TestSaveAndClose : public QObject
{
    Q_OBJECT

private slots:
    void anUnchangedDocumentClosesUnasked();
    void closingOffersSave();
    void closingOffersDiscard();
    void closingOffersCancel();
    void quittingAsksAboutEveryDocumentFirst();
    void quittingClosesTheWindow();
    void titleAndTabShowTheModifiedMark();
    void savingTellsThatJpegDropsTransparency();
    void savingTellsAnUnknownEnding();
};

namespace {
/// Presses a button of the next message box and keeps its text.
void AnswerBox(InputDriver& input, const QString& button, QString* text = nullptr)
{
    input.WhenModalShows([&input, button, text](QWidget* window) {
        if (auto* box = qobject_cast<LXMessageBox*>(window); box && text) *text = box->GetText();
        for (QPushButton* candidate : window->findChildren<QPushButton*>()) {
            if (candidate->text().remove('&') == button) return input.Click(candidate);
        }
        QFAIL(qPrintable("no button " + button));
    });
}

void ChangeDocument(EditorFixture& editor)
{
    ZKApplication::SetForeground(QColor(10, 20, 30));
    editor.Tool("Fillcan").Click(QPointF(2, 2));
    QVERIFY(!editor.History()->isClean());
}

int OpenDocuments()
{
    return LXDocumentManager::Instance()->GetDocuments().size();
}
} // namespace

void TestSaveAndClose::anUnchangedDocumentClosesUnasked()
{
    EditorFixture editor(20, 10);
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(OpenDocuments(), 0);
    QVERIFY(!editor.View());
}

void TestSaveAndClose::closingOffersSave()
{
    EditorFixture editor(20, 10);
    const QString file = editor.TempFile("kept.png");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), file));
    ChangeDocument(editor);
    const QImage changed = editor.Pixels();

    AnswerBox(editor.GetInput(), "Save");
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(OpenDocuments(), 0);
    QCOMPARE(QImage(file).convertToFormat(QImage::Format_ARGB32), changed);
}

void TestSaveAndClose::closingOffersDiscard()
{
    EditorFixture editor(20, 10);
    const QString file = editor.TempFile("old.png");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), file));
    const QImage old = editor.Pixels();
    ChangeDocument(editor);

    AnswerBox(editor.GetInput(), "Discard");
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(OpenDocuments(), 0);
    QCOMPARE(QImage(file).convertToFormat(QImage::Format_ARGB32), old);
}

void TestSaveAndClose::closingOffersCancel()
{
    EditorFixture editor(20, 10);
    ChangeDocument(editor);
    LXDocumentInterface* document = editor.Document();

    AnswerBox(editor.GetInput(), "Cancel");
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(OpenDocuments(), 1);
    QCOMPARE(editor.Document(), document);
    QVERIFY(!editor.History()->isClean());
    editor.CheckNothingIsLeft();

    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(editor.History()->isClean());
}

void TestSaveAndClose::quittingAsksAboutEveryDocumentFirst()
{
    EditorFixture editor(20, 10);
    ChangeDocument(editor);
    QVERIFY(editor.Files()->New(QSize(30, 20), Qt::white));
    ChangeDocument(editor);
    QSignalSpy closed(&editor.GetEditor(), &Editor::Closed);

    // The first answer closes nothing yet, so that the second can still take everything back.
    AnswerBox(editor.GetInput(), "Discard");
    AnswerBox(editor.GetInput(), "Cancel");
    editor.GetInput().Key(Qt::Key_Q, Qt::ControlModifier);
    QCOMPARE(editor.GetInput().CountWaitingActions(), 0);
    QCOMPARE(editor.Window()->GetDocumentArea()->GetWindows().size(), 2);
    QCOMPARE(closed.count(), 0);
    QVERIFY(editor.Window()->isVisible());
}

void TestSaveAndClose::quittingClosesTheWindow()
{
    EditorFixture editor(20, 10);
    ChangeDocument(editor);
    QVERIFY(editor.Files()->New(QSize(30, 20), Qt::white));
    ChangeDocument(editor);
    QSignalSpy closed(&editor.GetEditor(), &Editor::Closed);

    AnswerBox(editor.GetInput(), "Discard");
    AnswerBox(editor.GetInput(), "Discard");
    editor.GetInput().Key(Qt::Key_Q, Qt::ControlModifier);
    QTRY_COMPARE(OpenDocuments(), 0);
    QCOMPARE(closed.count(), 1);
    QVERIFY(!editor.Window()->isVisible());
}

void TestSaveAndClose::titleAndTabShowTheModifiedMark()
{
    EditorFixture editor(20, 10);
    const QWidget* tab = editor.Window()->GetDocumentArea()->GetActiveWindow();
    QVERIFY(!editor.Window()->isWindowModified());
    QVERIFY(!tab->isWindowModified());

    ChangeDocument(editor);
    QVERIFY(editor.Window()->isWindowModified());
    QVERIFY(tab->isWindowModified());

    QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile("named.png")));
    editor.Settle();
    QVERIFY(!editor.Window()->isWindowModified());
    QVERIFY(!tab->isWindowModified());
    QVERIFY(editor.Window()->windowTitle().contains("named.png"));
}

void TestSaveAndClose::savingTellsThatJpegDropsTransparency()
{
    EditorFixture editor(20, 10, Qt::transparent);
    const QString file = editor.TempFile("flat.jpg");
    QString told;

    AnswerBox(editor.GetInput(), "Cancel", &told);
    QVERIFY(!editor.Files()->SaveTo(editor.Document(), file));
    QVERIFY2(told.contains("JPEG holds no transparency"), qPrintable(told));
    QVERIFY(!QFileInfo::exists(file));

    AnswerBox(editor.GetInput(), "Save");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), file));
    QCOMPARE(QImage(file).pixelColor(3, 3), QColor(Qt::white));
    // What can't hold the picture doesn't become its file.
    QCOMPARE(editor.Files()->GetPath(editor.Document()), QString());

    // Told once: the next copy is just written.
    QVERIFY(editor.Files()->ExportTo(editor.Document(), file));
}

void TestSaveAndClose::savingTellsAnUnknownEnding()
{
    EditorFixture editor(20, 10);
    QString told;
    AnswerBox(editor.GetInput(), "Close", &told);
    QVERIFY(!editor.Files()->SaveTo(editor.Document(), editor.TempFile("picture.xyz")));
    QVERIFY2(told.contains("picture.xyz"), qPrintable(told));
    QVERIFY(editor.Files()->GetPath(editor.Document()).isEmpty());
}

ZK_REGISTER_TEST(tst_save_and_close, TestSaveAndClose)
#include "tst_save_and_close.moc"
