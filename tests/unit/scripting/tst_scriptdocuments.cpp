#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "document/LXPathsListModel.h"
#include "image/ZKCMSTransform.h"
#include "support/EditorScriptFixture.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QImage>
#include <QTimer>

/// `documents` and the documents it gives.
class TestScriptDocuments : public QObject
{
    Q_OBJECT

private slots:
    void aNewDocumentIsAsAsked();
    void withoutOptionsItIsWhite();
    void wrongSizesAndOptionsAreRefused_data();
    void wrongSizesAndOptionsAreRefused();
    void withoutADocumentThereIsNoActiveOne();
    void openShowsTheFileOnce();
    void aMissingFileIsAnErrorThatCanBeCaught();
    void savingGivesTheDocumentItsFile();
    void exportLeavesTheDocumentAsItIs();
    void exportRefusesAnUnknownEnding();
    void aLockedDocumentIsNeitherSavedNorExported();
    void activateBringsADocumentToTheFront();
    void aClosedDocumentSaysSo();
    void aRectangleIsSelectedByAStep();
    void selectionsAreSavedLoadedAndDeletedBySteps();
    void pathsAreAddedByOneStep();
    void guidesAreTold();
    void colorSamplesAndPathsAreTold();
    void stateAndResolutionAreThoseOfTheDocument();
    void profilesAreAssignedAndConvertedToBySteps();
    void wrongProfilesAreRefused();
    void newDocumentsAreMeantInTheWorkingProfile();
};

namespace {
QString ProfileFile(const QString& path)
{
    QFile file(path);
    const QByteArray icc = IccProfiles::AdobeRgb().GetData();
    return file.open(QIODevice::WriteOnly) && file.write(icc) == icc.size() ? path : QString();
}
} // namespace

void TestScriptDocuments::aNewDocumentIsAsAsked()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        const made = documents.create(40, 30, { dpi: 300, background: "#ff0000" })
        expect.equal([made.width, made.height, made.dpi], [40, 30, 300])
        expect.equal(documents.count, 1)
        expect.equal(documents.active.name, made.name)
        expect.equal(made.path, "")
        expect.ok(made.isOpen && made.isActive && !made.modified)
    )");
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(40, 30));
    QCOMPARE(editor.Document()->GetDPI(), 300.0);
    QCOMPARE(editor.Pixels(1).pixelColor(39, 29), QColor(255, 0, 0));
}

void TestScriptDocuments::withoutOptionsItIsWhite()
{
    EditorScriptFixture editor;
    editor.Check("documents.create(2, 1)");
    QCOMPARE(editor.Pixels(1).pixelColor(1, 0), QColor(Qt::white));
    QCOMPARE(editor.Document()->GetDPI(), 72.0);
}

void TestScriptDocuments::wrongSizesAndOptionsAreRefused_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("words");
    QTest::newRow("no size") << "documents.create(0, 1)"
                             << "width has to be a whole number from 1 to 300000";
    QTest::newRow("a text") << "documents.create(4, 'high')"
                            << "height has to be a number, not \"high\"";
    QTest::newRow("a part of a pixel") << "documents.create(1.5, 1)"
                                       << "not 1.5";
    QTest::newRow("too wide") << "documents.create(300001, 1)"
                              << "300000";
    QTest::newRow("an option that isn't") << "documents.create(1, 1, { backgroud: 'red' })"
                                          << "There is no option \"backgroud\"";
    QTest::newRow("no options") << "documents.create(1, 1, 300)"
                                << "Options are an object, not 300";
    QTest::newRow("a color that isn't") << "documents.create(1, 1, { background: 'pinkish' })"
                                        << "\"pinkish\" is no color";
    QTest::newRow("no resolution") << "documents.create(1, 1, { dpi: -1 })"
                                   << "above 0";
}

void TestScriptDocuments::wrongSizesAndOptionsAreRefused()
{
    QFETCH(QString, call);
    QFETCH(QString, words);
    EditorScriptFixture editor;
    const ScriptOutcome outcome = editor.Run(call);
    QCOMPARE(outcome.kind, ScriptOutcome::Kind::Failed);
    QVERIFY2(outcome.message.contains(words), qPrintable(outcome.message));
    QVERIFY(!editor.Document());
}

