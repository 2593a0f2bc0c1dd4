#include "support/ScriptFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

/// `expect`, as the reader of a failed script meets it.
class TestScriptExpect : public QObject
{
    Q_OBJECT

private slots:
    void whatHoldsIsSilent_data();
    void whatHoldsIsSilent();
    void whatDiffersIsToldWithExpectedAndSeen_data();
    void whatDiffersIsToldWithExpectedAndSeen();
    void theLineIsThatOfTheExpectation();
    void aFailedExpectationCanBeCaught();
    void longValuesAreCutShort();
};

using Kind = ScriptOutcome::Kind;

void TestScriptExpect::whatHoldsIsSilent_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("numbers") << "expect.equal(1 + 1, 2)";
    QTest::newRow("no number") << "expect.equal(NaN, NaN)";
    QTest::newRow("texts") << "expect.equal('a' + 'b', 'ab', 'the text')";
    QTest::newRow("nothing") << "expect.equal(undefined, undefined); expect.equal(null, null)";
    QTest::newRow("lists") << "expect.equal([1, [2, 3], []], [1, [2, 3], []])";
    QTest::newRow("lists of the editor") << "expect.equal(script.args, [])";
    QTest::newRow("objects") << "expect.equal({a: 1, b: {c: [2]}}, {b: {c: [2]}, a: 1})";
    QTest::newRow("functions") << "expect.equal(print, print)";
    QTest::newRow("itself inside") << "const a = []; a.push(a); expect.equal(a, a)";
    QTest::newRow("not equal") << "expect.notEqual(1, 2); expect.notEqual([1], [2]); expect.notEqual(1, '1')";
    QTest::newRow("ok") << "expect.ok(true); expect.ok('x'); expect.ok({}); expect.ok(7)";
    QTest::newRow("near") << "expect.near(1.05, 1, 0.1); expect.near([1, [2]], [1, [3]], 1)";
    QTest::newRow("contains") << "expect.contains('the sky', 'sky'); expect.contains([1, [2]], [2])";
    QTest::newRow("throws") << "expect.throws(() => { throw new Error('no paint') }, 'paint')";
    QTest::newRow("throws anything") << "expect.throws(() => nothing.here())";
}

void TestScriptExpect::whatHoldsIsSilent()
{
    QFETCH(QString, script);
    const ScriptOutcome outcome = ScriptFixture().Run(script);
    QVERIFY2(outcome.kind == Kind::Finished, qPrintable(outcome.ToText()));
}

void TestScriptExpect::whatDiffersIsToldWithExpectedAndSeen_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("numbers") << "expect.equal(1 + 1, 3)"
                             << QStringList{"not equal", "  expected: 3", "  seen: 2"};
    QTest::newRow("with a name") << "expect.equal('blue', 'red', 'the sky')"
                                 << QStringList{"the sky: not equal", "  expected: \"red\"",
                                                "  seen: \"blue\""};
    QTest::newRow("other type") << "expect.equal('1', 1)"
                                << QStringList{"not equal", "  expected: 1", "  seen: \"1\""};
    QTest::newRow("zero is not nothing") << "expect.equal(undefined, null)"
                                         << QStringList{"not equal", "  expected: null", "  seen: undefined"};
    QTest::newRow("inside a list") << "expect.equal([1, [2, 4]], [1, [2, 3]])"
                                   << QStringList{"not equal", "  expected: [1, [2, 3]]",
                                                  "  seen: [1, [2, 4]]", "  first at [1][1]: 4 instead of 3"};
    QTest::newRow("shorter list") << "expect.equal([1], [1, 2])"
                                  << QStringList{"not equal", "  expected: [1, 2]", "  seen: [1]",
                                                 "  first at .length: 1 instead of 2"};
    QTest::newRow("inside an object")
        << "expect.equal([{name: 'a'}], [{name: 'b'}])"
        << QStringList{"not equal", "  expected: [{name: \"b\"}]", "  seen: [{name: \"a\"}]",
                       "  first at [0].name: \"a\" instead of \"b\""};
    QTest::newRow("missing in an object")
        << "expect.equal({}, {a: undefined})"
        << QStringList{"not equal", "  expected: {a: undefined}", "  seen: {}",
                       "  first at .a: nothing instead of undefined"};
    QTest::newRow("too much in an object") << "expect.equal({a: 1}, {})"
                                           << QStringList{"not equal", "  expected: {}", "  seen: {a: 1}",
                                                          "  first at .a: 1 instead of nothing"};
    QTest::newRow("equal") << "expect.notEqual(2, 2, 'the size')"
                           << QStringList{"the size: equal", "  expected: anything but 2", "  seen: 2"};
    QTest::newRow("not true") << "expect.ok('', 'the name')"
                              << QStringList{"the name: not so", "  expected: something true",
                                             "  seen: \"\""};
    QTest::newRow("not near") << "expect.near(1.5, 1, 0.25)"
                              << QStringList{"not near", "  expected: 1, within 0.25", "  seen: 1.5"};
    QTest::newRow("no number is near nothing")
        << "expect.near(NaN, 1, 9)" << QStringList{"not near", "  expected: 1, within 9", "  seen: NaN"};
    QTest::newRow("lists of different length")
        << "expect.near([1], [1, 2], 9)"
        << QStringList{"not near", "  expected: [1, 2], within 9", "  seen: [1]"};
    QTest::newRow("not in the text") << "expect.contains('sky', 'lake')"
                                     << QStringList{"not there", "  expected: something with \"lake\"",
                                                    "  seen: \"sky\""};
    QTest::newRow("no error") << "expect.throws(() => 5, 'x')"
                              << QStringList{"no error", "  expected: an error with \"x\"", "  seen: 5"};
    QTest::newRow("another error") << "expect.throws(() => { throw Error('y') }, 'x')"
                                   << QStringList{"another error", "  expected: an error with \"x\"",
                                                  "  seen: Error: y"};
    QTest::newRow("not a function") << "expect.throws(5)"
                                    << QStringList{"not a function", "  expected: a function", "  seen: 5"};
    QTest::newRow("fail") << "expect.fail('no way')" << QStringList{"no way"};
}

void TestScriptExpect::whatDiffersIsToldWithExpectedAndSeen()
{
    QFETCH(QString, script);
    QFETCH(QStringList, lines);
    const ScriptOutcome outcome = ScriptFixture().Run(script);
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.message.split('\n'), lines);
}

void TestScriptExpect::theLineIsThatOfTheExpectation()
{
    const ScriptOutcome outcome = ScriptFixture().Run("let a = 1\n\nexpect.equal(a,\n  2)\n");
    QCOMPARE(outcome.line, 3);
}

void TestScriptExpect::aFailedExpectationCanBeCaught()
{
    const ScriptOutcome outcome = ScriptFixture().Run("try { expect.equal(1, 2) } catch (error) { }");
    QCOMPARE(outcome.kind, Kind::Finished);
}

void TestScriptExpect::longValuesAreCutShort()
{
    const ScriptOutcome outcome = ScriptFixture().Run("expect.equal('x'.repeat(5000), 'y')");
    QVERIFY(outcome.message.size() < 500);
    QVERIFY(outcome.message.contains("xxx..."));
}

ZK_REGISTER_TEST(tst_scriptexpect, TestScriptExpect)
#include "tst_scriptexpect.moc"
