#pragma once

#include <QtGlobal>

#include <string>
#include <vector>

/// A temporary file of equal blocks. It has no name on disk once it is open, so it is gone with the program,
/// however that ends. Not locked: the tile store does that.
class SwapFile
{
public:
    static constexpr std::size_t BlockBytes = 65536;

    /// The file is made in `folder` when the first block is written.
    explicit SwapFile(std::string folder) : m_Folder(std::move(folder)) {}

    ~SwapFile();

    /// Stores a block and returns where. Throws LXTMSwapFileError when there can be no file, LXTMSwapError
    /// when the write fails.
    qint64 Write(const uchar* block);
    /// Throws LXTMSwapError.
    void Read(qint64 slot, uchar* block) const;
    /// The slot may be used again.
    void Release(qint64 slot) noexcept;

private:
    Q_DISABLE_COPY(SwapFile)

    void Open();
    qint64 TakeSlot();

    std::string m_Folder;
    int m_File = -1;
    qint64 m_SlotCount = 0;
    std::vector<qint64> m_FreeSlots;
};
