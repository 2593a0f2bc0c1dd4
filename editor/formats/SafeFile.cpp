#include "formats/SafeFile.h"

#include "utils/FaultSeams.h"

#include <cerrno>
#include <system_error>

qint64 SafeFile::writeData(const char* data, qint64 length)
{
    if (FaultSeams::Pass(FaultSeams::Seam::FileWrite)) {
        setErrorString(QString::fromStdString(std::generic_category().message(ENOSPC)));
        return -1;
    }
    return QSaveFile::writeData(data, length);
}
