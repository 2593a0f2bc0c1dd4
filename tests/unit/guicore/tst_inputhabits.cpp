#include "guicore/InputHabits.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {
/// Counts the turns of the wheel that nothing inside it took.
class Panel : public QWidget
{
public:
    void wheelEvent(QWheelEvent*) override { ++m_Wheels; }

    int m_Wheels = 0;
};

void TurnWheel(QWidget* widget)
{
    const QPointF pos = widget->rect().center();
    QWheelEvent event(pos, widget->mapToGlobal(pos.toPoint()), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // Only events of the window system give the focus by the wheel.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

} // namespace

class TestInputHabits : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void wheelWithoutFocusGoesToThePanel();
    void wheelWithFocusChangesTheValue();
    void wheelOverTheTextOfASpinBoxCountsAsTheSpinBox();
    void wheelGivesNoFocus();
    void scrollBarsStillTurn();
    void doubleClickResetsASlider();

private:
    std::unique_ptr<InputHabits> m_pHabits;
    std::unique_ptr<Panel> m_pPanel;
    QSpinBox* m_pSpin = nullptr;
    QSlider* m_pSlider = nullptr;
    QComboBox* m_pCombo = nullptr;
    QScrollBar* m_pScrollBar = nullptr;
    QLineEdit* m_pOther = nullptr;
};

void TestInputHabits::init()
{
    m_pHabits = std::make_unique<InputHabits>(nullptr);
    m_pPanel = std::make_unique<Panel>();
    auto* layout = new QVBoxLayout(m_pPanel.get());
    layout->addWidget(m_pOther = new QLineEdit);
    layout->addWidget(m_pSpin = new QSpinBox);
    layout->addWidget(m_pSlider = new QSlider(Qt::Horizontal));
    layout->addWidget(m_pCombo = new QComboBox);
    layout->addWidget(m_pScrollBar = new QScrollBar(Qt::Horizontal));
    m_pSpin->setValue(50);
    m_pSlider->setValue(50);
    m_pCombo->addItems({"a", "b", "c"});
    m_pCombo->setCurrentIndex(1);
    m_pScrollBar->setValue(50);
    m_pPanel->show();
    QApplication::setActiveWindow(m_pPanel.get());
    m_pOther->setFocus();
    QVERIFY(m_pOther->hasFocus());
}

void TestInputHabits::cleanup()
{
    m_pPanel.reset();
    m_pHabits.reset();
}

void TestInputHabits::wheelWithoutFocusGoesToThePanel()
{
    TurnWheel(m_pSpin);
    TurnWheel(m_pSlider);
    TurnWheel(m_pCombo);
    QCOMPARE(m_pSpin->value(), 50);
    QCOMPARE(m_pSlider->value(), 50);
    QCOMPARE(m_pCombo->currentIndex(), 1);
    QCOMPARE(m_pPanel->m_Wheels, 3);

    // What sends the event by itself learns that nobody took it.
    QWheelEvent event({5, 5}, m_pSpin->mapToGlobal({5, 5}), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_pSpin, &event);
    QVERIFY(!event.isAccepted());
}

void TestInputHabits::wheelWithFocusChangesTheValue()
{
    m_pSpin->setFocus();
    TurnWheel(m_pSpin);
    QCOMPARE(m_pSpin->value(), 51);
    m_pCombo->setFocus();
    TurnWheel(m_pCombo);
    QCOMPARE(m_pCombo->currentIndex(), 0);
    m_pSlider->setFocus();
    TurnWheel(m_pSlider);
    QVERIFY(m_pSlider->value() != 50);
    QCOMPARE(m_pPanel->m_Wheels, 0);
}

void TestInputHabits::wheelOverTheTextOfASpinBoxCountsAsTheSpinBox()
{
    auto* text = m_pSpin->findChild<QLineEdit*>();
    TurnWheel(text);
    QCOMPARE(m_pSpin->value(), 50);
    m_pSpin->setFocus();
    TurnWheel(text);
    QCOMPARE(m_pSpin->value(), 51);
}

void TestInputHabits::wheelGivesNoFocus()
{
    for (int turn = 0; turn < 2; ++turn) {
        TurnWheel(m_pSpin);
    }
    QVERIFY(m_pOther->hasFocus());
    QCOMPARE(m_pSpin->value(), 50);
}

void TestInputHabits::scrollBarsStillTurn()
{
    TurnWheel(m_pScrollBar);
    QVERIFY(m_pScrollBar->value() != 50);
}

void TestInputHabits::doubleClickResetsASlider()
{
    InputHabits::ResetOnDoubleClick(m_pSlider, 32);
    InputDriver().DoubleClick(m_pSlider, m_pSlider->rect().center());
    QCOMPARE(m_pSlider->value(), 32);
}

ZK_REGISTER_TEST(tst_inputhabits, TestInputHabits)
#include "tst_inputhabits.moc"
