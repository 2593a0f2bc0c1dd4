#include "app/ColorPreferences.h"
#include "app/PreferencesDialog.h"
#include "app/ProfileDialog.h"
#include "core/ZKCMSManager.h"
#include "guicore/LXMessageBox.h"
#include "scripting/InputDriver.h"
#include "support/FileFolder.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>

using namespace IccProfiles;

/// What the person sets about colors, and the dialogs that ask for a profile.
class TestColorPreferences : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void atFirstEverythingIsSRgb();
    void chosenFilesAreUsed();
    void aFileThatIsGoneIsToldAndCountsAsSRgb();
    void aProfileOfACameraIsToldAndCountsAsSRgb();
    void withoutAWindowSystemTheScreenSaysNothing();
    void eachScreenKeepsItsOwnProfile();
    void theDialogOffersWhatThereIs();
    void aFileThatIsGoneStaysChosenInTheDialog();
    void aFileIsAddedToBothListsOnce();
    void assigningOffersNoneAndConvertingDoesNot();
    void theDialogAnswersWhatIsChosen();
    void aFileThatIsRefusedLeavesTheChoice();
    void aProfileIsNamedForPeople();

private:
    QString WideFile() const { return m_Folder.Write("wide.icc", WideRgb().GetData()); }

    FileFolder m_Folder;
};

void TestColorPreferences::init()
{
    QCOMPARE(ColorPreferences().Use(), QString());
}

void TestColorPreferences::atFirstEverythingIsSRgb()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QVERIFY(ColorPreferences::Read() == ColorPreferences());
    QCOMPARE(manager->GetWorkingRGBIndex(), 0);
    QCOMPARE(manager->GetDisplayProfile(), ZKCMSProfile::SRGB());
    QVERIFY(manager->GetDisplayRendering() == ZKCMSRendering());
}

void TestColorPreferences::chosenFilesAreUsed()
{
    ColorPreferences values;
    values.workingProfile = WideFile();
    values.screenProfile = m_Folder.Write("screen.icc", AdobeRgb().GetData());
    values.rendering = {ZKCMSRendering::Intent::Perceptual, false};
    QCOMPARE(values.Use(), QString());
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QCOMPARE(manager->GetRGBProfile(manager->GetWorkingRGBIndex()), WideRgb());
    QCOMPARE(manager->GetDisplayProfile(), AdobeRgb());
    QVERIFY(manager->GetDisplayRendering() == values.rendering);
    values.screenProfile = ColorPreferences::PlainScreen;
    QCOMPARE(values.Use(), QString());
    QCOMPARE(manager->GetDisplayProfile(), ZKCMSProfile::SRGB());
}

void TestColorPreferences::aFileThatIsGoneIsToldAndCountsAsSRgb()
{
    ColorPreferences values;
    values.workingProfile = WideFile();
    QCOMPARE(values.Use(), QString());
    values.workingProfile = m_Folder.Path("gone.icc");
    values.screenProfile = m_Folder.Write("text.icc", "no profile");
    const QString told = values.Use();
    QVERIFY2(told.contains("gone.icc” can't be read"), qPrintable(told));
    QVERIFY2(told.contains("text.icc” is damaged."), qPrintable(told));
    QVERIFY2(told.endsWith("sRGB is used in its place. Another profile can be chosen in the preferences."),
             qPrintable(told));
    QCOMPARE(ZKCMSManager::GetInstance()->GetWorkingRGBIndex(), 0);
    QCOMPARE(ZKCMSManager::GetInstance()->GetDisplayProfile(), ZKCMSProfile::SRGB());
}

void TestColorPreferences::aProfileOfACameraIsToldAndCountsAsSRgb()
{
    ColorPreferences values;
    values.workingProfile = m_Folder.Write("camera.icc", OnlyReadable().GetData());
    QVERIFY(values.Use().contains("only tells what the colors of a camera or a scanner are"));
    QCOMPARE(ZKCMSManager::GetInstance()->GetWorkingRGBIndex(), 0);
}