void TestScriptDocuments::withoutADocumentThereIsNoActiveOne()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        expect.equal(documents.active, null)
        expect.equal(documents.all.length, 0)
        expect.throws(function() { layers.count }, "No document is open.")
        expect.throws(function() { history.undo() }, "No document is open.")
        expect.throws(function() { input.click(1, 1) }, "No document is open.")
    )");
}

void TestScriptDocuments::openShowsTheFileOnce()
{
    EditorScriptFixture editor;
    QImage picture(6, 5, QImage::Format_ARGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(editor.TempFile("blue.png")));
    editor.Check(QString(R"(
        const path = %1
        const first = documents.open(path)
        expect.equal([first.name, first.path, first.width, first.height], ["blue.png", path, 6, 5])
        documents.create(3, 3)
        documents.open(path)
        expect.equal(documents.count, 2)
        expect.ok(first.isActive)
    )")
                     .arg(editor.Quoted("blue.png")));
}

void TestScriptDocuments::aMissingFileIsAnErrorThatCanBeCaught()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        expect.throws(function() { documents.open("nowhere.png") }, "There is no file \"nowhere.png\".")
    )");
}

void TestScriptDocuments::savingGivesTheDocumentItsFile()
{
    EditorScriptFixture editor(4, 3, Qt::green);
    editor.Check(QString(R"(
        const path = %1, active = documents.active
        layers.at(0).setPixel(0, 0, "red")
        expect.ok(active.modified, "modified by a pixel")
        expect.ok(active.save(path))
        expect.equal([active.path, active.name, active.modified], [path, "kept.png", false])
        layers.at(0).setPixel(1, 0, "red")
        expect.ok(active.save())
    )")
                     .arg(editor.Quoted("kept.png")));
    const QImage kept(editor.TempFile("kept.png"));
    QCOMPARE(kept.pixelColor(1, 0), QColor(Qt::red));
    QCOMPARE(kept.pixelColor(2, 0), QColor(Qt::green));
}

void TestScriptDocuments::exportLeavesTheDocumentAsItIs()
{
    EditorScriptFixture editor(4, 3, Qt::green);
    editor.Check(QString(R"(
        layers.at(0).setPixel(0, 0, "red")
        documents.active.exportAs(%1)
        expect.equal([documents.active.path, documents.active.modified], ["", true])
    )")
                     .arg(editor.Quoted("copy.png")));
    QCOMPARE(QImage(editor.TempFile("copy.png")).pixelColor(0, 0), QColor(Qt::red));
}

void TestScriptDocuments::exportRefusesAnUnknownEnding()
{
    EditorScriptFixture editor(4, 3);
    const ScriptOutcome outcome = editor.Run("documents.active.exportAs('picture.xyz')");
    QVERIFY2(outcome.message.contains("names no flat format"), qPrintable(outcome.message));
}

void TestScriptDocuments::aLockedDocumentIsNeitherSavedNorExported()
{
    EditorScriptFixture editor(4, 3);
    QVERIFY(editor.Document()->Lock());
    // When the script is through: it ends only with an editor that is at rest.
    QTimer::singleShot(0, editor.Document(), &LXDocumentInterface::Unlock);
    editor.Check(QString(R"(
        expect.equal(documents.active.locked, true)
        for (const act of [d => d.save(%1), d => d.exportAs(%1), () => history.undo(),
                           () => layers.add(), () => layers.at(0).fill("red")]) {
            expect.throws(function() { act(documents.active) }, "The document is being changed.")
        }
    )")
                     .arg(editor.Quoted("never.png")));
    QVERIFY(!editor.Document()->GetLockState());
    QVERIFY(!QFile::exists(editor.TempFile("never.png")));
}

void TestScriptDocuments::activateBringsADocumentToTheFront()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        const first = documents.create(10, 10), second = documents.create(20, 20)
        expect.equal([first.isActive, second.isActive], [false, true])
        first.activate()
        expect.equal([first.isActive, documents.active.width], [true, 10])
    )");
}

void TestScriptDocuments::aClosedDocumentSaysSo()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        const gone = documents.create(10, 10)
        expect.equal(gone.close(), true)
        expect.equal([gone.isOpen, documents.count], [false, 0])
        for (const act of [() => gone.width, () => gone.save(), () => gone.close(), () => gone.activate()])
            expect.throws(act, "The document is closed.")
    )");
}

