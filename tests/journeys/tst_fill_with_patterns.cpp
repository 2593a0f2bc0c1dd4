#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/PatternSelectWidget.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

/// Fills with patterns, into masks and in blend modes, as a person chooses them.
class TestFillWithPatterns : public QObject
{
    Q_OBJECT

private slots:
    void choosePatternFromTheListAndFill();
    void aSecondPressOnTheButtonClosesTheList();
    void escapeClosesTheList();
    void aPressElsewhereClosesTheList();
    void shutdownWithAnOpenListIsHarmless();
    void aMaskIsFilledAndUndone();
    void keysChooseTheBlendModeOfTheFill();

private:
    static QToolButton* PatternButton(const ToolDriver& can);
    static PatternSelectWidget* OpenPatterns(EditorFixture& editor, const ToolDriver& can);
};

QToolButton* TestFillWithPatterns::PatternButton(const ToolDriver& can)
{
    return qobject_cast<QToolButton*>(can.BarControl("m_pSelectPatternBtn"));
}

PatternSelectWidget* TestFillWithPatterns::OpenPatterns(EditorFixture& editor, const ToolDriver& can)
{
    editor.GetInput().Click(PatternButton(can));
    auto* patterns = editor.Window()->findChild<PatternSelectWidget*>();
    return patterns && patterns->isVisible() ? patterns : nullptr;
}

void TestFillWithPatterns::choosePatternFromTheListAndFill()
{
    EditorFixture editor(40, 30);
    ToolDriver can = editor.Tool("Fillcan");
    auto* mode = qobject_cast<QComboBox*>(can.BarControl("m_pFillModeCmb"));
    mode->setFocus();
    editor.GetInput().Key(Qt::Key_Down);
    QCOMPARE(mode->currentText(), QString("Pattern"));

    PatternSelectWidget* patterns = OpenPatterns(editor, can);
    QVERIFY(patterns);
    QVERIFY(patterns->GetItemCount() > 1);
    auto* list = patterns->findChild<QListWidget*>();
    const QPoint second = list->visualItemRect(list->item(1)).center();
    editor.GetInput().DoubleClick(list->viewport(), second);
    QCOMPARE(patterns->GetCurrentItem(), 1);
    QVERIFY(!patterns->isVisible());
    QVERIFY(!PatternButton(can)->isChecked());

    can.Click(QPointF(5, 5));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
    const QImage pattern = patterns->GetItemImage(1).toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage filled = editor.Pixels();
    for (const QPoint pixel : {QPoint(0, 0), QPoint(7, 3), QPoint(39, 29)}) {
        const QColor expected = pattern.pixelColor(pixel.x() % pattern.width(), pixel.y() % pattern.height());
        QCOMPARE(filled.pixelColor(pixel), expected);
    }
}

void TestFillWithPatterns::aSecondPressOnTheButtonClosesTheList()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    const PatternSelectWidget* patterns = OpenPatterns(editor, can);
    QVERIFY(patterns);
    editor.GetInput().Click(PatternButton(can));
    QVERIFY(!patterns->isVisible());
    QVERIFY(!PatternButton(can)->isChecked());
}

void TestFillWithPatterns::escapeClosesTheList()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    const PatternSelectWidget* patterns = OpenPatterns(editor, can);
    QVERIFY(patterns);
    editor.GetInput().Key(Qt::Key_Escape);
    QVERIFY(!patterns->isVisible());
    QVERIFY(!PatternButton(can)->isChecked());
}

void TestFillWithPatterns::aPressElsewhereClosesTheList()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    const PatternSelectWidget* patterns = OpenPatterns(editor, can);
    QVERIFY(patterns);
    editor.GetInput().Click(can.PanelControl("m_pToleranceSpn"));
    // A window manager does this by itself; off screen there is none.
    editor.Window()->activateWindow();
    QTRY_VERIFY(!patterns->isVisible());
    QVERIFY(!PatternButton(can)->isChecked());
}

void TestFillWithPatterns::shutdownWithAnOpenListIsHarmless()
{
    EditorFixture editor(40, 30);
    const ToolDriver can = editor.Tool("Fillcan");
    QVERIFY(OpenPatterns(editor, can));
}

void TestFillWithPatterns::aMaskIsFilledAndUndone()
{
    EditorFixture editor(40, 30, Qt::red);
    editor.Document()->AddMask(1, true);
    editor.Document()->GetModel()->SetMaskSelected(0, true);
    ZKApplication::SetForeground(Qt::black);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click(QPointF(5, 5));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill with mask"});
    QCOMPARE(editor.Pixels(0).pixelColor(5, 5).alpha(), 0);
    QCOMPARE(editor.Pixels(1).pixelColor(5, 5), QColor(Qt::red));

    can.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Pixels(0).pixelColor(5, 5), QColor(Qt::red));
}

void TestFillWithPatterns::keysChooseTheBlendModeOfTheFill()
{
    EditorFixture editor(40, 30, QColor(100, 200, 50));
    ZKApplication::SetForeground(QColor(255, 0, 255));
    ToolDriver can = editor.Tool("Fillcan");
    can.Key(Qt::Key_M, Qt::ShiftModifier | Qt::AltModifier);
    can.Click(QPointF(5, 5));
    QCOMPARE(editor.Pixels().pixelColor(5, 5), QColor(100, 0, 50));

    can.Key(Qt::Key_N, Qt::ShiftModifier | Qt::AltModifier);
    can.Key(Qt::Key_Minus, Qt::ShiftModifier);
    auto* blend = qobject_cast<QComboBox*>(can.PanelControl("m_pBlendCombo"));
    QCOMPARE(blend->currentText(), QString("Addition"));
    can.Key(Qt::Key_Plus, Qt::ShiftModifier);
    QCOMPARE(blend->currentText(), QString("Normal"));
}

ZK_REGISTER_TEST(tst_fill_with_patterns, TestFillWithPatterns)
#include "tst_fill_with_patterns.moc"
