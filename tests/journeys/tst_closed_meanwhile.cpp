#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/SelectionChannels.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

using FaultSeams::Seam;

/// While a menu asks something or works, its picture may be closed, and another one become the active one.
class TestClosedMeanwhile : public QObject
{
    Q_OBJECT

private slots:
    void theAnswerGoesToThePictureThatWasAskedAbout_data();
    void theAnswerGoesToThePictureThatWasAskedAbout();
    void theAnswerForAClosedPictureChangesNoOther_data();
    void theAnswerForAClosedPictureChangesNoOther();
    void aPictureMayCloseWhileItIsConverted();
    void aPictureMayCloseWhileItIsFilled_data();
    void aPictureMayCloseWhileItIsFilled();
    void aFilledPictureIsTheOneThatWasActive();
    void aPictureMayCloseWhileItsNameIsAskedFor();
    void aPictureMayCloseWhileItIsSaved();
    void aPictureMayCloseWhileItsLossesAreTold();
    void aPictureMayCloseWhileItsCloseIsAsked();
    void picturesMayCloseWhileAllAreAsked();
};

namespace {
LXMdiAreaPrivate* AreaOf(const EditorFixture& editor)
{
    return LXMdiAreaPrivate::Get(editor.Window()->GetDocumentArea());
}

/// Closes it as a script may, whatever is going on; afterwards it is gone.
void CloseUnasked(const EditorFixture& editor, LXDocumentInterface* document)
{
    const QPointer<LXDocumentInterface> closed = document;
    AreaOf(editor)->Close(AreaOf(editor)->FindWindow(document));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!closed);
}

void Activate(const EditorFixture& editor, LXDocumentInterface* document)
{
    editor.Window()->GetDocumentArea()->setActiveSubWindow(AreaOf(editor)->FindWindow(document));
}

/// Two pictures with a selection and a saved one each; the first is active.
struct TwoPictures
{
    explicit TwoPictures(EditorFixture& editor)
    {
        first = Add(editor, QSize(60, 40));
        second = Add(editor, QSize(30, 20));
        Activate(editor, first);
    }

    static LXDocumentInterface* Add(EditorFixture& editor, const QSize& size)
    {
        LXDocumentInterface* document = editor.Files()->New(size, Qt::white);
        LXImage32 mask(10, 10);
        mask.Fill(LXRGBA32i(0xFF000000));
        document->SetSelectionMask(mask, QPoint(2, 2));
        LXDocumentInterfacePrivate::Get(document)->channels->Set({{QStringLiteral("Kept"), mask, {}}});
        return document;
    }

    QPointer<LXDocumentInterface> first;
    QPointer<LXDocumentInterface> second;
};

void ListActions()
{
    QTest::addColumn<QString>("action");
    for (const char* action :
         {"addGuideAction", "assignProfileAction", "convertToProfileAction", "saveSelectionAction",
          "loadSelectionAction", "growSelectionAction", "Custom"}) {
        QTest::newRow(action) << QString(action);
    }
}

/// An entry below this menu by its words; null for none.
QAction* EntryOf(const QWidget* menu, const QString& text)
{
    for (QAction* action : menu->actions()) {
        if (action->text() == text) return action;
        QAction* found = action->menu() ? EntryOf(action->menu(), text) : nullptr;
        if (found) return found;
    }
    return nullptr;
}

/// @param name  of the action; those of the plug-in have none, but words
void Trigger(const EditorFixture& editor, const QString& name)
{
    auto* action = editor.Window()->findChild<QAction*>(name);
    if (!action) action = EntryOf(editor.Window()->menuBar(), name);
    QVERIFY2(action && action->isEnabled(), qPrintable(name));
    action->trigger();
}

/// Chooses something that is a change, whatever the dialog.
void ChooseOther(InputDriver& input, const QString& action)
{
    if (action == "assignProfileAction") input.Key(Qt::Key_Down);
    if (action == "saveSelectionAction") input.Type("Other");
}

void Press(InputDriver& input, const QWidget* window, const QString& text)
{
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->text().remove('&') == text) return input.Click(button);
    }
    QFAIL(qPrintable("no button " + text));
}
} // namespace

