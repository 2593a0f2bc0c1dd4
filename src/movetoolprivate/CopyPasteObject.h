#pragma once

#include "movetoolprivate/FloatingPiece.h"

/// What the two copied pieces have in common: the target stays as it is until the copy is laid down.
class CopyPiece : public FloatingPiece
{
    Q_OBJECT

public:
    bool Cancel() override;

protected:
    explicit CopyPiece(PaintTarget kind);

    Commands MakePixelCommands(const PieceGround& ground) const override;
};

/// The selected pixels of a layer.
class LayerCopyPasteObject : public CopyPiece
{
    Q_OBJECT

public:
    LayerCopyPasteObject() : CopyPiece(PaintTarget::Layer) {}

protected:
    QString MacroText() const override;
};

/// The selected part of a layer's mask.
class MaskCopyPasteObject : public CopyPiece
{
    Q_OBJECT

public:
    MaskCopyPasteObject() : CopyPiece(PaintTarget::Mask) {}
};
