#pragma once

#include "image/BlendKernels.h"
#include "image/LXRGBA32i.h"

#include <QtGlobal>

#include <array>

/// Works out the strength of a source, a row of pixels at a time: source alpha x opacity x mask / 255, to
/// nearest, in double and rounded once.
class StrengthKernel
{
public:
    StrengthKernel(StrengthRule rule, double opacity, bool hasMask);

    /// Writes a strength a pixel; `mask` holds the mask's pixels, null where there is none or where it
    /// doesn't reach. A mask that is missing where one was announced lets nothing through.
    void Row(const LXRGBA32i* source, const LXRGBA32i* mask, int count, quint8* strength) const;

    /// Whether every pixel has full strength, whatever source and mask hold.
    bool IsAlwaysFull() const { return m_Way == Way::Constant && m_OfByte[255] == 255; }

    /// Whether a source pixel without alpha has no strength.
    bool CountsAlpha() const { return m_Rule != StrengthRule::OpacityMask; }

private:
    enum class Way
    {
        Constant, ///< no alpha counts, only the opacity
        OneAlpha, ///< one alpha counts, by the table
        Product,  ///< both count, with full opacity
        Exact     ///< both count
    };

    StrengthRule m_Rule;
    double m_Opacity;
    bool m_HasMask;
    Way m_Way;
    std::array<quint8, 256> m_OfByte{}; ///< the strength when only one alpha counts
    quint32 m_Factor = 0;               ///< alpha x this / 2^24 is the table's value; 0: it isn't anywhere
};

namespace StrengthKernels {
/// The alpha of each pixel.
void Alphas(const LXRGBA32i* pixels, int count, quint8* alphas);

/// Whether a pixel has any alpha.
bool HasAlpha(const LXRGBA32i* pixels, int count);
} // namespace StrengthKernels
