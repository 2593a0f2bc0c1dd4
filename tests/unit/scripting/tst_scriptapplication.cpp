#include "core/ZKApplication.h"
#include "gui/LexoAppKeyHook.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

/// `application`
class TestScriptApplication : public QObject
{
    Q_OBJECT

private slots:
    void colorsAreReadAndSet();
    void patternsAreChosenByIndex();
    void userValuesKeepTheirType();
    void textGoesThroughTheClipboard();
    void imagesGoThroughTheClipboard();
    void aPictureOfAnotherProgramIsSeenOnTheClipboard();
    void shortcutsAndCursorsAreTold();
    void foldersAndNamesAreThoseOfTheProgram();
};

void TestScriptApplication::colorsAreReadAndSet()
{
    EditorScriptFixture editor;
    const QColor foreground = ZKApplication::GetForeground();
    const QColor background = ZKApplication::GetBackground();
    editor.Check(R"(
        application.foreground = "#ff0000"
        application.background = "blue"
        expect.equal([application.foreground, application.background], ["#ffff0000", "#ff0000ff"])
        expect.throws(function() { application.foreground = "reddish" }, "\"reddish\" is no color")
        application.foreground = "white"
        application.background = "black"
        expect.equal([application.maskForeground, application.maskBackground], ["#ffffffff", "#ff000000"])
    )");
    QCOMPARE(ZKApplication::GetForeground(), QColor(Qt::white));
    ZKApplication::SetForeground(foreground);
    ZKApplication::SetBackground(background);
}

void TestScriptApplication::patternsAreChosenByIndex()
{
    EditorScriptFixture editor;
    QVERIFY(ZKApplication::GetPatternCount() > 1);
    editor.Check(R"(
        application.pattern = 1
        expect.equal(application.pattern, 1)
        expect.throws(function() { application.pattern = application.patternCount }, "pattern has to be")
        expect.throws(function() { application.patternFile(-1) }, "index has to be")
        expect.ok(application.patternFile(0).length > 0)
        application.pattern = 0
    )");
    QCOMPARE(ZKApplication::GetTexturePatternIndex(), 0);
}

void TestScriptApplication::userValuesKeepTheirType()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        expect.equal(application.userValue("Script/None"), undefined)
        expect.equal(application.userValue("Script/None", 7), 7)
        application.setUserValue("Script/Number", 12)
        application.setUserValue("Script/Text", "a b")
        application.setUserValue("Script/Flag", true)
        expect.equal(application.userValue("Script/Number", 0), 12)
        expect.equal(application.userValue("Script/Text", ""), "a b")
        expect.equal(application.userValue("Script/Flag", false), true)
        expect.throws(function() { application.setUserValue("", 1) }, "A value needs a key.")
    )");
    QCOMPARE(ZKApplication::GetUserValue("Script/Number", 0).toInt(), 12);
}

void TestScriptApplication::textGoesThroughTheClipboard()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        application.clipboardText = "some words"
        expect.equal(application.clipboardText, "some words")
        expect.equal(application.clipboardImage, null)
        expect.throws(function() { application.saveClipboardImage("x.png") }, "There is no image")
        application.clearClipboard()
        expect.equal(application.clipboardText, "")
    )");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString());
}

void TestScriptApplication::imagesGoThroughTheClipboard()
{
    EditorScriptFixture editor;
    QImage picture(5, 4, QImage::Format_ARGB32);
    picture.fill(Qt::magenta);
    QVERIFY(picture.save(editor.TempFile("in.png")));
    editor.Check(QString(R"(
        application.copyImage(%1)
        expect.equal(application.clipboardImage, { width: 5, height: 4 })
        application.saveClipboardImage(%2)
        expect.throws(function() { application.copyImage("nowhere.png") }, "is no picture")
        application.clearClipboard()
        expect.equal(application.clipboardImage, null)
    )")
                     .arg(editor.Quoted("in.png"), editor.Quoted("out.png")));
    QCOMPARE(QImage(editor.TempFile("out.png")).pixelColor(4, 3), QColor(Qt::magenta));
}

void TestScriptApplication::aPictureOfAnotherProgramIsSeenOnTheClipboard()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        faults.putForeignImage(6, 4, "red")
        expect.equal(application.clipboardImage, { width: 6, height: 4 })
        application.clearClipboard()
    )",
                 true);
}

void TestScriptApplication::shortcutsAndCursorsAreTold()
{
    EditorScriptFixture editor;
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    editor.Check(R"(
        expect.equal([application.shortcutsEnabled, application.overrideCursor], [false, { shape: "Wait" }])
    )");
    QGuiApplication::restoreOverrideCursor();
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    editor.Check(R"(
        expect.equal([application.shortcutsEnabled, application.overrideCursor], [true, null])
    )");
}

void TestScriptApplication::foldersAndNamesAreThoseOfTheProgram()
{
    EditorScriptFixture editor;
    editor.Check(QString(R"(
        expect.equal([application.dataFolder, application.resourceFolder], ["%1", "%2"])
        expect.ok(/^\d+\.\d+/.test(application.version))
        expect.ok(widgets.find("mainWindow").title.indexOf(application.name) >= 0)
    )")
                     .arg(ZKApplication::GetUserDataFolder(), ZKApplication::GetResourcePath()));
}

#include "tst_scriptapplication.moc"
ZK_REGISTER_TEST(tst_scriptapplication, TestScriptApplication)
