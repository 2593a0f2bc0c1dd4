#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"
#include "gui/ColorField.h"
#include "gui/ColorPatch.h"
#include "gui/ColorStrip.h"
#include "gui/ColorWell.h"
#include "gui/LXColorDlg.h"
#include "gui/RecentColors.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"
#include "support/WidgetWalk.h"

#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

/// The dialog that asks for a color, by mouse and keys.
class TestColorDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itBeginsWithBlack();
    void itMayGoWhileTheTextHasTheFocus();
    void allControlsShowTheColor();
    void redGreenAndBlueAreFollowed();
    void hueSaturationAndValueAreFollowed();
    void writtenColorsAreFollowed();
    void fieldAndStripAreFollowed();
    void escapeEndsADragWithTheColorFromBefore_data();
    void escapeEndsADragWithTheColorFromBefore();
    void theHueSurvivesTheWayThroughGray();
    void oneStepOfANumberLeavesTheOthersExact();
    void theOldColorIsAPressAway();
    void withoutAlphaTheColorIsOpaque();
    void withAlphaItCanBeChosen();
    void previewsHearOnlyWhatAPersonDoes();
    void enterAcceptsFromEverywhere_data();
    void enterAcceptsFromEverywhere();
    void arrowsPassRecentColorsThatDifferInAlphaOnly();
    void escapeRejects();
    void wrongTextKeepsTheDialogOpen();
    void wrongTextIsForgottenWhenItIsLeft();
    void textStaysAsItIsWritten();
    void anInvalidColorIsIgnored();
    void everyControlHasANameAndIsReached();
    void choosingWaitsForTheAnswer();
    void aParentMayGoWhileThereIsNoAnswer();
    void whatIsShownIsConvertedAndWhatIsChosenIsNot();

private:
    template <typename Control>
    Control* Find(const char* name) const
    {
        return m_pDialog->findChild<Control*>(name);
    }

    QSpinBox* Spin(const char* name) const { return Find<QSpinBox>(name); }

    QLineEdit* Text() const { return Find<QLineEdit>("m_pHexEdt"); }

    void Show();
    /// Writes over what the control holds.
    void Write(QWidget* control, const QString& text);

    std::unique_ptr<LXColorDlg> m_pDialog;
    InputDriver m_Input;
};

void TestColorDialog::init()
{
    ZKApplication::SetUserValue("ColorDialog/Recent", QStringList());
    m_pDialog = std::make_unique<LXColorDlg>();
}

void TestColorDialog::cleanup()
{
    m_pDialog.reset();
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
}

void TestColorDialog::Show()
{
    m_pDialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pDialog.get()));
}

void TestColorDialog::Write(QWidget* control, const QString& text)
{
    control->setFocus();
    m_Input.Key(Qt::Key_A, Qt::ControlModifier);
    m_Input.Type(text);
}

void TestColorDialog::itMayGoWhileTheTextHasTheFocus()
{
    Show();
    Text()->setFocus();
    QString teller;
    connect(Text(), &QLineEdit::editingFinished, Text(),
            [&teller, edit = Text()] { teller = edit->window()->metaObject()->className(); });
    m_pDialog.reset();
    // Not when only a plain widget is left of it.
    QCOMPARE(teller, QString("LXColorDlg"));
}

void TestColorDialog::itBeginsWithBlack()
{
    QCOMPARE(m_pDialog->GetColor(), QColor(0, 0, 0));
    QVERIFY(!m_pDialog->IsAlphaEnabled());
}

void TestColorDialog::allControlsShowTheColor()
{
    m_pDialog->SetColor(QColor(102, 153, 204));
    QCOMPARE(Spin("m_pRedSpn")->value(), 102);
    QCOMPARE(Spin("m_pGreenSpn")->value(), 153);
    QCOMPARE(Spin("m_pBlueSpn")->value(), 204);
    QCOMPARE(Spin("m_pHueSpn")->value(), 210);
    QCOMPARE(Spin("m_pSaturationSpn")->value(), 50);
    QCOMPARE(Spin("m_pValueSpn")->value(), 80);
    QCOMPARE(Text()->text(), QString("#6699CC"));
    QCOMPARE(Find<ColorField>("m_pField")->GetHue(), 210.0);
    QCOMPARE(Find<ColorField>("m_pField")->GetSaturation(), 0.5);
    QCOMPARE(Find<ColorStrip>("m_pStrip")->value(), 204);
    QCOMPARE(Find<ColorPatch>("m_pNewPatch")->GetColor(), QColor(102, 153, 204));
    QCOMPARE(Find<ColorWell>("m_pOldWell")->GetColor(), QColor(102, 153, 204));
}

