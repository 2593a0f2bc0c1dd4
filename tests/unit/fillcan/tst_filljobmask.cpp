#include "FillDocument.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "fillcan/FillCommand.h"
#include "fillcan/FillJob.h"
#include "history/LexoCommand.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QRegularExpression>
#include <QTest>

namespace {
constexpr bool Reveals = true;
constexpr bool Hides = false;

FillJobData MaskClick(const FillDocument& document, int x, int y, const QColor& color)
{
    FillJobData data = FillDocument::Click(x, y, color);
    document->GetMaskInverted(1, &data.maskReveals);
    return data;
}

// As for layers: undo must bring every value back, redo the result again, and the layer stays.
QStringList Filled(const FillDocument& document, const FillJobData& data)
{
    const QStringList before = document.Mask();
    const QRect geometryBefore = document->GetMaskGeometry(1);
    const QStringList layer = document.Layer();
    const FillJobResult result = RunMaskFillJob(document, data);
    if (result.error != 0) return {"error"};

    const std::unique_ptr<LexoCommand> command = MakeFillCommand(document, result);
    command->redo();
    const QStringList after = document.Mask();
    if (document.Layer() != layer) return {"the layer changed"};
    command->undo();
    if (document.Mask() != before || document->GetMaskGeometry(1) != geometryBefore) {
        return {"undo lost something"};
    }
    command->redo();
    return document.Mask() == after ? after : QStringList{"redo differs"};
}
} // namespace

class TestFillJobMask : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void blackOnAWhiteMaskHides();
    void whiteOnABlackMaskReveals();
    void valuesAreComparedByTolerance();
    void onlyTheValuesAreCompared();
    void outsideItsRectangleAMaskHasItsDefault_data();
    void outsideItsRectangleAMaskHasItsDefault();
    void aMaskThatGrowsIsFilledWithItsDefault();
    void allLayersComparesThePicture();
    void aSelectionLimitsTheFill();
    void opacityMixesValues();
    void aLightColorFillsWithItsLightness();
    void otherModesBlendTheValuesAsGrays_data();
    void otherModesBlendTheValuesAsGrays();
    void theResultNamesTheMask();
    void failuresComeBackAsErrors();
};

void TestFillJobMask::cleanup()
{
    FaultSeams::Reset();
}

void TestFillJobMask::blackOnAWhiteMaskHides()
{
    FillDocument document(4, 1);
    document.AddLayer({"rrrr"});
    document.SetMask({"##.."}, Reveals);
    QCOMPARE(Filled(document, MaskClick(document, 0, 0, Qt::black)), QStringList({"...."}));

    const LXDocumentLayerLockerForRead locker(document, 0);
    QCOMPARE(document->GetLayerImage(0)->GetColor(0, 0).Alpha(), 0);
}

void TestFillJobMask::whiteOnABlackMaskReveals()
{
    FillDocument document(4, 1);
    document.AddLayer({"rrrr"});
    document.SetMask({"#..#"}, Hides);
    QCOMPARE(Filled(document, MaskClick(document, 1, 0, Qt::white)), QStringList({"####"}));
}

void TestFillJobMask::valuesAreComparedByTolerance()
{
    FillDocument document(3, 1);
    document.AddLayer({"rrr"});
    document.SetMask({"#h#"}, Reveals);
    FillJobData data = MaskClick(document, 0, 0, Qt::black);
    data.tolerance = 126;
    QCOMPARE(Filled(document, data), QStringList({".h."}));

    FillDocument other(3, 1);
    other.AddLayer({"rrr"});
    other.SetMask({"#h#"}, Reveals);
    data.tolerance = 127;
    QCOMPARE(Filled(other, data), QStringList({"..."}));
}

void TestFillJobMask::onlyTheValuesAreCompared()
{
    FillDocument document(3, 1);
    document.AddLayer({"rrr"});
    document.SetMask({"##."}, Reveals);
    document->GetMaskImage(1)->SetColor(1, 0, LXRGBA32i(0xFFFFFFFF));
    FillJobData data = MaskClick(document, 0, 0, Qt::black);
    data.tolerance = 0;
    QCOMPARE(RunMaskFillJob(document, data).redoGeometry, QRect(0, 0, 2, 1));
}

void TestFillJobMask::outsideItsRectangleAMaskHasItsDefault_data()
{
    QTest::addColumn<bool>("reveals");
    QTest::addColumn<QStringList>("mask");
    // The click finds the value 255: with a mask that reveals, all around the rectangle too.
    QTest::newRow("reveals") << Reveals << QStringList({"..h."});
    QTest::newRow("hides") << Hides << QStringList({".h"});
}

