#include "formats/SafeFile.h"

#include "utils/FaultSeams.h"

#include <QFileInfo>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace {
/// Never leaves a moment without the older file, nor with half a copy under the final name.
void KeepOlderFile(const QString& path, const QString& backupPath)
{
    if (!QFileInfo::exists(path)) return;
    const QString newBackup = backupPath + QStringLiteral(".new");
    QFile::remove(newBackup);
    FaultSeams::Pass(FaultSeams::Seam::FileCommit);
    const QByteArray encodedNew = QFile::encodeName(newBackup);
    // A second name for the same bytes costs nothing; some file systems have none.
    const bool isLinked = ::link(QFile::encodeName(path).constData(), encodedNew.constData()) == 0;
    if (!isLinked && !QFile::copy(path, newBackup)) return;
    FaultSeams::Pass(FaultSeams::Seam::FileCommit);
    if (std::rename(encodedNew.constData(), QFile::encodeName(backupPath).constData()) != 0) {
        QFile::remove(newBackup);
    }
}
} // namespace

bool SafeFile::Finish()
{
    errno = 0;
    const bool isFlushed = flush();
    if (!isFlushed && m_SystemError == 0) m_SystemError = errno;
    return commit() && isFlushed;
}

bool SafeFile::FinishKeeping(const QString& backupPath)
{
    errno = 0;
    const bool isFlushed = flush();
    if (!isFlushed && m_SystemError == 0) m_SystemError = errno;
    if (isFlushed && m_SystemError == 0) KeepOlderFile(GetTarget(), backupPath);
    FaultSeams::Pass(FaultSeams::Seam::FileCommit);
    const bool isFinished = Finish();
    FaultSeams::Pass(FaultSeams::Seam::FileCommit);
    return isFinished;
}

QString SafeFile::GetTarget() const
{
    const QFileInfo info(fileName());
    return info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
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