void TestColorDialog::redGreenAndBlueAreFollowed()
{
    Show();
    Write(Spin("m_pRedSpn"), "102");
    Write(Spin("m_pGreenSpn"), "153");
    Write(Spin("m_pBlueSpn"), "204");
    QCOMPARE(m_pDialog->GetColor(), QColor(102, 153, 204));
    QCOMPARE(Spin("m_pHueSpn")->value(), 210);
    QCOMPARE(Spin("m_pSaturationSpn")->value(), 50);
    QCOMPARE(Spin("m_pValueSpn")->value(), 80);
    QCOMPARE(Text()->text(), QString("#6699CC"));
    QCOMPARE(Find<ColorStrip>("m_pStrip")->value(), 204);
}

void TestColorDialog::hueSaturationAndValueAreFollowed()
{
    Show();
    Write(Spin("m_pHueSpn"), "210");
    Write(Spin("m_pSaturationSpn"), "50");
    Write(Spin("m_pValueSpn"), "80");
    QCOMPARE(m_pDialog->GetColor(), QColor(102, 153, 204));
    QCOMPARE(Spin("m_pRedSpn")->value(), 102);
    QCOMPARE(Spin("m_pGreenSpn")->value(), 153);
    QCOMPARE(Spin("m_pBlueSpn")->value(), 204);
    QCOMPARE(Spin("m_pHueSpn")->value(), 210);
    QCOMPARE(Text()->text(), QString("#6699CC"));
}

void TestColorDialog::writtenColorsAreFollowed()
{
    Show();
    Write(Text(), "#6699cc");
    QCOMPARE(m_pDialog->GetColor(), QColor(102, 153, 204));
    QCOMPARE(Spin("m_pBlueSpn")->value(), 204);
    QCOMPARE(Spin("m_pHueSpn")->value(), 210);
    Write(Text(), "F80");
    QCOMPARE(m_pDialog->GetColor(), QColor(255, 136, 0));
}

void TestColorDialog::fieldAndStripAreFollowed()
{
    Show();
    auto* field = Find<ColorField>("m_pField");
    auto* strip = Find<ColorStrip>("m_pStrip");
    m_Input.Click(strip, QPoint(5, strip->PlaceOf(255)));
    m_Input.Click(field, field->PlaceOf(120, 1));
    // A column is more than a degree wide.
    QVERIFY(qAbs(Spin("m_pHueSpn")->value() - 120) <= 1);
    QCOMPARE(Spin("m_pSaturationSpn")->value(), 100);
    QCOMPARE(Spin("m_pGreenSpn")->value(), 255);
    QVERIFY(Spin("m_pRedSpn")->value() <= 5);

    strip->setFocus();
    m_Input.Key(Qt::Key_Down);
    QCOMPARE(Spin("m_pGreenSpn")->value(), 254);
    field->setFocus();
    m_Input.Key(Qt::Key_PageDown);
    QCOMPARE(m_pDialog->GetColor(), QColor(254, 254, 254));
}

void TestColorDialog::escapeEndsADragWithTheColorFromBefore_data()
{
    QTest::addColumn<QString>("dragged");
    QTest::newRow("field") << "m_pField";
    QTest::newRow("strip") << "m_pStrip";
}

