#pragma once

#include "document/LXColorSampleModel.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
#include "support/DocumentFixture.h"

/// A document of 100 x 80 with something of everything that a canvas carries.
inline DocumentFixture::OwnedDocument MakeCanvasDocument()
{
    using namespace DocumentFixture;
    Random random(11);
    OwnedDocument document = Make(QSize(100, 80));
    document->AddLayer("bottom", Noise(random, QSize(100, 80)), QPoint());
    document->AddLayer("top", Noise(random, QSize(40, 30)), QPoint(80, -10));
    document->AddMask(1, true);
    document->SetMaskImage(1, MaskNoise(random, QSize(30, 20)), QPoint(85, 0));
    document->AddMask(2, false);
    document->SetSelectionMask(Filled(QSize(20, 10), 0xFF000000), QPoint(30, 40));
    document->GetPathListModel()->InsertPath(
        0, "path", {{{LXPathElement(QPointF(10, 20)), LXPathElement(QPointF(30.5, 40))}, 1}});
    document->GetColorSamples()->InsertSample(0, QPoint(12, 34));
    ChannelsOf(document.get())
        ->Set({{"kept", {Filled(QSize(10, 20), 0xFF000000), QPoint(50, 10)}},
               {"soft", {MaskNoise(random, QSize(20, 20)), QPoint(-10, 60)}}});
    document->SetGuides({{Qt::Horizontal, 20}, {Qt::Vertical, 90}});
    return document;
}
