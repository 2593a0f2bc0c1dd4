#include "image/SwapFile.h"

#include "image/LXTileExceptions.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace {
off_t OffsetOf(qint64 slot)
{
    return static_cast<off_t>(slot) * static_cast<off_t>(SwapFile::BlockBytes);
}

/// Runs `step` (bytes so far -> result of pread or pwrite) until a block is through.
template <class Step>
void TransferBlock(Step step)
{
    std::size_t done = 0;
    while (done < SwapFile::BlockBytes) {
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

qint64 SwapFile::Write(const uchar* block)
{
    if (m_File < 0) Open();
    const qint64 slot = TakeSlot();
    try {
        TransferBlock([&](std::size_t done) {
            return ::pwrite(m_File, block + done, BlockBytes - done,
                            OffsetOf(slot) + static_cast<off_t>(done));
        });
    } catch (...) {
        Release(slot);
        throw;
    }
    return slot;
}

void SwapFile::Read(qint64 slot, uchar* block) const
{
    TransferBlock([&](std::size_t done) {
        return ::pread(m_File, block + done, BlockBytes - done, OffsetOf(slot) + static_cast<off_t>(done));
    });
}

void SwapFile::Release(qint64 slot) noexcept
{
    m_FreeSlots.push_back(slot); // never allocates: TakeSlot() reserved a place for every slot
}

void SwapFile::Open()
{
    std::string path = m_Folder + "/zenkari-swap-XXXXXX";
    m_File = ::mkstemp(path.data());
    if (m_File < 0) throw LXTMSwapFileError();
    ::unlink(path.c_str());
}

qint64 SwapFile::TakeSlot()
{
    if (!m_FreeSlots.empty()) {
        const qint64 slot = m_FreeSlots.back();
        m_FreeSlots.pop_back();
        return slot;
    }
    const auto needed = static_cast<std::size_t>(m_SlotCount) + 1;
    if (m_FreeSlots.capacity() < needed) m_FreeSlots.reserve(needed * 2);
    return m_SlotCount++;
}
