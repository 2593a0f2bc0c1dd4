#pragma once

#include "document/Layer.h"

#include <QDataStream>

/// The serial form of whole layers in command data.
QDataStream& operator<<(QDataStream& stream, const LayerState& layer);
QDataStream& operator>>(QDataStream& stream, LayerState& layer);
