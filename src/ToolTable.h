#pragma once

#include <vector>

class QObject;

/// One tool of the plug-in.
struct ToolRow
{
    const char* id;     ///< the identifier in braces
    const char* name;   ///< the registry name, never translated
    QObject* (*Make)(); ///< makes the object that is registered; null when that fails
};

/// All tools, in the order of construction and registration.
const std::vector<ToolRow>& ToolTable();
