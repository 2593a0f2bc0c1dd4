#pragma once

#include <QList>
#include <QString>

#include <utility>

/// The blend modes that people choose from, by name, in the order of every list of them; the numbers are
/// those of BlendMode.h.
QList<std::pair<QString, unsigned int>> BlendModeNames();
