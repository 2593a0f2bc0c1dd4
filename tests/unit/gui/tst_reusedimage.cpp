#include "gui/ReusedImage.h"
#include "support/TestRegistry.h"

#include <QTest>

/// Memory of images that are made anew at every repaint.
class TestReusedImage : public QObject
{
    Q_OBJECT

private slots:
    void memoryThatNobodyHoldsIsUsedAgain();
    void anImageThatIsHeldKeepsItsPixels();
    void anImageOutlivesWhatItCameFrom();
    void aSmallerImageUsesTheSameMemoryUnlessItIsMuchSmaller();
};

void TestReusedImage::memoryThatNobodyHoldsIsUsedAgain()
{
    ReusedImage reused;
    const uchar* first = reused.OfSize({300, 200}).constBits();
    QImage second = reused.OfSize({300, 200});
    QCOMPARE(second.size(), QSize(300, 200));
    QCOMPARE(second.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(second.constBits(), first);
    // Writing into it must not copy it.
    QCOMPARE(static_cast<const uchar*>(second.bits()), first);
}

void TestReusedImage::anImageThatIsHeldKeepsItsPixels()
{
    ReusedImage reused;
    QImage held = reused.OfSize({300, 200});
    held.fill(0xff102030);
    QImage other = reused.OfSize({300, 200});
    QVERIFY(other.constBits() != held.constBits());
    other.fill(0xffffffff);
    QCOMPARE(held.pixel(299, 199), 0xff102030);
}

void TestReusedImage::anImageOutlivesWhatItCameFrom()
{
    QImage held;
    {
        ReusedImage reused;
        held = reused.OfSize({300, 200});
        held.fill(0xff102030);
    }
    QCOMPARE(held.pixel(299, 199), 0xff102030);
}

void TestReusedImage::aSmallerImageUsesTheSameMemoryUnlessItIsMuchSmaller()
{
    ReusedImage reused;
    const uchar* first = reused.OfSize({400, 200}).constBits();
    QCOMPARE(reused.OfSize({200, 300}).constBits(), first);
    QCOMPARE(reused.OfSize({200, 100}).constBits(), first);

    const QImage small = reused.OfSize({100, 100});
    QVERIFY(small.constBits() != first);
}

ZK_REGISTER_TEST(tst_reusedimage, TestReusedImage)
#include "tst_reusedimage.moc"
