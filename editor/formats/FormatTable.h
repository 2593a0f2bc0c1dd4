#pragma once

#include "formats/PictureFile.h"

#include <QList>
#include <QSize>
#include <QStringList>

#include <vector>

class QIODevice;

/// What the pixels of an image are, in the editor and in the file.
enum class PixelMeaning
{
    Color,    ///< straight alpha on both sides
    Coverage, ///< the alpha byte alone, as masks and selections have it; gray in the file
};

/// What a decoder gets and gives.
struct DecodeJob
{
    QIODevice& device; ///< open for reading, at its begin
    const FormatLimits& limits;
    const FileProgress& progress;

    QSize size;      ///< as the file's header says, also when that is too large
    Picture picture; ///< upright and whole when there is no error

    PixelMeaning pixels = PixelMeaning::Color; ///< read by PNG only
};

/// What an encoder gets.
struct EncodeJob
{
    QIODevice& device; ///< open for writing
    const Picture& picture;
    const PictureFile::WriteOptions& options;
    const FileProgress& progress;

    PixelMeaning pixels = PixelMeaning::Color; ///< read by PNG only
};

/// What a file can hold besides colors.
struct FormatParts
{
    bool alpha = false;
    bool colorUnderAlpha0 = false;
    /// Whether this profile comes back; null where none does.
    bool (*profile)(const QByteArray& icc) = nullptr;
    /// Whether this Exif block comes back; null where none does.
    bool (*exif)(const QByteArray& exif) = nullptr;
    /// The pixels per inch that come back; null where none do.
    double (*resolution)(const Picture& picture) = nullptr;
};

/// One kind of file. Decoders and encoders answer with the error; exceptions of image code pass through them.
struct FormatEntry
{
    PictureFile::Format format;
    QString name;
    QStringList endings; ///< small letters, without dot, the usual one first
    /// With which files of this kind begin; any byte may stand where it has a question mark.
    QList<QByteArray> signatures;
    FormatParts keeps;
    int maxSide; ///< pixels that the format can hold, of width and of height
    PictureFile::Error (*decode)(DecodeJob& job);
    PictureFile::Error (*encode)(const EncodeJob& job); ///< null where files are only read
};

/// Whether a file that begins so is of this kind.
bool HasSignature(const FormatEntry& entry, const QByteArray& head);

/// All kinds of files, in the order in which they are offered.
const std::vector<FormatEntry>& FormatTable();

/// Null for Unknown.
const FormatEntry* FindFormat(PictureFile::Format format);
