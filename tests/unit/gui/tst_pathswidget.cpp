#include "GuiFixture.h"

#include "core/ZKBrushToolManager.h"
#include "core/ZKIBrushTool.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "document/LayerLocks.h"
#include "gui/MakeSelectionOptDialog.h"
#include "gui/PathsWidget.h"
#include "gui/StrokeOptionsDialog.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace PathFixture;

namespace {
/// Only notes what it is to stroke.
class NotingBrush : public ZKIBrushTool
{
public:
    static constexpr int Id = 7;

    NotingBrush() { ZKBrushToolManager::Register(Id, this); }

    ~NotingBrush() override { ZKBrushToolManager::Unregister(this); }

    Q_DISABLE_COPY(NotingBrush)

    void StrokePath(const QPainterPath& path) override { m_Strokes.append(path); }

    QString GetName() const override { return "Noting brush"; }

    ZKBrushSettings GetSettings() const override { return {}; }

    void SetSettings(const ZKBrushSettings&) override {}

    QList<QPainterPath> m_Strokes;
};
} // namespace

/// The list of paths, and what its controls do.
class TestPathsWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheViewsPaths();
    void tellsWhenThereIsNothingToShow();
    void letsGoOfAViewThatGoes();
    void followsAndSetsTheCurrentPath();
    void clickBesideTheRowsChoosesNone();
    void theFocusChoosesNone();
    void newPathIsTheLastAndTheCurrentOne();
    void newPathsHaveFreeNames();
    void deletedPathComesBackAsItWas();
    void severalPathsAreDeletedInOneStep();
    void pathsMoveUpAndDown();
    void pressOnTheEyeShowsThePath();
    void spaceShowsThePath();
    void nameIsEditedInPlace();
    void emptyNameIsRefused();
    void nothingWorksWhileTheDocumentIsLocked();
    void blockedOrderKeepsNamesAndEyes();
    void theChoiceIsKeptUnderAToolAtWork();
    void worksWithoutAHistory();
    void everyControlHasAName();
    void strokesTheCurrentPathOrSubPath();
    void cancelledStrokePaintsNothing();
    void strokeSaysWhyItIsOff();
    void selectionSaysWhyItIsOff();
    void selectionIsMadeOfTheCurrentPath_data();
    void selectionIsMadeOfTheCurrentPath();
    void selectionIsMadeWithoutAHistory();
    void usesAreInTheMenuOfTheList();
    void documentMayGoBeneathTheDialogs();

private:
    QListView* List() const { return m_pPanel->findChild<QListView*>("m_pList"); }

    QToolButton* Button(const char* name) const { return m_pPanel->findChild<QToolButton*>(name); }

    void Click(const char* button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }

    LXPathsListModel* Paths() const { return m_pDocument->GetPathListModel(); }

    LXPathSelectionModel* Selection() const
    {
        return qobject_cast<LXPathSelectionModel*>(m_pView->GetPathSelection());
    }

    QStringList Names() const
    {
        QStringList names;
        for (int row = 0; row < Paths()->rowCount(); ++row)
            names << Paths()->GetPathName(row);
        return names;
    }

    /// What the tool tip says behind the button's name; empty for one that is on and has just its name there.
    QString Obstacle(const char* button) const
    {
        const QString name = Button(button)->accessibleName();
        const QString tip = Button(button)->toolTip();
        if (Button(button)->isEnabled()) return tip == name ? QString() : tip;
        return tip.startsWith(name + ": ") ? tip.mid(name.size() + 2) : "off, but says " + tip;
    }

    void SelectLayer(int row) const
    {
        m_pView->GetLayerSelection()->setCurrentIndex(m_pView->GetModel()->index(row),
                                                      QItemSelectionModel::ClearAndSelect);
    }

    /// Clicks the button and answers the dialog that it brings up with a key.
    template <class Dialog>
    void ClickAndAnswer(const char* button, int key) const
    {
        InputDriver input;
        input.WhenModalShows<Dialog>([&](Dialog*) { input.Key(key); });
        Click(button);
        QCOMPARE(input.CountWaitingActions(), 0);
    }

    void Choose(int row) const
    {
        Selection()->setCurrentIndex(Paths()->index(row), QItemSelectionModel::ClearAndSelect);
    }

    /// Clicks so many pixels right of the row's left end.
    void ClickRow(int row, int left) const
    {
        const QRect rect = List()->visualRect(List()->model()->index(row, 0));
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(rect.left() + left, rect.center().y()));
    }

    QStringList History() const
    {
        QStringList texts;
        for (int i = 0; i < m_pHistory->index(); ++i)
            texts << m_pHistory->text(i);
        return texts;
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<LexoUndoStack> m_pHistory;
    std::unique_ptr<ZKDocumentView> m_pView;
    std::unique_ptr<PathsWidget> m_pPanel;
};

