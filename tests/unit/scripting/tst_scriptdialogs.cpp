#include "app/MainWindow.h"
#include "gui/LXOperationProgressDlg.h"
#include "guicore/LXMessageBox.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QPushButton>
#include <QTimer>

/// `dialogs`: what is expected, and what happens when something else opens.
class TestScriptDialogs : public QObject
{
    Q_OBJECT

private slots:
    void aMessageBoxIsCheckedAndAnswered();
    void titleAndTextMayBeRegularExpressions();
    void expectationsAreMetInTheirOrder();
    void aMessageBoxThatNobodyExpectedEndsTheScript();
    void anotherTitleOrTextEndsTheScript_data();
    void anotherTitleOrTextEndsTheScript();
    void aMissingButtonEndsTheScript();
    void anEmptyAnswerClosesTheWindow();
    void aFunctionDrivesADialog();
    void anErrorInTheFunctionEndsTheScriptWithItsLine();
    void aDialogLeftOpenEndsTheScript();
    void aFileDialogIsAnsweredWithPaths();
    void aFileDialogIsCancelledByNull();
    void aPathCountsMoreThanTheNameThatTheDialogProposes();
    void keysGoToTheDialog();
    void replacingAFileAsksAndThatIsAWindowToo();
    void whatNeverOpenedIsAFailureAtTheEnd();
    void forgottenExpectationsAreNoFailure();
    void progressIsNoQuestion();
    void wrongExpectationsAreRefused_data();
    void wrongExpectationsAreRefused();
};

namespace {
/// An editor whose window has the button "ask", which shows a message box and keeps the answer.
class AskingEditor : public EditorScriptFixture
{
public:
    AskingEditor() : EditorScriptFixture(4, 3)
    {
        button = new QPushButton("Ask", Window());
        button->setObjectName("ask");
        button->setGeometry(300, 300, 80, 30);
        button->show();
        QObject::connect(button, &QAbstractButton::clicked, button, [this] {
            answer = LXMessageBox::Warning(Window(), "Paint", "The paint is wet.\nTouch it?",
                                           LXMessageBox::Yes | LXMessageBox::No, LXMessageBox::No);
            ++answers;
        });
    }

    QString FailureOf(const QString& script)
    {
        const ScriptOutcome outcome = Run(script);
        return outcome.kind == ScriptOutcome::Kind::Failed ? outcome.message : QString();
    }

    QPushButton* button;
    LXMessageBox::Button answer = LXMessageBox::NoButton;
    int answers = 0;
};

const QString Ask = "widgets.find('ask').click();";
const QString Words = "title: 'Paint', text: 'The paint is wet.\\nTouch it?'";
} // namespace

void TestScriptDialogs::aMessageBoxIsCheckedAndAnswered()
{
    AskingEditor editor;
    editor.Check("dialogs.expect({ " + Words + ", answer: 'Yes' });" + Ask + R"(
        expect.equal([dialogs.waiting, dialogs.seen], [0, ["\"Paint\": \"The paint is wet.\nTouch it?\""]])
    )");
    QCOMPARE(editor.answer, LXMessageBox::Yes);
    editor.Check("dialogs.expect({ " + Words + ", answer: 'No' });" + Ask);
    QCOMPARE(editor.answer, LXMessageBox::No);
}

void TestScriptDialogs::titleAndTextMayBeRegularExpressions()
{
    AskingEditor editor;
    editor.Check("dialogs.expect({ title: /^pa/i, text: /wet/, answer: 'Yes' });" + Ask);
    QCOMPARE(editor.answer, LXMessageBox::Yes);
    const QString failure =
        editor.FailureOf("dialogs.expect({ title: /^pa/, text: /wet/, answer: 'Yes' });" + Ask);
    QVERIFY2(failure.contains("expected: /^pa/: /wet/"), qPrintable(failure));
}

void TestScriptDialogs::expectationsAreMetInTheirOrder()
{
    AskingEditor editor;
    editor.Check("dialogs.expect({ " + Words + ", answer: 'Yes' });" + "dialogs.expect({ " + Words +
                 ", answer: 'No' }); expect.equal(dialogs.waiting, 2);" + Ask +
                 "expect.equal(dialogs.waiting, 1);" + Ask);
    QCOMPARE(editor.answers, 2);
    QCOMPARE(editor.answer, LXMessageBox::No);
}

