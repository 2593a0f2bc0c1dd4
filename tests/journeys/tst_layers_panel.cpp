#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QListView>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

/// Layers changed in their panel with mouse and keys. Each change is undone and redone with the keys of the
/// menu; what it does is read from the merged picture.
class TestLayersPanel : public QObject
{
    Q_OBJECT

private slots:
    void aNewLayerIsFilledAndTakenBack();
    void aLayerIsRenamed();
    void theEyeHidesAndShowsAndSelectsNothing();
    void aDragFromTheEyeSelectsNothing();
    void opacityIsTyped();
    void aBlendModeIsChosenWithKeys();
    void aLockedLayerIsNotFilledUntilItIsUnlocked();
    void aMaskThatRevealsIsAddedAndPainted();
    void aMaskThatHidesIsAddedWithShift();
    void thePressedPictureIsPainted();
    void layersAreReordered();
    void aLayerIsDeleted();
};

namespace {
const QColor Bottom(Qt::red);
const QColor Top(0, 0, 200);
const QColor Clear(0, 0, 0, 0);

// Places in a row of the list of layers, right of its left end.
constexpr int EyeX = 16;
constexpr int LayerX = 50;
constexpr int MaskX = 94;
constexpr int NameX = 180;

/// An editor with the layers "Top" over "Background", the upper one selected.
class LayersFixture : public EditorFixture
{
public:
    LayersFixture() : EditorFixture(40, 30, Bottom)
    {
        LXImage32 image(40, 30);
        image.Fill(LXRGBA32i(Top.rgba()));
        Document()->AddLayer("Top", image, {});
        ClickRow(0, NameX);
    }

    template <typename Control>
    Control* Find(const char* name) const
    {
        return LayersWidget::GetInstance()->findChild<Control*>(name);
    }

    QListView* List() const { return Find<QListView>("m_pList"); }

    QPoint RowPoint(int row, int x) const
    {
        const QRect place = List()->visualRect(List()->model()->index(row, 0));
        return {place.left() + x, place.center().y()};
    }

    void ClickRow(int row, int x)
    {
        GetInput().Click(List()->viewport(), RowPoint(row, x));
        Settle();
    }

    void ClickButton(const char* name)
    {
        GetInput().Click(Find<QToolButton>(name));
        Settle();
    }

    QList<int> SelectedRows() const
    {
        QList<int> rows;
        for (const QModelIndex& index : View()->GetLayerSelection()->selectedRows())
            rows << index.row();
        return rows;
    }

    QColor Merged() const { return Pixels(0).pixelColor(5, 5); }

    LXDocumentModel* Model() const { return Document()->GetModel(); }

    void Undo()
    {
        GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
        Settle();
    }

    void Redo()
    {
        GetInput().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        Settle();
    }
};

/// Undoes and redoes the last step; the merged picture has to be `before` and `after` by turns.
void CheckSteps(LayersFixture& editor, const QColor& before, const QColor& after)
{
    QCOMPARE(editor.Merged(), after);
    editor.Undo();
    QCOMPARE(editor.Merged(), before);
    editor.Redo();
    QCOMPARE(editor.Merged(), after);
}
} // namespace

void TestLayersPanel::aNewLayerIsFilledAndTakenBack()
{
    LayersFixture editor;
    editor.ClickButton("m_pAddBtn");
    QCOMPARE(editor.Model()->rowCount(), 3);
    QCOMPARE(editor.SelectedRows(), QList<int>{0});
    QCOMPARE(editor.Merged(), Top);

    ZKApplication::SetForeground(Qt::green);
    editor.Tool("Fillcan").Click({5, 5});
    CheckSteps(editor, Top, Qt::green);
    editor.Undo();
    editor.Undo();
    QCOMPARE(editor.Model()->rowCount(), 2);
    QCOMPARE(editor.Merged(), Top);
    editor.Redo();
    editor.Redo();
    QCOMPARE(editor.Model()->rowCount(), 3);
    QCOMPARE(editor.Merged(), QColor(Qt::green));
}

void TestLayersPanel::aLayerIsRenamed()
{
    LayersFixture editor;
    editor.GetInput().DoubleClick(editor.List()->viewport(), editor.RowPoint(0, NameX));
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.GetInput().Type("Sky");
    editor.GetInput().Key(Qt::Key_Return);
    editor.Settle();
    QCOMPARE(editor.Model()->GetName(0), QString("Sky"));
    QVERIFY(!editor.Document()->HasSelection());
    QCOMPARE(editor.HistoryTexts().size(), 1);
    editor.Undo();
    QCOMPARE(editor.Model()->GetName(0), QString("Top"));
    editor.Redo();
    QCOMPARE(editor.Model()->GetName(0), QString("Sky"));
    QCOMPARE(editor.Merged(), Top);
}

void TestLayersPanel::theEyeHidesAndShowsAndSelectsNothing()
{
    LayersFixture editor;
    editor.ClickRow(1, NameX);
    editor.ClickRow(0, EyeX);
    QVERIFY(!editor.Model()->GetVisible(0));
    QCOMPARE(editor.SelectedRows(), QList<int>{1});
    QCOMPARE(editor.List()->currentIndex().row(), 1);
    CheckSteps(editor, Top, Bottom);
    editor.ClickRow(0, EyeX);
    CheckSteps(editor, Bottom, Top);
    QCOMPARE(editor.SelectedRows(), QList<int>{1});
}

void TestLayersPanel::aDragFromTheEyeSelectsNothing()
{
    LayersFixture editor;
    editor.GetInput().Drag(editor.List()->viewport(), {editor.RowPoint(0, EyeX), editor.RowPoint(1, NameX)});
    QCOMPARE(editor.SelectedRows(), QList<int>{0});
    QCOMPARE(editor.Merged(), Bottom);
    editor.ClickRow(1, NameX);
    QCOMPARE(editor.SelectedRows(), QList<int>{1});
}

