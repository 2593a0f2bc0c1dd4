#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXOperationProgressDlg.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/ZKCMSProfile.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDockWidget>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

/// Copy, cut and paste with the keys, in the whole editor.
class TestClipboard : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void copyingTwiceIsOneRowAndRefreshesTheSystemClipboard();
    void copyAndThenCutIsOneCut();
    void theOtherKeysDoTheSame();
    void aWideCutIsCopiedAndErasesNothing();
    void aPasteIsCenteredAndDropsWhatLiesOutside();
    void lockedTransparencyKeepsTheShape();
    void anEmptiedListPastesNothing();
    void anotherProgramsImageIsImported();
    void aCutOnALockedLayerIsCopiedAndTold();
    void aCutOnALayerWithoutPixelsIsCopiedAlone();
    void aCutOnAMaskCutsTheMask();
    void aPasteToAMaskIsCancelledInTheDialog();
    void aPasteOfTheLastPictureIntoAnotherDocument();
    void pasteAsANewImage();
    void whatHasAButtonHasAnIcon();
    void aNewPictureFromTheClipboardKeepsTheProfile();
    void theSystemClipboardIsEmptyAfterTheEnd();
};

namespace {
class Journey : public EditorFixture
{
public:
    using EditorFixture::EditorFixture;

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        GetInput().Key(key, modifiers);
    }

    /// Presses the key and waits until its copy has come, as a row or as a step.
    void PressAndWait(int key, int rows, int steps = 0)
    {
        Press(key);
        QTRY_COMPARE(List()->rowCount(), rows);
        QTRY_COMPARE(HistoryTexts().size(), steps);
        Settle();
    }

    void Select(const QRect& rect)
    {
        LXImage32 mask(rect.width(), rect.height());
        mask.Fill(LXRGBA32i(0xFF000000u));
        Document()->SetSelectionMask(mask, rect.topLeft());
    }

    QAbstractItemModel* List() const { return LayersWidget::GetInstance()->GetClipboardModel(); }

    QString Cell(int row, int column) const { return List()->index(row, column).data().toString(); }

    QRgb Pixel(int x, int y, unsigned int id = 1) const { return Pixels(id).pixel(x, y); }

    /// Fills a part of the layer, without a step.
    void Paint(const QRect& rect, QRgb color)
    {
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x)
                Document()->GetLayerImage(1)->SetColor(x, y, LXRGBA32i(color));
        }
        Document()->LayerImageChanged(1, rect);
    }
};

QImage SystemImage()
{
    return QGuiApplication::clipboard()->image();
}

void PutForeign(const QSize& size, QRgb color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    auto* content = new QMimeData; // the clipboard takes it
    content->setData(QStringLiteral("image/png"), bytes);
    QGuiApplication::clipboard()->setMimeData(content);
}

constexpr QRgb Red = 0xFFFF0000u;
constexpr QRgb White = 0xFFFFFFFFu;
} // namespace

void TestClipboard::copyingTwiceIsOneRowAndRefreshesTheSystemClipboard()
{
    Journey editor(60, 40);
    editor.Paint({0, 0, 10, 10}, Red);
    editor.Select({0, 0, 10, 10});
    editor.PressAndWait(Qt::Key_C, 1);
    QCOMPARE(SystemImage().pixel(9, 9), Red);
    QGuiApplication::clipboard()->setText("words");
    editor.Press(Qt::Key_C);
    QTRY_COMPARE(SystemImage().size(), QSize(10, 10));
    QCOMPARE(editor.List()->rowCount(), 1);
}

void TestClipboard::copyAndThenCutIsOneCut()
{
    Journey editor(60, 40);
    editor.Select({0, 0, 10, 10});
    editor.Press(Qt::Key_C);
    editor.PressAndWait(Qt::Key_X, 1, 1);
    QCOMPARE(editor.HistoryTexts(), QStringList("Cut"));
    QCOMPARE(editor.Cell(0, 3), QString("ARGB32\nCut"));
    QCOMPARE(qAlpha(editor.Pixel(5, 5)), 0);
    QCOMPARE(editor.Pixel(10, 5), White);
    editor.Press(Qt::Key_Z);
    QCOMPARE(editor.Pixel(5, 5), White);
}

void TestClipboard::theOtherKeysDoTheSame()
{
    Journey editor(60, 40);
    editor.Paint({0, 0, 10, 10}, Red);
    editor.Select({0, 0, 10, 10});
    editor.Press(Qt::Key_Insert, Qt::ControlModifier);
    QTRY_COMPARE(editor.List()->rowCount(), 1);
    editor.Select({30, 20, 10, 10});
    editor.Press(Qt::Key_Insert, Qt::ShiftModifier);
    QCOMPARE(editor.HistoryTexts(), QStringList("Paste"));
    QCOMPARE(editor.Pixel(39, 29), Red);
}

