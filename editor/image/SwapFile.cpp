#include "image/SwapFile.h"

#include "image/LXTileExceptions.h"
#include "utils/FaultSeams.h"

#include <fcntl.h>
#include <lz4.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace {
/// Runs `step` (bytes so far -> result of pread or pwrite) until all bytes are through.
template <class Step>
void Transfer(FaultSeams::Seam seam, std::size_t bytes, Step step)
{
    if (FaultSeams::Pass(seam)) throw LXTMSwapError();
    std::size_t done = 0;
    while (done < bytes) {
        const ssize_t result = step(done);
        if (result < 0 && errno == EINTR) continue;
        if (result <= 0) throw LXTMSwapError();
        done += static_cast<std::size_t>(result);
    }
}
} // namespace

SwapFile::~SwapFile()
{
    if (m_File >= 0) ::close(m_File);
}

SwapFile::Slot SwapFile::Write(const uchar* block)
{
    if (m_File < 0) Open();
    int bytes = 0;
    const uchar* const stored = Compressed(block, bytes);
    const Slot slot = TakeSlot(bytes);
    try {
        Transfer(FaultSeams::Seam::SwapWrite, static_cast<std::size_t>(bytes), [&](std::size_t done) {
            return ::pwrite(m_File, stored + done, static_cast<std::size_t>(bytes) - done,
                            slot.firstPage * PageBytes + static_cast<off_t>(done));
        });
    } catch (...) {
        Release(slot);
        throw;
    }
    return slot;
}

void SwapFile::Read(const Slot& slot, uchar* block)
{
    const bool isPlain = slot.bytes == static_cast<int>(BlockBytes);
    uchar* const stored = isPlain ? block : reinterpret_cast<uchar*>(m_Buffer.data());
    Transfer(FaultSeams::Seam::SwapRead, static_cast<std::size_t>(slot.bytes), [&](std::size_t done) {
        return ::pread(m_File, stored + done, static_cast<std::size_t>(slot.bytes) - done,
                       slot.firstPage * PageBytes + static_cast<off_t>(done));
    });
    if (isPlain) return;
    const int bytes = LZ4_decompress_safe(m_Buffer.data(), reinterpret_cast<char*>(block), slot.bytes,
                                          static_cast<int>(BlockBytes));
    if (bytes != static_cast<int>(BlockBytes)) throw LXTMSwapError();
}

void SwapFile::Release(const Slot& slot) noexcept
{
    m_TakenPages -= slot.pages;
    if (m_TakenPages == 0) {
        m_SlotCounts = {};
        for (std::vector<qint64>& free : m_FreeSlots)
            free.clear();
        Shorten(0);
    } else if (slot.firstPage + slot.pages == m_PageCount) {
        --m_SlotCounts[static_cast<std::size_t>(slot.pages)];
        Shorten(slot.firstPage);
    } else {
        // Never allocates: TakeSlot() reserved a place for every slot.
        m_FreeSlots[static_cast<std::size_t>(slot.pages)].push_back(slot.firstPage);
    }
}

void SwapFile::Shorten(qint64 pages) noexcept
{
    m_PageCount = pages;
    // A disk that keeps what nobody needs does no harm.
    [[maybe_unused]] const int result = ::ftruncate(m_File, pages * PageBytes);
}

void SwapFile::Open()
{
    m_Buffer.resize(static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(BlockBytes))));
    std::string path = m_Folder + "/zenkari-swap-XXXXXX";
    m_File = ::mkostemp(path.data(), O_CLOEXEC);
    if (m_File < 0) throw LXTMSwapFileError();
    ::unlink(path.c_str());
}

SwapFile::Slot SwapFile::TakeSlot(int bytes)
{
    Slot slot;
    slot.pages = (bytes + PageBytes - 1) / PageBytes;
    slot.bytes = bytes;
    // One that is too large is better than a longer file, for which there may be no room.
    const auto fitting = std::find_if(m_FreeSlots.begin() + slot.pages, m_FreeSlots.end(),
                                      [](const std::vector<qint64>& free) { return !free.empty(); });
    if (fitting == m_FreeSlots.end()) {
        MakeSlot(slot);
    } else {
        slot.pages = static_cast<int>(fitting - m_FreeSlots.begin());
        slot.firstPage = fitting->back();
        fitting->pop_back();
    }
    m_TakenPages += slot.pages;
    return slot;
}

/// At the end of the file.
void SwapFile::MakeSlot(Slot& slot)
{
    const auto pages = static_cast<std::size_t>(slot.pages);
    std::vector<qint64>& free = m_FreeSlots[pages];
    const std::size_t needed = m_SlotCounts[pages] + 1;
    if (free.capacity() < needed) free.reserve(needed * 2);
    m_SlotCounts[pages] = needed;
    slot.firstPage = m_PageCount;
    m_PageCount += slot.pages;
}

/// The block itself when a page less isn't to be had.
const uchar* SwapFile::Compressed(const uchar* block, int& bytes)
{
    constexpr int whole = static_cast<int>(BlockBytes);
    bytes = LZ4_compress_default(reinterpret_cast<const char*>(block), m_Buffer.data(), whole,
                                 static_cast<int>(m_Buffer.size()));
    if (bytes > 0 && bytes <= whole - PageBytes) return reinterpret_cast<const uchar*>(m_Buffer.data());
    bytes = whole;
    return block;
}
