#include "gui/NavigatorPicture.h"

#include "core/ZKCMSManager.h"
#include "document/LXDocumentInterface.h"
#include "gui/DisplayColors.h"
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
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::DisplayChanged, this,
            &NavigatorPicture::FollowProfiles);
}

void NavigatorPicture::SetDocument(LXDocumentInterface* document,
                                   const std::shared_ptr<const LXColorTransformBase>& colorTransform)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = document;
    m_Image = QImage();
    if (document)
        connect(document, &LXDocumentInterface::ICCProfileChanged, this, &NavigatorPicture::FollowProfiles);
    if (!colorTransform) {
        FollowProfiles();
        return;
    }
    m_pTransform = colorTransform;
    m_ToScreen = ZKCMSTransform();
    Follow();
}

void NavigatorPicture::FollowProfiles()
{
    m_pTransform.reset();
    m_ToScreen =
        m_pDocument ? ZKCMSManager::GetInstance()->ToDisplay(m_pDocument->GetICCProfile()) : ZKCMSTransform();
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
                    [this, level = m_Level, transform = m_pTransform,
                     toScreen = m_ToScreen](const PictureSurvey::Batch& batch) -> PictureSurvey::Delivery {
                        std::vector<Piece> pieces = Reduce(batch, level, transform.get());
                        for (Piece& piece : pieces)
                            DisplayColors::Convert(toScreen, piece.second, piece.second.rect());
                        return [this, pieces = std::move(pieces)] { Deliver(pieces); };
                    });
}

void NavigatorPicture::OnRestarted()
{
    const QSize canvas = m_Survey.GetCanvas();
    // The level may still be that of another canvas, and a large picture of a level too fine for it.
    if (canvas != m_Canvas) m_Image = QImage();
    if (!m_Image.isNull()) m_Image = m_Image.scaled(ScaledTileCache::LevelSize(canvas, m_Level));
    m_Canvas = canvas;
    emit Changed(QRect());
}

void NavigatorPicture::Deliver(const std::vector<Piece>& pieces)
{
    if (m_Image.isNull()) {
        m_Image = QImage(ScaledTileCache::LevelSize(m_Canvas, m_Level), QImage::Format_ARGB32_Premultiplied);
        m_Image.fill(Qt::transparent);
    }
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
