#pragma once

/// When the plug-in was built. In a source of its own, so that only this source is never taken from a
/// compiler cache.
namespace BuildTime {
/// Such as "Jun 28 2016".
const char* Date();

/// Such as "17:26:12".
const char* Time();
} // namespace BuildTime
