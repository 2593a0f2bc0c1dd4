#pragma once

#include "ZKHostExport.h"

#include "image/LXImage.h"
#include "image/ZKCMSProfile.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <memory>

class LXColorSampleModel;
class LXDocumentFactory;
class LXDocumentInterfacePrivate;
class LXDocumentModel;
class LXPathsListModel;

/// One open picture: its layers with their masks, the selection, and the merged picture.
///
/// **Ids.** A layer is named by its id, the row in `GetModel()` plus 1; row 0 is the topmost layer. Id 0 is
/// the merged picture. Adding, removing and reordering layers changes ids.
///
/// **Coordinates.** All rectangles and points are document pixels unless told; the canvas has its top left at
/// (0, 0). Layers, masks and the selection may lie partly or wholly outside it. `QRect` has inclusive right
/// and bottom; an empty one means "whole" or "none", as each operation tells.
///
/// **Pixels.** Straight alpha. A layer mask and the selection hold their value in the alpha byte, their color
/// bytes are 0 and are never read. Outside its rectangle a mask has its default: 255 if it reveals, else 0.
///
/// **Threads.** Operations marked "any thread" may be called from workers; all others belong to the main
/// thread. Pixels are touched only under a locker (LXDocumentLayerLockerForRead and its siblings). Signals
/// always arrive on the main thread: those of a worker's change are queued.
///
/// **Lock order.** Whoever holds a layer's write locker doesn't take the locker of id 0.
class ZK_HOST_EXPORT LXDocumentInterface : public QObject
{
    Q_OBJECT

public:
    /// Pixel formats in which a document keeps its layers.
    enum NativeFormat
    {
        Argb32 = 0 ///< 8 bits for each of alpha, red, green, blue
    };

    /// Upper bound of a document's width and height, in pixels.
    static const int MAX_DOC_DIMENSION;

    ~LXDocumentInterface() override;

    /// The layers as a list; never null.
    LXDocumentModel* GetModel() const;
    /// The paths; never null. Any thread.
    LXPathsListModel* GetPathListModel() const;
    /// The color samples; never null.
    LXColorSampleModel* GetColorSamples() const;

    /// The document lock: says who runs an interaction. One holder, no count; it guards no pixels.
    bool GetLockState() const;
    /// False when the lock is held already. Sends Locked().
    bool Lock();
    /// False when the lock isn't held. Sends Unlocked().
    bool Unlock();

    /// How many reasons there are to keep the document: above 0 it is modified or busy.
    int GetDocumentState() const;
    void SetDocumentState(int state);

    /// Any thread.
    bool HasSelection() const;
    /// Coverage in the alpha byte; an empty image without a selection. Any thread, under
    /// LXDocumentSelectionLockerForRead.
    const LXImage32& GetSelectionMask() const;
    /// The mask's rectangle; QRect() without a selection. It may reach outside the canvas. Any thread.
    QRect GetSelectionGeometry() const;
    /// Top left of the mask; (0, 0) without a selection. Any thread.
    QPoint GetSelectionMaskOffset() const;
    /// The smallest rectangle around the pixels with coverage; QRect() without a selection. Any thread.
    QRect GetSelectionBoundingRect() const;
    /// Replaces the selection. An empty mask and one without coverage mean no selection. Any thread.
    /// @param offset  where the mask's top left lies
    void SetSelectionMask(const LXImage32& mask, const QPoint& offset);
    /// Moves the selection by a delta, without AboutSelectionMove().
    void TranslateSelection(const QPoint& delta);
    /// Puts the selection's top left at the point, AboutSelectionMove() first. Nothing without a selection.
    /// Any thread.
    void MoveToSelection(const QPoint& topLeft);
    /// Whether any pixel of the selection has a coverage above the value.
    bool HasAboveSelected(unsigned char value) const;

    ZKCMSProfile GetICCProfile() const;
    void SetICCProfile(const ZKCMSProfile& profile);

    /// Resolution in pixels per inch, 72 for a new document.
    double GetDPI() const;
    /// Values that aren't above 0 are ignored.
    void SetDPI(double dpi);

    QString GetDocumentName() const;
    void SetDocumentName(const QString& name);

    /// Marks the rectangle for recomposition and sends CompositionChanged(); an empty rectangle means the
    /// whole canvas. Any thread.
    void UpdateDocumentRect(const QRect& rect);
    /// Closes a change of a layer's or its mask's pixels: thumbnails, the model's LayerDataChanged(uint) and,
    /// for a layer with a mask, LayerMaskChanged(uint).
    void EndLayerChange(unsigned int id);
    /// Tells that pixels of a layer or its mask were changed in place. Recomposes only where the layer lies.
    /// @param rect  the part that changed; empty means the whole layer
    /// Any thread, after the write locker is given back.
    void LayerImageChanged(unsigned int id, const QRect& rect);

