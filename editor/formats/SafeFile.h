#pragma once

#include <QSaveFile>

/// A file that replaces an older one only at its commit, and notices a full disk.
class SafeFile : public QSaveFile
{
public:
    using QSaveFile::QSaveFile;

protected:
    qint64 writeData(const char* data, qint64 length) override;
};
