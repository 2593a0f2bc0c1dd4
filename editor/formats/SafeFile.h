#pragma once

#include <QSaveFile>

/// A file that replaces an older one only at its commit, and knows why it could not be written.
class SafeFile : public QSaveFile
{
public:
    using QSaveFile::QSaveFile;

    /// Puts the file in its place; false, with the older file as it was, when any byte of it is missing.
    bool Finish();

    /// The same, and the older file stays under another name, where it replaces what is there. A copy that
    /// can't be made stands in no way.
    bool FinishKeeping(const QString& backupPath);

    /// The file that is replaced: where a link points to, not the link.
    QString GetTarget() const;

    /// The system's words for the first failure.
    QString GetReason() const;

protected:
    qint64 writeData(const char* data, qint64 length) override;

private:
    int m_SystemError = 0; ///< of the first failed write
};
