#pragma once

#include "movetoolprivate/FloatingPiece.h"

#include "image/LXImage.h"

/// What the two cut pieces have in common: the pixels are taken out of the target while they float. What was
/// there is kept: cancelling, dropping the piece while it floats, and laying it down where it was lifted
/// bring every byte back.
class CutPiece : public FloatingPiece
{
    Q_OBJECT

public:
    ~CutPiece() override;

    bool Cancel() override;

protected:
    explicit CutPiece(PaintTarget kind);

    void BeginPixels(const QRect& lifted) override;
    Commands MakePixelCommands(const PieceGround& ground) const override;
    void ReleaseImages() override;

private:
    QRect ErasedRect() const;
    void PutBack();

    LXImage32 m_ErasedPixels; ///< what was in the target under the selection; as large as that area
};

/// The selected pixels of a layer.
class LayerCutPasteObject : public CutPiece
{
    Q_OBJECT

public:
    LayerCutPasteObject() : CutPiece(PaintTarget::Layer) {}

public slots:
    /// The view shows the picture at another level: the piece is shown anew.
    void OnCurrentViewLevelChanged();
};

/// The selected part of a layer's mask.
class MaskCutPasteObject : public CutPiece
{
    Q_OBJECT

public:
    MaskCutPasteObject() : CutPiece(PaintTarget::Mask) {}
};
