#pragma once

#include <QString>

/// The names that OpenRaster files use. Any thread.
namespace OraNames {
const QLatin1String Mimetype("mimetype");
const QLatin1String MimetypeText("image/openraster");
const QLatin1String Stack("stack.xml");
const QLatin1String Merged("mergedimage.png");
const QLatin1String Thumbnail("Thumbnails/thumbnail.png");
constexpr int ThumbnailSide = 256;

/// Of the elements and attributes that the format lacks.
const QLatin1String OwnSpace("urn:zenkari:openraster:1");
const QLatin1String OwnPrefix("zk");

/// "svg:multiply" for BlendMode::Multiply; never empty.
QString CompositeOp(unsigned int blendMode);
/// False for an operation that the editor doesn't know.
bool BlendModeOf(const QString& compositeOp, unsigned int* blendMode);

/// LayerLocks bits as words: "transparency pixels position all"; empty for none.
QString LockWords(unsigned int locks);
/// Words that nobody knows are left out.
unsigned int LocksOf(const QString& words);

/// "horizontal" or "vertical".
QString OrientationWord(Qt::Orientation orientation);
/// False for another word.
bool OrientationOf(const QString& word, Qt::Orientation* orientation);
} // namespace OraNames