    /// Moves a layer or a mask so that its top left lies at the point; a linked partner stays. Nothing for a
    /// bad id. Any thread.
    void SetLayerOffset(unsigned int id, const QPoint& offset);
    void SetMaskOffset(unsigned int id, const QPoint& offset);
    /// Both with one CompositionChanged(). Any thread.
    void SetLayerMaskOffset(unsigned int id, const QPoint& layer, const QPoint& mask);

    /// Image and place of a layer in one step; takes the write locker itself. Nothing for a bad id, or for a
    /// mask that isn't there. Any thread.
    void SetLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    void SetMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset);

    /// Changes the canvas; layers stay where they are. No undo. Nothing for sizes that are empty or above
    /// MAX_DOC_DIMENSION; throws std::bad_alloc for a size that LXImage refuses.
    void SetDocumentSize(const QSize& size);

    /// Adds a raster layer, opaque, visible, in mode 0, without a mask. No undo.
    /// @param row  where it goes in, 0 being the top; beyond the last row means the bottom
    /// @return its id
    unsigned int AddLayer(const QString& name, const LXImage32& image, const QPoint& offset, int row = 0);
    /// Removes a layer, waiting until nobody holds its locker. No undo. Nothing for a bad id.
    void RemoveLayer(unsigned int id);
    /// Gives the layer a mask of the canvas' size, filled with its default; replaces one that is there.
    /// No undo. Nothing for a bad id.
    /// @param reveals  the default: true shows the layer, false hides it
    void AddMask(unsigned int id, bool reveals);
    /// No undo. Nothing without a mask.
    void RemoveMask(unsigned int id);

    /// Writes whether the mask's default is to reveal: true also for a layer without a mask. Any thread.
    virtual void GetMaskInverted(unsigned int id, bool* reveals) const;
    /// LayerLocks bits; 0 for id 0 and bad ids. Any thread.
    virtual unsigned int GetLayerLockFlags(unsigned int id) const;
    /// Size of the canvas in pixels. Any thread.
    virtual QSize GetDocumentSize() const;
    /// The layer's image rectangle; id 0 gives the canvas, a bad id QRect(). Any thread.
    virtual QRect GetLayerGeometry(unsigned int id) const;
    /// The mask's rectangle; QRect() without a mask. Id 0 gives the canvas. Any thread.
    virtual QRect GetMaskGeometry(unsigned int id) const;
    /// The layer's pixels; id 0 gives the merged picture, read-only, as of the moment its locker was taken.
    /// Null for a bad id. Any thread, under that id's locker; written only under the write locker. A layer
    /// whose image was replaced by one of another size has its new geometry once the write locker is back.
    virtual LXImage32* GetLayerImage(unsigned int id) const;
    /// The mask's pixels; null without a mask. Id 0 gives the merged picture. As GetLayerImage.
    virtual LXImage32* GetMaskImage(unsigned int id) const;
    /// LayerKind number; Raster for id 0, -1 for a bad id. Any thread.
    virtual int GetLayerKind(unsigned int id) const;

signals:
    void Locked();
    void Unlocked();
    void DocumentStateChanged(int state);
    void DocumentNameChanged(const QString& name);
    void DocumentSizeChanged(const QSize& size);
    void SelectionChanged();
    /// Before the selection moves by anything but TranslateSelection.
    void AboutSelectionMove();
    /// Before the whole pixels of a layer or mask are needed or go away: whatever floats above it is put
    /// down.
    void AboutRequesAdditionalLayer(uint id);
    void AboutRequesAdditionalMask(uint id);
    /// The merged picture changed in this part of the canvas.
    void CompositionChanged(QRect rect);
    /// Asked before a close: who still keeps the document locked after this refuses the close.
    void WantToClose(LXDocumentInterface* document);
    /// The document is going away.
    void AboutToClose(LXDocumentInterface* document);

    /// Forwarded from the model.
    void LocksChanged(uint id, uint flags);
    void LayerDataChanged(uint id);

private:
    friend class LXDocumentFactory;
    friend class LXDocumentInterfacePrivate;
    LXDocumentInterface();

    std::unique_ptr<LXDocumentInterfacePrivate> m_pPrivate;
};
