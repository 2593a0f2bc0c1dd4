#include "UndoLaw.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXImageHelper.h"
#include "document/LXPathConvert.h"
#include "document/LXPathsListModel.h"
#include "document/LXSelectionMaskHelper.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/PathCommand.h"
#include "history/TransformCommand.h"
#include "history/TransformCommandData.h"
#include "history/TransformPathCommandData.h"
#include "history/TransformSelectionCommand.h"
#include "history/TransformSelectionCommandData.h"
#include "image/LXBlend.h"
#include "image/LXTransform.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QMatrix4x4>
#include <QPainterPath>
#include <QTest>

#include <cmath>
#include <thread>

using namespace DocumentFixture;

namespace {
constexpr unsigned int Text = 1;
constexpr unsigned int Raster = 2;
const QSize Canvas(160, 120);

/// A text, a layer with a mask that reaches over the canvas, and a ground.
OwnedDocument MakeDocument()
{
    Random random(11);
    OwnedDocument document = Make(Canvas);
    document->AddLayer("ground", Noise(random, Canvas), QPoint());
    document->AddLayer("layer", Noise(random, QSize(140, 70)), QPoint(-20, 30));
    document->AddMask(1, true);
    document->SetMaskImage(1, MaskNoise(random, QSize(60, 50)), QPoint(30, 40));
    document->AddTextLayer("Text Layer", QPointF(20, 90));
    document->SetTextFont(1, TextFixture::Font(30));
    document->SetText(1, "Word");
    return document;
}

void Select(LXDocumentInterface* document)
{
    Random random(5);
    document->SetSelectionMask(MaskNoise(random, QSize(70, 60)), QPoint(-10, 50));
}

/// Boxes as a person leaves them behind: from the box at the origin to the document.
void AddTransforms()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("turned") << QTransform().translate(80, 20).rotate(33).scale(0.8, 0.7);
    QTest::newRow("mirrored") << QTransform().translate(120.4, 20.3).scale(-0.7, 1.3);
    QTest::newRow("enlarged beyond the canvas") << QTransform().translate(-40.7, -30).scale(2.5, 2.2);
    QTest::newRow("by a fraction of a pixel") << QTransform::fromTranslate(12.4, 33.7);
    QTest::newRow("perspective") << QTransform(1, 0.1, 0.002, 0.2, 1, 0.001, 20, 15, 1);
    QTest::newRow("off the canvas") << QTransform::fromTranslate(500, 0);
}

struct Rendered
{
    LXImage32 image;
    QRectF rect; ///< of the document, as far as the canvas reaches
};

/// What a tool renders while a box is dragged: the visible part alone.
Rendered Render(const LXImage32& source, const QTransform& transform)
{
    Rendered rendered;
    rendered.rect = transform.mapRect(QRectF(source.Rect())) & QRectF(QPointF(), QSizeF(Canvas));
    rendered.image = LXImage32(int(std::ceil(rendered.rect.width())), int(std::ceil(rendered.rect.height())));
    TransformImage(source, transform * QTransform::fromTranslate(-rendered.rect.left(), -rendered.rect.top()),
                   rendered.image, QRect());
    return rendered;
}

LXImage32 Grays(const LXImage32& mask)
{
    LXImage32 grays(mask.Width(), mask.Height());
    for (int y = 0; y < mask.Height(); ++y) {
        for (int x = 0; x < mask.Width(); ++x) {
            const quint32 value = mask.GetColor(x, y).Alpha();
            grays.SetColor(x, y, LXRGBA32i(0xFF000000U | value << 16 | value << 8 | value));
        }
    }
    return grays;
}

/// On another thread, as tools draw.
template <typename Draw>
void OnWorker(Draw draw)
{
    std::thread(draw).join();
    QCoreApplication::processEvents();
}