void TestClipboard::aWideCutIsCopiedAndErasesNothing()
{
    Journey editor(5001, 4, Qt::red);
    editor.Select({0, 0, 5001, 4});
    editor.PressAndWait(Qt::Key_X, 1);
    QCOMPARE(editor.Pixel(2500, 2), Red);
    QCOMPARE(editor.Cell(0, 1), QString("Untitled 1\n5001x4 px"));
    QCOMPARE(SystemImage().width(), 5000);
}

void TestClipboard::aPasteIsCenteredAndDropsWhatLiesOutside()
{
    Journey editor(60, 40);
    PutForeign({80, 10}, Red);
    editor.Press(Qt::Key_V);
    QCOMPARE(editor.HistoryTexts(), QStringList("Paste"));
    // (60 - 80) / 2 = -10, (40 - 10) / 2 = 15
    QCOMPARE(editor.Document()->GetLayerGeometry(1), QRect(0, 0, 60, 40));
    QCOMPARE(editor.Pixel(0, 15), Red);
    QCOMPARE(editor.Pixel(59, 24), Red);
    QCOMPARE(editor.Pixel(30, 14), White);
    QCOMPARE(editor.Pixel(30, 25), White);
    QCOMPARE(editor.Cell(0, 3), QString("ARGB32\nPasted"));
}

void TestClipboard::lockedTransparencyKeepsTheShape()
{
    Journey editor(60, 40, Qt::transparent);
    editor.Paint({20, 10, 10, 20}, White);
    editor.Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency);
    PutForeign({60, 40}, Red);
    editor.Press(Qt::Key_V);
    QCOMPARE(editor.Pixel(20, 10), Red);
    QCOMPARE(editor.Pixel(29, 29), Red);
    QCOMPARE(qAlpha(editor.Pixel(19, 10)), 0);
    QCOMPARE(qAlpha(editor.Pixel(30, 29)), 0);
}

void TestClipboard::anEmptiedListPastesNothing()
{
    Journey editor(60, 40);
    PutForeign({8, 8}, Red);
    auto* panel = editor.Window()->findChild<QDockWidget*>("clipboardPanel");
    panel->raise();
    QToolButton* remove = nullptr;
    for (QToolButton* button : panel->findChildren<QToolButton*>()) {
        if (button->accessibleName() == "Delete from clipboard") remove = button;
    }
    QVERIFY(remove);
    QTRY_VERIFY(remove->isVisible() && remove->width() > 0);
    editor.GetInput().Click(remove);
    QCOMPARE(editor.List()->rowCount(), 0);
    QCOMPARE(LayersWidget::GetInstance()->GetClipboardSelection()->currentIndex().row(), -1);
    QVERIFY(!remove->isEnabled());
    editor.Press(Qt::Key_V);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestClipboard::anotherProgramsImageIsImported()
{
    Journey editor(60, 40);
    editor.Select({0, 0, 10, 10});
    editor.PressAndWait(Qt::Key_C, 1);
    editor.Window()->hide();
    QTRY_VERIFY(!QApplication::activeWindow());
    PutForeign({7, 5}, Red);
    editor.Window()->show();
    QCOMPARE(editor.Cell(1, 1), QString("Imported 2\n7x5 px"));
}

void TestClipboard::aCutOnALockedLayerIsCopiedAndTold()
{
    Journey editor(60, 40);
    editor.Document()->GetModel()->SetLockFlags(0, LayerLocks::All);
    editor.Select({0, 0, 10, 10});
    QString told;
    editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        told = box->windowTitle() + ": " + box->GetText();
        box->close();
    });
    editor.Press(Qt::Key_X);
    QTRY_COMPARE(told, QString("Zenkari: Warning. Layer is locked!"));
    editor.Settle();
    QCOMPARE(editor.List()->rowCount(), 1);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixel(5, 5), White);
}

