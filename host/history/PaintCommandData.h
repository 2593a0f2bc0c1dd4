#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"
#include "image/LXImage.h"

#include <QRect>

#include <memory>

class PaintCommandDataPrivate;

/// The pixels of a layer or mask before and after a change, and its rectangle then.
///
/// An image may be the whole target or only the part that changed; its size tells which: the undo image lies
/// at the first of G∩R, G, R, G∪R that has its size, the redo image at the first of R, G∩R, G∪R, G, with G
/// the undo and R the redo geometry. An empty image writes nothing.
///
/// Once the change is made the images may become parts of the target in whole tiles, see KeepTiles(), so that
/// a step holds no pixels of its own but those that differ.
class ZK_HOST_EXPORT PaintCommandData : public LexoCommandData
{
public:
    PaintCommandData();
    ~PaintCommandData() override;

    /// Id of the layer that is painted, or whose mask is.
    void SetLayerID(unsigned int id);
    /// @param part  the part of the image to keep, in image pixels; empty means all of it
    void SetUndoImage(const LXImage32& image, const QRect& part);
    void SetRedoImage(const LXImage32& image, const QRect& part);
    /// The target's rectangle before and after, in document pixels.
    void SetUndoGeometry(const QRect& geometry);
    void SetRedoGeometry(const QRect& geometry);

    unsigned int GetLayerID() const;
    const LXImage32& GetUndoImage() const;
    const LXImage32& GetRedoImage() const;
    QRect GetUndoGeometry() const;
    QRect GetRedoGeometry() const;

    /// All in document pixels; empty for an empty image.
    struct Places
    {
        QRect undoImage; ///< where it lies
        QRect redoImage;
        QRect undoChange; ///< where its pixels may differ from what is there; inside the image's place
        QRect redoChange;
    };

    Places GetPlaces() const;

    /// Exchanges both images for parts of the target in whole tiles, as it is before and after the change,
    /// where undo and redo then do the same as before. They stay as they are where the tiles of both targets
    /// don't lie on one grid, where the undo image isn't what was there, and where whole tiles would be more.
    /// @param before  the target at the undo geometry
    /// @param after   the target at the united rectangle of the undo geometry and the redo image; tiles that
    ///                hold the same as `before` are exchanged for those
    /// All or nothing when it throws.
    void KeepTiles(const LXImage32& before, LXImage32& after);

    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    std::unique_ptr<PaintCommandDataPrivate> m_pPrivate;
};