namespace {
constexpr int EyeX = 16;
constexpr int NameX = 120;
} // namespace

/// Paths "one", with a sub path, and "two".
void TestPathsWidget::init()
{
    m_pDocument = GuiFixture::MakeDocument({64, 48});
    Paths()->InsertPath(0, "one", {{Rectangle(QRectF(5, 5, 20, 20)), LXPathsListModel::Unite}});
    Paths()->InsertPath(1, "two");
    m_pHistory = std::make_unique<LexoUndoStack>();
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel = std::make_unique<PathsWidget>();
    m_pPanel->SetView(m_pView.get());
    m_pPanel->resize(260, 240);
    m_pPanel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pPanel.get()));
}

void TestPathsWidget::cleanup()
{
    m_pPanel.reset();
    m_pView.reset();
    m_pHistory.reset();
    m_pDocument.reset();
}

void TestPathsWidget::showsTheViewsPaths()
{
    QCOMPARE(List()->model(), Paths());
    QCOMPARE(List()->selectionModel(), m_pView->GetPathSelection());
    QVERIFY(List()->isVisible());
    QVERIFY(!Selection()->hasSelection());
}

void TestPathsWidget::tellsWhenThereIsNothingToShow()
{
    const auto* noPath = m_pPanel->findChild<QLabel*>("m_pNoPathLbl");
    const auto* noDocument = m_pPanel->findChild<QLabel*>("m_pNoDocumentLbl");
    QVERIFY(!noPath->isVisible());
    Paths()->RemovePath(0);
    Paths()->RemovePath(0);
    QVERIFY(noPath->isVisible());
    Click("m_pAddBtn");
    QVERIFY(List()->isVisible());
    m_pPanel->SetView(nullptr);
    QVERIFY(noDocument->isVisible());
    QVERIFY(!Button("m_pAddBtn")->isEnabled());
}

void TestPathsWidget::letsGoOfAViewThatGoes()
{
    m_pView.reset();
    QVERIFY(!List()->model() || List()->model()->rowCount() == 0);
    QVERIFY(!Button("m_pAddBtn")->isEnabled());
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel->SetView(m_pView.get());
    QVERIFY(Button("m_pAddBtn")->isEnabled());
}

void TestPathsWidget::followsAndSetsTheCurrentPath()
{
    ClickRow(1, NameX);
    QCOMPARE(Selection()->CurrentPath(), 1);
    Choose(0);
    QCOMPARE(List()->currentIndex().row(), 0);
    QTest::keyClick(List(), Qt::Key_Down);
    QCOMPARE(Selection()->CurrentPath(), 1);
}

void TestPathsWidget::clickBesideTheRowsChoosesNone()
{
    Choose(0);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(50, List()->viewport()->height() - 5));
    QVERIFY(!Selection()->hasSelection());
    QCOMPARE(Selection()->CurrentPath(), -1);
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled());
}

void TestPathsWidget::theFocusChoosesNone()
{
    Selection()->clear();
    Button("m_pAddBtn")->setFocus();
    const QImage before = List()->grab().toImage();
    QSignalSpy current(Selection(), &QItemSelectionModel::currentChanged);
    for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason,
                                         Qt::ActiveWindowFocusReason, Qt::OtherFocusReason}) {
        List()->setFocus(reason);
        QVERIFY(List()->hasFocus());
        QCOMPARE(current.count(), 0);
        QCOMPARE(Selection()->CurrentPath(), -1);
        // The focus is seen all the same.
        QVERIFY(List()->grab().toImage() != before);
        Button("m_pAddBtn")->setFocus();
    }
    QCOMPARE(List()->grab().toImage(), before);
    // The arrows begin with the first row.
    List()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(List(), Qt::Key_Down);
    QCOMPARE(Selection()->CurrentPath(), 0);
    QVERIFY(Selection()->isSelected(Paths()->index(0)));
}

void TestPathsWidget::newPathIsTheLastAndTheCurrentOne()
{
    Choose(0);
    Click("m_pAddBtn");
    QCOMPARE(Names(), (QStringList{"one", "two", "Path 1"}));
    QCOMPARE(Selection()->CurrentPath(), 2);
    QCOMPARE(Selection()->selectedRows().size(), 1);
    QCOMPARE(History(), QStringList{"New path"});
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"one", "two"}));
    m_pHistory->redo();
    QCOMPARE(Selection()->CurrentPath(), 2);
}