void TestClosedMeanwhile::theAnswerGoesToThePictureThatWasAskedAbout_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("guide") << "addGuideAction";
    QTest::newRow("profile") << "assignProfileAction";
    QTest::newRow("saved selection") << "saveSelectionAction";
    QTest::newRow("modified selection") << "growSelectionAction";
    QTest::newRow("fill") << "Custom";
}

void TestClosedMeanwhile::theAnswerGoesToThePictureThatWasAskedAbout()
{
    QFETCH(QString, action);
    EditorFixture editor;
    const TwoPictures pictures(editor);
    Activate(editor, pictures.second);
    const QImage white = editor.Pixels(0);
    Activate(editor, pictures.first);
    const LexoUndoStack* asked = editor.History();
    editor.GetInput().WhenModalShows([&](QWidget*) {
        ChooseOther(editor.GetInput(), action);
        Activate(editor, pictures.second);
        editor.GetInput().Key(Qt::Key_Return);
    });
    Trigger(editor, action);
    QCOMPARE(editor.Document(), pictures.second.data());
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), white);
    QCOMPARE(asked->count(), 1);
    editor.Settle();
}

void TestClosedMeanwhile::theAnswerForAClosedPictureChangesNoOther_data()
{
    ListActions();
}

void TestClosedMeanwhile::theAnswerForAClosedPictureChangesNoOther()
{
    QFETCH(QString, action);
    EditorFixture editor;
    const TwoPictures pictures(editor);
    Activate(editor, pictures.second);
    const QImage white = editor.Pixels(0);
    Activate(editor, pictures.first);
    editor.GetInput().WhenModalShows([&](QWidget*) {
        ChooseOther(editor.GetInput(), action);
        CloseUnasked(editor, pictures.first);
        editor.GetInput().Key(Qt::Key_Return);
    });
    Trigger(editor, action);
    QVERIFY(!pictures.first);
    QCOMPARE(editor.Document(), pictures.second.data());
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), white);
    editor.Settle();
}

void TestClosedMeanwhile::aPictureMayCloseWhileItIsConverted()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    pictures.first->SetICCProfile(ZKCMSProfile());
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    bool wasAtWork = false;
    editor.GetInput().WhenModalShows<QDialog>([&](QDialog* dialog) {
        connect(dialog, &QDialog::finished, &editor.GetInput(), [&] {
            FaultSeams::SlowDown(Seam::TileAllocation, 200);
            QTimer::singleShot(0, &editor.GetInput(), [&] {
                wasAtWork = pictures.first->GetLockState();
                CloseUnasked(editor, pictures.first);
            });
        });
        editor.GetInput().Key(Qt::Key_Return);
    });
    editor.Window()->findChild<QAction*>("convertToProfileAction")->trigger();
    QVERIFY(wasAtWork);
    QVERIFY(!pictures.first);
    QCOMPARE(editor.Document(), pictures.second.data());
    QCOMPARE(editor.HistoryTexts(), QStringList());
    editor.Settle();
}

void TestClosedMeanwhile::aPictureMayCloseWhileItIsFilled_data()
{
    QTest::addColumn<QString>("action");
    for (const char* action : {"Red", "Grey", "Clean up alpha"})
        QTest::newRow(action) << QString(action);
}

void TestClosedMeanwhile::aPictureMayCloseWhileItIsFilled()
{
    QFETCH(QString, action);
    EditorFixture editor;
    const TwoPictures pictures(editor);
    Activate(editor, pictures.second);
    const QImage white = editor.Pixels(0);
    Activate(editor, pictures.first);
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    FaultSeams::SlowDown(Seam::TileAllocation, 100);
    QTimer::singleShot(0, &editor.GetInput(), [&] { CloseUnasked(editor, pictures.first); });
    Trigger(editor, action);
    QVERIFY(!pictures.first);
    QCOMPARE(editor.Document(), pictures.second.data());
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), white);
    editor.Settle();
}

