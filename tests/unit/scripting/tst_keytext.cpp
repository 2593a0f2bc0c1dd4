#include "scripting/KeyText.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestKeyText : public QObject
{
    Q_OBJECT

private slots:
    void keysBringTheirText_data();
    void keysBringTheirText();
    void charactersAreTypedWithTheirKey_data();
    void charactersAreTypedWithTheirKey();
};

void TestKeyText::keysBringTheirText_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("text");

    QTest::newRow("letter") << int(Qt::Key_A) << int(Qt::NoModifier) << "a";
    QTest::newRow("capital letter") << int(Qt::Key_A) << int(Qt::ShiftModifier) << "A";
    QTest::newRow("digit") << int(Qt::Key_7) << int(Qt::NoModifier) << "7";
    QTest::newRow("letter with Ctrl") << int(Qt::Key_Z) << int(Qt::ControlModifier) << "";
    QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier) << "\r";
    QTest::newRow("arrow") << int(Qt::Key_Left) << int(Qt::NoModifier) << "";
    QTest::newRow("modifier") << int(Qt::Key_Shift) << int(Qt::NoModifier) << "";
}

void TestKeyText::keysBringTheirText()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QTEST(KeyText::OfKey(key, Qt::KeyboardModifiers(modifiers)), "text");
}

void TestKeyText::charactersAreTypedWithTheirKey_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");

    QTest::newRow("small letter") << QChar('q') << int(Qt::Key_Q) << int(Qt::NoModifier);
    QTest::newRow("capital letter") << QChar('Q') << int(Qt::Key_Q) << int(Qt::ShiftModifier);
    QTest::newRow("digit") << QChar('4') << int(Qt::Key_4) << int(Qt::NoModifier);
    QTest::newRow("full stop") << QChar('.') << int(Qt::Key_Period) << int(Qt::NoModifier);
    QTest::newRow("line feed") << QChar('\n') << int(Qt::Key_Return) << int(Qt::NoModifier);
}

void TestKeyText::charactersAreTypedWithTheirKey()
{
    QFETCH(QChar, character);
    const KeyText::Stroke stroke = KeyText::OfCharacter(character);
    QTEST(stroke.key, "key");
    QTEST(int(stroke.modifiers), "modifiers");
}

ZK_REGISTER_TEST(tst_keytext, TestKeyText)
#include "tst_keytext.moc"
