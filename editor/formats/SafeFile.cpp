#include "formats/SafeFile.h"

#include "utils/FaultSeams.h"

#include <cerrno>
#include <system_error>

bool SafeFile::Finish()
{
    errno = 0;
    const bool isFlushed = flush();
    if (!isFlushed && m_SystemError == 0) m_SystemError = errno;
    return commit() && isFlushed;
}

QString SafeFile::GetReason() const
{
    // Qt forgets the reason when the first part of a write still found room, as it does on a full disk.
    if (m_SystemError == 0) return errorString();
    return QString::fromStdString(std::generic_category().message(m_SystemError));
}

qint64 SafeFile::writeData(const char* data, qint64 length)
{
    errno = 0;
    const bool isFull = FaultSeams::Pass(FaultSeams::Seam::FileWrite);
    if (isFull) errno = ENOSPC;
    const qint64 written = isFull ? -1 : QSaveFile::writeData(data, length);
    if (written != length && m_SystemError == 0) m_SystemError = errno;
    return written;
}
