#pragma once

#include "document/ColorSample.h"
#include "document/DocumentPath.h"
#include "document/ForeignContent.h"
#include "document/LXGuide.h"
#include "document/Layer.h"
#include "formats/OraBrush.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <QVector>

#include <vector>

/// What the list of layers of an OpenRaster file says, without any pixels: entries are named.
struct OraStack
{
    /// An image of the archive and where it lies on the canvas.
    struct Image
    {
        QString entry; ///< empty: there is none
        QPoint offset;
        /// The image has no pixels; the entry is a stand-in of one pixel.
        bool isEmpty = false;
    };

    struct Metadata
    {
        int tag = 0; ///< as in ZKEXIFElement
        QString entry;
    };

    struct Layer
    {
        LayerProperties properties; ///< but the rectangles
        Image image;
        Image mask;
        OraBrush::Texture texture; ///< of the text's brush
        QVector<Metadata> metadata;
        bool isSelected = false;
    };

    /// A selection that is kept under a name.
    struct Channel
    {
        QString name;
        Image image;
    };

    QSize size;
    double dpi = 0; ///< pixels per inch; 0 when the file doesn't say
    int unit = 0;
    LXGuides guides;
    std::vector<DocumentPath> paths;
    std::vector<ColorSample> samples;
    std::vector<Layer> layers; ///< topmost first
    Image selection;
    std::vector<Channel> channels;
    QString profileEntry; ///< empty without one
    ForeignDocumentContent foreign;

    bool hasGroups = false;       ///< layers stood in groups, which are dissolved
    bool hasUnknownModes = false; ///< a layer blends in a way that the editor doesn't know
};
