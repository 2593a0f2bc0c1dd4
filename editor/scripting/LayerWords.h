#pragma once

#include <QString>
#include <QStringList>

/// The words that scripts use for what layers have as numbers. Unknown words throw a ScriptError. Any thread.
namespace LayerWords {
/// "raster", "text", "adjustment"
QString OfKind(int kind);

/// The English names of the layers panel: "Normal", "Multiply", "Color dodge".
QString OfBlendMode(unsigned int mode);
unsigned int ToBlendMode(const QString& word);

/// Out of "transparency", "pixels", "position" and "all".
QStringList OfLocks(unsigned int flags);
unsigned int ToLocks(const QStringList& words);
} // namespace LayerWords