LexoCommand* Transformed(LXDocumentInterface* document, unsigned int id, const LXImage32& undo,
                         const QPoint& origin, const QTransform& transform)
{
    auto* data = new TransformCommandData;
    data->SetUndoLayerImage(id, undo, origin);
    data->SetTransform(transform);
    // In single precision, as tools read it.
    data->SetOldTransform(document->GetTextLayerMatrix(id).toTransform());
    auto* command = new TransformCommand(document, true);
    command->SetCommandData(data);
    return command;
}
} // namespace

/// Free transformations as a tool makes them: it takes copies, draws each step into the document from a
/// worker, and at the end pushes a command or puts the copies back. What was seen last stays.
class TestTransformPreview : public QObject
{
    Q_OBJECT

private slots:
    void aLayerStaysAsItWasSeen_data();
    void aLayerStaysAsItWasSeen();
    void aMaskStaysAsItWasSeen_data();
    void aMaskStaysAsItWasSeen();
    void aTextStaysAsItWasSeen_data();
    void aTextStaysAsItWasSeen();
    void aTextOfOtherFontsStaysAsItWasSeen();
    void aTextThatIsPutBackIsItself();
    void aSelectionStaysAsItWasSeen_data();
    void aSelectionStaysAsItWasSeen();
    void selectedPixelsAreOneStep_data();
    void selectedPixelsAreOneStep();
    void aPathStaysAsItWasSeen_data();
    void aPathStaysAsItWasSeen();
};

void TestTransformPreview::aLayerStaysAsItWasSeen_data()
{
    AddTransforms();
}

void TestTransformPreview::aLayerStaysAsItWasSeen()
{
    QFETCH(QTransform, transform);
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    const LXImage32 undo = *document->GetLayerImage(Raster);
    const QPoint origin = document->GetModel()->GetLayerOffset(int(Raster) - 1);
    for (const QTransform& step : {QTransform().translate(10, 10).rotate(5), transform}) {
        OnWorker([&] {
            const QRect old = document->GetLayerGeometry(Raster);
            const Rendered rendered = Render(undo, step);
            document->SetLayerImage(Raster, rendered.image, rendered.rect.topLeft().toPoint());
            document->UpdateDocumentRect(old | document->GetLayerGeometry(Raster));
        });
    }
    const QStringList seen = DescribeWhole(document.get());

    LexoUndoStack stack;
    stack.push(Transformed(document.get(), Raster, undo, origin, transform));
    QCOMPARE(DescribeWhole(document.get()), seen);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());

    // Given up in place of pushed.
    stack.undo();
    OnWorker([&] { document->SetLayerImage(Raster, Render(undo, transform).image, QPoint()); });
    document->SetLayerImage(Raster, undo, origin);
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestTransformPreview::aMaskStaysAsItWasSeen_data()
{
    AddTransforms();
}

