#pragma once

#include <QString>

/// The end record of a zip archive, looked at before a library makes room for what it claims. Any thread.
namespace ArchiveDirectory {
/// Whether the archive claims at most so many entries, in a directory of a size that fits. True also for what
/// is no archive, which the library then tells.
bool HasAtMost(const QString& path, int maxEntries);
} // namespace ArchiveDirectory
