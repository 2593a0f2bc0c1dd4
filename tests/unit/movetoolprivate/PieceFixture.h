#pragma once

#include "PieceTwin.h"
#include "movetoolprivate/CopyPasteObject.h"
#include "movetoolprivate/CutPasteObject.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"

#include <QTest>

/// The four kinds of floating pixels.
enum class PieceKind
{
    LayerCopy,
    MaskCopy,
    LayerCut,
    MaskCut
};

Q_DECLARE_METATYPE(PieceKind)

/// A document of one layer with a mask, in a view that nobody sees, for tests of floating pieces.
struct PieceFixture
{
    explicit PieceFixture(const QSize& canvas = QSize(40, 30))
        : document(DocumentFixture::Make(canvas)),
          view(std::make_unique<ZKDocumentView>(document.get(), &history))
    {}

    /// A layer of id 1 with its mask, and a selection, of noise at places that may reach beyond the canvas.
    void FillWithNoise(DocumentFixture::Random& random)
    {
        using namespace DocumentFixture;
        const QRect canvas(QPoint(0, 0), document->GetDocumentSize());
        const auto place = [&] { return PickRect(random, canvas, 12); };
        const auto noise = [&](const QRect& rect) {
            return TestImages::ToTiles(TestImages::Random(rect.width(), rect.height(), random));
        };
        const auto coverage = [&](const QRect& rect) {
            PlainImage image = TestImages::Random(rect.width(), rect.height(), random);
            for (LXRGBA32i& pixel : image.pixels)
                pixel.value &= 0xFF000000;
            return TestImages::ToTiles(image);
        };
        const QRect layer = place();
        document->AddLayer("layer", noise(layer), layer.topLeft());
        document->AddMask(1, Pick(random, 0, 1) == 1);
        const QRect mask = place();
        document->SetMaskImage(1, coverage(mask), mask.topLeft());
        const QRect selection = place();
        document->SetSelectionMask(coverage(selection), selection.topLeft());
        QVERIFY(document->HasSelection());
    }

    static std::unique_ptr<FloatingPiece> MakePiece(PieceKind kind)
    {
        switch (kind) {
        case PieceKind::LayerCopy: return std::make_unique<LayerCopyPasteObject>();
        case PieceKind::MaskCopy: return std::make_unique<MaskCopyPasteObject>();
        case PieceKind::LayerCut: return std::make_unique<LayerCutPasteObject>();
        case PieceKind::MaskCut: return std::make_unique<MaskCutPasteObject>();
        }
        return nullptr;
    }

    static bool IsMask(PieceKind kind) { return kind == PieceKind::MaskCopy || kind == PieceKind::MaskCut; }

    static bool IsCut(PieceKind kind) { return kind == PieceKind::LayerCut || kind == PieceKind::MaskCut; }

    /// The pixels that the kind is about, as they are now.
    PieceTwin::Placed Target(PieceKind kind) const
    {
        const LXDocumentLayerLockerForRead locker(document.get(), 1);
        if (IsMask(kind))
            return {document->GetMaskGeometry(1), TestImages::ToPlain(*document->GetMaskImage(1))};
        return {document->GetLayerGeometry(1), TestImages::ToPlain(*document->GetLayerImage(1))};
    }

    PieceTwin::Placed Selection() const
    {
        const LXDocumentSelectionLockerForRead locker(document.get());
        return {document->GetSelectionGeometry(), TestImages::ToPlain(document->GetSelectionMask())};
    }

    /// What the twin is told of this moment.
    PieceTwin::Case Case(PieceKind kind) const
    {
        bool reveals = false;
        document->GetMaskInverted(1, &reveals);
        PieceTwin::Case piece;
        piece.target = Target(kind);
        piece.selection = Selection();
        piece.canvas = QRect(QPoint(0, 0), document->GetDocumentSize());
        piece.isMask = IsMask(kind);
        piece.isCut = IsCut(kind);
        piece.newGround = LXRGBA32i(piece.isMask && reveals ? 0xFF000000u : 0u);
        piece.maskGround = LXRGBA32i(ZKApplication::GetMaskBackground().rgba());
        return piece;
    }

    QStringList Describe() const { return DocumentFixture::DescribeWhole(document.get()); }

    DocumentFixture::OwnedDocument document;
    LexoUndoStack history;
    std::unique_ptr<ZKDocumentView> view;
};