void TestScriptDocuments::aRectangleIsSelectedByAStep()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const picture = documents.active
        picture.select({ x: 2, y: 1, width: 3, height: 9 })
        expect.equal(pixels.selection.bounds, { x: 2, y: 1, width: 3, height: 5 })
        expect.equal(pixels.selection.region(1, 1, 5, 1), [0, 255, 255, 255, 0])
        picture.select(null)
        expect.equal([pixels.hasSelection, history.count], [false, 2])
        history.undo()
        expect.equal(pixels.selection.bounds, { x: 2, y: 1, width: 3, height: 5 })
        expect.throws(function() { picture.select("all") }, "A rectangle is")
    )");
}

void TestScriptDocuments::selectionsAreSavedLoadedAndDeletedBySteps()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const picture = documents.active
        expect.throws(function() { picture.saveSelection("left") }, "Nothing is selected.")
        picture.select({ x: 0, y: 0, width: 3, height: 6 })
        picture.saveSelection("left")
        expect.throws(function() { picture.saveSelection("") }, "needs a name")
        picture.select({ x: 2, y: 0, width: 3, height: 6 })
        picture.saveSelection("middle")
        expect.equal(picture.savedSelections, ["left", "middle"])
        const bounds = {}
        for (const mode of ["replace", "add", "subtract", "intersect"]) {
            picture.loadSelection("left", mode)
            bounds[mode] = pixels.selection.bounds
            history.undo()
        }
        expect.equal(bounds, { replace: { x: 0, y: 0, width: 3, height: 6 },
                               add: { x: 0, y: 0, width: 5, height: 6 },
                               subtract: { x: 3, y: 0, width: 2, height: 6 },
                               intersect: { x: 2, y: 0, width: 1, height: 6 } })
        picture.loadSelection("left")
        expect.equal(pixels.selection.bounds, { x: 0, y: 0, width: 3, height: 6 })
        picture.deleteSavedSelection("left")
        expect.equal(picture.savedSelections, ["middle"])
        expect.equal(history.texts.slice(-2), ["Load selection", "Delete saved selection"])
        history.undo()
        expect.equal(picture.savedSelections, ["left", "middle"])
        expect.throws(function() { picture.loadSelection("right") }, "No selection \"right\" is saved.")
        expect.throws(function() { picture.deleteSavedSelection("right") }, "No selection \"right\" is saved.")
        expect.throws(function() { picture.loadSelection("left", "blend") }, "A mode is")
    )");
}

void TestScriptDocuments::pathsAreAddedByOneStep()
{
    EditorScriptFixture editor(8, 6);
    editor.Check(R"(
        const picture = documents.active
        picture.addPath("Fence", [[[1, 1], [4, 1], [4, 3], [1, 1]], [[0, 5], [7.5, 5]]])
        expect.equal([picture.paths, history.texts], [["Fence"], ["New path"]])
        history.undo()
        expect.equal(picture.paths, [])
        history.redo()
        expect.throws(function() { picture.addPath("Gate", []) }, "A list of lists of points")
        expect.throws(function() { picture.addPath("Gate", [[]]) }, "A list of points")
        expect.equal([picture.paths, history.count], [["Fence"], 1])
    )");
    const LXSubPaths path = editor.Document()->GetPathListModel()->GetPath(0);
    const auto corner = [](double x, double y) { return LXPathElement(QPointF(x, y)); };
    QCOMPARE(path.size(), 2);
    QCOMPARE(path[0].first, (LXPath{corner(1, 1), corner(4, 1), corner(4, 3), corner(1, 1)}));
    QCOMPARE(path[1].first, (LXPath{corner(0, 5), corner(7.5, 5)}));
}

void TestScriptDocuments::guidesAreTold()
{
    EditorScriptFixture editor(8, 6);
    editor.Document()->SetGuides({{Qt::Vertical, 2.5}, {Qt::Horizontal, 4}});
    editor.Check(R"(
        expect.equal(documents.active.guides,
                     [{ direction: "vertical", position: 2.5 }, { direction: "horizontal", position: 4 }])
    )");
}

