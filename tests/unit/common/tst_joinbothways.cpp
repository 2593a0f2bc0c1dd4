#include "common/JoinBothWays.h"
#include "support/TestRegistry.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

class TestJoinBothWays : public QObject
{
    Q_OBJECT

private slots:
    void spinAndSliderFollowEachOther();
    void spinsFollowEachOther();
    void combosFollowEachOther();
    void buttonsFollowEachOther();
    void oneChangeIsOneChange();
};

void TestJoinBothWays::spinAndSliderFollowEachOther()
{
    QSpinBox spin;
    QSlider slider;
    JoinBothWays(&spin, &slider);
    spin.setValue(17);
    QCOMPARE(slider.value(), 17);
    slider.setValue(5);
    QCOMPARE(spin.value(), 5);
}

void TestJoinBothWays::spinsFollowEachOther()
{
    QSpinBox first;
    QSpinBox second;
    JoinBothWays(&first, &second);
    first.setValue(17);
    QCOMPARE(second.value(), 17);
    second.setValue(5);
    QCOMPARE(first.value(), 5);
}

void TestJoinBothWays::combosFollowEachOther()
{
    QComboBox first;
    QComboBox second;
    first.addItems({"a", "b", "c"});
    second.addItems({"a", "b", "c"});
    JoinBothWays(&first, &second);
    first.setCurrentIndex(2);
    QCOMPARE(second.currentIndex(), 2);
    second.setCurrentIndex(1);
    QCOMPARE(first.currentIndex(), 1);
}

void TestJoinBothWays::buttonsFollowEachOther()
{
    QCheckBox first;
    QCheckBox second;
    JoinBothWays(&first, &second);
    first.setChecked(true);
    QVERIFY(second.isChecked());
    second.setChecked(false);
    QVERIFY(!first.isChecked());
}

void TestJoinBothWays::oneChangeIsOneChange()
{
    QSpinBox first;
    QSpinBox second;
    JoinBothWays(&first, &second);
    QSignalSpy spy(&first, qOverload<int>(&QSpinBox::valueChanged));
    first.setValue(17);
    QCOMPARE(spy.count(), 1);
}

ZK_REGISTER_TEST(tst_joinbothways, TestJoinBothWays)

#include "tst_joinbothways.moc"
