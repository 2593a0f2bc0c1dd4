#include "GuiFixture.h"

#include "core/ZKApplication.h"
#include "core/ZKBrushToolManager.h"
#include "core/ZKIBrushTool.h"
#include "gui/CurvedSlider.h"
#include "gui/MakeSelectionOptDialog.h"
#include "gui/StrokeOptionsDialog.h"
#include "gui/ZKDocumentView.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"
#include "support/WidgetWalk.h"

#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

using GuiFixture::MakeDocument;
using GuiFixture::OwnedDocument;

namespace {
class Brush : public ZKIBrushTool
{
public:
    Brush(int id, QString name) : m_Name(std::move(name)) { ZKBrushToolManager::Register(id, this); }

    ~Brush() override { ZKBrushToolManager::Unregister(this); }

    void StrokePath(const QPainterPath&) override {}

    QString GetName() const override { return m_Name; }

    ZKBrushSettings GetSettings() const override { return settings; }

    void SetSettings(const ZKBrushSettings& changed) override { settings = changed; }

    ZKBrushSettings settings;

private:
    QString m_Name;
};

QRadioButton* Choice(const MakeSelectionOptDialog& dialog, const char* name)
{
    return dialog.findChild<QRadioButton*>(QLatin1String(name));
}

void Select(const OwnedDocument& document, const QRect& rect)
{
    LXImage32 mask(rect.width(), rect.height());
    mask.Fill(LXRGBA32i(0xFF000000u));
    document->SetSelectionMask(mask, rect.topLeft());
}
} // namespace

/// The dialogs that ask how a path becomes a selection or a stroke.
class TestOptionDialogs : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { ZKApplication::SetUserValue("StrokeOptions/Tool", -1); }

    void withoutASelectionOnlyANewOneCanBeMade();
    void withASelectionAllFourAreOpen();
    void keysChooseAndEnterAccepts();
    void escapeAndTheFrameReject();
    void theBrushToolsAreListed();
    void withoutABrushToolNothingCanBeAccepted();
    void acceptingGivesTheToolItsSettings();
    void cancellingKeepsTheSettings();
    void anotherToolShowsItsOwnSettings();
    void theLastToolComesFirst();
    void smallSizesHaveAsMuchRoomAsLargeOnes();
    void sliderAndNumberSayTheSame();
    void everyControlIsNamedAndReached();
};

void TestOptionDialogs::withoutASelectionOnlyANewOneCanBeMade()
{
    const OwnedDocument document = MakeDocument({40, 30});
    ZKDocumentView view(document.get(), nullptr);
    const MakeSelectionOptDialog dialog(&view);
    QVERIFY(Choice(dialog, "m_pNewRBtn")->isEnabled());
    QVERIFY(Choice(dialog, "m_pNewRBtn")->isChecked());
    for (const char* name : {"m_pAddRBtn", "m_pSubtractRBtn", "m_pIntersectRBtn"}) {
        QVERIFY(!Choice(dialog, name)->isEnabled());
        QVERIFY(!Choice(dialog, name)->toolTip().isEmpty());
    }
    QCOMPARE(dialog.GetSelectionOption(), 0);
}

void TestOptionDialogs::withASelectionAllFourAreOpen()
{
    const OwnedDocument document = MakeDocument({40, 30});
    Select(document, QRect(3, 4, 5, 6));
    ZKDocumentView view(document.get(), nullptr);
    // What lies in the view asks for its document as well.
    MakeSelectionOptDialog dialog(view.viewport());
    QVERIFY(Choice(dialog, "m_pNewRBtn")->isChecked());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    InputDriver input;
    int expected = 0;
    for (const char* name : {"m_pNewRBtn", "m_pAddRBtn", "m_pSubtractRBtn", "m_pIntersectRBtn"}) {
        QVERIFY(Choice(dialog, name)->toolTip().isEmpty());
        input.Click(Choice(dialog, name));
        QCOMPARE(dialog.GetSelectionOption(), expected++);
    }
}

