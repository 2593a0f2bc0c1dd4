#pragma once

#include <QtGlobal>

#include <array>
#include <string>
#include <vector>

/// A temporary file of compressed tiles. It has no name on disk once it is open, so it is gone with the
/// program, however that ends. Not locked: the tile store does that.
class SwapFile
{
public:
    static constexpr std::size_t BlockBytes = 65536;

    /// Where a tile lies. Slots are whole pages; one that is given back serves the next tile that fits in.
    struct Slot
    {
        bool IsTaken() const { return pages > 0; }

        qint64 firstPage = 0;
        int pages = 0;
        int bytes = 0; ///< BlockBytes: as it is, because it wouldn't become smaller
    };

    /// The file is made in `folder` when the first block is written.
    explicit SwapFile(std::string folder) : m_Folder(std::move(folder)) {}

    ~SwapFile();

    /// Stores a block and returns where. Throws LXTMSwapFileError when there can be no file, LXTMSwapError
    /// when the write fails.
    Slot Write(const uchar* block);
    /// Throws LXTMSwapError.
    void Read(const Slot& slot, uchar* block);
    /// The slot may be used again.
    void Release(const Slot& slot) noexcept;

    /// How long the file is, free slots between taken ones included.
    qint64 FileBytes() const { return m_PageCount * PageBytes; }

private:
    Q_DISABLE_COPY(SwapFile)

    static constexpr int PageBytes = 4096;
    static constexpr int MostPages = static_cast<int>(BlockBytes) / PageBytes;

    void Open();
    Slot TakeSlot(int bytes);
    void MakeSlot(Slot& slot);
    void Shorten(qint64 pages) noexcept;
    const uchar* Compressed(const uchar* block, int& bytes);

    std::string m_Folder;
    int m_File = -1;
    qint64 m_PageCount = 0;
    qint64 m_TakenPages = 0;
    std::array<std::size_t, MostPages + 1> m_SlotCounts{};      ///< slots ever made, by their pages
    std::array<std::vector<qint64>, MostPages + 1> m_FreeSlots; ///< first pages, by the slots' pages
    std::vector<char> m_Buffer;                                 ///< of compressed bytes
};