void TestClosedMeanwhile::aFilledPictureIsTheOneThatWasActive()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    for (const char* action : {"Red", "Grey", "Clean up alpha"}) {
        Activate(editor, pictures.first);
        const LexoUndoStack* filled = editor.History();
        const int steps = filled->count();
        FaultSeams::SlowDown(Seam::TileAllocation, 100);
        QTimer::singleShot(0, &editor.GetInput(), [&] { Activate(editor, pictures.second); });
        Trigger(editor, action);
        QCOMPARE(editor.Document(), pictures.second.data());
        QCOMPARE(editor.HistoryTexts(), QStringList());
        QCOMPARE(filled->count(), steps + 1);
        FaultSeams::Reset();
    }
    editor.Settle();
}

void TestClosedMeanwhile::aPictureMayCloseWhileItsNameIsAskedFor()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    const QString file = editor.TempFile("never.ora");
    for (const bool isExport : {false, true}) {
        const QPointer<LXDocumentInterface> asked = TwoPictures::Add(editor, QSize(8, 8));
        editor.GetInput().WhenModalShows<QFileDialog>([&](QFileDialog* dialog) {
            dialog->selectFile(file);
            CloseUnasked(editor, asked);
            editor.GetInput().Key(Qt::Key_Return);
        });
        QVERIFY(!(isExport ? editor.Files()->Export(asked) : editor.Files()->SaveAs(asked)));
        QVERIFY(!asked);
        QVERIFY(!QFileInfo::exists(file));
    }
}

void TestClosedMeanwhile::aPictureMayCloseWhileItIsSaved()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    for (const char* name : {"own.ora", "flat.png"}) {
        const LXDocumentInterface* saved = TwoPictures::Add(editor, QSize(8, 8));
        bool wasClosed = false;
        FaultSeams::SlowDown(Seam::FileWrite, 100);
        QTimer::singleShot(0, &editor.GetInput(), [&] {
            CloseUnasked(editor, editor.Document());
            wasClosed = true;
        });
        QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile(name)));
        QVERIFY(wasClosed);
        QVERIFY(QFileInfo::exists(editor.TempFile(name)));
        // Another document may come to stand in the same place of the memory.
        QCOMPARE(editor.Files()->GetPath(saved), QString());
    }
}

void TestClosedMeanwhile::aPictureMayCloseWhileItsLossesAreTold()
{
    EditorFixture editor(20, 10, Qt::transparent);
    const QString file = editor.TempFile("flat.jpg");
    editor.GetInput().WhenModalShows([&](QWidget* box) {
        CloseUnasked(editor, editor.Document());
        Press(editor.GetInput(), box, "Save");
    });
    QVERIFY(editor.Files()->ExportTo(editor.Document(), file));
    QVERIFY(!editor.Document());
    QVERIFY(QFileInfo::exists(file));
}

void TestClosedMeanwhile::aPictureMayCloseWhileItsCloseIsAsked()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    pictures.first->SetDocumentState(1);
    editor.GetInput().WhenModalShows([&](QWidget* box) {
        CloseUnasked(editor, pictures.first);
        Press(editor.GetInput(), box, "Save");
    });
    editor.Files()->Close(pictures.first);
    QVERIFY(!pictures.first);
    QCOMPARE(editor.Document(), pictures.second.data());
}

void TestClosedMeanwhile::picturesMayCloseWhileAllAreAsked()
{
    EditorFixture editor;
    const TwoPictures pictures(editor);
    pictures.first->SetDocumentState(1);
    pictures.second->SetDocumentState(1);
    editor.GetInput().WhenModalShows([&](QWidget* box) {
        CloseUnasked(editor, pictures.first);
        CloseUnasked(editor, pictures.second);
        Press(editor.GetInput(), box, "Discard");
    });
    QVERIFY(editor.Files()->CloseAll());
    QVERIFY(LXDocumentManager::Instance()->GetDocuments().isEmpty());
    QCOMPARE(editor.GetInput().CountWaitingActions(), 0);
}

ZK_REGISTER_TEST(tst_closed_meanwhile, TestClosedMeanwhile)
#include "tst_closed_meanwhile.moc"
