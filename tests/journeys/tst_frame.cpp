#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/LXMdiArea.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

/// What holds for the whole program: preferences, layout, full screen, about.
class TestFrame : public QObject
{
    Q_OBJECT

private slots:
    void theLookChangesAtOnceAndStays();
    void iconsChangeTheirInkWithTheLook();
    void theLimitsOfTheHistoryChangeAtOnceForAllPictures();
    void aPictureOpenedLaterHasTheLimitsToo();
    void theMemoryForPicturesChangesAtOnce();
    void cancelledPreferencesChangeNothing();
    void panelsKeepTheirWidthUntilTheLayoutIsReset();
    void theWindowMenuGoesToAPanel();
    void theFullScreenIsToldByItsEntry();
    void theZoomMenuZooms();
    void theTintOfItsEntryIsOnEveryView();
    void theTintIsKeptForTheNextStart();
    void aboutTellsTheVersions();
};

namespace {
QAction* ActionNamed(const EditorFixture& editor, const char* name)
{
    return editor.Window()->findChild<QAction*>(name);
}

void Select(const EditorFixture& editor)
{
    LXImage32 mask(5, 5);
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, QPoint(2, 2));
}

/// Whether the active view shows a white picture with a selection in another color where nothing is selected.
bool IsTinted(const EditorFixture& editor)
{
    const QPoint unselected = InputDriver::ViewPoint(editor.View(), QPointF(15.5, 15.5));
    const QImage shown = editor.View()->viewport()->grab().toImage();
    return shown.pixelColor(unselected) != QColor(Qt::white);
}

/// Opens the preferences, changes controls and presses the button.
template <typename Change>
void ChangePreferences(EditorFixture& editor, Change change,
                       QDialogButtonBox::StandardButton button = QDialogButtonBox::Ok)
{
    InputDriver& input = editor.GetInput();
    bool hasShown = false;
    input.WhenModalShows<QDialog>([&](QDialog* dialog) {
        hasShown = true;
        change(dialog);
        QPushButton* closing = dialog->findChild<QDialogButtonBox*>()->button(button);
        input.Click(closing, closing->rect().center());
    });
    input.Key(Qt::Key_Comma, Qt::ControlModifier);
    QVERIFY(hasShown);
}

void ChooseLook(EditorFixture& editor, int row)
{
    ChangePreferences(editor, [row](const QDialog* dialog) {
        dialog->findChild<QComboBox*>("m_pLookCmb")->setCurrentIndex(row);
    });
}

/// The mean lightness of the drawn pixels of the icon.
int Lightness(const QIcon& icon)
{
    const QImage image = icon.pixmap(24).toImage().convertToFormat(QImage::Format_ARGB32);
    qint64 sum = 0;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() < 255) continue;
            sum += color.lightness();
            ++count;
        }
    }
    return count > 0 ? int(sum / count) : -1;
}

constexpr int DarkRow = 0;
constexpr int LightRow = 1;
} // namespace

void TestFrame::theLookChangesAtOnceAndStays()
{
    EditorFixture editor(40, 30);
    const auto panelColor = [&editor] { return editor.Window()->palette().color(QPalette::Window); };
    QCOMPARE(panelColor(), QColor(DarkTokens.panel));
    ChooseLook(editor, LightRow);
    QCOMPARE(Theme::Current(), Theme::Look::Light);
    QCOMPARE(panelColor(), QColor(LightTokens.panel));
    const QImage picture = LayersWidget::GetInstance()->grab().toImage();
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2), QColor(LightTokens.panel));

    // As at the next start.
    editor.GetEditor().Shutdown();
    QVERIFY(editor.GetEditor().Start());
    QCOMPARE(Theme::Current(), Theme::Look::Light);

    ChooseLook(editor, DarkRow);
    QCOMPARE(panelColor(), QColor(DarkTokens.panel));
}