void TestTransformPreview::aMaskStaysAsItWasSeen()
{
    QFETCH(QTransform, transform);
    const OwnedDocument document = MakeDocument();
    document->GetModel()->SetMaskSelected(int(Raster) - 1, true);
    const QStringList before = DescribeWhole(document.get());
    const LXImage32 undo = *document->GetMaskImage(Raster);
    const QPoint origin = document->GetModel()->GetMaskOffset(int(Raster) - 1);
    OnWorker([&] {
        bool reveals = false;
        document->GetMaskInverted(Raster, &reveals);
        const Rendered rendered = Render(Grays(undo), transform);
        LXImage32 mask(rendered.image.Width(), rendered.image.Height());
        mask.Fill(LXRGBA32i(reveals ? 0xFF000000U : 0U));
        BlendOn(rendered.image, rendered.image.Rect(), BlendMode::GrayToMask, mask, mask.Rect(), 1.0, false);
        document->SetMaskImage(Raster, mask, rendered.rect.topLeft().toPoint());
    });
    const QStringList seen = DescribeWhole(document.get());

    LexoUndoStack stack;
    stack.push(Transformed(document.get(), Raster, undo, origin, transform));
    QCOMPARE(DescribeWhole(document.get()), seen);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

void TestTransformPreview::aTextStaysAsItWasSeen_data()
{
    AddTransforms();
}

void TestTransformPreview::aTextStaysAsItWasSeen()
{
    QFETCH(QTransform, transform);
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    // A third can't be told in single precision.
    stack.push(Transformed(document.get(), Text, *document->GetLayerImage(Text),
                           document->GetLayerGeometry(Text).topLeft(),
                           QTransform().translate(17, 40).scale(4 / 3.0, 1 / 3.0).rotate(7)));
    const QStringList before = DescribeWhole(document.get());
    const LXImage32 undo = *document->GetLayerImage(Text);
    const QPoint origin = document->GetModel()->GetLayerOffset(int(Text) - 1);
    for (const QTransform& step : {QTransform().translate(10, 10).rotate(5), transform}) {
        OnWorker([&] {
            LXImageHelper text;
            QVERIFY(text.InitHelper(document.get(), Text));
            text.SetRenderMode(document->GetTextRenderMode(Text));
            QVERIFY(text.drawImage(document.get(), Text, step));
        });
    }
    const LXImage32 seen = *document->GetLayerImage(Text);
    const QRect seenRect = document->GetLayerGeometry(Text);

    stack.push(Transformed(document.get(), Text, undo, origin, transform));
    QCOMPARE(document->GetLayerGeometry(Text), seenRect);
    QVERIFY(AreEqual(*document->GetLayerImage(Text), seen));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(1), before), QString());
}

/// A file brings the pixels that its author saw; fonts that are missing here draw others.
void TestTransformPreview::aTextOfOtherFontsStaysAsItWasSeen()
{
    const OwnedDocument document = MakeDocument();
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document.get());
    LayerState letters = insides->GetLayerState(Text);
    letters.image = Filled(QSize(50, 40), 0xFF000000);
    letters.properties.rect = QRect(30, 35, 50, 40);
    document->RemoveLayer(Text);
    insides->InsertLayer(int(Text) - 1, letters);
    const QStringList before = DescribeWhole(document.get());
    const QTransform transform = QTransform().translate(70, 20).rotate(33);
    OnWorker([&] {
        LXImageHelper text;
        QVERIFY(text.InitHelper(document.get(), Text));
        QVERIFY(text.drawImage(document.get(), Text, transform));
    });
    const QRect seenRect = document->GetLayerGeometry(Text);
    const LXImage32 seen = *document->GetLayerImage(Text);
    LexoUndoStack stack;
    stack.push(Transformed(document.get(), Text, letters.image, QPoint(30, 35), transform));
    QCOMPARE(document->GetLayerGeometry(Text), seenRect);
    QVERIFY(AreEqual(*document->GetLayerImage(Text), seen));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

void TestTransformPreview::aTextThatIsPutBackIsItself()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    const LXImage32 undo = *document->GetLayerImage(Text);
    const QPoint origin = document->GetModel()->GetLayerOffset(int(Text) - 1);
    OnWorker([&] {
        LXImageHelper text;
        QVERIFY(text.InitHelper(document.get(), Text));
        QVERIFY(text.drawImage(document.get(), Text, QTransform().translate(40, 10).rotate(50)));
    });
    QVERIFY(DescribeWhole(document.get()) != before);
    document->SetLayerImage(Text, undo, origin);
    QCOMPARE(DescribeWhole(document.get()), before);
    // And goes on being a text that can be written.
    document->SetText(Text, "Words");
    document->SetText(Text, "Word");
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestTransformPreview::aSelectionStaysAsItWasSeen_data()
{
    AddTransforms();
}

