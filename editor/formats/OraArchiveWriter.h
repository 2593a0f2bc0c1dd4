#pragma once

#include "formats/FormatFailure.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class OraArchiveWriterPrivate;
class QIODevice;

/// Writes a zip archive into a device, its entries in the order in which they were added. One thread.
class OraArchiveWriter
{
public:
    enum class Packing
    {
        Stored,
        Deflated,
    };

    using Encode = std::function<PictureFile::Error(QIODevice&)>;

    /// @param device  open for writing, with random access, empty; outlives the writer
    explicit OraArchiveWriter(QIODevice& device);
    ~OraArchiveWriter();
    Q_DISABLE_COPY(OraArchiveWriter)

    void Add(const QString& name, const QByteArray& bytes, Packing packing);
    /// An entry that is stored as it comes, because it is compressed already. It is encoded only when its
    /// turn comes, and held until it is written.
    /// @param encode  called by Finish(); an exception counts as too little memory
    void AddEncoded(const QString& name, const Encode& encode);

    /// Encodes and writes everything: call it once. Nothing but the device needs to be closed afterwards.
    PictureFile::Error Finish();

private:
    std::unique_ptr<OraArchiveWriterPrivate> m_pPrivate;
};