void TestFrame::iconsChangeTheirInkWithTheLook()
{
    EditorFixture editor(40, 30);
    const QAction* undo = ActionNamed(editor, "undoAction");
    const auto* add = LayersWidget::GetInstance()->findChild<QToolButton*>("m_pAddBtn");
    QVERIFY(Lightness(undo->icon()) > 128);
    QVERIFY(Lightness(add->icon()) > 128);
    ChooseLook(editor, LightRow);
    QVERIFY(Lightness(undo->icon()) < 128);
    QVERIFY(Lightness(add->icon()) < 128);
    ChooseLook(editor, DarkRow);
    QVERIFY(Lightness(undo->icon()) > 128);
}

void TestFrame::theLimitsOfTheHistoryChangeAtOnceForAllPictures()
{
    EditorFixture editor(40, 30);
    const LexoUndoStack* first = editor.History();
    editor.Files()->New({20, 20}, Qt::white);
    const LexoUndoStack* second = editor.History();
    QVERIFY(first != second);
    ChangePreferences(editor, [](const QDialog* dialog) {
        dialog->findChild<QSpinBox*>("m_pUndoStepsSpn")->setValue(3);
        dialog->findChild<QSpinBox*>("m_pUndoMemorySpn")->setValue(5);
    });
    for (const LexoUndoStack* history : {first, second}) {
        QCOMPARE(history->stepLimit(), 3);
        QCOMPARE(history->memoryLimit(), qint64(5) * 1024 * 1024);
    }
}

void TestFrame::aPictureOpenedLaterHasTheLimitsToo()
{
    EditorFixture editor;
    ChangePreferences(
        editor, [](const QDialog* dialog) { dialog->findChild<QSpinBox*>("m_pUndoStepsSpn")->setValue(2); });
    editor.Files()->New({20, 20}, Qt::white);
    for (int step = 0; step < 4; ++step)
        editor.Tool("Fillcan").Click(QPointF(5, 5));
    QCOMPARE(editor.History()->count(), 2);
}

void TestFrame::theMemoryForPicturesChangesAtOnce()
{
    EditorFixture editor;
    const qint64 automatic = LXTileManager::Instance().MemoryBudget();
    ChangePreferences(
        editor, [](const QDialog* dialog) { dialog->findChild<QSpinBox*>("m_pMemorySpn")->setValue(100); });
    QCOMPARE(LXTileManager::Instance().MemoryBudget(), qint64(100) * 1024 * 1024);
    ChangePreferences(
        editor, [](const QDialog* dialog) { dialog->findChild<QSpinBox*>("m_pMemorySpn")->setValue(0); });
    QCOMPARE(LXTileManager::Instance().MemoryBudget(), automatic);
}

void TestFrame::cancelledPreferencesChangeNothing()
{
    EditorFixture editor(40, 30);
    const int steps = editor.History()->stepLimit();
    const auto change = [](const QDialog* dialog) {
        dialog->findChild<QComboBox*>("m_pLookCmb")->setCurrentIndex(LightRow);
        dialog->findChild<QSpinBox*>("m_pUndoStepsSpn")->setValue(1);
    };
    ChangePreferences(editor, change, QDialogButtonBox::Cancel);
    QCOMPARE(Theme::Current(), Theme::Look::Dark);
    QCOMPARE(editor.History()->stepLimit(), steps);
}

void TestFrame::panelsKeepTheirWidthUntilTheLayoutIsReset()
{
    EditorFixture editor;
    const auto layersPanel = [&editor] { return editor.Window()->findChild<QDockWidget*>("layersPanel"); };
    const int width = layersPanel()->width();
    // Large fonts widen the panel.
    QCOMPARE(width, qMax(260, layersPanel()->minimumSizeHint().width()));
    editor.Window()->resizeDocks({layersPanel()}, {width + 60}, Qt::Horizontal);
    QTRY_COMPARE(layersPanel()->width(), width + 60);

    // The next start finds it so.
    editor.Window()->close();
    editor.GetEditor().Shutdown();
    QVERIFY(editor.GetEditor().Start());
    QTRY_COMPARE(layersPanel()->width(), width + 60);

    ActionNamed(editor, "resetLayoutAction")->trigger();
    QTRY_COMPARE(layersPanel()->width(), width);
}