void TestLayersPanel::opacityIsTyped()
{
    LayersFixture editor;
    auto* opacity = editor.Find<QSpinBox>("m_pOpacitySpn");
    opacity->setFocus();
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.GetInput().Type("0");
    editor.GetInput().Key(Qt::Key_Return);
    QVERIFY(!editor.Document()->HasSelection());
    editor.View()->setFocus();
    CheckSteps(editor, Top, Bottom);
    QCOMPARE(opacity->value(), 0);
    editor.Undo();
    QCOMPARE(opacity->value(), 100);
}

void TestLayersPanel::aBlendModeIsChosenWithKeys()
{
    LayersFixture editor;
    editor.Find<QComboBox>("m_pBlendCmb")->setFocus();
    editor.GetInput().Key(Qt::Key_Down);
    QCOMPARE(editor.Model()->GetBlendMode(0), BlendMode::Multiply);
    CheckSteps(editor, Top, QColor(0, 0, 0));
}

void TestLayersPanel::aLockedLayerIsNotFilledUntilItIsUnlocked()
{
    LayersFixture editor;
    editor.ClickButton("m_pLockBtn");
    QVERIFY(!editor.Find<QToolButton>("m_pDeleteBtn")->isEnabled());
    QVERIFY(!editor.Find<QToolButton>("m_pMaskBtn")->isEnabled());
    ZKApplication::SetForeground(Qt::green);
    ToolDriver can = editor.Tool("Fillcan");
    editor.GetInput().MoveInScene(editor.View(), {5, 5});
    QCOMPARE(editor.View()->cursor().shape(), Qt::ForbiddenCursor);

    QString told;
    editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        told = box->GetText();
        box->close();
    });
    can.Click({5, 5});
    QCOMPARE(told, QString("Cannot fill. Layer is locked."));
    QCOMPARE(editor.HistoryTexts().size(), 1);

    editor.Undo();
    QVERIFY(!editor.Find<QToolButton>("m_pLockBtn")->isChecked());
    editor.Redo();
    QVERIFY(editor.Find<QToolButton>("m_pLockBtn")->isChecked());
    editor.ClickButton("m_pLockBtn");
    editor.GetInput().MoveInScene(editor.View(), {6, 6});
    QVERIFY(editor.View()->cursor().shape() != Qt::ForbiddenCursor);
    can.Click({5, 5});
    CheckSteps(editor, Top, Qt::green);
}

void TestLayersPanel::aMaskThatRevealsIsAddedAndPainted()
{
    LayersFixture editor;
    editor.ClickButton("m_pMaskBtn");
    QVERIFY(editor.Model()->HasMask(0));
    CheckSteps(editor, Top, Top);
    QVERIFY(!editor.Find<QToolButton>("m_pMaskBtn")->isEnabled());

    editor.ClickRow(0, MaskX);
    ZKApplication::SetForeground(Qt::black);
    editor.Tool("Fillcan").Click({5, 5});
    CheckSteps(editor, Top, Bottom);
    editor.ClickButton("m_pDeleteBtn");
    QVERIFY(!editor.Model()->HasMask(0));
    CheckSteps(editor, Bottom, Top);
}

void TestLayersPanel::aMaskThatHidesIsAddedWithShift()
{
    LayersFixture editor;
    auto* button = editor.Find<QToolButton>("m_pMaskBtn");
    editor.GetInput().Click(button, button->rect().center(), Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(editor.Model()->HasMask(0));
    CheckSteps(editor, Top, Bottom);

    editor.ClickRow(0, MaskX);
    ZKApplication::SetForeground(Qt::white);
    editor.Tool("Fillcan").Click({5, 5});
    CheckSteps(editor, Bottom, Top);
}

void TestLayersPanel::thePressedPictureIsPainted()
{
    LayersFixture editor;
    editor.ClickButton("m_pMaskBtn");
    editor.ClickRow(0, MaskX);
    editor.ClickRow(0, LayerX);
    ZKApplication::SetForeground(Qt::green);
    editor.Tool("Fillcan").Click({5, 5});
    QCOMPARE(editor.HistoryTexts().last(), QString("Fill"));
    CheckSteps(editor, Top, Qt::green);
}

void TestLayersPanel::layersAreReordered()
{
    LayersFixture editor;
    QVERIFY(!editor.Find<QToolButton>("m_pUpBtn")->isEnabled());
    editor.ClickButton("m_pDownBtn");
    CheckSteps(editor, Top, Bottom);
    QCOMPARE(editor.SelectedRows(), QList<int>{1});
    QVERIFY(!editor.Find<QToolButton>("m_pDownBtn")->isEnabled());
    editor.ClickButton("m_pUpBtn");
    CheckSteps(editor, Bottom, Top);
    QCOMPARE(editor.SelectedRows(), QList<int>{0});
}

void TestLayersPanel::aLayerIsDeleted()
{
    LayersFixture editor;
    editor.ClickRow(1, NameX);
    editor.ClickRow(0, EyeX);
    QCOMPARE(editor.Merged(), Bottom);
    editor.ClickButton("m_pDeleteBtn");
    QCOMPARE(editor.Model()->rowCount(), 1);
    CheckSteps(editor, Bottom, Clear);
    QVERIFY(!editor.Find<QToolButton>("m_pDeleteBtn")->isEnabled());
}

ZK_REGISTER_TEST(tst_layers_panel, TestLayersPanel)
#include "tst_layers_panel.moc"