void TestTransformPreview::aSelectionStaysAsItWasSeen()
{
    QFETCH(QTransform, transform);
    const OwnedDocument document = MakeDocument();
    Select(document.get());
    const QStringList before = DescribeWhole(document.get());
    const LXImage32 undo = document->GetSelectionMask();
    const QPoint origin = document->GetSelectionMaskOffset();
    OnWorker([&] {
        const Rendered rendered = Render(undo, transform);
        document->SetSelectionMask(rendered.image, rendered.rect.topLeft().toPoint());
    });
    const QStringList seen = DescribeWhole(document.get());

    auto* data = new TransformSelectionCommandData;
    data->SetUndoImage(undo, origin);
    data->SetTransform(transform);
    auto* command = new TransformSelectionCommand(document.get());
    command->SetCommandData(data);
    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(DescribeWhole(document.get()), seen);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, command, before), QString());

    stack.undo();
    OnWorker([&] { document->SetSelectionMask(LXImage32(), QPoint()); });
    document->SetSelectionMask(undo, origin);
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestTransformPreview::selectedPixelsAreOneStep_data()
{
    AddTransforms();
}

/// The selected pixels are cut, and drawn where the box is, over the rest; the selection goes with them.
void TestTransformPreview::selectedPixelsAreOneStep()
{
    QFETCH(QTransform, transform);
    for (const bool onMask : {false, true}) {
        const OwnedDocument document = MakeDocument();
        Select(document.get());
        document->GetModel()->SetMaskSelected(int(Raster) - 1, onMask);
        const QStringList before = DescribeWhole(document.get());
        const auto rectOf = [&] {
            return onMask ? document->GetMaskGeometry(Raster) : document->GetLayerGeometry(Raster);
        };
        const QRect rect = rectOf();
        const LXImage32 selection = document->GetSelectionMask();
        const QRect selectionRect = document->GetSelectionGeometry();
        const QRect lifted = selectionRect & rect;

        LXSelectionMaskHelper helper(document.get());
        const LXImage32 floating = onMask ? helper.GetSelectionBoundMaskGrayScale(Raster)
                                          : helper.GetSelectionBoundRGBA32iImage(Raster);
        const LXImage32 undo = onMask ? helper.CutSelectionMaskGrayScale(Raster, LXRGBA32i(0xFFFFFFFF))
                                      : helper.CutSelectionRGBA32iImage(Raster);
        const LXImage32 cut = onMask ? *document->GetMaskImage(Raster) : *document->GetLayerImage(Raster);
        QCOMPARE(QSize(floating.Width(), floating.Height()), lifted.size());

        // The box is the selection's; the piece lies where it was lifted from it.
        const QPoint way = lifted.topLeft() - selectionRect.topLeft();
        const QTransform ofPiece = QTransform::fromTranslate(way.x(), way.y()) * transform;
        OnWorker([&] {
            const Rendered piece = Render(floating, ofPiece);
            const QRect place(piece.rect.topLeft().toPoint(),
                              QSize(piece.image.Width(), piece.image.Height()));
            const QRect grown = place.isEmpty() ? rect : rect | place;
            LXImage32 image(grown.width(), grown.height());
            if (onMask) image.Fill(LXRGBA32i(0xFF000000));
            BlendOn(cut, cut.Rect(), BlendMode::Source, image, rect.translated(-grown.topLeft()), 1.0, false);
            BlendOn(piece.image, piece.image.Rect(), onMask ? BlendMode::GrayToMask : BlendMode::Normal,
                    image, place.translated(-grown.topLeft()), 1.0, false);
            onMask ? document->SetMaskImage(Raster, image, grown.topLeft())
                   : document->SetLayerImage(Raster, image, grown.topLeft());
            const Rendered mask = Render(selection, transform);
            document->SetSelectionMask(mask.image, mask.rect.topLeft().toPoint());
        });
        const QStringList seen = DescribeWhole(document.get());
        const QRect grown = rectOf();
        const LXImage32 redo = onMask ? *document->GetMaskImage(Raster) : *document->GetLayerImage(Raster);

        const auto paint = [&](const LXImage32& undoImage, const QRect& undoRect, const LXImage32& redoImage,
                               const QRect& redoRect) -> LexoCommand* {
            const auto fill = [&](auto* data) {
                data->SetLayerID(Raster);
                data->SetUndoImage(undoImage, QRect());
                data->SetRedoImage(redoImage, QRect());
                data->SetUndoGeometry(undoRect);
                data->SetRedoGeometry(redoRect);
                return data;
            };
            if (onMask) {
                auto* command = new LayerMaskPaintCommand(document.get(), false);
                command->SetCommandData(fill(new LayerMaskPaintCommandData));
                return command;
            }
            auto* command = new LayerPaintCommand(document.get(), false);
            command->SetCommandData(fill(new LayerPaintCommandData));
            return command;
        };
        auto* data = new TransformSelectionCommandData;
        data->SetUndoImage(selection, selectionRect.topLeft());
        data->SetTransform(transform);
        auto* ofSelection = new TransformSelectionCommand(document.get());
        ofSelection->SetCommandData(data);
        LexoUndoStack stack;
        stack.beginMacro("Transform layer");
        stack.push(paint(undo, rect, CopyPart(cut, lifted.translated(-rect.topLeft())), lifted));
        stack.push(paint(cut, rect, redo, grown));
        stack.push(ofSelection);
        stack.endMacro();
        QCOMPARE(stack.count(), 1);
        QCOMPARE(DescribeWhole(document.get()), seen);
        for (int turn = 0; turn < 2; ++turn) {
            stack.undo();
            QCOMPARE(DescribeWhole(document.get()), before);
            stack.redo();
            QCOMPARE(DescribeWhole(document.get()), seen);
        }
    }
}

