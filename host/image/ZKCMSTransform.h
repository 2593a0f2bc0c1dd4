#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"
#include "image/LXRGBA32i.h"
#include "image/ZKCMSProfile.h"

#include <QColor>

#include <memory>

/// How colors are brought from one profile into another.
struct ZKCMSRendering
{
    enum class Intent
    {
        Perceptual, ///< all colors keep their distances, where the profile has tables for it
        Relative,   ///< what both can show stays, the rest takes the nearest
    };

    Intent intent = Intent::Relative;
    bool blackPoint = true; ///< the darkest color of one becomes the darkest of the other

    friend bool operator==(const ZKCMSRendering& a, const ZKCMSRendering& b)
    {
        return a.intent == b.intent && a.blackPoint == b.blackPoint;
    }

    friend bool operator!=(const ZKCMSRendering& a, const ZKCMSRendering& b) { return !(a == b); }
};

/// Turns colors of one profile into the same colors of another. A null profile counts as sRGB. Copies share
/// their work.
///
/// Empty, it does nothing: made by default, from profiles that mean the same, or from one that isn't an RGB
/// profile, is damaged, or only tells colors where they are to be brought in (ZKCMSProfile::IsTarget). Any
/// thread; several threads may use one transform.
class ZK_HOST_EXPORT ZKCMSTransform
{
public:
    ZKCMSTransform() = default;
    ZKCMSTransform(const ZKCMSProfile& from, const ZKCMSProfile& to, const ZKCMSRendering& rendering = {});

    bool IsEmpty() const { return !m_pTransforms; }

    /// 16 bits a channel. Alpha stays; an invalid color stays invalid.
    void operator()(QColor& color) const;
    /// Pixels in straight alpha, in place, 8 bits a channel. Alpha stays, and pixels of alpha 0 keep all four
    /// bytes.
    void operator()(LXRGBA32i* pixels, int count) const;
    /// A whole image in place, on several threads; tiles that were shared inside it stay so. Its own profile
    /// stays as it is. Throws what LXTileManager::MakeTile() throws, and then has changed nothing.
    void operator()(LXImage32& image) const;

private:
    struct Transforms;

    std::shared_ptr<const Transforms> m_pTransforms;
};
