#pragma once

#include "document/LXColorSampleModel_p.h"

#include <QDataStream>

#include <optional>
#include <vector>

// The values behind the data of color samples, which ColorSamplesCommand fills in as it runs.

class ColorSamplesCommandDataAddPrivate
{
public:
    /// Point alone, until undo has taken the sample away with the rest.
    ColorSample sample;
    bool isWhole = false;
};

class ColorSamplesCommandDataRemovePrivate
{
public:
    int row = -1;
    ColorSample sample;
};

class ColorSamplesCommandDataMovePrivate
{
public:
    int row = -1;
    QPoint before;
    std::optional<QPoint> after; ///< unknown until the first redo
};

class ColorSamplesCommandDataClearPrivate
{
public:
    std::vector<ColorSample> samples;
};

/// Color samples in the serial form of command data.
namespace SampleStream {
void Write(QDataStream& stream, const ColorSample& sample);
ColorSample Read(QDataStream& stream);
} // namespace SampleStream
