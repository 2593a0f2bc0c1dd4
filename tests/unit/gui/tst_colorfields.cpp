#include "core/ZKCMSManager.h"
#include "gui/ColorChoice.h"
#include "gui/ColorField.h"
#include "gui/ColorStrip.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

/// The field and the strip of the color dialog, with real mouse and keys.
class TestColorFields : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFieldShowsItsColors();
    void aPressChoosesWhatLiesUnderThePointer();
    void aDragBeyondTheFieldStaysAtItsEdge();
    void otherButtonsChooseNothing();
    void escapeEndsADragOfTheField();
    void escapeEndsADragOfTheStrip();
    void escapeWithoutADragIsNotTaken();
    void arrowsStepHueAndSaturation();
    void keysGoToTheEndsOfTheField();
    void settingTheMarkTellsNobody();
    void theFieldTellsItsPlaceInWords();
    void theStripShowsItsColors();
    void aPressOnTheStripChoosesTheValue();
    void arrowsStepTheValue();
    void bothAreShownInTheColorsOfTheScreen();

private:
    /// Where the pixel of the field with this hue and saturation is seen, without the mark.
    QColor SeenAt(double hue, double saturation);

    std::unique_ptr<QWidget> m_pWindow;
    ColorField* m_pField = nullptr;
    ColorStrip* m_pStrip = nullptr;
};

namespace {
bool IsLike(const QColor& one, const QColor& other)
{
    return qAbs(one.red() - other.red()) <= 2 && qAbs(one.green() - other.green()) <= 2 &&
           qAbs(one.blue() - other.blue()) <= 2;
}
} // namespace

void TestColorFields::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pField = new ColorField(m_pWindow.get());
    // 360 columns, one for each degree, and 101 rows, one for each hundredth, inside of the line.
    m_pField->setGeometry(10, 10, 362, 103);
    m_pStrip = new ColorStrip(m_pWindow.get());
    // 256 rows inside of the line.
    m_pStrip->setGeometry(400, 10, 22, 258);
    m_pWindow->resize(450, 300);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
}

void TestColorFields::cleanup()
{
    m_pWindow.reset();
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
}

QColor TestColorFields::SeenAt(double hue, double saturation)
{
    const QPoint place = m_pField->PlaceOf(hue, saturation);
    m_pField->SetHueSaturation(hue < 180 ? 359 : 0, 0.5);
    return m_pField->grab().toImage().pixelColor(place);
}

void TestColorFields::theFieldShowsItsColors()
{
    for (const double hue : {20.0, 60.0, 95.0, 180.0, 210.0, 300.0, 345.0}) {
        for (const double saturation : {0.0, 0.3, 0.5, 1.0}) {
            const QColor seen = SeenAt(hue, saturation);
            const QColor expected = ToRgb({hue, saturation, 1});
            QVERIFY2(IsLike(seen, expected), qPrintable(seen.name() + ' ' + expected.name()));
        }
    }
}

void TestColorFields::aPressChoosesWhatLiesUnderThePointer()
{
    const QSignalSpy picked(m_pField, &ColorField::Picked);
    InputDriver input;
    input.Press(m_pField, QPoint(1 + 210, 1 + 100 - 25));
    QCOMPARE(m_pField->GetHue(), 210.0);
    QCOMPARE(m_pField->GetSaturation(), 0.25);
    QCOMPARE(picked.count(), 1);
    QCOMPARE(picked[0][0].toDouble(), 210.0);
    QCOMPARE(picked[0][1].toDouble(), 0.25);

    input.Move(m_pField, QPoint(1 + 30, 1 + 100 - 75));
    QCOMPARE(m_pField->GetHue(), 30.0);
    QCOMPARE(m_pField->GetSaturation(), 0.75);
    input.Release(m_pField, QPoint(1 + 30, 1 + 100 - 75));

    input.Move(m_pField, QPoint(100, 50));
    QCOMPARE(m_pField->GetHue(), 30.0);
    QCOMPARE(m_pField->PlaceOf(210, 0.25), QPoint(1 + 210, 1 + 100 - 25));
}

