#include "common/BlendModeTable.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestBlendModeTable : public QObject
{
    Q_OBJECT

private slots:
    void everyRowHasItsTextAndMode_data();
    void everyRowHasItsTextAndMode();
    void anIndexOutsideIsNormal();
};

void TestBlendModeTable::everyRowHasItsTextAndMode_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<unsigned int>("mode");
    const auto row = [](int index, const char* text, unsigned int mode) {
        QTest::newRow(text) << index << QString::fromLatin1(text) << mode;
    };
    row(0, "Normal", 0);
    row(1, "Multiply", 13);
    row(2, "Screen", 14);
    row(3, "Overlay", 15);
    row(4, "Difference", 22);
    row(5, "Exclusion", 23);
    row(6, "Lighten colors", 17);
    row(7, "Darken colors", 16);
    row(8, "Soft light", 21);
    row(9, "Hard light", 20);
    row(10, "Color dodge", 18);
    row(11, "Color burn", 19);
    row(12, "Addition", 12);
}

void TestBlendModeTable::everyRowHasItsTextAndMode()
{
    QFETCH(int, index);
    QTEST(BlendModeTable::Texts().at(index), "text");
    QTEST(BlendModeTable::ModeOf(index), "mode");
    QCOMPARE(BlendModeTable::Texts().size(), BlendModeTable::Count);
}

void TestBlendModeTable::anIndexOutsideIsNormal()
{
    QCOMPARE(BlendModeTable::ModeOf(-1), 0u);
    QCOMPARE(BlendModeTable::ModeOf(BlendModeTable::Count), 0u);
}

ZK_REGISTER_TEST(tst_blendmodetable, TestBlendModeTable)

#include "tst_blendmodetable.moc"
