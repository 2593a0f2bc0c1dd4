#pragma once

#include "EditorExport.h"

#include <QByteArray>
#include <QSize>
#include <QString>

#include <functional>

/// What it costs to draw an SVG picture. A short one may stand for a picture without end, and whoever draws
/// it can't be stopped any more, so it is judged before. Any thread.
namespace SvgCost {
/// Beyond these it isn't drawn.
constexpr int MostBytes = 32 * 1024 * 1024;
constexpr int MostElements = 100000; ///< with everything that is drawn again by `use`
constexpr int MostLevels = 200;      ///< of elements in elements, and of uses of uses
/// Of the picture, times its elements: each may cover all of it.
constexpr double MostPixels = 2e10;

/// Whether a picture of that size may be decoded.
using MayDecode = std::function<bool(const QSize&)>;
/// The size that the picture is to be drawn in, pixels.
using SizeOf = std::function<QSize()>;

/// Why the picture must not be drawn, in words for people that go on after its name; empty for one that may.
/// What isn't XML to its end counts as far as it is.
/// @param mayDecode  asked about each picture of pixels inside
/// @param sizeOf     asked last of all: whoever knows the size has read the picture
ZK_EDITOR_EXPORT QString WhyNot(const QByteArray& bytes, const MayDecode& mayDecode, const SizeOf& sizeOf);
} // namespace SvgCost