void TestColorFields::aDragBeyondTheFieldStaysAtItsEdge()
{
    InputDriver input;
    input.Press(m_pField, QPoint(100, 50));
    input.Move(m_pField, QPoint(-50, -50));
    QCOMPARE(m_pField->GetHue(), 0.0);
    QCOMPARE(m_pField->GetSaturation(), 1.0);
    input.Move(m_pField, QPoint(500, 500));
    QCOMPARE(m_pField->GetHue(), 359.0);
    QCOMPARE(m_pField->GetSaturation(), 0.0);
    input.Release(m_pField, QPoint(500, 500));
}

void TestColorFields::otherButtonsChooseNothing()
{
    const QSignalSpy picked(m_pField, &ColorField::Picked);
    InputDriver().Drag(m_pField, {QPoint(100, 50), QPoint(120, 60)}, Qt::RightButton);
    InputDriver().Drag(m_pStrip, {QPoint(5, 50), QPoint(5, 60)}, Qt::RightButton);
    QCOMPARE(picked.count(), 0);
    QCOMPARE(m_pStrip->value(), 0);
}

void TestColorFields::escapeEndsADragOfTheField()
{
    m_pField->SetHueSaturation(359.5, 0.337);
    const QSignalSpy picked(m_pField, &ColorField::Picked);
    const QSignalSpy cancelled(m_pField, &ColorField::DragCancelled);
    InputDriver input;
    input.Press(m_pField, QPoint(100, 50));
    input.Move(m_pField, QPoint(120, 60));
    input.Key(Qt::Key_Escape);
    QCOMPARE(m_pField->GetHue(), 359.5);
    QCOMPARE(m_pField->GetSaturation(), 0.337);
    QCOMPARE(picked.last(), QVariantList({359.5, 0.337}));
    QCOMPARE(cancelled.count(), 1);
    // The button is still down, but the drag is over.
    input.Move(m_pField, QPoint(140, 40));
    input.Release(m_pField, QPoint(140, 40));
    QCOMPARE(m_pField->GetHue(), 359.5);
    // The next one begins from there.
    input.Press(m_pField, QPoint(1 + 30, 1 + 100 - 75));
    QCOMPARE(m_pField->GetHue(), 30.0);
}

void TestColorFields::escapeEndsADragOfTheStrip()
{
    m_pStrip->setValue(77);
    const QSignalSpy cancelled(m_pStrip, &ColorStrip::DragCancelled);
    InputDriver input;
    input.Press(m_pStrip, QPoint(5, 50));
    QVERIFY(m_pStrip->value() != 77);
    input.Key(Qt::Key_Escape);
    QCOMPARE(m_pStrip->value(), 77);
    QCOMPARE(cancelled.count(), 1);
    input.Move(m_pStrip, QPoint(5, 60));
    input.Release(m_pStrip, QPoint(5, 60));
    QCOMPARE(m_pStrip->value(), 77);
}

void TestColorFields::escapeWithoutADragIsNotTaken()
{
    for (QWidget* widget : {static_cast<QWidget*>(m_pField), static_cast<QWidget*>(m_pStrip)}) {
        InputDriver().Click(widget, QPoint(5, 50));
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &escape);
        QVERIFY(!escape.isAccepted());
        // A drag whose widget went out of sight is over as well.
        InputDriver input;
        input.Press(widget, QPoint(5, 50));
        m_pWindow->hide();
        escape.setAccepted(true);
        QCoreApplication::sendEvent(widget, &escape);
        QVERIFY(!escape.isAccepted());
        input.LetGo();
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    }
}