void TestPathsWidget::newPathsHaveFreeNames()
{
    Click("m_pAddBtn");
    Click("m_pAddBtn");
    Paths()->RemovePath(2);
    Click("m_pAddBtn");
    QCOMPARE(Names(), (QStringList{"one", "two", "Path 2", "Path 1"}));
}

void TestPathsWidget::deletedPathComesBackAsItWas()
{
    const LXSubPaths before = Paths()->GetPath(0);
    Paths()->SetPathVisible(0, true);
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled());
    Choose(0);
    Click("m_pDeleteBtn");
    QCOMPARE(Names(), QStringList{"two"});
    QCOMPARE(Selection()->CurrentPath(), -1);
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"one", "two"}));
    QCOMPARE(Paths()->GetPath(0), before);
    QVERIFY(Paths()->GetPathVisible(0));
    QCOMPARE(Selection()->CurrentPath(), 0);
}

void TestPathsWidget::severalPathsAreDeletedInOneStep()
{
    List()->selectAll();
    Click("m_pDeleteBtn");
    QCOMPARE(Names(), QStringList());
    QCOMPARE(History(), QStringList{"Delete paths"});
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"one", "two"}));
}

void TestPathsWidget::pathsMoveUpAndDown()
{
    QVERIFY(!Button("m_pUpBtn")->isEnabled());
    Choose(0);
    QVERIFY(!Button("m_pUpBtn")->isEnabled());
    Click("m_pDownBtn");
    QCOMPARE(Names(), (QStringList{"two", "one"}));
    QCOMPARE(Selection()->CurrentPath(), 1);
    QVERIFY(!Button("m_pDownBtn")->isEnabled());
    Click("m_pUpBtn");
    QCOMPARE(Names(), (QStringList{"one", "two"}));
    m_pHistory->undo();
    QCOMPARE(Names(), (QStringList{"two", "one"}));
    List()->selectAll();
    QVERIFY(!Button("m_pUpBtn")->isEnabled());
    QVERIFY(!Button("m_pDownBtn")->isEnabled());
}

void TestPathsWidget::pressOnTheEyeShowsThePath()
{
    ClickRow(1, EyeX);
    QVERIFY(Paths()->GetPathVisible(1));
    QVERIFY(!Selection()->hasSelection());
    ClickRow(1, EyeX);
    QVERIFY(!Paths()->GetPathVisible(1));
    QCOMPARE(History(), (QStringList{"Show path", "Hide path"}));
    m_pHistory->undo();
    QVERIFY(Paths()->GetPathVisible(1));
}

void TestPathsWidget::spaceShowsThePath()
{
    Choose(1);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Space);
    QVERIFY(Paths()->GetPathVisible(1));
}

void TestPathsWidget::nameIsEditedInPlace()
{
    Choose(0);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = List()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QString("one"));
    editor->setText(" Sky ");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(Names().first(), QString("Sky"));
    QCOMPARE(History(), QStringList{"Rename path"});
    m_pHistory->undo();
    QCOMPARE(Names().first(), QString("one"));
}

void TestPathsWidget::emptyNameIsRefused()
{
    Choose(0);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_F2);
    auto* editor = List()->findChild<QLineEdit*>();
    QVERIFY(editor);
    editor->setText("  ");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!List()->findChild<QLineEdit*>());
    QCOMPARE(Names().first(), QString("one"));
    QCOMPARE(History(), QStringList());
}

void TestPathsWidget::nothingWorksWhileTheDocumentIsLocked()
{
    Choose(0);
    QVERIFY(m_pDocument->Lock());
    QTRY_VERIFY(!Button("m_pAddBtn")->isEnabled());
    for (const char* name : {"m_pAddBtn", "m_pUpBtn", "m_pDownBtn", "m_pDeleteBtn"})
        QVERIFY2(!Button(name)->isEnabled(), name);
    ClickRow(0, EyeX);
    QVERIFY(!Paths()->GetPathVisible(0));
    m_pDocument->Unlock();
    QTRY_VERIFY(Button("m_pDeleteBtn")->isEnabled());
}

void TestPathsWidget::blockedOrderKeepsNamesAndEyes()
{
    Choose(0);
    m_pView->BlockPathOrderOperations(true);
    for (const char* name : {"m_pAddBtn", "m_pUpBtn", "m_pDownBtn", "m_pDeleteBtn"})
        QVERIFY2(!Button(name)->isEnabled(), name);
    ClickRow(0, EyeX);
    QVERIFY(Paths()->GetPathVisible(0));
    m_pView->BlockPathOrderOperations(false);
    QVERIFY(Button("m_pAddBtn")->isEnabled());
}

