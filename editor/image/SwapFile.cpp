#include "image/SwapFile.h"

#include "image/LXTileExceptions.h"

#include <lz4.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace {
/// Runs `step` (bytes so far -> result of pread or pwrite) until all bytes are through.
template <class Step>
void Transfer(std::size_t bytes, Step step)
{
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
        Transfer(static_cast<std::size_t>(bytes), [&](std::size_t done) {
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
    Transfer(static_cast<std::size_t>(slot.bytes), [&](std::size_t done) {
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
    // Never allocates: TakeSlot() reserved a place for every slot.
    m_FreeSlots[static_cast<std::size_t>(slot.pages)].push_back(slot.firstPage);
    m_TakenPages -= slot.pages;
}

void SwapFile::Open()
{
    m_Buffer.resize(static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(BlockBytes))));
    std::string path = m_Folder + "/zenkari-swap-XXXXXX";
    m_File = ::mkstemp(path.data());
    if (m_File < 0) throw LXTMSwapFileError();
    ::unlink(path.c_str());
}

SwapFile::Slot SwapFile::TakeSlot(int bytes)
{
    Slot slot;
    slot.pages = (bytes + PageBytes - 1) / PageBytes;
    slot.bytes = bytes;
    std::vector<qint64>& free = m_FreeSlots[static_cast<std::size_t>(slot.pages)];
    if (free.empty()) {
        const std::size_t needed = ++m_SlotCounts[static_cast<std::size_t>(slot.pages)];
        if (free.capacity() < needed) free.reserve(needed * 2);
        slot.firstPage = m_PageCount;
        m_PageCount += slot.pages;
    } else {
        slot.firstPage = free.back();
        free.pop_back();
    }
    m_TakenPages += slot.pages;
    return slot;
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