void TestScriptDocuments::colorSamplesAndPathsAreTold()
{
    EditorScriptFixture editor(8, 6, Qt::red);
    LXColorSampleModel* samples = editor.Document()->GetColorSamples();
    samples->InsertSample(0, QPoint(3, 2));
    samples->InsertSample(1, QPoint(-5, 2));
    samples->SetSampleRadius(0, 1);
    editor.Document()->GetPathListModel()->InsertPath(0, "Outline");
    editor.Check(R"(
        expect.equal(documents.active.samples, [{ x: 3, y: 2, radius: 1, color: "#ffff0000" },
                                                { x: -5, y: 2, radius: 0, color: null }])
        expect.equal(documents.active.paths, ["Outline"])
    )");
}

void TestScriptDocuments::stateAndResolutionAreThoseOfTheDocument()
{
    EditorScriptFixture editor(4, 3);
    editor.Document()->SetDocumentState(2);
    editor.Check(R"(
        expect.equal([documents.active.state, documents.active.modified], [2, true])
        documents.active.dpi = 150
        expect.throws(function() { documents.active.dpi = 0 }, "above 0")
    )");
    QCOMPARE(editor.Document()->GetDPI(), 150.0);
    editor.Document()->SetDocumentState(0);
}

#include "tst_scriptdocuments.moc"

void TestScriptDocuments::profilesAreAssignedAndConvertedToBySteps()
{
    EditorScriptFixture editor;
    ProfileFile(editor.TempFile("adobe.icc"));
    editor.Check(R"(
        const made = documents.create(20, 10, { background: "#c85a28" })
        expect.equal(made.profile, "")
        expect.ok(application.profiles.includes("sRGB"))
        made.assignProfile(script.folder + "/adobe.icc")
        expect.equal(made.profile, "Adobe RGB")
        expect.ok(application.profiles.includes("Adobe RGB"))
        expect.equal(history.texts, ["Assign profile"])
        made.convertToProfile("sRGB", { intent: "perceptual", blackPoint: false })
        expect.equal(made.profile, "sRGB")
        expect.equal(history.texts, ["Assign profile", "Convert to profile"])
    )");
    LXRGBA32i pixel(0xFFC85A28);
    ZKCMSTransform(IccProfiles::AdobeRgb(), ZKCMSProfile::SRGB(),
                   {ZKCMSRendering::Intent::Perceptual, false})(&pixel, 1);
    QVERIFY(pixel.value != 0xFFC85A28);
    QCOMPARE(editor.Pixels(1).pixel(3, 3), pixel.value);
    editor.Check("history.undo(); history.undo(); expect.equal(documents.active.profile, '')");
    QCOMPARE(editor.Pixels(1).pixel(3, 3), 0xFFC85A28U);
    editor.Check("documents.active.assignProfile('')");
    QCOMPARE(editor.Document()->GetICCProfile(), ZKCMSProfile());
}

void TestScriptDocuments::wrongProfilesAreRefused()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        const made = documents.create(20, 10)
        const told = act => { try { act(); return "" } catch (error) { return error.message } }
        expect.ok(told(() => made.assignProfile("no such profile")).includes("can't be read"))
        expect.ok(told(() => made.convertToProfile("")).includes("needs a name"))
        expect.ok(told(() => made.convertToProfile("sRGB", { intent: "bright" })).includes('not "bright"'))
        expect.ok(told(() => made.convertToProfile("sRGB", { bright: 1 })).includes("no option"))
        expect.ok(told(() => application.workingProfile = "nothing").includes("no color profile"))
        expect.equal(history.texts, [])
    )");
}

void TestScriptDocuments::newDocumentsAreMeantInTheWorkingProfile()
{
    EditorScriptFixture editor;
    ProfileFile(editor.TempFile("adobe.icc"));
    editor.Check(R"(
        expect.equal(application.workingProfile, "sRGB")
        documents.create(20, 10).assignProfile(script.folder + "/adobe.icc")
        application.workingProfile = "Adobe RGB"
        expect.equal(documents.create(20, 10).profile, "Adobe RGB")
        application.workingProfile = "sRGB"
        expect.equal(documents.create(20, 10).profile, "")
    )");
}

ZK_REGISTER_TEST(tst_scriptdocuments, TestScriptDocuments)
