#pragma once

#include <QByteArray>
#include <QSize>

#include <optional>

/// The few values of an Exif block that depend on the pixels it goes with, read and corrected in place;
/// everything else stays as the camera wrote it. A block that isn't one, or is damaged, answers with the
/// defaults and takes no corrections. Any thread.
class ExifBlock
{
public:
    /// @param bytes  a TIFF structure, without the "Exif" mark before it
    explicit ExifBlock(QByteArray bytes);

    /// How the pixels have to be turned to be upright: 1 not at all, up to 8, numbered as in the standard.
    int GetOrientation() const;
    /// Pixels per inch; 0 when the block doesn't say.
    double GetDpi() const;

    /// The setters change values that are there, and add none.
    void SetOrientation(int orientation);
    void SetDpi(double dpi);
    void SetPixelSize(const QSize& size);
    /// Takes the small preview out: it would go on showing the picture before all changes.
    void DropThumbnail();

    const QByteArray& GetBytes() const { return m_Bytes; }

private:
    /// One value of a directory; only kinds with a fixed size are read.
    struct Entry
    {
        quint16 type = 0;
        quint32 count = 0;
        quint32 valueAt = 0; ///< where its value, or the offset of a longer one, stands
    };

    bool Holds(quint32 offset, quint32 length) const;
    quint16 Word(quint32 offset) const;
    quint32 Long(quint32 offset) const;
    void PutWord(quint32 offset, quint16 value);
    void PutLong(quint32 offset, quint32 value);

    /// Where the first directory stands; nothing when this is no TIFF structure.
    std::optional<quint32> MainDirectory() const;
    /// Where the link from the main directory to that of the preview stands.
    std::optional<quint32> PreviewLink() const;
    std::optional<Entry> Find(std::optional<quint32> directory, quint16 tag) const;
    std::optional<quint32> WholeNumber(std::optional<quint32> directory, quint16 tag) const;
    void PutWholeNumber(std::optional<quint32> directory, quint16 tag, quint32 value);
    std::optional<double> Fraction(std::optional<quint32> directory, quint16 tag) const;
    void PutFraction(std::optional<quint32> directory, quint16 tag, double value);

    QByteArray m_Bytes;
    bool m_IsBigEndian = false;
};