void TestColorDialog::escapeEndsADragWithTheColorFromBefore()
{
    QFETCH(const QString, dragged);
    Show();
    // A value of 33 % lies between two of the 256 of the strip.
    Write(Spin("m_pHueSpn"), "210");
    Write(Spin("m_pSaturationSpn"), "57");
    Write(Spin("m_pValueSpn"), "33");
    const QColor before = m_pDialog->GetColor();
    auto* widget = Find<QWidget>(dragged.toLatin1().constData());
    m_Input.Press(widget, QPoint(7, 20));
    m_Input.Move(widget, QPoint(9, 40));
    QVERIFY(m_pDialog->GetColor() != before);
    QColor told;
    connect(m_pDialog.get(), &LXColorDlg::ColorChanged, this, [&told](const QColor& color) { told = color; });
    m_Input.Key(Qt::Key_Escape);
    QCOMPARE(m_pDialog->GetColor(), before);
    QCOMPARE(told, before);
    QVERIFY(m_pDialog->isVisible());
    m_Input.Move(widget, QPoint(9, 60));
    m_Input.Release(widget, QPoint(9, 60));
    QCOMPARE(m_pDialog->GetColor(), before);
    // Nothing was rounded behind the numbers either: gray and back is the same color.
    Write(Spin("m_pSaturationSpn"), "0");
    Write(Spin("m_pSaturationSpn"), "57");
    QCOMPARE(m_pDialog->GetColor(), before);
    m_Input.Key(Qt::Key_Escape);
    QVERIFY(!m_pDialog->isVisible());
}

void TestColorDialog::theHueSurvivesTheWayThroughGray()
{
    m_pDialog->SetColor(QColor(102, 153, 204));
    Show();
    Write(Spin("m_pSaturationSpn"), "0");
    QCOMPARE(m_pDialog->GetColor(), QColor(204, 204, 204));
    Write(Spin("m_pValueSpn"), "0");
    QCOMPARE(m_pDialog->GetColor(), QColor(0, 0, 0));
    QCOMPARE(Spin("m_pHueSpn")->value(), 210);
    Write(Spin("m_pValueSpn"), "80");
    Write(Spin("m_pSaturationSpn"), "50");
    QCOMPARE(m_pDialog->GetColor(), QColor(102, 153, 204));
}

void TestColorDialog::oneStepOfANumberLeavesTheOthersExact()
{
    // Its saturation is 40.2 %, its value 79.6 %.
    m_pDialog->SetColor(QColor(203, 161, 121));
    Show();
    auto* hue = Spin("m_pHueSpn");
    hue->setFocus();
    m_Input.Key(Qt::Key_Up);
    m_Input.Key(Qt::Key_Down);
    const QColor color = m_pDialog->GetColor();
    // The highest and the lowest channel don't depend on the hue.
    QCOMPARE(color.red(), 203);
    QCOMPARE(color.blue(), 121);
}

void TestColorDialog::theOldColorIsAPressAway()
{
    m_pDialog->SetColor(QColor(102, 153, 204));
    Show();
    Write(Text(), "#ff0000");
    QCOMPARE(Find<ColorWell>("m_pOldWell")->GetColor(), QColor(102, 153, 204));
    m_Input.Click(Find<ColorWell>("m_pOldWell"));
    QCOMPARE(m_pDialog->GetColor(), QColor(102, 153, 204));
}

void TestColorDialog::withoutAlphaTheColorIsOpaque()
{
    m_pDialog->SetColor(QColor(1, 2, 3, 4));
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3));
    Show();
    QVERIFY(!Spin("m_pAlphaSpn")->isVisible());
    QVERIFY(!Find<QSlider>("m_pAlphaSldr")->isVisible());
    Write(Text(), "#80ff0000");
    QCOMPARE(m_pDialog->GetColor(), QColor(255, 0, 0));
    Spin("m_pRedSpn")->setFocus();
    QCOMPARE(Text()->text(), QString("#FF0000"));
}

void TestColorDialog::withAlphaItCanBeChosen()
{
    m_pDialog->SetAlphaEnabled(true);
    m_pDialog->SetColor(QColor(1, 2, 3, 4));
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3, 4));
    QCOMPARE(Text()->text(), QString("#04010203"));
    Show();
    QVERIFY(Spin("m_pAlphaSpn")->isVisible());
    Write(Spin("m_pAlphaSpn"), "128");
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3, 128));
    QCOMPARE(Find<QSlider>("m_pAlphaSldr")->value(), 128);
    Find<QSlider>("m_pAlphaSldr")->setFocus();
    m_Input.Key(Qt::Key_End);
    QCOMPARE(m_pDialog->GetColor().alpha(), 255);
    QCOMPARE(Spin("m_pAlphaSpn")->value(), 255);
    Write(Spin("m_pRedSpn"), "9");
    QCOMPARE(m_pDialog->GetColor(), QColor(9, 2, 3));
    Write(Text(), "#80ff0000");
    QCOMPARE(m_pDialog->GetColor(), QColor(255, 0, 0, 128));
}

