#include "app/Preferences.h"

#include "app/FormatLimitSettings.h"
#include "core/ZKApplication.h"

namespace {
const QLatin1String MemoryKey("Editor/MemoryMegabytes");
const QLatin1String UndoStepsKey("Editor/UndoSteps");
const QLatin1String UndoMemoryKey("Editor/UndoMegabytes");
const QLatin1String LookKey("Editor/Look");
const QLatin1String ScaleKey("Editor/Scale");

int NumberOf(const QString& key, int defaultValue, int least)
{
    bool isNumber = false;
    const int value = ZKApplication::GetUserValue(key, QString()).toString().toInt(&isNumber);
    return isNumber && (value == 0 || value >= least) ? value : defaultValue;
}
} // namespace

Preferences Preferences::Read(const QString& screen)
{
    Preferences values;
    values.memoryMegabytes = NumberOf(MemoryKey, values.memoryMegabytes, LeastMemoryMegabytes);
    values.undoSteps = NumberOf(UndoStepsKey, values.undoSteps, 1);
    values.undoMegabytes = NumberOf(UndoMemoryKey, values.undoMegabytes, 1);
    const QString look = ZKApplication::GetUserValue(LookKey, QString()).toString();
    if (look == QLatin1String(LightTokens.name)) values.look = Theme::Look::Light;
    values.scale = ReadScale();
    values.fileLimits = FormatLimitSettings::Read();
    values.colors = ColorPreferences::Read(screen);
    return values;
}

void Preferences::Write() const
{
    ZKApplication::SetUserValue(MemoryKey, memoryMegabytes);
    ZKApplication::SetUserValue(UndoStepsKey, undoSteps);
    ZKApplication::SetUserValue(UndoMemoryKey, undoMegabytes);
    ZKApplication::SetUserValue(LookKey, QString::fromLatin1(Theme::Tokens(look).name));
    ZKApplication::SetUserValue(ScaleKey, scale);
    FormatLimitSettings::Write(fileLimits);
    colors.Write();
}

double Preferences::ReadScale()
{
    bool isNumber = false;
    const double scale = ZKApplication::GetUserValue(ScaleKey, QString()).toString().toDouble(&isNumber);
    return isNumber && scale >= LeastScale && scale <= MostScale ? scale : LeastScale;
}
