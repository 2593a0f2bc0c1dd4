#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QComboBox>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

namespace {
const QColor Sky(120, 170, 230);
const QColor Paint(200, 40, 20);

/// A small photo: sky over a darker ground.
QImage MakePhoto()
{
    QImage photo(150, 100, QImage::Format_ARGB32);
    photo.fill(Sky);
    for (int y = 60; y < photo.height(); ++y) {
        for (int x = 0; x < photo.width(); ++x)
            photo.setPixelColor(x, y, QColor(30 + x / 4, 60, 20));
    }
    return photo;
}

LToolBoxButton* FillCanButton(const MainWindow* window)
{
    for (LToolBoxButton* button : window->findChildren<LToolBoxButton*>()) {
        if (button->defaultAction() && button->defaultAction()->text() == "Fill can tool") return button;
    }
    return nullptr;
}
} // namespace

class TestFillAPhoto : public QObject
{
    Q_OBJECT

private slots:
    void openFillUndoRedoSaveAndReopen();
    void aClickOnTheToolBoxChoosesTheTool();
    void toleranceTypedInTheBarShowsInThePanel();
    void sliderOfThePanelSetsTheBar();
    void otherButtonsFillNothing_data();
    void otherButtonsFillNothing();
    void twoButtonsFillNothing();
    void clickOutsideTheDocumentFillsNothing_data();
    void clickOutsideTheDocumentFillsNothing();
    void keysOfTheToolAreDeadWithoutIt();
};

void TestFillAPhoto::openFillUndoRedoSaveAndReopen()
{
    EditorFixture editor;
    const QString file = editor.TempFile("photo.png");
    QVERIFY(MakePhoto().save(file));
    QVERIFY(editor.Files()->Open(file));
    QCOMPARE(editor.Pixels(), MakePhoto());

    ZKApplication::SetForeground(Paint);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click(QPointF(20.5, 10.5));
    const QImage filled = editor.Pixels();
    QCOMPARE(filled.pixelColor(20, 10), Paint);
    QCOMPARE(filled.pixelColor(149, 59), Paint);
    QCOMPARE(filled.pixelColor(20, 80), MakePhoto().pixelColor(20, 80));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
    QCOMPARE(editor.History()->undoText(), QString("Fill"));

    can.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Pixels(), MakePhoto());
    QCOMPARE(editor.History()->redoText(), QString("Fill"));

    can.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor.Pixels(), filled);
    QVERIFY(!editor.History()->isClean());

    can.Key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(editor.History()->isClean());
    can.Key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!editor.Document());

    QVERIFY(editor.Files()->Open(file));
    QCOMPARE(editor.Pixels(), filled);
}

void TestFillAPhoto::aClickOnTheToolBoxChoosesTheTool()
{
    EditorFixture editor(40, 30);
    LToolBoxButton* button = FillCanButton(editor.Window());
    QVERIFY(button);
    const ZKActivateAction* atFirst = ZKToolGroupManager::GetExplicitAction();
    QVERIFY(!button->isChecked());

    editor.GetInput().Click(button);
    QVERIFY(ZKToolGroupManager::GetExplicitAction() != atFirst);
    QVERIFY(button->isChecked());

    ZKApplication::SetForeground(Paint);
    ToolDriver(editor).Click(QPointF(5, 5));
    QCOMPARE(editor.Pixels().pixelColor(5, 5), Paint);
}

void TestFillAPhoto::toleranceTypedInTheBarShowsInThePanel()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    auto* bar = qobject_cast<QSpinBox*>(can.BarControl("m_pToleranceSpn"));
    auto* panel = qobject_cast<QSpinBox*>(can.PanelControl("m_pToleranceSpn"));
    auto* slider = qobject_cast<QSlider*>(can.PanelControl("m_pToleranceSldr"));
    QVERIFY(bar && panel && slider);
    QCOMPARE(bar->value(), 32);

    editor.GetInput().Click(bar, QPoint(8, bar->height() / 2));
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.GetInput().Type("77");
    editor.GetInput().Key(Qt::Key_Return);
    QCOMPARE(bar->value(), 77);
    QCOMPARE(panel->value(), 77);
    QCOMPARE(slider->value(), 77);
}

void TestFillAPhoto::sliderOfThePanelSetsTheBar()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    auto* slider = qobject_cast<QSlider*>(can.PanelControl("m_pToleranceSldr"));
    auto* bar = qobject_cast<QSpinBox*>(can.BarControl("m_pToleranceSpn"));
    QVERIFY(slider && bar);

    slider->setFocus();
    editor.GetInput().Key(Qt::Key_End);
    QCOMPARE(slider->value(), 255);
    QCOMPARE(bar->value(), 255);
}

void TestFillAPhoto::otherButtonsFillNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void TestFillAPhoto::otherButtonsFillNothing()
{
    QFETCH(int, button);
    EditorFixture editor(40, 30);
    const QImage before = editor.Pixels();
    editor.Tool("Fillcan").Click(QPointF(5, 5), Qt::MouseButton(button));
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(), before);
}

void TestFillAPhoto::twoButtonsFillNothing()
{
    EditorFixture editor(40, 30);
    ToolDriver can = editor.Tool("Fillcan");
    can.Press(QPointF(5, 5), Qt::RightButton);
    can.Press(QPointF(5, 5), Qt::LeftButton);
    can.Release(QPointF(5, 5), Qt::LeftButton);
    can.Release(QPointF(5, 5), Qt::RightButton);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestFillAPhoto::clickOutsideTheDocumentFillsNothing_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::newRow("left") << QPointF(-0.5, 3.2);
    QTest::newRow("above") << QPointF(3.2, -0.5);
    QTest::newRow("right") << QPointF(40.5, 3.2);
    QTest::newRow("below") << QPointF(3.2, 30.5);
}

void TestFillAPhoto::clickOutsideTheDocumentFillsNothing()
{
    QFETCH(QPointF, point);
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan").Click(point);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestFillAPhoto::keysOfTheToolAreDeadWithoutIt()
{
    EditorFixture editor(40, 30);
    ToolDriver can = editor.Tool("Fillcan");
    auto* blend = qobject_cast<QComboBox*>(can.PanelControl("m_pBlendCombo"));
    QVERIFY(blend);

    can.Key(Qt::Key_M, Qt::ShiftModifier | Qt::AltModifier);
    QCOMPARE(blend->currentIndex(), 1);
    QVERIFY(ZKToolGroupManager::Activate(nullptr));
    editor.GetInput().Key(Qt::Key_S, Qt::ShiftModifier | Qt::AltModifier);
    QCOMPARE(blend->currentIndex(), 1);
}

ZK_REGISTER_TEST(tst_fill_a_photo, TestFillAPhoto)
#include "tst_fill_a_photo.moc"