void TestColorFields::arrowsStepHueAndSaturation()
{
    m_pField->SetHueSaturation(100, 0.5);
    m_pField->setFocus();
    InputDriver input;
    input.Key(Qt::Key_Right);
    QCOMPARE(m_pField->GetHue(), 101.0);
    input.Key(Qt::Key_Left);
    input.Key(Qt::Key_Left);
    QCOMPARE(m_pField->GetHue(), 99.0);
    input.Key(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(m_pField->GetHue(), 109.0);
    input.Key(Qt::Key_Up);
    QCOMPARE(m_pField->GetSaturation(), 0.51);
    input.Key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(m_pField->GetSaturation(), 0.41);
    QVERIFY(m_pField->hasFocus());
}

void TestColorFields::keysGoToTheEndsOfTheField()
{
    m_pField->SetHueSaturation(100, 0.5);
    m_pField->setFocus();
    InputDriver input;
    input.Key(Qt::Key_End);
    QCOMPARE(m_pField->GetHue(), 359.0);
    input.Key(Qt::Key_Right);
    QCOMPARE(m_pField->GetHue(), 359.0);
    input.Key(Qt::Key_Home);
    QCOMPARE(m_pField->GetHue(), 0.0);
    input.Key(Qt::Key_PageUp);
    QCOMPARE(m_pField->GetSaturation(), 1.0);
    input.Key(Qt::Key_Up);
    QCOMPARE(m_pField->GetSaturation(), 1.0);
    input.Key(Qt::Key_PageDown);
    QCOMPARE(m_pField->GetSaturation(), 0.0);
}

void TestColorFields::settingTheMarkTellsNobody()
{
    const QSignalSpy picked(m_pField, &ColorField::Picked);
    m_pField->SetHueSaturation(100, 0.5);
    QCOMPARE(picked.count(), 0);
    QCOMPARE(m_pField->GetHue(), 100.0);
}

void TestColorFields::theFieldTellsItsPlaceInWords()
{
    m_pField->SetHueSaturation(99.6, 0.254);
    QCOMPARE(m_pField->accessibleDescription(), QString("Hue 100°, saturation 25 %"));
}

void TestColorFields::theStripShowsItsColors()
{
    m_pStrip->SetBrightest(QColor(255, 128, 0));
    m_pStrip->setValue(255);
    const QImage image = m_pStrip->grab().toImage();
    for (const int value : {0, 64, 128, 200, 240}) {
        const QColor seen = image.pixelColor(11, m_pStrip->PlaceOf(value));
        QVERIFY2(IsLike(seen, QColor(value, qRound(value * 128 / 255.0), 0)), qPrintable(seen.name()));
    }
    QCOMPARE(m_pStrip->PlaceOf(255), 1);
    QCOMPARE(m_pStrip->PlaceOf(0), 256);
}

void TestColorFields::aPressOnTheStripChoosesTheValue()
{
    InputDriver input;
    input.Press(m_pStrip, QPoint(11, 256 - 40));
    QCOMPARE(m_pStrip->value(), 40);
    input.Move(m_pStrip, QPoint(80, 256 - 200));
    QCOMPARE(m_pStrip->value(), 200);
    input.Move(m_pStrip, QPoint(11, -30));
    QCOMPARE(m_pStrip->value(), 255);
    input.Move(m_pStrip, QPoint(11, 290));
    QCOMPARE(m_pStrip->value(), 0);
    input.Release(m_pStrip, QPoint(11, 290));
}

void TestColorFields::arrowsStepTheValue()
{
    m_pStrip->setValue(100);
    m_pStrip->setFocus();
    InputDriver input;
    input.Key(Qt::Key_Up);
    QCOMPARE(m_pStrip->value(), 101);
    input.Key(Qt::Key_Down);
    input.Key(Qt::Key_Down);
    QCOMPARE(m_pStrip->value(), 99);
    input.Key(Qt::Key_PageUp);
    QCOMPARE(m_pStrip->value(), 115);
    input.Key(Qt::Key_End);
    QCOMPARE(m_pStrip->value(), 255);
    input.Key(Qt::Key_Home);
    QCOMPARE(m_pStrip->value(), 0);
}

void TestColorFields::bothAreShownInTheColorsOfTheScreen()
{
    const ZKCMSProfile screen = IccProfiles::AdobeRgb();
    const ZKCMSTransform toScreen(ZKCMSProfile::SRGB(), screen);
    ZKCMSManager::GetInstance()->SetDisplay(screen, {});
    const QColor inField = ToRgb({120, 0.5, 1});
    QColor expected = inField;
    toScreen(expected);
    const QColor seen = SeenAt(120, 0.5);
    QVERIFY2(IsLike(seen, expected), qPrintable(seen.name() + ' ' + expected.name()));
    QVERIFY(!IsLike(seen, inField));

    m_pStrip->SetBrightest(QColor(0, 255, 0));
    m_pStrip->setValue(0);
    expected = QColor(0, 200, 0);
    toScreen(expected);
    const QColor onStrip = m_pStrip->grab().toImage().pixelColor(11, m_pStrip->PlaceOf(200));
    QVERIFY2(IsLike(onStrip, expected), qPrintable(onStrip.name() + ' ' + expected.name()));
}

ZK_REGISTER_TEST(tst_colorfields, TestColorFields)
#include "tst_colorfields.moc"
