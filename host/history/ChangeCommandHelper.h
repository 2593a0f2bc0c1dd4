#pragma once

#include "ZKHostExport.h"

class LexoUndoStack;
class LXDocumentInterface;
class QColor;
class QItemSelectionModel;
class QSize;
class QString;
class QTransform;

/// Builds whole commands and pushes them. Main thread.
class ZK_HOST_EXPORT ChangeCommandHelper
{
public:
    /// Removes a layer with the text in the history; without a stack, for good.
    /// @param selection  the rows that a view has selected, to go to a neighbour; null for none
    /// False, and nothing done, for a bad id.
    static bool RemoveLayer(LexoUndoStack* stack, LXDocumentInterface* document,
                            QItemSelectionModel* selection, uint id, const QString& text);

    /// Opens a delayed step for changes of a text layer: fills a TextLayerChangeCommand with what the layer
    /// is now and calls pushDelayed() with the text in the history. False, and nothing done, without a stack
    /// and for a layer of another kind.
    static bool MakeChangeTextLayerCommand(LexoUndoStack* stack, LXDocumentInterface* document, uint id,
                                           const QString& text);

    /// Gives the document a new canvas and carries layers, masks, selection, paths, samples and guides over;
    /// without a stack, for good. New ground is transparent, on a mask its default.
    /// @param transform  from document coordinates to the new canvas
    /// @param hide       true: what lies outside the new canvas stays in the layers; false: it is cut off
    /// @param resample   false: the transform turns by a multiple of 90 degrees or mirrors, and pixels are
    ///                   copied; what it adds in fractions of a pixel is rounded away
    /// False, and nothing done, for a size that is empty or above MAX_DOC_DIMENSION, for a transform that is
    /// not finite or flattens the picture, and when canvas and transform would change nothing. Throws
    /// std::bad_alloc for a size that LXImage refuses, with nothing changed.
    static bool MakeCropCommand(LXDocumentInterface* document, const QString& text,
                                const QTransform& transform, const QSize& size, bool hide, bool resample,
                                LexoUndoStack* stack);
    /// The same, but new canvas takes the color: the bottom raster layer grows over it, and the color lies
    /// below what that layer has there already.
    static bool MakeCropCommand(LXDocumentInterface* document, const QString& text,
                                const QTransform& transform, const QSize& size, bool hide, bool resample,
                                const QColor& extension, LexoUndoStack* stack);
};