void TestPathsWidget::theChoiceIsKeptUnderAToolAtWork()
{
    Choose(0);
    Selection()->SelectSubpath(0);
    m_pView->BlockPathOrderOperations(true);
    QVERIFY(m_pDocument->Lock());
    ClickRow(1, NameX);
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(50, List()->viewport()->height() - 5));
    QCOMPARE(Selection()->CurrentPath(), 0);
    QCOMPARE(Selection()->CurrentSubpath(), 0);
    QVERIFY(Selection()->isSelected(Paths()->index(0)));

    m_pView->BlockPathOrderOperations(false);
    ClickRow(1, NameX);
    QCOMPARE(Selection()->CurrentPath(), 1);
    m_pDocument->Unlock();
}

void TestPathsWidget::worksWithoutAHistory()
{
    ZKDocumentView view(m_pDocument.get(), nullptr);
    m_pPanel->SetView(&view);
    Click("m_pAddBtn");
    QCOMPARE(Names(), (QStringList{"one", "two", "Path 1"}));
    List()->selectAll();
    Click("m_pDeleteBtn");
    QCOMPARE(Names(), QStringList());
}

void TestPathsWidget::everyControlHasAName()
{
    QVERIFY(!List()->accessibleName().isEmpty());
    for (const char* name :
         {"m_pAddBtn", "m_pUpBtn", "m_pDownBtn", "m_pStrokeBtn", "m_pSelectBtn", "m_pDeleteBtn"}) {
        QVERIFY2(!Button(name)->accessibleName().isEmpty(), name);
        QVERIFY2(Button(name)->focusPolicy() & Qt::TabFocus, name);
    }
}

void TestPathsWidget::strokesTheCurrentPathOrSubPath()
{
    NotingBrush brush;
    const LXPath line = Line({3, 40}, {60, 44});
    Paths()->InsertSubPath(0, 1, line, LXPathsListModel::Subtract);
    SelectLayer(0);
    Choose(0);
    QPainterPath whole = ConvertFrom(Paths()->GetPath(0)[0].first);
    whole.addPath(ConvertFrom(line));
    ClickAndAnswer<StrokeOptionsDialog>("m_pStrokeBtn", Qt::Key_Return);
    QCOMPARE(brush.m_Strokes, QList<QPainterPath>{whole});
    Selection()->SelectSubpath(1);
    ClickAndAnswer<StrokeOptionsDialog>("m_pStrokeBtn", Qt::Key_Return);
    QCOMPARE(brush.m_Strokes, (QList<QPainterPath>{whole, ConvertFrom(line)}));
}

void TestPathsWidget::cancelledStrokePaintsNothing()
{
    NotingBrush brush;
    SelectLayer(0);
    Choose(0);
    ClickAndAnswer<StrokeOptionsDialog>("m_pStrokeBtn", Qt::Key_Escape);
    ClickAndAnswer<MakeSelectionOptDialog>("m_pSelectBtn", Qt::Key_Escape);
    QCOMPARE(brush.m_Strokes.size(), 0);
    QVERIFY(!m_pDocument->HasSelection());
    QCOMPARE(History(), QStringList());
}

void TestPathsWidget::strokeSaysWhyItIsOff()
{
    SelectLayer(0);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("choose a path"));
    Choose(1);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("the path is empty"));
    Paths()->InsertSubPath(1, 0, Line({1, 1}, {9, 9}), LXPathsListModel::Unite);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString());
    m_pView->GetLayerSelection()->clearSelection();
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("select one layer"));
    SelectLayer(0);
    m_pView->GetModel()->SetLockFlags(0, LayerLocks::Pixels);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("the layer is locked"));
    m_pDocument->AddMask(1, true);
    m_pView->GetModel()->SetMaskSelected(0, true);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString());
    m_pView->GetModel()->SetLockFlags(0, LayerLocks::All);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("the layer is locked"));
    m_pView->GetModel()->SetLockFlags(0, 0);
    m_pDocument->AddTextLayer("text", {10, 10});
    SelectLayer(0);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("the layer has no pixels of its own"));
    SelectLayer(1);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString());
    QVERIFY(m_pDocument->Lock());
    QTRY_COMPARE(Obstacle("m_pStrokeBtn"), QString("a tool is at work"));
    m_pDocument->Unlock();
    QTRY_COMPARE(Obstacle("m_pStrokeBtn"), QString());
    m_pPanel->SetView(nullptr);
    QCOMPARE(Obstacle("m_pStrokeBtn"), QString("no picture is open"));
}

