#pragma once

#include "document/LXDocumentInterface_p.h"
#include "support/DocumentFixture.h"
#include "support/TextFixture.h"

#include <QTransform>

/// A document with a text over a picture.
namespace TextLayerFixture {
inline constexpr unsigned int TextId = 1;

inline DocumentFixture::OwnedDocument MakeDocument()
{
    DocumentFixture::Random random(4);
    DocumentFixture::OwnedDocument document = DocumentFixture::Make(QSize(160, 100));
    document->AddLayer("ground", DocumentFixture::Noise(random, QSize(160, 100)), QPoint());
    document->AddTextLayer("Text Layer", QPointF(20.25, 70));
    document->SetTextFont(TextId, TextFixture::Font(36));
    document->SetText(TextId, "Word");
    return document;
}

inline QTransform MatrixOf(LXDocumentInterface* document)
{
    return document->GetModel()->GetTextLayerTransformation(0);
}
} // namespace TextLayerFixture