void TestScriptDialogs::aMessageBoxThatNobodyExpectedEndsTheScript()
{
    AskingEditor editor;
    const ScriptOutcome outcome = editor.Run("\ntry { " + Ask + " } catch (error) { }\nAsk = 1; " + Ask);
    QCOMPARE(outcome.kind, ScriptOutcome::Kind::Failed);
    QCOMPARE(outcome.message, QString("Nobody expected \"Paint\": \"The paint is wet.\nTouch it?\""));
    QCOMPARE(outcome.line, 2);
    QCOMPARE(editor.answer, LXMessageBox::NoButton);
    QCOMPARE(editor.answers, 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestScriptDialogs::anotherTitleOrTextEndsTheScript_data()
{
    QTest::addColumn<QString>("expectation");
    QTest::addColumn<QString>("words");
    QTest::newRow("title") << "title: 'Pain', text: /wet/"
                           << "expected: \"Pain\": /wet/";
    QTest::newRow("text") << "title: 'Paint', text: 'The paint is dry.'"
                          << "expected: \"Paint\": \"The paint is dry.\"";
    QTest::newRow("no text") << "title: 'Paint'"
                             << "What is expected has no text, but a message box opened";
}

void TestScriptDialogs::anotherTitleOrTextEndsTheScript()
{
    QFETCH(QString, expectation);
    QFETCH(QString, words);
    AskingEditor editor;
    const QString failure = editor.FailureOf("dialogs.expect({ " + expectation + ", answer: 'Yes' });" + Ask);
    QVERIFY2(failure.contains(words), qPrintable(failure));
    QVERIFY2(failure.contains("\"Paint\": \"The paint is wet.\nTouch it?\""), qPrintable(failure));
    QCOMPARE(editor.answer, LXMessageBox::NoButton);
}

void TestScriptDialogs::aMissingButtonEndsTheScript()
{
    AskingEditor editor;
    const QString failure = editor.FailureOf("dialogs.expect({ " + Words + ", answer: 'Maybe' });" + Ask);
    QVERIFY2(failure.contains("has no button \"Maybe\"; there are: Yes, No"), qPrintable(failure));
}

void TestScriptDialogs::anEmptyAnswerClosesTheWindow()
{
    AskingEditor editor;
    editor.answer = LXMessageBox::Yes;
    editor.Check("dialogs.expect({ " + Words + ", answer: '' });" + Ask);
    QCOMPARE(editor.answer, LXMessageBox::NoButton);
    QCOMPARE(editor.answers, 1);
}

void TestScriptDialogs::aFunctionDrivesADialog()
{
    AskingEditor editor;
    editor.Check(R"(
        dialogs.expect({ title: "New picture" }, function(dialog) {
            dialog.find("m_pWidthSpn").setValue(77)
            dialog.find("m_pHeightSpn").setValue(55)
            expect.equal(dialog.find("m_pWidthSpn").value, 77)
            input.key("Return")
        })
        menus.trigger("File/New…")
        expect.equal([documents.active.width, documents.active.height], [77, 55])
    )");
}

void TestScriptDialogs::anErrorInTheFunctionEndsTheScriptWithItsLine()
{
    AskingEditor editor;
    const ScriptOutcome outcome = editor.Run("dialogs.expect({ " + Words + " }, function(box) {\n" +
                                             "    throw new Error('no hand free')\n});\n" + Ask);
    QCOMPARE(outcome.kind, ScriptOutcome::Kind::Failed);
    QVERIFY2(outcome.message.contains("no hand free"), qPrintable(outcome.message));
    QCOMPARE(outcome.line, 2);
    QCOMPARE(editor.answers, 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestScriptDialogs::aDialogLeftOpenEndsTheScript()
{
    AskingEditor editor;
    const QString failure = editor.FailureOf("dialogs.expect({ " + Words + " }, function() { });" + Ask);
    QVERIFY2(failure.contains("The script left \"Paint\": \"The paint is wet.\nTouch it?\" open"),
             qPrintable(failure));
    QVERIFY(!QApplication::activeModalWidget());
}

void TestScriptDialogs::aFileDialogIsAnsweredWithPaths()
{
    AskingEditor editor;
    QImage picture(6, 5, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(editor.TempFile("one.png")) && picture.save(editor.TempFile("two.png")));
    editor.Check(QString(R"(
        dialogs.expectFile(%1, { title: "Save as" })
        menus.trigger("File/Save As…")
        expect.equal(documents.active.name, "kept.png")
        dialogs.expectFile([%2, %3], { title: "Open" })
        input.key("Ctrl+O")
        expect.equal(documents.all.map(document => document.name), ["kept.png", "one.png", "two.png"])
    )")
                     .arg(editor.Quoted("kept.png"), editor.Quoted("one.png"), editor.Quoted("two.png")));
    QVERIFY(QFile::exists(editor.TempFile("kept.png")));
}

void TestScriptDialogs::aFileDialogIsCancelledByNull()
{
    AskingEditor editor;
    editor.Check(R"(
        dialogs.expectFile(null)
        menus.trigger("File/Save As…")
        expect.equal(documents.active.path, "")
    )");
}

void TestScriptDialogs::aPathCountsMoreThanTheNameThatTheDialogProposes()
{
    AskingEditor editor;
    editor.Check(QString(R"(
        documents.active.save(%1)
        dialogs.expectFile(%2)
        menus.trigger("File/Save As…")
        expect.equal(documents.active.name, "second.png")
    )")
                     .arg(editor.Quoted("first.png"), editor.Quoted("second.png")));
}

void TestScriptDialogs::keysGoToTheDialog()
{
    AskingEditor editor;
    editor.answer = LXMessageBox::Yes;
    editor.Check("dialogs.expect({ " + Words + " }, function() { input.key('Esc') });" + Ask);
    QCOMPARE(editor.answers, 1);
    QCOMPARE(editor.answer, LXMessageBox::NoButton);
    // Ctrl is still down when the key opens the window.
    editor.Check(R"(
        dialogs.expect({ title: "New picture" }, function() {
            expect.equal(input.modifiers, "")
            input.key("Esc")
        })
        input.key("Ctrl+N")
        expect.equal([input.modifiers, documents.count], ["", 1])
    )");
}

void TestScriptDialogs::replacingAFileAsksAndThatIsAWindowToo()
{
    AskingEditor editor;
    editor.Check(QString(R"(
        documents.active.exportAs(%1)
        layers.at(0).fill("red")
        dialogs.expectFile(%1)
        dialogs.expect({ title: "Save as", text: /already exists/, answer: "Yes" })
        menus.trigger("File/Save As…")
        expect.equal(pixels.file(%1).pixel(0, 0), "#ffff0000")
    )")
                     .arg(editor.Quoted("there.png")));
}

void TestScriptDialogs::whatNeverOpenedIsAFailureAtTheEnd()
{
    AskingEditor editor;
    const QString failure =
        editor.FailureOf("dialogs.expect({ " + Words + ", answer: 'Yes' }); dialogs.expectFile('x.png')");
    QCOMPARE(failure, QString("What was expected never opened: "
                              "\"Paint\": \"The paint is wet.\nTouch it?\"; a file dialog"));
}

void TestScriptDialogs::forgottenExpectationsAreNoFailure()
{
    AskingEditor editor;
    editor.Check("dialogs.expectFile('x.png'); dialogs.clear(); expect.equal(dialogs.waiting, 0)");
}

void TestScriptDialogs::progressIsNoQuestion()
{
    AskingEditor editor;
    QAction start;
    connect(&start, &QAction::triggered, &start, [&editor] {
        LXOperationProgressDlg progress(editor.Window());
        progress.setWindowTitle("Working");
        QTimer::singleShot(50, &progress, [&progress] { progress.done(0); });
        progress.Exec();
    });
    start.setShortcut(Qt::Key_F9);
    editor.Window()->addAction(&start);
    editor.Check("input.key('F9'); expect.equal(dialogs.seen, [])");
}

void TestScriptDialogs::wrongExpectationsAreRefused_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("words");
    QTest::newRow("no title") << "dialogs.expect({ text: 'x', answer: 'Yes' })"
                              << "needs a title";
    QTest::newRow("no answer") << "dialogs.expect({ title: 'x' })"
                               << "needs an answer or a function";
    QTest::newRow("no function") << "dialogs.expect({ title: 'x' }, 7)"
                                 << "has to be a function";
    QTest::newRow("an option") << "dialogs.expect({ titel: 'x' })"
                               << "There is no option \"titel\"";
    QTest::newRow("a path") << "dialogs.expectFile(7)"
                            << "A path, a list of paths or null is needed.";
    QTest::newRow("an entry") << "dialogs.expectMenu('')"
                              << "The texts of entries or a function is needed.";
}

void TestScriptDialogs::wrongExpectationsAreRefused()
{
    QFETCH(QString, call);
    QFETCH(QString, words);
    AskingEditor editor;
    const QString failure = editor.FailureOf(call);
    QVERIFY2(failure.contains(words), qPrintable(failure));
}

#include "tst_scriptdialogs.moc"
ZK_REGISTER_TEST(tst_scriptdialogs, TestScriptDialogs)
