#pragma once

#include <QStringList>

/// The blend combo that several tools show, and the blend modes behind its rows. Any thread.
namespace BlendModeTable {
/// Number of rows.
constexpr int Count = 13;

/// The translated texts, in the order of the rows.
QStringList Texts();

/// The mode number that the host's blending takes for a row; 0 (normal) for an index outside.
unsigned int ModeOf(int index);
} // namespace BlendModeTable