void TestOptionDialogs::keysChooseAndEnterAccepts()
{
    const OwnedDocument document = MakeDocument({40, 30});
    Select(document, QRect(3, 4, 5, 6));
    ZKDocumentView view(document.get(), nullptr);
    MakeSelectionOptDialog dialog(&view);
    InputDriver input;
    input.WhenModalShows<MakeSelectionOptDialog>([&](MakeSelectionOptDialog* shown) {
        Choice(*shown, "m_pNewRBtn")->setFocus();
        input.Key(Qt::Key_Down);
        input.Key(Qt::Key_Down);
        input.Key(Qt::Key_Return);
    });
    QCOMPARE(dialog.Exec(), 1);
    QCOMPARE(dialog.GetSelectionOption(), int(MakeSelectionOptDialog::Subtract));
}

void TestOptionDialogs::escapeAndTheFrameReject()
{
    const OwnedDocument document = MakeDocument({40, 30});
    ZKDocumentView view(document.get(), nullptr);
    MakeSelectionOptDialog selection(&view);
    InputDriver input;
    input.WhenModalShows<MakeSelectionOptDialog>([&](QWidget*) { input.Key(Qt::Key_Escape); });
    QCOMPARE(selection.Exec(), 0);
    const Brush brush(4, "Round");
    StrokeOptionsDialog stroke(&view);
    input.WhenModalShows<StrokeOptionsDialog>([&](QWidget* shown) { shown->close(); });
    QCOMPARE(stroke.Exec(), 0);
}

void TestOptionDialogs::theBrushToolsAreListed()
{
    const Brush late(9, "Soft");
    const Brush early(4, "Round");
    StrokeOptionsDialog dialog(nullptr);
    auto* combo = dialog.findChild<QComboBox*>("m_pToolCmb");
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->itemText(0), QString("Round"));
    QCOMPARE(dialog.GetCurrentToolID(), 4);
    combo->setCurrentIndex(1);
    QCOMPARE(combo->currentText(), QString("Soft"));
    QCOMPARE(dialog.GetCurrentToolID(), 9);
}

void TestOptionDialogs::withoutABrushToolNothingCanBeAccepted()
{
    StrokeOptionsDialog dialog(nullptr);
    QCOMPARE(dialog.GetCurrentToolID(), -1);
    QVERIFY(!dialog.findChild<QComboBox*>("m_pToolCmb")->isEnabled());
    InputDriver input;
    input.WhenModalShows<StrokeOptionsDialog>([&](StrokeOptionsDialog* shown) {
        input.Key(Qt::Key_Return);
        QVERIFY(shown->isVisible());
        shown->accept();
        QVERIFY(shown->isVisible());
        input.Key(Qt::Key_Escape);
    });
    QCOMPARE(dialog.Exec(), 0);
}

void TestOptionDialogs::acceptingGivesTheToolItsSettings()
{
    Brush brush(4, "Round");
    StrokeOptionsDialog dialog(nullptr);
    InputDriver input;
    input.WhenModalShows<StrokeOptionsDialog>([&](StrokeOptionsDialog* shown) {
        const auto type = [&](const char* name, const char* number) {
            auto* spin = shown->findChild<QSpinBox*>(QLatin1String(name));
            spin->setFocus();
            spin->selectAll();
            input.Type(QLatin1String(number));
        };
        type("m_pSizeSpn", "137");
        type("m_pHardnessSpn", "7");
        type("m_pOpacitySpn", "55");
        type("m_pSpacingSpn", "250");
        input.Key(Qt::Key_Return);
    });
    QCOMPARE(dialog.Exec(), 1);
    QCOMPARE(dialog.GetCurrentToolID(), 4);
    QCOMPARE(brush.settings, (ZKBrushSettings{137, 7, 55, 250}));
}

