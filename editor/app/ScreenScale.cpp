#include "app/ScreenScale.h"

#include "app/Preferences.h"
#include "core/ApplicationFolders.h"
#include "core/ZKApplication_p.h"

void ScreenScale::UseForStart(const QString& userFolder)
{
    constexpr const char* variable = "QT_SCALE_FACTOR";
    if (qEnvironmentVariableIsSet(variable)) return;

    ZKApplicationPrivate::Get().SetFolders(userFolder.isEmpty() ? ApplicationFolders::Default()
                                                                : ApplicationFolders::Below(userFolder));
    const double scale = Preferences::ReadScale();
    if (scale != Preferences::LeastScale) qputenv(variable, QByteArray::number(scale));
}
