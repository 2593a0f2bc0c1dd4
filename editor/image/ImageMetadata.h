#pragma once

#include "image/LXImage.h"

/// What an image carries beside its pixels, which an image made of it keeps.
namespace ImageMetadata {
/// Profile, resolution and metadata; pixels stay.
inline void Copy(const LXImage32& from, LXImage32& to)
{
    to.m_Profile = from.m_Profile;
    to.m_DpiX = from.m_DpiX;
    to.m_DpiY = from.m_DpiY;
    to.m_ExifData = from.m_ExifData;
}

/// Whether both carry the same.
inline bool AreSame(const LXImage32& a, const LXImage32& b)
{
    return a.m_Profile == b.m_Profile && a.m_DpiX == b.m_DpiX && a.m_DpiY == b.m_DpiY &&
           a.m_ExifData == b.m_ExifData;
}
} // namespace ImageMetadata