void TestFillJobMask::outsideItsRectangleAMaskHasItsDefault()
{
    QFETCH(bool, reveals);
    FillDocument document(4, 1);
    document.AddLayer({"rrrr"});
    document.SetMask({"#h"}, reveals, {1, 0});
    QTEST(Filled(document, MaskClick(document, 1, 0, Qt::black)), "mask");
}

void TestFillJobMask::aMaskThatGrowsIsFilledWithItsDefault()
{
    FillDocument document(4, 1);
    document.AddLayer({"rrrr"});
    document.SetMask({"h"}, Reveals);
    document.SetSelection({"##.#"});
    // Grown for the filled pixels, the mask still reveals between them, where nothing is selected.
    QCOMPARE(Filled(document, MaskClick(document, 1, 0, Qt::black)), QStringList({"h.#."}));
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 4, 1));
}

void TestFillJobMask::allLayersComparesThePicture()
{
    FillDocument document(4, 1);
    document.AddLayer({"ww##"});
    document.AddLayer({"...."});
    document.SetMask({"####"}, Reveals);
    FillJobData data = MaskClick(document, 0, 0, Qt::black);
    data.allLayers = true;
    QCOMPARE(Filled(document, data), QStringList({"..##"}));
}

void TestFillJobMask::aSelectionLimitsTheFill()
{
    FillDocument document(4, 1);
    document.AddLayer({"rrrr"});
    document.SetMask({"####"}, Reveals);
    document.SetSelection({"##"}, {1, 0});
    QCOMPARE(Filled(document, MaskClick(document, 0, 0, Qt::black)), QStringList({"#..#"}));
}

void TestFillJobMask::opacityMixesValues()
{
    FillDocument document(1, 1);
    document.AddLayer({"r"});
    document.SetMask({"#"}, Reveals);
    FillJobData data = MaskClick(document, 0, 0, Qt::black);
    data.opacity = 0.2;
    Filled(document, data);
    QCOMPARE(document.MaskValue(0, 0), 204);
}

void TestFillJobMask::aLightColorFillsWithItsLightness()
{
    FillDocument document(1, 1);
    document.AddLayer({"r"});
    document.SetMask({"#"}, Reveals);
    Filled(document, MaskClick(document, 0, 0, QColor(200, 100, 0)));
    QCOMPARE(document.MaskValue(0, 0), 100);
}

void TestFillJobMask::otherModesBlendTheValuesAsGrays_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("value");
    QTest::newRow("multiply") << 1 << 50;
    QTest::newRow("screen") << 2 << 178;
    QTest::newRow("difference") << 4 << 28;
    QTest::newRow("lighten") << 6 << 128;
    QTest::newRow("darken") << 7 << 100;
    QTest::newRow("addition") << 12 << 228;
}

void TestFillJobMask::otherModesBlendTheValuesAsGrays()
{
    QFETCH(int, mode);
    FillDocument document(1, 1);
    document.AddLayer({"r"});
    document.SetMask({"h"}, Reveals);
    FillJobData data = MaskClick(document, 0, 0, QColor(100, 100, 100));
    data.blendMode = mode;
    Filled(document, data);
    QTEST(document.MaskValue(0, 0), "value");
    // A mask's color bytes stay 0.
    QCOMPARE(document->GetMaskImage(1)->GetColor(0, 0).value & 0xFFFFFF, 0u);
}

void TestFillJobMask::theResultNamesTheMask()
{
    FillDocument document(1, 1);
    document.AddLayer({"r"});
    document.SetMask({"#"}, Reveals);
    const FillJobResult result = RunMaskFillJob(document, MaskClick(document, 0, 0, Qt::black));
    QVERIFY(result.isMask);
    QCOMPARE(result.layerId, 1u);
}

void TestFillJobMask::failuresComeBackAsErrors()
{
    FillDocument document(1, 1);
    document.AddLayer({"r"});
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/fillcan/FillCan_p\".*no such mask"));
    const FillJobResult result = RunMaskFillJob(document, FillDocument::Click(0, 0, Qt::black));
    QVERIFY(result.error != 0);
    QVERIFY(result.isMask);
}

ZK_REGISTER_TEST(tst_filljobmask, TestFillJobMask)

#include "tst_filljobmask.moc"
