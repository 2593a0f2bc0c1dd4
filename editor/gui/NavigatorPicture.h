#pragma once

#include "gui/PictureSurvey.h"
#include "image/ZKCMSTransform.h"

#include <QImage>

#include <memory>
#include <utility>
#include <vector>

class LXColorTransformBase;

/// A document's merged picture, halved so often that it is small, made on a worker and later only where it
/// changed. Main thread only.
class NavigatorPicture : public QObject
{
    Q_OBJECT

public:
    /// A tile of a small picture: where it goes, in pixels of the level, and what goes there.
    using Piece = std::pair<QPoint, QImage>;

    /// The batch's tiles at 1 / 2^level, in its order, in the colors of the screen. Any thread.
    static std::vector<Piece> Reduce(const PictureSurvey::Batch& batch, int level,
                                     const LXColorTransformBase* transform);

    explicit NavigatorPicture(QObject* parent);

    /// @param colorTransform  holds until the document or the screen gets another profile; from then on, and
    ///                        with null, it is the way from the one to the other
    void SetDocument(LXDocumentInterface* document,
                     const std::shared_ptr<const LXColorTransformBase>& colorTransform);

    /// Until the picture of this level is made, the one before stands in.
    /// @param level  0 to 7
    void SetLevel(int level);

    PictureSurvey& Survey() { return m_Survey; }

    const PictureSurvey& Survey() const { return m_Survey; }

    /// Premultiplied, transparent where nothing was delivered yet; null before anything was.
    const QImage& Image() const { return m_Image; }

    /// Document pixels for each pixel of the image.
    int Box() const { return 1 << m_Level; }

signals:
    /// Document pixels; empty for all of it, which may have another size now.
    void Changed(const QRect& rect);

private:
    void Follow();
    void FollowProfiles();
    void OnRestarted();
    void Deliver(const std::vector<Piece>& pieces);

    QPointer<LXDocumentInterface> m_pDocument;
    std::shared_ptr<const LXColorTransformBase> m_pTransform;
    ZKCMSTransform m_ToScreen; ///< empty while there is another transform
    PictureSurvey m_Survey;
    int m_Level = 0;
    QSize m_Canvas;
    QImage m_Image;
};