void TestOptionDialogs::cancellingKeepsTheSettings()
{
    Brush brush(4, "Round");
    StrokeOptionsDialog dialog(nullptr);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pSizeSpn")->value(), brush.settings.size);
    InputDriver input;
    input.WhenModalShows<StrokeOptionsDialog>([&](StrokeOptionsDialog* shown) {
        shown->findChild<QSpinBox*>("m_pSizeSpn")->setValue(77);
        input.Key(Qt::Key_Escape);
    });
    QCOMPARE(dialog.Exec(), 0);
    QCOMPARE(brush.settings, ZKBrushSettings());
}

void TestOptionDialogs::anotherToolShowsItsOwnSettings()
{
    Brush round(4, "Round");
    Brush soft(9, "Soft");
    soft.settings = {300, 0, 20, 5};
    StrokeOptionsDialog dialog(nullptr);
    dialog.findChild<QComboBox*>("m_pToolCmb")->setCurrentIndex(1);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pSizeSpn")->value(), 300);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pHardnessSpn")->value(), 0);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pOpacitySpn")->value(), 20);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pSpacingSpn")->value(), 5);
}

void TestOptionDialogs::theLastToolComesFirst()
{
    const Brush round(4, "Round");
    const Brush soft(9, "Soft");
    {
        StrokeOptionsDialog dialog(nullptr);
        dialog.findChild<QComboBox*>("m_pToolCmb")->setCurrentIndex(1);
        dialog.Accept();
    }
    QCOMPARE(StrokeOptionsDialog(nullptr).GetCurrentToolID(), 9);
}

void TestOptionDialogs::smallSizesHaveAsMuchRoomAsLargeOnes()
{
    QCOMPARE(CurvedSlider::ValueAt(0, 2000), 1);
    QCOMPARE(CurvedSlider::ValueAt(CurvedSlider::Steps, 2000), 2000);
    // The square root of 2000, half way.
    QCOMPARE(CurvedSlider::ValueAt(CurvedSlider::Steps / 2, 2000), 45);
    for (const int value : {1, 2, 3, 10, 99, 500, 2000})
        QVERIFY(qAbs(CurvedSlider::ValueAt(CurvedSlider::StepOf(value, 2000), 2000) - value) <= value / 100);
}

void TestOptionDialogs::sliderAndNumberSayTheSame()
{
    const Brush brush(4, "Round");
    StrokeOptionsDialog dialog(nullptr);
    auto* slider = dialog.findChild<QSlider*>("m_pSizeSldr");
    auto* spin = dialog.findChild<QSpinBox*>("m_pSizeSpn");
    QCOMPARE(slider->value(), CurvedSlider::StepOf(spin->value(), 2000));
    slider->setValue(500);
    QCOMPARE(spin->value(), 45);
    QCOMPARE(slider->value(), 500);
    spin->setValue(1234);
    QCOMPARE(spin->value(), 1234);
    QCOMPARE(slider->value(), CurvedSlider::StepOf(1234, 2000));
    dialog.findChild<QSlider*>("m_pOpacitySldr")->setValue(33);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pOpacitySpn")->value(), 33);
}

void TestOptionDialogs::everyControlIsNamedAndReached()
{
    const Brush brush(4, "Round");
    const OwnedDocument document = MakeDocument({40, 30});
    Select(document, QRect(3, 4, 5, 6));
    ZKDocumentView view(document.get(), nullptr);
    MakeSelectionOptDialog selection(&view);
    selection.show();
    QVERIFY(QTest::qWaitForWindowActive(&selection));
    QCOMPARE(WidgetWalk::WithoutName(&selection), QStringList());

    StrokeOptionsDialog stroke(nullptr);
    stroke.show();
    QVERIFY(QTest::qWaitForWindowActive(&stroke));
    QCOMPARE(WidgetWalk::WithoutName(&stroke), QStringList());
    InputDriver input;
    QCOMPARE(WidgetWalk::OutOfReach(input, &stroke), QStringList());
}

ZK_REGISTER_TEST(tst_optiondialogs, TestOptionDialogs)
#include "tst_optiondialogs.moc"
