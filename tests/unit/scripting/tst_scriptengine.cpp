#include "scripting/ScriptEngine.h"
#include "support/ScriptFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QDialog>
#include <QImage>
#include <QJSEngine>
#include <QLabel>
#include <QQmlEngine>
#include <QTest>

/// How a script file is run, and how its end is told.
class TestScriptEngine : public QObject
{
    Q_OBJECT

private slots:
    void aScriptThatComesToItsEndFinishes_data();
    void aScriptThatComesToItsEndFinishes();
    void anUncaughtErrorIsToldWithFileAndLine_data();
    void anUncaughtErrorIsToldWithFileAndLine();
    void theCallsThatLedToAnErrorAreTold();
    void theStepIsToldWithTheFailure();
    void aMissingScriptIsAFailure();
    void includedFilesGiveTheirVariablesAndFunctionsButNotTheirConstants();
    void anErrorInAnIncludedFileIsToldWithItsOwnLine();
    void aFileThatIncludesItselfFails();
    void exitEndsTheScriptWithItsCode();
    void theScriptSeesItsArguments();
    void aFailureLeavesAPicture();
    void anEndlessLoopEndsAtTheLimit_data();
    void anEndlessLoopEndsAtTheLimit();
    void aModalDialogIsDismissedAtTheLimitAndNamed();
};

using Kind = ScriptOutcome::Kind;

void TestScriptEngine::aScriptThatComesToItsEndFinishes_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("empty") << "";
    QTest::newRow("ends in a comment") << "let a = 1 // the end";
    QTest::newRow("ends without a semicolon") << "let a = 1\nif (a) { a = 2 }";
    QTest::newRow("catches its errors") << "try { throw new Error('x') } catch (error) { }";
    QTest::newRow("prints") << "print('a line')";
}

void TestScriptEngine::aScriptThatComesToItsEndFinishes()
{
    QFETCH(QString, script);
    const ScriptOutcome outcome = ScriptFixture().Run(script);
    QVERIFY2(outcome.kind == Kind::Finished, qPrintable(outcome.ToText()));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.ToText(), QString());
}

void TestScriptEngine::anUncaughtErrorIsToldWithFileAndLine_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("error object") << "\n\nthrow new Error('no paint')" << 3 << "no paint";
    QTest::newRow("inside a function")
        << "function f() {\n  throw new Error('no paint') }\n\nf()" << 2 << "no paint";
    QTest::newRow("unknown name") << "\nnothing.here()" << 2 << "ReferenceError: nothing is not defined";
    QTest::newRow("wrong syntax") << "let a = 1\nlet b = (;" << 2 << "SyntaxError: Expected token `)'";
    QTest::newRow("closing bracket too many")
        << "let a = 1;\n}\nlet b" << 2 << "SyntaxError: Expected token `;'";
    QTest::newRow("a text") << "\nthrow 'just a text'" << 0 << "Uncaught: just a text";
    QTest::newRow("nothing") << "throw undefined" << 0 << "Uncaught: undefined";
}

void TestScriptEngine::anUncaughtErrorIsToldWithFileAndLine()
{
    QFETCH(QString, script);
    QFETCH(int, line);
    QFETCH(QString, message);
    ScriptFixture fixture;
    const ScriptOutcome outcome = fixture.Run(script);
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.message, message);
    QCOMPARE(outcome.line, line);
    QCOMPARE(outcome.file, fixture.PathOf("main.js"));
    const QString place = line > 0 ? QStringLiteral(":%1: ").arg(line) : QStringLiteral(": ");
    QVERIFY2(outcome.ToText().startsWith(fixture.PathOf("main.js") + place + message),
             qPrintable(outcome.ToText()));
}

void TestScriptEngine::theCallsThatLedToAnErrorAreTold()
{
    ScriptFixture fixture;
    const ScriptOutcome outcome = fixture.Run("function paint() {\n  throw new Error('x')\n}\npaint()");
    const QString file = fixture.PathOf("main.js");
    QCOMPARE(outcome.stack, QStringLiteral("paint (%1:2)\nscript (%1:4)").arg(file));
}

void TestScriptEngine::theStepIsToldWithTheFailure()
{
    const ScriptOutcome outcome =
        ScriptFixture().Run("step('Mix the paint')\nstep('Fill')\nthrow Error('x')");
    QCOMPARE(outcome.step, QString("Fill"));
    QVERIFY(outcome.ToText().contains("step: Fill"));
}

void TestScriptEngine::aMissingScriptIsAFailure()
{
    PlainScriptHost host;
    ScriptOptions options;
    options.file = "/no/such/script.js";
    const ScriptOutcome outcome = ScriptEngine(host, options).Run();
    QCOMPARE(outcome.kind, Kind::Failed);
    QVERIFY2(outcome.message.contains("/no/such/script.js"), qPrintable(outcome.message));
}

