#pragma once

#include "ZKHostExport.h"

#include "document/LXGuide.h"
#include "image/LXAdjustment.h"
#include "image/LXImage.h"
#include "image/ZKCMSProfile.h"

#include <QColor>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>

#include <memory>

class LXColorSampleModel;
class LXDocumentFactory;
class LXDocumentInterfacePrivate;
class LXDocumentModel;
class LXPathsListModel;
class QBrush;
class QFont;
class QMatrix4x4;

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
/// **Overlay.** Above the pixels of every layer, and above its mask, one picture may float that is not part
/// of them: pixels that a tool carries about until it puts them down. It belongs to who created it. It shows
/// wherever the layer shows, but is in no layer's image and in no file.
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

    /// The unit that lengths are read out in: 0 pixels, 1 inches, 2 millimeters.
    int GetUnit() const;
    /// Other numbers are ignored.
    void SetUnit(int unit);

    /// The guide lines, in the order in which they were set. No undo.
    LXGuides GetGuides() const;
    void SetGuides(const LXGuides& guides);

    QString GetDocumentName() const;
    void SetDocumentName(const QString& name);

    /// Marks the rectangle for recomposition and sends CompositionChanged(); an empty rectangle means the
    /// whole canvas. Any thread.
    void UpdateDocumentRect(const QRect& rect);
    /// Between the two CompositionChanged() is held back; at the end it goes out once for all that changed.
    /// They nest. Main thread.
    void StopComposition();
    void ResumeComposition();
    bool IsCompositionStopped() const;

    /// Around the interaction of a tool that works on whole layers. The begin asks for every overlay to be
    /// put down (AboutRequesAdditionalLayer and its sibling), the end recomposes everything.
    void BeginOperation();
    void EndOperation();
    /// Closes a change of a layer's or its mask's pixels: thumbnails, the model's LayerDataChanged(uint) and,
    /// for a layer with a mask, LayerMaskChanged(uint).
    void EndLayerChange(unsigned int id);
    /// Tells that pixels of a layer or its mask were changed in place. Recomposes only where the layer lies.
    /// @param rect  the part that changed; empty means the whole layer
    /// Any thread, after the write locker is given back.
    void LayerImageChanged(unsigned int id, const QRect& rect);

    /// Moves a layer or a mask so that its top left lies at the point; a linked partner stays. Nothing for a
    /// bad id, and for an adjustment, which lies everywhere. Any thread.
    void SetLayerOffset(unsigned int id, const QPoint& offset);
    void SetMaskOffset(unsigned int id, const QPoint& offset);
    /// Both with one CompositionChanged(). Any thread.
    void SetLayerMaskOffset(unsigned int id, const QPoint& layer, const QPoint& mask);

    /// Image and place of a layer in one step; takes the write locker itself. Nothing for a bad id, or for a
    /// mask that isn't there. A text layer shows the image until its letters are drawn anew. Any thread.
    void SetLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset);
    void SetMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset);

    /// Whether locks keep the selected pixels of the layer where they are.
    bool IsSelectionMoveLocked(unsigned int id) const;
    /// Whether the layer consists of pixels that tools may paint; locks are another matter. Any thread.
    bool IsLayerEditable(unsigned int id) const;
    /// The color of one pixel of a layer; of the merged picture for id 0. False, and nothing written, outside
    /// of it and for a bad id. Takes the locker itself.
    /// @param point  document pixels
    bool GetPixel(unsigned int id, const QPoint& point, QColor* color) const;

    /// Gives the layer, or its mask, an empty overlay at (0, 0) that doesn't show yet. First sends
    /// AboutRequesAdditionalLayer (or its sibling), so that an older piece is put down; one that is still
    /// there is dropped. Nothing for a bad id, or for a mask that isn't there.
    void CreateAdditionalLayer(unsigned int id);
    void CreateAdditionalMask(unsigned int id);
    /// The overlay's pixels, straight alpha; a mask's overlay is a gray image, its color the value and its
    /// alpha the coverage. Null without an overlay. Until it shows it belongs to who created it; from then on
    /// it is touched under the layer's locker like the layer's own pixels. Any thread.
    LXImage32* GetAdditionalLayerImage(unsigned int id) const;
    LXImage32* GetAdditionalMaskImage(unsigned int id) const;
    /// Puts the overlay's top left at the point of the document. The pixels stay, and who moves it tells
    /// which part changed (UpdateDocumentRect). Nothing without an overlay. Any thread.
    void SetAdditionalLayerPosition(unsigned int id, const QPoint& topLeft);
    void SetAdditionalMaskPosition(unsigned int id, const QPoint& topLeft);
    /// The overlay's rectangle; QRect() without one, empty while its image is. Any thread.
    QRect GetAdditionalLayerGeometry(unsigned int id) const;
    QRect GetAdditionalMaskGeometry(unsigned int id) const;
    /// From now on the overlay is drawn: over the layer's pixels in mode 0, before the layer's mask, opacity
    /// and blend mode; in mode 64 into the mask, which counts as its default where it doesn't reach.
    void ShowAdditionalLayer(unsigned int id);
    void ShowAdditionalMask(unsigned int id);
    /// Marks the part of the document for recomposition, without a signal; an empty rectangle does nothing.
    /// Any thread.
    void InvalidateAdditionalLayer(unsigned int id, const QRect& rect);
    void InvalidateAdditionalMask(unsigned int id, const QRect& rect);
    /// Drops the overlay; harmless without one.
    void RemoveAdditionalLayer(unsigned int id);
    void RemoveAdditionalMask(unsigned int id);
    /// Holds the mask's overlay as a reader until the matching end; pairs nest. Nothing without an overlay.
    void BeginAdditionalMaskRead(unsigned int id);
    void EndAdditionalMaskRead(unsigned int id);
    /// Tells views that a part of an overlay changed; an empty rectangle means all of it. Any thread.
    void AdditionalLayerDataChangedExternal(unsigned int id, const QRect& rect);

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

    /// Adds a text layer without a text, like AddLayer. No undo.
    /// @param position  where the first baseline begins, see SetTextPosition
    unsigned int AddTextLayer(const QString& name, const QPointF& position, int row = 0);
    /// What a text layer's pixels are drawn from, as outlines, sharp at every size and angle. Getters answer
    /// a default for layers of another kind and bad ids; setters do nothing there. Setters draw anew and send
    /// LayerDataChanged(uint) and what else they name; a value that the layer has already does nothing. No
    /// undo. The setters and GetTextBox throw std::bad_alloc and belong to the main thread; the getters run
    /// on any thread.
    ///
    /// Any Unicode text; line feeds end lines. A line that reads from the right ends where others begin.
    QString GetText(unsigned int id) const;
    void SetText(unsigned int id, const QString& text);
    /// A point of its size counts as a pixel of the document. Sends LayerFontChanged(uint).
    QFont GetTextFont(unsigned int id) const;
    void SetTextFont(unsigned int id, const QFont& font);
    /// Black at first. Sends LayerBrushChanged(uint).
    QBrush GetTextBrush(unsigned int id) const;
    void SetTextBrush(unsigned int id, const QBrush& brush);
    /// Where the first baseline begins, in document pixels before the transformation.
    QPointF GetTextPosition(unsigned int id) const;
    void SetTextPosition(unsigned int id, const QPointF& position);
    /// How the letters are bent: style 0 not at all, 1 as a flag; orientation 0 horizontal, 1 vertical; bend
    /// and distortions in percent, -100 to 100. Values outside are brought to the nearest. Each sends
    /// LayerTextDeformationChanged(uint).
    int GetTextStyle(unsigned int id) const;
    void SetTextStyle(unsigned int id, int style);
    int GetTextOrientation(unsigned int id) const;
    void SetTextOrientation(unsigned int id, int orientation);
    double GetTextBend(unsigned int id) const;
    void SetTextBend(unsigned int id, double percent);
    double GetTextHDistortion(unsigned int id) const;
    void SetTextHDistortion(unsigned int id, double percent);
    double GetTextVDistortion(unsigned int id) const;
    void SetTextVDistortion(unsigned int id, double percent);
    /// 0 for hard edges, 1 for soft ones.
    int GetTextRenderMode(unsigned int id) const;
    void SetTextRenderMode(unsigned int id, int mode);
    /// From document pixels to document pixels, what the text goes through after its place and its bends.
    /// Moving the layer (SetLayerOffset) moves the text and so changes the matrix; a matrix that moves by
    /// whole pixels keeps the pixels. One that has no inverse or isn't finite is ignored. Any thread.
    QMatrix4x4 GetTextLayerMatrix(unsigned int id) const;
    void SetTextLayerTransformation(unsigned int id, const QMatrix4x4& matrix);
    /// Around the lines of the text as it lies in the document, empty ones too; null for other layers.
    QRectF GetTextBox(unsigned int id) const;
    /// Shows a caret in the views, before the code unit at the index, or none. There is one at most.
    void SetTextCaret(unsigned int id, int index, bool visible);

    /// Adds a layer that changes the colors of what lies below it, inside its mask, by its opacity and in its
    /// blend mode; it has no pixels of its own and its geometry is QRect(). No undo.
    unsigned int AddAdjustmentLayer(const QString& name, const LXAdjustment& adjustment, int row = 0);
    /// The default for layers of another kind. Any thread.
    LXAdjustment GetAdjustment(unsigned int id) const;
    /// Values are brought into their ranges. Nothing for layers of another kind. Sends
    /// LayerDataChanged(uint). No undo.
    void SetAdjustment(unsigned int id, const LXAdjustment& adjustment);

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
    void ResolutionChanged(double dpi);
    void UnitChanged(int unit);
    void GuidesChanged();
    void ICCProfileChanged();
    void SelectionChanged();
    /// Before the selection moves by anything but TranslateSelection. A worker's move sends it from the
    /// worker: whoever is connected at that moment hears of it, objects of the main thread later on that
    /// thread.
    void AboutSelectionMove();
    /// Before the whole pixels of a layer or mask are needed or go away: whatever floats above it is put
    /// down.
    void AboutRequesAdditionalLayer(uint id);
    void AboutRequesAdditionalMask(uint id);
    /// The merged picture changed in this part of the canvas.
    void CompositionChanged(QRect rect);
    /// Effects of layers are shown from now on, or no longer.
    void StyleStateChanged(bool shown);
    /// A view of the document has another current layer; 0 for none.
    void CurrentLayerChanged(uint id);
    /// Asked before a close: who still keeps the document locked after this refuses the close.
    void WantToClose(LXDocumentInterface* document);
    /// The document is going away.
    void AboutToClose(LXDocumentInterface* document);

    /// SetTextCaret() was called, or the text with the caret changed; 0 when there is none any more.
    void TextCaretChanged(uint id);

    /// Forwarded from the model.
    void LocksChanged(uint id, uint flags);
    void LayerDataChanged(uint id);
    void LayerFontChanged(uint id);
    void LayerBrushChanged(uint id);
    void LayerTextDeformationChanged(uint id);

private:
    friend class LXDocumentFactory;
    friend class LXDocumentInterfacePrivate;
    LXDocumentInterface();

    std::unique_ptr<LXDocumentInterfacePrivate> m_pPrivate;
};
