#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXDocumentManager.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"
#include "scripting/InputDriver.h"
#include "support/DocumentFixture.h"
#include "support/EditorFixture.h"
#include "support/FileBytes.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QColorSpace>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QTest>

/// A picture with layers goes into the editor's own file and comes back; flat files are copies.
class TestOwnFile : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void savedWithTheKeysAndOpenedAgainEverythingIsThere();
    void theSelectedLayersAreSelectedAgain();
    void aFlatPictureThatGotLayersAsksForAnotherFile();
    void aFlatPictureThatStayedFlatIsSavedWhereItWas();
    void exportLeavesThePictureAsItWas();
    void exportTellsEverythingThatGetsLost();
    void exportTellsThatTheProfileGetsLost();
    void exportTellsAlsoOfCameraAndResolution();
    void cancelledExportWritesNothing();
    void aFullDiskLeavesTheOldFile();
    void aDamagedFileIsToldAndLeavesTheEditorAsItWas();
    void theVersionBeforeCanBeOpened();

private:
    static void AddLayers(EditorFixture& editor);
};

namespace {
void TypeIntoDialog(InputDriver& input, const QString& text)
{
    input.WhenModalShows([&input, text](QWidget*) {
        input.HoldModifiers(Qt::NoModifier);
        input.Key(Qt::Key_A, Qt::ControlModifier);
        input.Type(text);
        input.Key(Qt::Key_Return);
    });
}

/// Presses a button of the next message box and keeps its text.
void AnswerBox(InputDriver& input, const QString& button, QString* text)
{
    input.WhenModalShows([&input, button, text](QWidget* window) {
        auto* box = qobject_cast<LXMessageBox*>(window);
        QVERIFY(box);
        *text = box->GetText();
        for (QPushButton* candidate : window->findChildren<QPushButton*>()) {
            if (candidate->text().remove('&') == button) return input.Click(candidate);
        }
        QFAIL(qPrintable("no button " + button));
    });
}

int OpenDocuments()
{
    return LXDocumentManager::Instance()->GetDocuments().size();
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

void TestOwnFile::AddLayers(EditorFixture& editor)
{
    DocumentFixture::Random random(3);
    LXDocumentInterface* document = editor.Document();
    document->AddLayer("clouds", DocumentFixture::Noise(random, QSize(30, 40)), QPoint(-4, 5));
    document->AddMask(1, false);
    document->SetMaskImage(1, DocumentFixture::MaskNoise(random, QSize(25, 10)), QPoint(2, 3));
    document->GetModel()->SetBlendMode(0, BlendMode::Screen);
    document->GetModel()->SetOpacity(0, 0.625);
    document->SetSelectionMask(DocumentFixture::Filled(QSize(12, 9), 0x80000000), QPoint(3, 1));
}

void TestOwnFile::savedWithTheKeysAndOpenedAgainEverythingIsThere()
{
    EditorFixture editor(40, 30);
    AddLayers(editor);
    const QStringList before = DocumentFixture::Describe(editor.Document());
    const QImage merged = editor.Pixels(0);
    TypeIntoDialog(editor.GetInput(), editor.TempFile("lake"));
    editor.GetInput().Key(Qt::Key_S, Qt::ControlModifier);
    const QString path = editor.TempFile("lake.ora");
    QCOMPARE(editor.Files()->GetPath(editor.Document()), QFileInfo(path).canonicalFilePath());
    QCOMPARE(editor.Document()->GetDocumentName(), QString("lake.ora"));
    QVERIFY(editor.History()->isClean());

    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(OpenDocuments(), 0);
    TypeIntoDialog(editor.GetInput(), path);
    editor.GetInput().Key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(editor.Document());
    QCOMPARE(DocumentFixture::Describe(editor.Document()), before);
    QCOMPARE(editor.Pixels(0), merged);
    QVERIFY(editor.History()->isClean());

    // From now on saving asks nothing.
    ZKApplication::SetForeground(Qt::red);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    editor.GetInput().Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(editor.History()->isClean());
}

void TestOwnFile::theSelectedLayersAreSelectedAgain()
{
    EditorFixture editor(40, 30);
    AddLayers(editor);
    editor.Document()->AddLayer("top", DocumentFixture::Filled(QSize(5, 5), 0xFF00FF00), QPoint());
    const LXDocumentModel* model = editor.Document()->GetModel();
    QItemSelectionModel* selection = editor.View()->GetLayerSelection();
    selection->select(model->index(2), QItemSelectionModel::ClearAndSelect);
    selection->select(model->index(1), QItemSelectionModel::Select);
    const QString path = editor.TempFile("rows.ora");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    QVERIFY(editor.Files()->Close(editor.Document()));
    QVERIFY(editor.Files()->Open(path));
    QVERIFY(!editor.View()->GetLayerSelection()->isSelected(editor.Document()->GetModel()->index(0)));
    QVERIFY(editor.View()->GetLayerSelection()->isSelected(editor.Document()->GetModel()->index(1)));
    QVERIFY(editor.View()->GetLayerSelection()->isSelected(editor.Document()->GetModel()->index(2)));
}

void TestOwnFile::aFlatPictureThatGotLayersAsksForAnotherFile()
{
    EditorFixture editor;
    const QString flat = editor.TempFile("lake.png");
    QImage picture(40, 30, QImage::Format_ARGB32);
    picture.fill(Qt::darkCyan);
    QVERIFY(picture.save(flat));
    const QByteArray bytes = BytesOf(flat);
    QVERIFY(editor.Files()->Open(flat));
    AddLayers(editor);

    // The dialog offers the same name with the other ending.
    editor.GetInput().WhenModalShows([&](QWidget*) {
        editor.GetInput().HoldModifiers(Qt::NoModifier);
        editor.GetInput().Key(Qt::Key_Return);
    });
    editor.GetInput().Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(QFileInfo::exists(editor.TempFile("lake.ora")));
    QCOMPARE(editor.Document()->GetDocumentName(), QString("lake.ora"));
    QCOMPARE(BytesOf(flat), bytes);
}

void TestOwnFile::aFlatPictureThatStayedFlatIsSavedWhereItWas()
{
    EditorFixture editor;
    const QString flat = editor.TempFile("plain.png");
    QImage picture(40, 30, QImage::Format_ARGB32);
    picture.fill(Qt::darkCyan);
    QVERIFY(picture.save(flat));
    QVERIFY(editor.Files()->Open(flat));
    ZKApplication::SetForeground(Qt::red);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    editor.GetInput().Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(editor.History()->isClean());
    QCOMPARE(QImage(flat).pixelColor(5, 5), QColor(Qt::red));
}

void TestOwnFile::exportLeavesThePictureAsItWas()
{
    EditorFixture editor(40, 30);
    const QString path = editor.TempFile("own.ora");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    ZKApplication::SetForeground(Qt::red);
    editor.Tool("Fillcan").Click(QPointF(5, 5));

    TypeIntoDialog(editor.GetInput(), editor.TempFile("copy"));
    editor.GetInput().Key(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QImage(editor.TempFile("copy.png")).pixelColor(5, 5), QColor(Qt::red));
    QVERIFY(!editor.History()->isClean());
    QVERIFY(editor.Window()->isWindowModified());
    QCOMPARE(editor.Document()->GetDocumentName(), QString("own.ora"));
    QCOMPARE(editor.Files()->GetPath(editor.Document()), QFileInfo(path).canonicalFilePath());
}

void TestOwnFile::exportTellsEverythingThatGetsLost()
{
    EditorFixture editor(40, 30, Qt::transparent);
    AddLayers(editor);
    QString told;
    AnswerBox(editor.GetInput(), "Save", &told);
    QVERIFY(editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.jpg")));
    QVERIFY2(told.contains("layers and masks are merged"), qPrintable(told));
    QVERIFY2(told.contains("JPEG holds no transparency"), qPrintable(told));
    QVERIFY2(told.contains("helps while working: selection."), qPrintable(told));
    QCOMPARE(QImage(editor.TempFile("copy.jpg")).size(), QSize(40, 30));
}

void TestOwnFile::exportTellsThatTheProfileGetsLost()
{
    EditorFixture editor(40, 30);
    editor.Document()->SetICCProfile(ZKCMSProfile(QColorSpace(QColorSpace::DisplayP3).iccProfile()));
    // A file with room for the profile is worth no question.
    QVERIFY(editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.png")));
    QString told;
    AnswerBox(editor.GetInput(), "Cancel", &told);
    QVERIFY(!editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.bmp")));
    QVERIFY2(told.startsWith("BMP holds no color profile"), qPrintable(told));
    QVERIFY(!QFileInfo::exists(editor.TempFile("copy.bmp")));
}

void TestOwnFile::exportTellsAlsoOfCameraAndResolution()
{
    EditorFixture editor;
    Picture photo;
    photo.image = DocumentFixture::Filled(QSize(40, 30), 0xFF336699);
    photo.exif = FileBytes::Exif({true, 1, 0, {}, {}});
    photo.dpi = 300;
    const QString path = editor.TempFile("photo.jpg");
    QVERIFY(PictureFile::WritePicture(path, PictureFile::Format::Jpeg, photo).IsOk());
    QVERIFY(editor.Files()->Open(path));
    // Alone they are worth no question.
    QVERIFY(editor.Files()->ExportTo(editor.Document(), editor.TempFile("plain.webp")));
    AddLayers(editor);
    QString told;
    AnswerBox(editor.GetInput(), "Save", &told);
    QVERIFY(editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.webp")));
    QVERIFY2(told.contains("beside the pixels: resolution."), qPrintable(told));
    AnswerBox(editor.GetInput(), "Save", &told);
    QVERIFY(editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.tif")));
    QVERIFY2(told.contains("beside the pixels: what the camera noted (Exif)."), qPrintable(told));
}

void TestOwnFile::cancelledExportWritesNothing()
{
    EditorFixture editor(40, 30);
    AddLayers(editor);
    QString told;
    AnswerBox(editor.GetInput(), "Cancel", &told);
    QVERIFY(!editor.Files()->ExportTo(editor.Document(), editor.TempFile("copy.png")));
    QVERIFY(!QFileInfo::exists(editor.TempFile("copy.png")));
}

void TestOwnFile::aFullDiskLeavesTheOldFile()
{
    EditorFixture editor(40, 30);
    AddLayers(editor);
    const QString path = editor.TempFile("kept.ora");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    const QByteArray old = BytesOf(path);
    editor.Tool("Fillcan").Click(QPointF(5, 5));

    FaultSeams::FailNth(FaultSeams::Seam::FileWrite, 5);
    QString told;
    AnswerBox(editor.GetInput(), "Close", &told);
    QVERIFY(!editor.Files()->Save(editor.Document()));
    QVERIFY2(told.contains("kept.ora") && told.contains("No space left on device"), qPrintable(told));
    QCOMPARE(BytesOf(path), old);
    QVERIFY(!editor.History()->isClean());
}

void TestOwnFile::aDamagedFileIsToldAndLeavesTheEditorAsItWas()
{
    EditorFixture editor(40, 30);
    const QString path = editor.TempFile("half.ora");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    QVERIFY(editor.Files()->Close(editor.Document()));
    QVERIFY(QFile::resize(path, QFileInfo(path).size() / 2));
    QString told;
    AnswerBox(editor.GetInput(), "Close", &told);
    QVERIFY(!editor.Files()->Open(path));
    QVERIFY2(told.contains("half.ora") && told.contains("damaged"), qPrintable(told));
    QTRY_COMPARE(OpenDocuments(), 0);
}

void TestOwnFile::theVersionBeforeCanBeOpened()
{
    EditorFixture editor(40, 30, Qt::white);
    const QString path = editor.TempFile("twice.ora");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    ZKApplication::SetForeground(Qt::red);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    QVERIFY(editor.Files()->Save(editor.Document()));
    QVERIFY(editor.Files()->Open(path + "~"));
    QCOMPARE(editor.Pixels().pixelColor(5, 5), QColor(Qt::white));
}

ZK_REGISTER_TEST(tst_own_file, TestOwnFile)
#include "tst_own_file.moc"
