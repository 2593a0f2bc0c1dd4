#pragma once

#include "document/ColorSample.h"
#include "document/DocumentPath.h"
#include "document/ForeignContent.h"
#include "document/LXGuide.h"
#include "document/Layer.h"
#include "document/SelectionChannels.h"
#include "image/LXImage.h"

#include <QByteArray>
#include <QPoint>
#include <QSet>
#include <QSize>

#include <vector>

/// Everything of a document that its own file keeps, as a value that any thread may hand on. Images share
/// their tiles with the document.
struct OraContent
{
    QSize size;
    double dpi = 0; ///< pixels per inch; 0 when nobody says
    int unit = 0;   ///< as LXDocumentInterface::GetUnit()
    LXGuides guides;
    std::vector<DocumentPath> paths;
    std::vector<ColorSample> samples;
    QByteArray iccProfile;
    std::vector<LayerState> layers; ///< topmost first
    QSet<int> selectedRows;         ///< of the view that shows the document
    LXImage32 selection;            ///< null without one
    QPoint selectionOffset;
    SelectionChannels::List channels;
    LXImage32 merged; ///< only for writing: what programs without layers show
    ForeignDocumentContent foreign;
};