void TestScriptEngine::includedFilesGiveTheirVariablesAndFunctionsButNotTheirConstants()
{
    ScriptFixture fixture;
    fixture.Write("colors.js", "var red = 'red'; function green() { return 'green' }; const blue = 'blue'");
    const ScriptOutcome outcome = fixture.Run("include('colors.js')\n"
                                              "if (red + green() !== 'redgreen') throw Error('not there')\n"
                                              "if (typeof blue !== 'undefined') throw Error('no secret')");
    QVERIFY2(outcome.kind == Kind::Finished, qPrintable(outcome.ToText()));
}

void TestScriptEngine::anErrorInAnIncludedFileIsToldWithItsOwnLine()
{
    ScriptFixture fixture;
    fixture.Write("broken.js", "let fine = 1\n\nfine.no.such()");
    const ScriptOutcome outcome = fixture.Run("\ninclude('broken.js')\nscript.exit(0)");
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.file, fixture.PathOf("broken.js"));
    QCOMPARE(outcome.line, 3);
}

void TestScriptEngine::aFileThatIncludesItselfFails()
{
    const ScriptOutcome outcome = ScriptFixture().Run("include('main.js')");
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.line, 1);
}

void TestScriptEngine::exitEndsTheScriptWithItsCode()
{
    const ScriptOutcome outcome =
        ScriptFixture().Run("try { script.exit(7) } catch (error) { }\nthrow Error('went on')");
    QCOMPARE(outcome.kind, Kind::Finished);
    QCOMPARE(outcome.exitCode, 7);
}

void TestScriptEngine::theScriptSeesItsArguments()
{
    ScriptOptions options;
    options.arguments = QStringList{"a.png", "--fast"};
    const ScriptOutcome outcome = ScriptFixture().Run(
        "if (script.args.join() !== 'a.png,--fast') throw Error(script.args.join())", options);
    QVERIFY2(outcome.kind == Kind::Finished, qPrintable(outcome.ToText()));
}

void TestScriptEngine::aFailureLeavesAPicture()
{
    const QTemporaryDir folder;
    ScriptOptions options;
    options.pictureFolder = folder.filePath("pictures");
    ScriptFixture fixture;
    fixture.GetHost().GetWindow()->resize(60, 40);
    const ScriptOutcome outcome = fixture.Run("throw Error('x')", options);
    QCOMPARE(outcome.pictureFile, folder.filePath("pictures/main.png"));
    QCOMPARE(QImage(outcome.pictureFile).size(), QSize(60, 40));
}

void TestScriptEngine::anEndlessLoopEndsAtTheLimit_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("plain") << "while (true) { }";
    QTest::newRow("catches everything") << "while (true) { try { while (true) { } } catch (error) { } }";
    QTest::newRow("finally") << "while (true) { try { while (true) { } } finally { continue } }";
    QTest::newRow("recursion in a callback")
        << "function f() { [1, 2].forEach(() => { while (true) { } }) } f()";
}

void TestScriptEngine::anEndlessLoopEndsAtTheLimit()
{
    QFETCH(QString, script);
    ScriptOptions options;
    options.timeLimit = 100;
    const ScriptOutcome outcome = ScriptFixture().Run(script, options);
    QCOMPARE(outcome.kind, Kind::TimedOut);
    QVERIFY2(outcome.message.contains("did not end within 0.1 s"), qPrintable(outcome.message));
}

void TestScriptEngine::aModalDialogIsDismissedAtTheLimitAndNamed()
{
    ScriptFixture fixture;
    ScriptOptions options;
    options.timeLimit = 100;
    options.file = fixture.Write(
        "main.js",
        "dialogs.expect({ title: 'Question' }, function() { wait(10000) }); dialogOpener.toggle()");
    QDialog dialog;
    dialog.setWindowTitle("Question");
    QLabel label("Which color?", &dialog);
    QAction opener;
    opener.setCheckable(true);
    QObject::connect(&opener, &QAction::toggled, &dialog, &QDialog::exec);

    ScriptEngine engine(fixture.GetHost(), options);
    QJSEngine& js = engine.GetContext().GetEngine();
    js.globalObject().setProperty("dialogOpener", js.newQObject(&opener));
    QQmlEngine::setObjectOwnership(&opener, QQmlEngine::CppOwnership);
    const ScriptOutcome outcome = engine.Run();
    QCOMPARE(outcome.kind, Kind::TimedOut);
    QVERIFY2(outcome.message.contains("Question: Which color?"), qPrintable(outcome.message));
    QVERIFY(!dialog.isVisible());
}

ZK_REGISTER_TEST(tst_scriptengine, TestScriptEngine)
#include "tst_scriptengine.moc"
