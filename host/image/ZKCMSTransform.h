#pragma once

#include "ZKHostExport.h"

#include "image/ZKCMSProfile.h"

#include <QColor>

#include <memory>

/// Turns colors of one profile into the same colors of another: relative colorimetric, with black point
/// compensation, 16 bits a channel. A null profile counts as sRGB. Copies share their work.
///
/// Empty, it does nothing: made by default, from equal profiles, or from one that isn't an RGB profile or is
/// damaged. Any thread; several threads may use one transform.
class ZK_HOST_EXPORT ZKCMSTransform
{
public:
    ZKCMSTransform() = default;
    ZKCMSTransform(const ZKCMSProfile& from, const ZKCMSProfile& to);

    bool IsEmpty() const { return !m_pTransform; }

    /// Alpha stays; an invalid color stays invalid.
    void operator()(QColor& color) const;

private:
    std::shared_ptr<void> m_pTransform;
};
