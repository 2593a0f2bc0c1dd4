#pragma once

#include "image/LXAdjustment.h"

#include <QDataStream>

/// The serial form of adjustments in command data.
QDataStream& operator<<(QDataStream& stream, const LXAdjustment& adjustment);
QDataStream& operator>>(QDataStream& stream, LXAdjustment& adjustment);