void TestPathsWidget::selectionSaysWhyItIsOff()
{
    QCOMPARE(Obstacle("m_pSelectBtn"), QString("choose a path"));
    Choose(1);
    QCOMPARE(Obstacle("m_pSelectBtn"), QString("the path is empty"));
    Choose(0);
    QCOMPARE(Obstacle("m_pSelectBtn"), QString());
    QVERIFY(m_pDocument->Lock());
    QTRY_COMPARE(Obstacle("m_pSelectBtn"), QString("a tool is at work"));
    m_pDocument->Unlock();
    m_pPanel->SetView(nullptr);
    QCOMPARE(Obstacle("m_pSelectBtn"), QString("no picture is open"));
}

void TestPathsWidget::selectionIsMadeOfTheCurrentPath_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QRect>("selected");
    // What is there reaches from (0, 0) to (10, 48), the path from (5, 5) to (25, 25).
    QTest::newRow("new") << "m_pNewRBtn" << QRect(5, 5, 20, 20);
    QTest::newRow("add") << "m_pAddRBtn" << QRect(0, 0, 25, 48);
    QTest::newRow("subtract") << "m_pSubtractRBtn" << QRect(0, 0, 10, 48);
    QTest::newRow("intersect") << "m_pIntersectRBtn" << QRect(5, 5, 5, 20);
}

void TestPathsWidget::selectionIsMadeOfTheCurrentPath()
{
    QFETCH(QString, button);
    QFETCH(QRect, selected);
    m_pDocument->SetSelectionMask(DocumentFixture::Filled({10, 48}, 0xFF000000u), {0, 0});
    const QStringList before = DocumentFixture::DescribeWhole(m_pDocument.get());
    Choose(0);
    InputDriver input;
    input.WhenModalShows<MakeSelectionOptDialog>([&](MakeSelectionOptDialog* dialog) {
        auto* choice = dialog->findChild<QRadioButton*>(button);
        QVERIFY(choice && choice->isEnabled());
        QTest::mouseClick(choice, Qt::LeftButton, Qt::NoModifier, QPoint(8, choice->height() / 2));
        input.Key(Qt::Key_Return);
    });
    Click("m_pSelectBtn");
    QCOMPARE(History(), QStringList{"Make selection from path"});
    QCOMPARE(m_pDocument->GetSelectionBoundingRect(), selected);
    const QStringList after = DocumentFixture::DescribeWhole(m_pDocument.get());
    QVERIFY(after != before);
    m_pHistory->undo();
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument.get()), before);
    m_pHistory->redo();
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument.get()), after);
}

void TestPathsWidget::selectionIsMadeWithoutAHistory()
{
    ZKDocumentView view(m_pDocument.get(), nullptr);
    m_pPanel->SetView(&view);
    view.GetPathSelection()->setCurrentIndex(Paths()->index(0), QItemSelectionModel::ClearAndSelect);
    ClickAndAnswer<MakeSelectionOptDialog>("m_pSelectBtn", Qt::Key_Return);
    QCOMPARE(m_pDocument->GetSelectionBoundingRect(), QRect(5, 5, 20, 20));
}

void TestPathsWidget::usesAreInTheMenuOfTheList()
{
    QStringList texts;
    QTimer lookout;
    connect(&lookout, &QTimer::timeout, this, [&texts] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return;
        for (const QAction* action : menu->actions())
            texts << (action->isEnabled() ? "+" : "-") + action->text();
        menu->close();
    });
    lookout.start(5);
    InputDriver input;
    input.Click(List()->viewport(), List()->visualRect(Paths()->index(0)).center(), Qt::RightButton);
    QTRY_COMPARE(texts, (QStringList{"+Stroke Path…", "+Make Selection…"}));
    QCOMPARE(Selection()->CurrentPath(), 0);
}

void TestPathsWidget::documentMayGoBeneathTheDialogs()
{
    NotingBrush brush;
    for (const char* button : {"m_pStrokeBtn", "m_pSelectBtn"}) {
        cleanup();
        init();
        SelectLayer(0);
        Choose(0);
        InputDriver input;
        input.WhenModalShows<LXDialog>([this](LXDialog*) {
            m_pView.reset();
            m_pHistory.reset();
            m_pDocument.reset();
        });
        Click(button);
        QCOMPARE(input.CountWaitingActions(), 0);
        QVERIFY(!m_pView);
        QVERIFY(!Button(button)->isEnabled());
    }
    QCOMPARE(brush.m_Strokes.size(), 0);
}

ZK_REGISTER_TEST(tst_pathswidget, TestPathsWidget)
#include "tst_pathswidget.moc"