void TestColorDialog::previewsHearOnlyWhatAPersonDoes()
{
    const QSignalSpy changed(m_pDialog.get(), &LXColorDlg::ColorChanged);
    m_pDialog->SetColor(QColor(102, 153, 204));
    m_pDialog->SetAlphaEnabled(true);
    Show();
    QCOMPARE(changed.count(), 0);
    Spin("m_pRedSpn")->setFocus();
    m_Input.Key(Qt::Key_Up);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].value<QColor>(), QColor(103, 153, 204));
}

void TestColorDialog::enterAcceptsFromEverywhere_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"m_pField", "m_pStrip", "m_pOldWell", "m_pRedSpn", "m_pValueSpn", "m_pHexEdt", "m_pRecentLst"})
        QTest::newRow(name) << name;
}

void TestColorDialog::enterAcceptsFromEverywhere()
{
    QFETCH(const QString, name);
    RecentColors::Add(Qt::red);
    m_pDialog = std::make_unique<LXColorDlg>();
    m_pDialog->SetColor(QColor(1, 2, 3));
    Show();
    const QSignalSpy accepted(m_pDialog.get(), &LXDialog::Accepted);
    m_pDialog->findChild<QWidget*>(name)->setFocus();
    m_Input.Key(Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QVERIFY(!m_pDialog->isVisible());
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3));
    QCOMPARE(RecentColors::Read(), (QList<QColor>{QColor(1, 2, 3), Qt::red}));
}

void TestColorDialog::arrowsPassRecentColorsThatDifferInAlphaOnly()
{
    RecentColors::Add(Qt::green);
    RecentColors::Add(QColor(255, 0, 0, 128));
    RecentColors::Add(Qt::red);
    m_pDialog = std::make_unique<LXColorDlg>();
    m_pDialog->SetColor(Qt::red);
    Show();
    auto* recent = Find<QListWidget>("m_pRecentLst");
    QCOMPARE(recent->count(), 2);
    recent->setFocus();
    m_Input.Key(Qt::Key_Right);
    QCOMPARE(m_pDialog->GetColor(), QColor(Qt::green).toRgb());

    m_pDialog->SetAlphaEnabled(true);
    QCOMPARE(recent->count(), 3);
    m_pDialog->SetColor(Qt::red);
    recent->setFocus();
    m_Input.Key(Qt::Key_Right);
    QCOMPARE(m_pDialog->GetColor(), QColor(255, 0, 0, 128));
    m_Input.Key(Qt::Key_Right);
    QCOMPARE(m_pDialog->GetColor(), QColor(Qt::green).toRgb());
}

void TestColorDialog::escapeRejects()
{
    Show();
    Write(Text(), "#ff0000");
    const QSignalSpy rejected(m_pDialog.get(), &LXDialog::Rejected);
    m_Input.Key(Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(RecentColors::Read().isEmpty());
}

void TestColorDialog::wrongTextKeepsTheDialogOpen()
{
    Show();
    Write(Text(), "#12");
    m_Input.Key(Qt::Key_Return);
    QVERIFY(m_pDialog->isVisible());
    QVERIFY(Text()->hasFocus());
    QCOMPARE(Text()->text(), QString("#12"));
    QCOMPARE(Text()->accessibleDescription(), QString("This isn't a color. Write it like #000000."));
    QVERIFY(RecentColors::Read().isEmpty());

    Write(Text(), "#123");
    m_Input.Key(Qt::Key_Return);
    QVERIFY(!m_pDialog->isVisible());
    QCOMPARE(m_pDialog->GetColor(), QColor(0x11, 0x22, 0x33));
}

void TestColorDialog::wrongTextIsForgottenWhenItIsLeft()
{
    m_pDialog->SetColor(QColor(1, 2, 3));
    Show();
    Write(Text(), "nothing");
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3));
    m_Input.Key(Qt::Key_Tab);
    QCOMPARE(Text()->text(), QString("#010203"));
}

