#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// Zip archives put together and taken apart byte by byte, so that the editor's library is not its own judge.
namespace ZipBytes {
struct Entry
{
    QString name;
    QByteArray bytes;
    bool isDeflated = false;

    // What the directory claims instead of the truth.
    std::optional<quint32> claimedSize = {};
    std::optional<quint32> claimedPackedSize = {};
    std::optional<quint32> claimedSum = {};
    std::optional<quint32> claimedOffset = {};
    QByteArray packed = {}; ///< packed bytes of whatever they are; null for the true ones
};

struct Archive
{
    QByteArray bytes;
    QVector<int> boundaries; ///< where a header, a name, an entry's bytes or the directory begins or ends
    int directoryAt = 0;
    int endAt = 0; ///< of the end record
};

Archive Write(const QVector<Entry>& entries);

/// Raw deflate, as archives have it.
QByteArray Deflate(const QByteArray& bytes);

/// In the order of the bytes in the file. Any disagreement between headers, sizes, sums and bytes gives no
/// entries and says why.
QVector<Entry> Read(const QByteArray& archive, QString* complaint);
} // namespace ZipBytes
