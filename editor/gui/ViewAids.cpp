#include "gui/ViewAids.h"

#include "core/ZKApplication.h"

namespace {
const QLatin1String SnapKey("Editor/Snap");
const QLatin1String OffsetKey("Editor/TellDragOffset");
const QLatin1String GridKey("Editor/ShowGrid");
const QLatin1String GridStepKey("Editor/GridStep");
constexpr int FirstGridStep = 32;

bool IsOn(const QString& key)
{
    return ZKApplication::GetUserValue(key, false).toBool();
}
} // namespace

bool ViewAids::IsSnapOn()
{
    return IsOn(SnapKey);
}

void ViewAids::SetSnap(bool on)
{
    ZKApplication::SetUserValue(SnapKey, on);
}

bool ViewAids::IsOffsetTold()
{
    return IsOn(OffsetKey);
}

void ViewAids::TellOffset(bool on)
{
    ZKApplication::SetUserValue(OffsetKey, on);
}

bool ViewAids::IsGridShown()
{
    return IsOn(GridKey);
}

void ViewAids::ShowGrid(bool on)
{
    ZKApplication::SetUserValue(GridKey, on);
}

int ViewAids::GridStep()
{
    const int step = ZKApplication::GetUserValue(GridStepKey, FirstGridStep).toInt();
    return step >= LeastGridStep && step <= MostGridStep ? step : FirstGridStep;
}

void ViewAids::SetGridStep(int step)
{
    ZKApplication::SetUserValue(GridStepKey, qBound(LeastGridStep, step, MostGridStep));
}
