#pragma once

#include "EditorExport.h"

#include "document/DocumentProperties.h"
#include "document/DocumentSelection.h"
#include "document/LXDocumentInterface.h"
#include "document/LayerList.h"
#include "document/LayerOverlays.h"
#include "document/MergedPicture.h"
#include "document/PixelLockTable.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

class SelectionChannels;

/// The insides of a document, for the editor: what LXDocumentInterface offers and what only commands and
/// files need. Main thread unless told.
class LXDocumentInterfacePrivate
{
public:
    explicit LXDocumentInterfacePrivate(LXDocumentInterface* document);

    ZK_EDITOR_EXPORT static LXDocumentInterfacePrivate* Get(const LXDocumentInterface* document);

    /// A copy of the whole layer, sharing its tiles; an empty one for a bad id. Any thread.
    LayerState GetLayerState(unsigned int id) const;
    /// The same with what floats above it put down, so that a copy shows what the document shows. Any thread.
    LayerState LandedState(const Layer& layer) const;
    /// Adds a layer at the row, which becomes its id minus 1.
    ZK_EDITOR_EXPORT void InsertLayer(int row, const LayerState& state);
    void RemoveLayer(int row);
    /// A mask of the canvas' size, filled with its default, for ReplaceMask.
    LayerState NewMask(bool reveals) const;
    /// Gives the layer a mask, or takes it away, as `state` has it; its other values aren't read.
    void ReplaceMask(unsigned int id, const LayerState& state);

    /// What a change of a layer's pixels tells: thumbnail, LayerDataChanged, CompositionChanged. Any thread.
    void LayerPixelsChanged(unsigned int id, const QRect& docRect);
    /// The same for its mask. Any thread.
    void MaskPixelsChanged(unsigned int id, const QRect& docRect);
    /// Marks for recomposition and sends CompositionChanged(); an empty rectangle does nothing. Any thread.
    void Invalidate(const QRect& docRect);

    /// Any thread.
    DocumentProperties Properties() const;
    void ChangeProperties(const std::function<void(DocumentProperties&)>& change);

    /// A new overlay in place of one that is there.
    void CreateOverlay(unsigned int id, LayerOverlays::Target target);
    void StopComposition();
    void ResumeComposition();

    /// Puts the top left of the layer, its mask or both at a point, with one CompositionChanged. Any thread.
    void MoveLayer(unsigned int id, const std::optional<QPoint>& layerOffset,
                   const std::optional<QPoint>& maskOffset);

    /// Replaces image and place under the write locker, without a signal. Any thread.
    void PutLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    void PutMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    /// The text's content; of other layers the default. Any thread.
    ZK_EDITOR_EXPORT TextContent Text(unsigned int id) const;
    /// Takes the content over and draws it; tells what a change of pixels tells. Nothing for layers of
    /// another kind. Any thread; throws std::bad_alloc with nothing changed.
    void PutText(unsigned int id, const TextContent& content);
    /// How exactly a transform is meant.
    enum class Precision
    {
        Single, ///< moves by whole pixels lost digits
        Double
    };
    /// Moves by whole pixels keep what is drawn. As PutText.
    void TransformText(unsigned int id, const QTransform& transform, Precision precision);

    /// Takes the sizes of the images over into the properties; called when a write locker is given back.
    void SyncGeometry(Layer& layer);

    /// SetSelectionMask() without a search for the bounds: the mask has coverage in its outermost rows and
    /// columns, or is empty. Any thread.
    void SetTrimmedSelection(const LXImage32& mask, const QPoint& offset);

    /// Where a layer may show: its image and what floats above it; an adjustment everywhere. QRect() for a
    /// bad id. Any thread.
    QRect Extent(unsigned int id) const;
    QRect ExtentOf(const Layer& layer) const;
    /// The rectangle of the canvas. Any thread.
    QRect Canvas() const;
    /// Runs it now on the main thread, posted to it on any other.
    void OnMainThread(const std::function<void()>& function) const;

    PixelLockTable::Key NewLockKey() { return ++m_LastLockKey; }

    LXDocumentInterface* const document;
    /// Lockers keep it alive when the document goes first.
    const std::shared_ptr<PixelLockTable> locks;
    LayerList layers;
    LayerOverlays overlays;
    DocumentSelection selection;
    MergedPicture merged;
    LXDocumentModel* model = nullptr;
    LXPathsListModel* paths = nullptr;
    LXColorSampleModel* samples = nullptr;
    SelectionChannels* channels = nullptr;

    /// Where the caret of a text stands. It stays with its layer when rows change, and goes with it.
    struct Caret
    {
        std::weak_ptr<const Layer> layer;
        int index = 0;
    };

    Caret caret;
    /// The layer with the caret; 0 when there is none.
    unsigned int CaretId() const;
    bool isLocked = false;
    int state = 0;
    int compositionStops = 0;
    QRect heldBackRect; ///< what changed while the composition is stopped

private:
    void MoveProperties(unsigned int id, const std::function<void(LayerProperties&)>& move);
    /// Main thread.
    void AnnounceComposition(const QRect& docRect);

    mutable std::mutex m_PropertiesMutex;
    DocumentProperties m_Properties;
    PixelLockTable::Key m_LastLockKey = MergedPicture::Key;
};
