#include "app/ColorPreferences.h"
#include "app/MainWindow.h"
#include "app/PreferencesDialog.h"
#include "app/ScreenProfile.h"
#include "core/ZKCMSManager.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QColorSpace>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

namespace {
/// A screen beside the first one, which says who it is.
class SecondScreen : public QPlatformScreen
{
public:
    QRect geometry() const override { return QRect(800, 0, 800, 600); }

    int depth() const override { return 32; }

    QImage::Format format() const override { return QImage::Format_RGB32; }

    QString manufacturer() const override { return QStringLiteral("Maker"); }

    QString model() const override { return QStringLiteral("Wide/27"); }

    QString serialNumber() const override { return QStringLiteral("7"); }
};

/// The second screen for as long as this stands.
class TwoScreens
{
public:
    TwoScreens() { QWindowSystemInterface::handleScreenAdded(m_pSecond); }

    ~TwoScreens() { QWindowSystemInterface::handleScreenRemoved(m_pSecond); }

    Q_DISABLE_COPY(TwoScreens)

    QScreen* First() const { return QGuiApplication::primaryScreen(); }

    QScreen* Second() const { return m_pSecond->screen(); }

private:
    SecondScreen* m_pSecond = new SecondScreen; // goes when it is removed
};

QByteArray AdobeRgb()
{
    return QColorSpace(QColorSpace::AdobeRgb).iccProfile();
}

QString ProfileFile(const EditorFixture& editor)
{
    QFile file(editor.TempFile("second.icc"));
    const QByteArray icc = AdobeRgb();
    return file.open(QIODevice::WriteOnly) && file.write(icc) == icc.size() ? file.fileName() : QString();
}
} // namespace

/// Each screen has a profile of its own, and the window is shown in that of the screen it is on.
class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void aScreenTellsWhoItIs();
    void theWindowTakesTheProfileOfItsScreen();
    void thePreferencesNameTheScreenTheyAreFor();
};

void TestScreens::aScreenTellsWhoItIs()
{
    const TwoScreens screens;
    QCOMPARE(ScreenProfile::KeyOf(screens.Second()), QString("Maker Wide/27 7"));
    QCOMPARE(ScreenProfile::NameOf("Maker Wide/27 7"), QString("Maker Wide/27"));
    QCOMPARE(ScreenProfile::NameOf("another one"), QString());
    QCOMPARE(ScreenProfile::KeyOf(nullptr), QString());
    QVERIFY(ScreenProfile::KeyOf(screens.First()) != ScreenProfile::KeyOf(screens.Second()));
}

void TestScreens::theWindowTakesTheProfileOfItsScreen()
{
    const TwoScreens screens;
    EditorFixture editor(20, 10);
    ColorPreferences second = ColorPreferences::Read(ScreenProfile::KeyOf(screens.Second()));
    second.screenProfile = ProfileFile(editor);
    second.Write();
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QCOMPARE(manager->GetDisplayProfile(), ZKCMSProfile::SRGB());

    QWindow* window = editor.Window()->windowHandle();
    window->setScreen(screens.Second());
    QCOMPARE(manager->GetDisplayProfile(), ZKCMSProfile(AdobeRgb()));
    window->setScreen(screens.First());
    QCOMPARE(manager->GetDisplayProfile(), ZKCMSProfile::SRGB());
}

void TestScreens::thePreferencesNameTheScreenTheyAreFor()
{
    const TwoScreens screens;
    const EditorFixture editor(20, 10);
    const QString second = ScreenProfile::KeyOf(screens.Second());
    const PreferencesDialog dialog(Preferences::Read(second), nullptr);
    QCOMPARE(dialog.findChild<QLabel*>("m_pScreenLbl")->text(),
             QString("Profile of s&creen “Maker Wide/27”:"));
    auto* profile = dialog.findChild<QComboBox*>("m_pScreenCmb");
    QCOMPARE(profile->accessibleName(), QString("Profile of the screen “Maker Wide/27”"));

    const QString plain = ColorPreferences::PlainScreen;
    profile->setCurrentIndex(profile->findData(plain));
    dialog.GetValues().Write();
    QCOMPARE(ColorPreferences::Read(second).screenProfile, plain);
    QCOMPARE(ColorPreferences::Read(ScreenProfile::KeyOf(screens.First())).screenProfile, QString());
}

ZK_REGISTER_TEST(tst_screens, TestScreens)
#include "tst_screens.moc"
