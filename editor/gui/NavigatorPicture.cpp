#include "gui/NavigatorPicture.h"

#include "document/LXDocumentInterface.h"
#include "gui/ScaledTileCache.h"
#include "gui/ShownColors.h"
#include "gui/TileReduction.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QPainter>

#include <utility>

namespace {
NavigatorPicture::Piece ReduceTile(const LXImage32& picture, const QPoint& tile, int level,
                                   const LXColorTransformBase* transform)
{
    const QRect part = TileWalk::TileRect(tile.x(), tile.y()) & picture.Rect();
    const QRect levelRect(QPoint(part.left() >> level, part.top() >> level),
                          QPoint(part.right() >> level, part.bottom() >> level));
    QImage image(levelRect.size(), QImage::Format_ARGB32_Premultiplied);
    ReduceInto(picture, level, levelRect, image, QPoint(0, 0));
    ToShownColors(image, transform);
    return {levelRect.topLeft(), image};
}
} // namespace

std::vector<NavigatorPicture::Piece> NavigatorPicture::Reduce(const PictureSurvey::Batch& batch, int level,
                                                              const LXColorTransformBase* transform)
{
    std::vector<Piece> pieces(batch.tiles.size());
    TileThreads::ForEach(int(pieces.size()), [&](int i) {
        pieces[std::size_t(i)] = ReduceTile(batch.picture, batch.tiles[std::size_t(i)], level, transform);
    });
    return pieces;
}

NavigatorPicture::NavigatorPicture(QObject* parent) : QObject(parent), m_Survey(this)
{
    connect(&m_Survey, &PictureSurvey::Restarted, this, &NavigatorPicture::OnRestarted);
}

void NavigatorPicture::SetDocument(LXDocumentInterface* document,
                                   const std::shared_ptr<const LXColorTransformBase>& colorTransform)
{
    m_pDocument = document;
    m_pTransform = colorTransform;
    m_Image = QImage();
    Follow();
}

void NavigatorPicture::SetLevel(int level)
{
    if (level == m_Level) return;
    m_Level = level;
    Follow();
}

void NavigatorPicture::Follow()
{
    m_Survey.Follow(m_pDocument,
                    [this, level = m_Level,
                     transform = m_pTransform](const PictureSurvey::Batch& batch) -> PictureSurvey::Delivery {
                        return [this, pieces = Reduce(batch, level, transform.get())] { Deliver(pieces); };
                    });
}

void NavigatorPicture::OnRestarted()
{
    const QSize canvas = m_Survey.GetCanvas();
    const QSize size = ScaledTileCache::LevelSize(canvas, m_Level);
    if (size.isEmpty()) {
        m_Image = QImage();
    } else if (m_Image.isNull() || canvas != m_Canvas) {
        m_Image = QImage(size, QImage::Format_ARGB32_Premultiplied);
        m_Image.fill(Qt::transparent);
    } else {
        m_Image = m_Image.scaled(size);
    }
    m_Canvas = canvas;
    emit Changed(QRect());
}

void NavigatorPicture::Deliver(const std::vector<Piece>& pieces)
{
    QRect changed;
    QPainter painter(&m_Image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const auto& [place, image] : pieces) {
        painter.drawImage(place, image);
        changed |= QRect(place * Box(), image.size() * Box());
    }
    painter.end();
    emit Changed(changed);
}