void TestFrame::theWindowMenuGoesToAPanel()
{
    EditorFixture editor(40, 30);
    auto* history = editor.Window()->findChild<QDockWidget*>("historyPanel");
    QVERIFY(history->visibleRegion().isEmpty());
    const QList<QAction*> actions = editor.Window()->findChildren<QAction*>();
    const auto entry = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
        return action->statusTip().contains("History");
    });
    QVERIFY(entry != actions.end());
    (*entry)->trigger();
    QVERIFY(!history->visibleRegion().isEmpty());
    QVERIFY(history->isAncestorOf(QApplication::focusWidget()));
}

void TestFrame::theFullScreenIsToldByItsEntry()
{
    EditorFixture editor(40, 30);
    editor.GetInput().Key(Qt::Key_F11);
    QVERIFY(editor.Window()->isFullScreen());
    const QAction* entry = ActionNamed(editor, "fullScreenAction");
    QVERIFY(entry->isChecked());
    // As the desktop does it.
    editor.Window()->showNormal();
    QTRY_VERIFY(!entry->isChecked());
}

void TestFrame::theZoomMenuZooms()
{
    EditorFixture editor(400, 300);
    const auto* zoom = editor.Window()->findChild<QToolButton*>("zoomReadout");
    QVERIFY(zoom->isEnabled());
    for (QAction* action : zoom->menu()->actions()) {
        if (action->text() == QLatin1String("400 %")) action->trigger();
    }
    QTRY_COMPARE(zoom->text(), QString("400 %"));
    editor.Files()->Close(editor.Document());
    QVERIFY(!zoom->isEnabled());
}

void TestFrame::theTintOfItsEntryIsOnEveryView()
{
    EditorFixture editor(30, 20);
    Select(editor);
    const ZKDocumentView* first = editor.View();
    QAction* tint = ActionNamed(editor, "tintUnselectedAction");
    QVERIFY(!IsTinted(editor));
    tint->trigger();
    QVERIFY(IsTinted(editor));

    QVERIFY(editor.Files()->New(QSize(20, 20), Qt::white));
    Select(editor);
    QVERIFY(editor.View() != first);
    QVERIFY(IsTinted(editor));
    tint->trigger();
    QVERIFY(!IsTinted(editor));

    // The other one follows when it is looked at again.
    editor.Window()->GetDocumentArea()->activatePreviousSubWindow();
    QCOMPARE(editor.View(), first);
    QVERIFY(!IsTinted(editor));
    editor.Settle();
}

void TestFrame::theTintIsKeptForTheNextStart()
{
    EditorFixture editor(30, 20);
    for (const bool shown : {true, false}) {
        ActionNamed(editor, "tintUnselectedAction")->trigger();
        editor.GetEditor().Shutdown();
        QVERIFY(editor.GetEditor().Start());
        QCOMPARE(ActionNamed(editor, "tintUnselectedAction")->isChecked(), shown);
        QVERIFY(editor.Files()->New(QSize(20, 20), Qt::white));
        Select(editor);
        QCOMPARE(IsTinted(editor), shown);
    }
}

void TestFrame::aboutTellsTheVersions()
{
    EditorFixture editor;
    QString libraries;
    QString name;
    editor.GetInput().WhenModalShows<QDialog>([&](QDialog* dialog) {
        name = dialog->findChild<QLabel*>("m_pNameLbl")->text();
        libraries = dialog->findChild<QLabel*>("m_pLibrariesLbl")->text();
        editor.GetInput().Key(Qt::Key_Escape);
    });
    ActionNamed(editor, "aboutAction")->trigger();
    QCOMPARE(name, QString("Zenkari " ZK_PRODUCT_VERSION));
    QVERIFY2(libraries.contains(QStringLiteral("Qt ") + QLatin1String(qVersion())), qPrintable(libraries));
    QVERIFY2(QRegularExpression("libzip \\d+\\.\\d+").match(libraries).hasMatch(), qPrintable(libraries));
    QVERIFY2(QRegularExpression("libpng \\d+\\.\\d+\\.\\d+").match(libraries).hasMatch(),
             qPrintable(libraries));
}

ZK_REGISTER_TEST(tst_frame, TestFrame)
#include "tst_frame.moc"
