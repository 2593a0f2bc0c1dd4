#pragma once

// jpeglib.h takes for granted what <cstdio> declares.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <csetjmp>

/// The library's way of failing: it tells an error manager, which must not return, and so jumps back to the
/// step that called the library. The jump skips destructors.
struct JpegErrors
{
    jpeg_error_mgr manager; ///< first: the library hands out its address
    std::jmp_buf escape;
    bool isOutOfMemory;
    bool isCancelled;
};

namespace JpegLibrary {
/// Sets the error manager up: silent, and damage that the library would bridge with gray is an error.
jpeg_error_mgr* InitErrors(JpegErrors& errors);

/// Leaves the library in the middle of a step. Never returns.
[[noreturn]] void GiveUp(j_common_ptr jpeg);

/// Runs a step of the library; false when the library gave up. So a step only calls it and keeps nothing
/// that has a destructor.
template <typename Step>
bool Guarded(JpegErrors& errors, Step step)
{
    if (setjmp(errors.escape)) return false;
    step();
    return true;
}

constexpr size_t ExifMarkLength = 6;
/// What stands before the Exif block in its marker.
constexpr char ExifMark[ExifMarkLength + 1] = "Exif\0";
constexpr int ExifMarker = JPEG_APP0 + 1;
constexpr int IccMarker = JPEG_APP0 + 2;
constexpr size_t LongestMarker = 65533; ///< bytes of a marker's content
} // namespace JpegLibrary
