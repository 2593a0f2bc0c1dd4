#pragma once

#include <QtGlobal>

/// One pixel: 0xAARRGGBB, the layout of a `QRgb`, with straight (not premultiplied) color. In memory byte 0
/// is blue, 1 green, 2 red, 3 alpha. A mask or selection holds its value in the alpha byte alone.
union LXRGBA32i
{
    quint32 value = 0;
    quint8 bytes[4];

    constexpr LXRGBA32i() = default;

    constexpr explicit LXRGBA32i(quint32 argb) : value(argb) {}

    constexpr int Blue() const { return static_cast<int>(value & 0xFF); }

    constexpr int Green() const { return static_cast<int>((value >> 8) & 0xFF); }

    constexpr int Red() const { return static_cast<int>((value >> 16) & 0xFF); }

    constexpr int Alpha() const { return static_cast<int>(value >> 24); }

    friend constexpr bool operator==(LXRGBA32i a, LXRGBA32i b) { return a.value == b.value; }

    friend constexpr bool operator!=(LXRGBA32i a, LXRGBA32i b) { return a.value != b.value; }
};

static_assert(sizeof(LXRGBA32i) == 4, "pixels are read and written as 32-bit words");