void TestColorDialog::textStaysAsItIsWritten()
{
    Show();
    Write(Text(), "#abc");
    QCOMPARE(Text()->text(), QString("#abc"));
    m_Input.Type("def");
    QCOMPARE(Text()->text(), QString("#abcdef"));
    QCOMPARE(m_pDialog->GetColor(), QColor(0xab, 0xcd, 0xef));
    Spin("m_pRedSpn")->setFocus();
    QCOMPARE(Text()->text(), QString("#ABCDEF"));
}

void TestColorDialog::anInvalidColorIsIgnored()
{
    m_pDialog->SetColor(QColor(1, 2, 3));
    m_pDialog->SetColor(QColor());
    QCOMPARE(m_pDialog->GetColor(), QColor(1, 2, 3));
}

void TestColorDialog::everyControlHasANameAndIsReached()
{
    RecentColors::Add(Qt::red);
    m_pDialog = std::make_unique<LXColorDlg>();
    m_pDialog->SetAlphaEnabled(true);
    Show();
    QCOMPARE(WidgetWalk::WithoutName(m_pDialog.get()), QStringList());
    QCOMPARE(WidgetWalk::OutOfReach(m_Input, m_pDialog.get()), QStringList());
    // The walk knows the usual kinds of controls; the field is of our own.
    auto* field = Find<ColorField>("m_pField");
    QVERIFY(!field->accessibleName().isEmpty());
    Find<ColorStrip>("m_pStrip")->setFocus();
    m_Input.Key(Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(field->hasFocus());
}

void TestColorDialog::choosingWaitsForTheAnswer()
{
    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg* dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Color of the sky"));
        QCOMPARE(dialog->GetColor(), QColor(1, 2, 3));
        m_Input.Key(Qt::Key_Escape);
    });
    QVERIFY(!LXColorDlg::Choose(nullptr, "Color of the sky", QColor(1, 2, 3)).isValid());
    QCOMPARE(m_Input.CountWaitingActions(), 0);

    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg* dialog) {
        dialog->findChild<QSpinBox*>("m_pRedSpn")->setFocus();
        m_Input.Key(Qt::Key_Up);
        m_Input.Key(Qt::Key_Return);
    });
    QCOMPARE(LXColorDlg::Choose(nullptr, "Color of the sky", QColor(1, 2, 3)), QColor(2, 2, 3));
    QCOMPARE(m_Input.CountWaitingActions(), 0);
}

void TestColorDialog::aParentMayGoWhileThereIsNoAnswer()
{
    auto* parent = new QWidget;
    m_Input.WhenModalShows<LXColorDlg>([parent](LXColorDlg*) { delete parent; });
    QVERIFY(!LXColorDlg::Choose(parent, "Color of the sky", QColor(1, 2, 3)).isValid());
    QCOMPARE(m_Input.CountWaitingActions(), 0);
}

void TestColorDialog::whatIsShownIsConvertedAndWhatIsChosenIsNot()
{
    const ZKCMSProfile screen = IccProfiles::AdobeRgb();
    QColor shown(200, 90, 40);
    ZKCMSTransform(ZKCMSProfile::SRGB(), screen)(shown);
    QVERIFY(shown != QColor(200, 90, 40));
    ZKCMSManager::GetInstance()->SetDisplay(screen, {});

    RecentColors::Add(QColor(200, 90, 40));
    m_pDialog = std::make_unique<LXColorDlg>();
    m_pDialog->SetColor(QColor(200, 90, 40));
    Show();
    auto* recent = Find<QListWidget>("m_pRecentLst");
    const QPoint swatch = recent->visualItemRect(recent->item(0)).center();
    QCOMPARE(Find<ColorPatch>("m_pNewPatch")->grab().toImage().pixel(10, 10), shown.rgb());
    QCOMPARE(Find<ColorWell>("m_pOldWell")->grab().toImage().pixel(10, 10), shown.rgb());
    QCOMPARE(recent->viewport()->grab().toImage().pixel(swatch), shown.rgb());
    QCOMPARE(m_pDialog->GetColor(), QColor(200, 90, 40));
    QCOMPARE(Text()->text(), QString("#C85A28"));
}

ZK_REGISTER_TEST(tst_colordialog, TestColorDialog)
#include "tst_colordialog.moc"
