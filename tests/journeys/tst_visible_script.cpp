#include "support/DisplayServer.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// Scripts that drive the window of a real window system, which gives the focus in its own time.
class TestVisibleScript : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theWindowIsDriven_data();
    void theWindowIsDriven();
};

namespace {
constexpr int Limit = 120000; // ms
} // namespace

void TestVisibleScript::initTestCase()
{
    if (!DisplayServer::IsThere()) QSKIP("Xvfb is not installed.");
}

void TestVisibleScript::theWindowIsDriven_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("keys and clicks right after the start") << "select_all_and_fill.js";
    QTest::newRow("keys in a dialog that has just opened") << "make_a_new_picture.js";
    QTest::newRow("a dialog of a tool") << "fill_from_the_menu.js";
}

void TestVisibleScript::theWindowIsDriven()
{
    QFETCH(QString, script);
    const QTemporaryDir folder;
    const DisplayServer server;
    QProcess program;
    program.setProcessEnvironment(server.Environment());
    program.start(ZK_PROGRAM,
                  {"--test-faults", "--timeout", "90", "--user-data", folder.path(), "--failure-pictures",
                   folder.filePath("pictures"), "--script", QDir(ZK_JOURNEYS).filePath(script)});
    QVERIFY(program.waitForFinished(Limit));
    QVERIFY2(program.exitCode() == 0, program.readAllStandardError());
}

ZK_REGISTER_TEST(tst_visible_script, TestVisibleScript)
#include "tst_visible_script.moc"