void TestColorPreferences::withoutAWindowSystemTheScreenSaysNothing()
{
    ZKCMSManager::GetInstance()->SetDisplay(AdobeRgb(), {});
    QCOMPARE(ColorPreferences().Use(), QString());
    QCOMPARE(ZKCMSManager::GetInstance()->GetDisplayProfile(), ZKCMSProfile::SRGB());
}

void TestColorPreferences::eachScreenKeepsItsOwnProfile()
{
    const auto forget = qScopeGuard([] { ColorPreferences().Write(); });
    ColorPreferences ofAll;
    ofAll.screenProfile = ColorPreferences::PlainScreen;
    ofAll.Write();
    // Where nothing was chosen, what was chosen for all counts.
    QCOMPARE(ColorPreferences::Read("Maker A/1").screenProfile, QString(ColorPreferences::PlainScreen));

    ColorPreferences first = ColorPreferences::Read("Maker A/1");
    first.screenProfile = "/profiles/one.icc";
    first.Write();
    ColorPreferences second = ColorPreferences::Read("Maker B");
    second.screenProfile = QString();
    second.Write();
    QVERIFY(ColorPreferences::Read("Maker A/1") == first);
    QVERIFY(ColorPreferences::Read("Maker B") == second);
    QVERIFY(ColorPreferences::Read() == ofAll);
}

void TestColorPreferences::theDialogOffersWhatThereIs()
{
    ColorPreferences values;
    values.workingProfile = WideFile();
    QCOMPARE(values.Use(), QString());
    Preferences all;
    all.colors = values;
    const PreferencesDialog dialog(all, nullptr);
    auto* working = dialog.findChild<QComboBox*>("m_pWorkingCmb");
    auto* screen = dialog.findChild<QComboBox*>("m_pScreenCmb");
    QCOMPARE(working->itemText(0), QString("sRGB"));
    QCOMPARE(working->currentText(), WideRgb().GetDescription());
    QCOMPARE(screen->itemText(0), QString("The screen's own"));
    QCOMPARE(screen->itemText(1), QString("sRGB"));
    QCOMPARE(screen->currentIndex(), 0);
    working->setCurrentIndex(0);
    screen->setCurrentIndex(1);
    dialog.findChild<QComboBox*>("m_pIntentCmb")->setCurrentIndex(1);
    dialog.findChild<QCheckBox*>("m_pBlackPointChb")->setChecked(false);
    const ColorPreferences chosen = dialog.GetValues().colors;
    QCOMPARE(chosen.workingProfile, QString());
    QCOMPARE(chosen.screenProfile, QString(ColorPreferences::PlainScreen));
    QVERIFY((chosen.rendering == ZKCMSRendering{ZKCMSRendering::Intent::Perceptual, false}));
}

void TestColorPreferences::aFileThatIsGoneStaysChosenInTheDialog()
{
    Preferences all;
    all.colors.workingProfile = "/gone/my.icc";
    const PreferencesDialog dialog(all, nullptr);
    QCOMPARE(dialog.findChild<QComboBox*>("m_pWorkingCmb")->currentText(), QString("my.icc"));
    QCOMPARE(dialog.GetValues().colors.workingProfile, QString("/gone/my.icc"));
}

void TestColorPreferences::aFileIsAddedToBothListsOnce()
{
    PreferencesDialog dialog(Preferences(), nullptr);
    auto* working = dialog.findChild<QComboBox*>("m_pWorkingCmb");
    auto* screen = dialog.findChild<QComboBox*>("m_pScreenCmb");
    const int workingCount = working->count();
    const int screenCount = screen->count();
    const QString file = m_Folder.Write("linear.icc", Linear().GetData());
    dialog.AddProfile(file);
    dialog.AddProfile(file);
    QCOMPARE(working->count(), workingCount + 1);
    QCOMPARE(screen->count(), screenCount + 1);
    // It is offered; choosing is another matter.
    QVERIFY(dialog.GetValues().colors == ColorPreferences());
    working->setCurrentIndex(working->findData(file));
    QCOMPARE(dialog.GetValues().colors.workingProfile, file);
    QCOMPARE(dialog.GetValues().colors.Use(), QString());
    QCOMPARE(ZKCMSManager::GetInstance()->GetRGBProfile(ZKCMSManager::GetInstance()->GetWorkingRGBIndex()),
             Linear());
}

