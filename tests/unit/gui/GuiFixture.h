#pragma once

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"

#include <QColor>
#include <QImage>
#include <QSize>

#include <functional>
#include <memory>

/// What the tests of views and windows need of documents.
namespace GuiFixture {
struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using OwnedDocument = std::unique_ptr<LXDocumentInterface, Release>;

/// An image whose pixel (x, y) has the color that the function gives.
LXImage32 MakeImage(const QSize& size, const std::function<QRgb(int x, int y)>& colorAt);

/// A document of one layer that fills the canvas.
OwnedDocument MakeDocument(const QSize& size, const std::function<QRgb(int x, int y)>& colorAt);
OwnedDocument MakeDocument(const QSize& size, const QColor& color = Qt::white);

/// A picture like a photo: soft areas, a horizon, noise.
OwnedDocument MakePhoto(const QSize& size);

/// "#aarrggbb", for messages of failures.
QString Hex(const QColor& color);
} // namespace GuiFixture
