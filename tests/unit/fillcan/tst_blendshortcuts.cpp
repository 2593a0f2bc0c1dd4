#include "common/BlendModeTable.h"
#include "fillcan/BlendShortcuts.h"
#include "gui/LXShortcut.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QWidget>

class TestBlendShortcuts : public QObject
{
    Q_OBJECT

private slots:
    void everyKeyChoosesItsRow_data();
    void everyKeyChoosesItsRow();
    void additionHasNoKey();
    void stepsWrapRound();
    void otherKeysChooseNothing();
    void fourteenKeysAreMadeAndDeleted();
};

void TestBlendShortcuts::everyKeyChoosesItsRow_data()
{
    QTest::addColumn<QKeySequence>("key");
    QTest::addColumn<int>("index");
    int index = 0;
    for (const char letter : {'N', 'M', 'S', 'O', 'E', 'X', 'G', 'K', 'F', 'H', 'D', 'B'}) {
        const QString key = QString("Shift+Alt+") + letter;
        QTest::newRow(qPrintable(key)) << QKeySequence(key) << index++;
    }
}

void TestBlendShortcuts::everyKeyChoosesItsRow()
{
    QFETCH(QKeySequence, key);
    QTEST(BlendShortcuts::IndexFor(key, 12), "index");
}

void TestBlendShortcuts::additionHasNoKey()
{
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const QKeySequence key(QString("Shift+Alt+") + letter);
        QVERIFY(BlendShortcuts::IndexFor(key, 0) != BlendModeTable::Count - 1);
    }
}

void TestBlendShortcuts::stepsWrapRound()
{
    const QKeySequence next("Shift++");
    const QKeySequence previous("Shift+-");
    QCOMPARE(BlendShortcuts::IndexFor(next, 0), 1);
    QCOMPARE(BlendShortcuts::IndexFor(next, 12), 0);
    QCOMPARE(BlendShortcuts::IndexFor(previous, 1), 0);
    QCOMPARE(BlendShortcuts::IndexFor(previous, 0), 12);
}

void TestBlendShortcuts::otherKeysChooseNothing()
{
    QCOMPARE(BlendShortcuts::IndexFor(QKeySequence("N"), 3), -1);
    QCOMPARE(BlendShortcuts::IndexFor(QKeySequence("Alt+N"), 3), -1);
    QCOMPARE(BlendShortcuts::IndexFor(QKeySequence("+"), 3), -1);
    QCOMPARE(BlendShortcuts::IndexFor(QKeySequence(), 3), -1);
}

void TestBlendShortcuts::fourteenKeysAreMadeAndDeleted()
{
    QWidget window;
    BlendShortcuts shortcuts;
    shortcuts.Create(&window);
    const QList<LXShortcut*> made = window.findChildren<LXShortcut*>();
    QCOMPARE(made.size(), 14);
    for (const LXShortcut* shortcut : made) {
        QVERIFY(BlendShortcuts::IndexFor(shortcut->Key(), 0) >= 0);
    }
    shortcuts.Create(&window);
    QCOMPARE(window.findChildren<LXShortcut*>().size(), 14);
    shortcuts.Delete();
    QVERIFY(window.findChildren<LXShortcut*>().isEmpty());
    shortcuts.Delete();
}

ZK_REGISTER_TEST(tst_blendshortcuts, TestBlendShortcuts)

#include "tst_blendshortcuts.moc"