void TestColorPreferences::assigningOffersNoneAndConvertingDoesNot()
{
    ProfileDialog assign(ProfileDialog::Purpose::Assign, ZKCMSProfile(), nullptr);
    ProfileDialog convert(ProfileDialog::Purpose::Convert, ZKCMSProfile(), nullptr);
    assign.ChooseFile(m_Folder.Write("camera.icc", OnlyReadable().GetData()));
    QCOMPARE(assign.GetProfile(), OnlyReadable());
    auto* assigned = assign.findChild<QComboBox*>("m_pProfileCmb");
    auto* converted = convert.findChild<QComboBox*>("m_pProfileCmb");
    QCOMPARE(assigned->itemText(0), QString("None (counts as sRGB)"));
    QCOMPARE(converted->itemText(0), QString("sRGB"));
    const ProfileDialog later(ProfileDialog::Purpose::Convert, ZKCMSProfile(), nullptr);
    // None, and the camera's, are nothing to convert to.
    QCOMPARE(later.findChild<QComboBox*>("m_pProfileCmb")->count(), assigned->count() - 2);
}

void TestColorPreferences::theDialogAnswersWhatIsChosen()
{
    ProfileDialog dialog(ProfileDialog::Purpose::Convert, WideRgb(), nullptr);
    QCOMPARE(dialog.findChild<QLabel*>("m_pPresentNameLbl")->text(), WideRgb().GetDescription());
    QCOMPARE(dialog.GetProfile(), ZKCMSProfile::SRGB());
    QVERIFY(dialog.GetRendering() == ZKCMSRendering());
    dialog.ChooseFile(WideFile());
    QCOMPARE(dialog.GetProfile(), WideRgb());
    dialog.findChild<QComboBox*>("m_pIntentCmb")->setCurrentIndex(1);
    dialog.findChild<QCheckBox*>("m_pBlackPointChb")->setChecked(false);
    QVERIFY((dialog.GetRendering() == ZKCMSRendering{ZKCMSRendering::Intent::Perceptual, false}));
}

void TestColorPreferences::aFileThatIsRefusedLeavesTheChoice()
{
    ProfileDialog dialog(ProfileDialog::Purpose::Convert, ZKCMSProfile(), nullptr);
    dialog.ChooseFile(WideFile());
    QCOMPARE(dialog.GetProfile(), WideRgb());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    InputDriver input;
    for (const ZKCMSProfile& refused : {OnlyReadable(), Gray()}) {
        input.WhenModalShows<LXMessageBox>([&input](LXMessageBox*) { input.Key(Qt::Key_Escape); });
        dialog.ChooseFile(m_Folder.Write("refused.icc", refused.GetData()));
        QCOMPARE(input.CountWaitingActions(), 0);
        QCOMPARE(dialog.GetProfile(), WideRgb());
    }
}

void TestColorPreferences::aProfileIsNamedForPeople()
{
    QCOMPARE(ProfileDialog::NameOf(ZKCMSProfile()), QString("None (counts as sRGB)"));
    QCOMPARE(ProfileDialog::NameOf(ZKCMSProfile("a profile")), QString("Without a name"));
    QCOMPARE(ProfileDialog::NameOf(AdobeRgb()), QString("Adobe RGB"));
}

ZK_REGISTER_TEST(tst_colorpreferences, TestColorPreferences)
#include "tst_colorpreferences.moc"