void TestClipboard::aCutOnALayerWithoutPixelsIsCopiedAlone()
{
    Journey editor(60, 40);
    LayerState letters;
    letters.properties.kind = LayerKind::Text;
    letters.properties.rect = QRect(0, 0, 60, 40);
    letters.image = LXImage32(60, 40);
    letters.image.Fill(LXRGBA32i(Red));
    LXDocumentInterfacePrivate::Get(editor.Document())->InsertLayer(0, letters);
    editor.View()->GetLayerSelection()->setCurrentIndex(editor.Document()->GetModel()->index(0, 0),
                                                        QItemSelectionModel::ClearAndSelect);
    editor.Select({0, 0, 10, 10});
    editor.PressAndWait(Qt::Key_X, 1);
    QCOMPARE(editor.Pixel(5, 5), Red);
    QCOMPARE(SystemImage().pixel(5, 5), Red);
    // Nor does it take a paste.
    editor.Press(Qt::Key_V);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestClipboard::aCutOnAMaskCutsTheMask()
{
    Journey editor(60, 40);
    editor.Document()->AddMask(1, true);
    editor.Document()->GetModel()->SetMaskSelected(0, true);
    editor.Press(Qt::Key_D, Qt::NoModifier); // black and white
    editor.Press(Qt::Key_X, Qt::NoModifier); // and black is the background
    editor.Select({0, 0, 10, 10});
    editor.PressAndWait(Qt::Key_X, 1, 1);
    QCOMPARE(editor.Document()->GetMaskImage(1)->GetColor(5, 5).Alpha(), 0);
    QCOMPARE(editor.Document()->GetMaskImage(1)->GetColor(10, 5).Alpha(), 255);
    QCOMPARE(editor.Pixel(5, 5), White);
    // White, as the mask was.
    QCOMPARE(SystemImage().pixel(5, 5), White);
    editor.Press(Qt::Key_Z);
    QCOMPARE(editor.Document()->GetMaskImage(1)->GetColor(5, 5).Alpha(), 255);
}

void TestClipboard::aPasteToAMaskIsCancelledInTheDialog()
{
    Journey editor(1500, 1200);
    editor.Document()->AddMask(1, true);
    editor.Document()->GetModel()->SetMaskSelected(0, true);
    PutForeign({1500, 1200}, 0xFF000000u);
    editor.Settle();
    FaultSeams::SlowDown(FaultSeams::Seam::TileAllocation, 20);
    editor.GetInput().WhenModalShows<LXOperationProgressDlg>(
        [&](LXOperationProgressDlg* dialog) { editor.GetInput().Click(dialog->findChild<QPushButton*>()); });
    editor.Press(Qt::Key_V);
    FaultSeams::Reset();
    QCOMPARE(editor.GetInput().CountWaitingActions(), 0);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    bool isWhole = true;
    for (int y = 0; y < 1200; ++y) {
        for (int x = 0; x < 1500; ++x)
            isWhole = isWhole && editor.Document()->GetMaskImage(1)->GetColor(x, y).Alpha() == 255;
    }
    QVERIFY(isWhole);
    editor.Settle();

    editor.Press(Qt::Key_V);
    QCOMPARE(editor.HistoryTexts(), QStringList("Paste"));
    QCOMPARE(editor.Document()->GetMaskImage(1)->GetColor(700, 600).Alpha(), 0);
}

void TestClipboard::aPasteOfTheLastPictureIntoAnotherDocument()
{
    Journey editor(60, 40, Qt::red);
    editor.Select({0, 0, 10, 10});
    editor.PressAndWait(Qt::Key_C, 1);
    editor.GetInput().WhenModalShows([&](QWidget*) {
        editor.GetInput().HoldModifiers(Qt::NoModifier);
        editor.GetInput().Key(Qt::Key_Return);
    });
    editor.Press(Qt::Key_N);
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 2);
    editor.Press(Qt::Key_V);
    const QSize size = editor.Document()->GetDocumentSize();
    QCOMPARE(editor.Pixel(size.width() / 2, size.height() / 2), Red);
    QCOMPARE(editor.HistoryTexts(), QStringList("Paste"));
}

void TestClipboard::pasteAsANewImage()
{
    Journey editor(60, 40, Qt::red);
    editor.Select({0, 0, 10, 8});
    editor.PressAndWait(Qt::Key_C, 1);
    editor.Press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 2);
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(10, 8));
    QCOMPARE(editor.Document()->GetDocumentName(), QString("Untitled 1"));
    QVERIFY(editor.Window()->isWindowModified());
    QCOMPARE(editor.Pixel(9, 7), Red);
}

void TestClipboard::whatHasAButtonHasAnIcon()
{
    Journey editor(60, 40);
    const QList<QAction*> actions = LayersWidget::GetInstance()->GetClipboardActions();
    QCOMPARE(actions.size(), 3);
    for (const QAction* action : actions)
        QVERIFY2(!action->icon().pixmap(16, 16).isNull(), qPrintable(action->text()));
}

void TestClipboard::aNewPictureFromTheClipboardKeepsTheProfile()
{
    Journey editor(60, 40, Qt::red);
    editor.Document()->SetICCProfile(ZKCMSProfile("a profile"));
    editor.Select({0, 0, 10, 8});
    editor.PressAndWait(Qt::Key_C, 1);
    editor.Window()->findChild<QAction*>("newFromClipboardAction")->trigger();
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(10, 8));
    QCOMPARE(editor.Document()->GetICCProfile().GetData(), QByteArray("a profile"));
}

void TestClipboard::theSystemClipboardIsEmptyAfterTheEnd()
{
    {
        Journey editor(60, 40, Qt::red);
        editor.Select({0, 0, 10, 8});
        editor.PressAndWait(Qt::Key_C, 1);
        QVERIFY(!SystemImage().isNull());
    }
    QVERIFY(SystemImage().isNull());
}

ZK_REGISTER_TEST(tst_clipboard, TestClipboard)
#include "tst_clipboard.moc"
