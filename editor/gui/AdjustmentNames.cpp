#include "gui/AdjustmentNames.h"

#include <QCoreApplication>

QString AdjustmentNames::Of(LXAdjustment::Kind kind)
{
    switch (kind) {
    case LXAdjustment::BrightnessContrast:
        return QCoreApplication::translate("AdjustmentNames", "Brightness and contrast");
    case LXAdjustment::Levels: return QCoreApplication::translate("AdjustmentNames", "Levels");
    case LXAdjustment::HueSaturation:
        return QCoreApplication::translate("AdjustmentNames", "Hue and saturation");
    case LXAdjustment::Invert: return QCoreApplication::translate("AdjustmentNames", "Invert");
    }
    return QString();
}
