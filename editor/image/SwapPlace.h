#pragma once

#include "EditorExport.h"

#include <QtGlobal>

#include <functional>
#include <string>
#include <vector>

/// In which environment variable a program that starts several editors tells each how many they are.
constexpr const char* SharersVariable = "ZENKARI_SHARERS";

/// What tiles may take at first: three quarters of what the machine has free, a quarter being left to others
/// and to what isn't tiles; one gibibyte at least. Several programs share that.
/// @param available  bytes; 0 when unknown
ZK_EDITOR_EXPORT qint64 FirstTileBudget(qint64 available, int sharers);

/// The first folder that can be written to and lies on a disk, because a file in memory gives no memory back;
/// without such a one the first.
/// @param folders  at least one
ZK_EDITOR_EXPORT std::string ChooseSwapFolder(const std::vector<std::string>& folders,
                                              const std::function<bool(const std::string&)>& liesInMemory);

/// Whether a folder's files are kept in memory.
ZK_EDITOR_EXPORT bool LiesInMemory(const std::string& folder);