void TestTransformPreview::aPathStaysAsItWasSeen_data()
{
    AddTransforms();
}

void TestTransformPreview::aPathStaysAsItWasSeen()
{
    QFETCH(QTransform, transform);
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(20.5, 30.25, 50, 40));
    QPainterPath triangle(QPointF(60, 10));
    triangle.lineTo(90, 70);
    triangle.lineTo(70, 80);
    triangle.closeSubpath();
    const LXSubPaths path = {{ConvertTo(ellipse), LXPathsListModel::Unite},
                             {ConvertTo(triangle), LXPathsListModel::Subtract}};
    for (const int subPath : {-1, 0, 1}) {
        const OwnedDocument document = MakeDocument();
        LXPathsListModel* paths = document->GetPathListModel();
        paths->InsertPath(0, "path", path);
        const QStringList before = DescribeWhole(document.get());
        QRectF box;
        for (int i = 0; i < path.size(); ++i) {
            if (subPath < 0 || subPath == i) box |= ConvertFrom(path[i].first).boundingRect();
        }
        LXSubPaths atOrigin = path;
        for (QPair<LXPath, int>& part : atOrigin) {
            for (LXPathElement& element : part.first)
                element.Translate(-box.topLeft());
        }
        LXSubPaths shown = path;
        for (int i = 0; i < path.size(); ++i) {
            if (subPath >= 0 && subPath != i) continue;
            shown[i] = atOrigin[i];
            TransformPath(shown[i].first, transform);
        }
        paths->SetPath(0, shown);
        const QStringList seen = DescribeWhole(document.get());

        auto* data = new TransformPathCommandData;
        data->SetPathIndex(0);
        data->SetSubpathIndex(subPath);
        data->SetPath(path);
        data->SetTransform(transform);
        auto* command = new PathCommand(document.get());
        command->SetCommandData(data);
        LexoUndoStack stack;
        stack.push(command);
        QCOMPARE(DescribeWhole(document.get()), seen);
        QCOMPARE(UndoLaw::Broken(document.get(), &stack, command, before), QString());
    }
}

ZK_REGISTER_TEST(tst_transformpreview, TestTransformPreview)
#include "tst_transformpreview.moc"
