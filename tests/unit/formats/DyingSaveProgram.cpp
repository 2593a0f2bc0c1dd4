#include "DyingSave.h"

#include "formats/OraFile.h"
#include "utils/FaultSeams.h"

#include <QCoreApplication>

/// Saves and dies on the way: `dying_save FILE write|commit N` ends at the N-th pass through that seam, with
/// success when there are fewer.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) return 1;
    const bool isWrite = arguments[2] == QLatin1String("write");
    FaultSeams::ExitAtNth(isWrite ? FaultSeams::Seam::FileWrite : FaultSeams::Seam::FileCommit,
                          arguments[3].toInt());
    return OraFile::Write(arguments[1], DyingSave::Content(QStringLiteral("new"))).IsOk() ? 0 : 2;
}
