#pragma once

#include "EditorExport.h"

#include "document/DocumentSelection.h"
#include "document/LXDocumentInterface.h"
#include "document/LayerList.h"
#include "document/MergedPicture.h"
#include "document/PixelLockTable.h"

#include <functional>
#include <memory>
#include <mutex>

/// The insides of a document, for the editor: what LXDocumentInterface offers and what only commands and
/// files need. Main thread unless told.
class LXDocumentInterfacePrivate
{
public:
    explicit LXDocumentInterfacePrivate(LXDocumentInterface* document);

    ZK_EDITOR_EXPORT static LXDocumentInterfacePrivate* Get(const LXDocumentInterface* document);

    /// A copy of the whole layer, sharing its tiles; an empty one for a bad id. Any thread.
    LayerState GetLayerState(unsigned int id) const;
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

    /// Replaces image and place under the write locker, without a signal. Any thread.
    void PutLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    void PutMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    /// Takes the sizes of the images over into the properties; called when a write locker is given back.
    void SyncGeometry(Layer& layer);

    /// The rectangle of the canvas. Any thread.
    QRect Canvas() const;
    /// Runs it now on the main thread, posted to it on any other.
    void OnMainThread(const std::function<void()>& function) const;

    PixelLockTable::Key NewLockKey() { return ++m_LastLockKey; }

    LXDocumentInterface* const document;
    /// Lockers keep it alive when the document goes first.
    const std::shared_ptr<PixelLockTable> locks;
    LayerList layers;
    DocumentSelection selection;
    MergedPicture merged;
    LXDocumentModel* model = nullptr;
    LXPathsListModel* paths = nullptr;
    LXColorSampleModel* samples = nullptr;

    bool isLocked = false;
    int state = 0;
    QString name;
    ZKCMSProfile profile;
    double dpi = 72.0;

private:
    PixelLockTable::Key m_LastLockKey = MergedPicture::Key;
};
