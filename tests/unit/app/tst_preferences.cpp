#include "app/Preferences.h"
#include "app/PreferencesDialog.h"
#include "core/ZKApplication.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

class TestPreferences : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void atFirstTheDefaultsHold();
    void whatIsWrittenIsRead();
    void aWrongValueIsTheDefault_data();
    void aWrongValueIsTheDefault();
    void theDialogShowsAndGivesBackTheValues();
    void aMemoryTooSmallToWorkWithIsRaised();
    void theDialogGoesBackToTheDefaults();
};

namespace {
constexpr const char* Keys[] = {"Editor/MemoryMegabytes",
                                "Editor/UndoSteps",
                                "Editor/UndoMegabytes",
                                "Editor/Look",
                                "Editor/Scale",
                                "Files/LargestSide",
                                "Files/LargestDecodedMegabytes",
                                "Color/WorkingProfile",
                                "Color/ScreenProfile",
                                "Color/Rendering",
                                "Color/BlackPoint"};

/// All values in one line, for comparing.
QString Line(const Preferences& values)
{
    return QStringLiteral("memory %1, undo %2 steps %3 MB, look %4, scale %5, files %6 px %7 bytes, "
                          "colors %8 on %9, %10 %11")
        .arg(values.memoryMegabytes)
        .arg(values.undoSteps)
        .arg(values.undoMegabytes)
        .arg(values.look == Theme::Look::Light ? "light" : "dark")
        .arg(values.scale)
        .arg(values.fileLimits.maxSide)
        .arg(values.fileLimits.maxDecodedBytes)
        .arg(values.colors.workingProfile, values.colors.screenProfile)
        .arg(int(values.colors.rendering.intent))
        .arg(values.colors.rendering.blackPoint);
}

Preferences OtherValues()
{
    Preferences values;
    values.memoryMegabytes = 512;
    values.undoSteps = 7;
    values.undoMegabytes = 0;
    values.look = Theme::Look::Light;
    values.scale = 1.75;
    values.fileLimits.maxSide = 9000;
    values.fileLimits.maxDecodedBytes = qint64(300) * 1024 * 1024;
    values.colors.workingProfile = "/gone/working.icc";
    values.colors.screenProfile = ColorPreferences::PlainScreen;
    values.colors.rendering = {ZKCMSRendering::Intent::Perceptual, false};
    return values;
}
} // namespace

void TestPreferences::cleanup()
{
    for (const char* key : Keys)
        ZKApplication::SetUserValue(key, QVariant());
}

void TestPreferences::atFirstTheDefaultsHold()
{
    QCOMPARE(Line(Preferences::Read()), Line(Preferences()));
    QCOMPARE(Preferences().look, Theme::Look::Dark);
    QCOMPARE(Preferences().scale, 1.0);
}

void TestPreferences::whatIsWrittenIsRead()
{
    OtherValues().Write();
    QCOMPARE(Line(Preferences::Read()), Line(OtherValues()));
    QCOMPARE(Preferences::ReadScale(), 1.75);
}

void TestPreferences::aWrongValueIsTheDefault_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("memory is no number") << "Editor/MemoryMegabytes"
                                         << "much";
    QTest::newRow("memory is too small") << "Editor/MemoryMegabytes"
                                         << "63";
    QTest::newRow("memory is negative") << "Editor/MemoryMegabytes"
                                        << "-1";
    QTest::newRow("steps are negative") << "Editor/UndoSteps"
                                        << "-5";
    QTest::newRow("undo memory is no number") << "Editor/UndoMegabytes"
                                              << "1e9999";
    QTest::newRow("unknown look") << "Editor/Look"
                                  << "pink";
    QTest::newRow("scale is too small") << "Editor/Scale"
                                        << "0.5";
    QTest::newRow("scale is too large") << "Editor/Scale"
                                        << "2.25";
    QTest::newRow("scale is no number") << "Editor/Scale"
                                        << "nan";
    QTest::newRow("unknown rendering") << "Color/Rendering"
                                       << "bright";
    QTest::newRow("side is 0") << "Files/LargestSide"
                               << "0";
}

void TestPreferences::aWrongValueIsTheDefault()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    ZKApplication::SetUserValue(key, value);
    QCOMPARE(Line(Preferences::Read()), Line(Preferences()));
}

void TestPreferences::theDialogShowsAndGivesBackTheValues()
{
    const PreferencesDialog dialog(OtherValues(), nullptr);
    QCOMPARE(dialog.findChild<QComboBox*>("m_pLookCmb")->currentText(), QString("Light"));
    QCOMPARE(dialog.findChild<QComboBox*>("m_pScaleCmb")->currentText(), QString("175 %"));
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pUndoStepsSpn")->value(), 7);
    QCOMPARE(dialog.findChild<QSpinBox*>("m_pUndoMemorySpn")->text(), QString("No limit"));
    QCOMPARE(Line(dialog.GetValues()), Line(OtherValues()));
}

void TestPreferences::aMemoryTooSmallToWorkWithIsRaised()
{
    const PreferencesDialog dialog(Preferences(), nullptr);
    auto* memory = dialog.findChild<QSpinBox*>("m_pMemorySpn");
    QCOMPARE(memory->text(), QString("Automatic"));
    memory->setValue(5);
    QCOMPARE(dialog.GetValues().memoryMegabytes, 64);
}

void TestPreferences::theDialogGoesBackToTheDefaults()
{
    const PreferencesDialog dialog(OtherValues(), nullptr);
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::RestoreDefaults)->click();
    QCOMPARE(Line(dialog.GetValues()), Line(Preferences()));
}

ZK_REGISTER_TEST(tst_preferences, TestPreferences)
#include "tst_preferences.moc"
