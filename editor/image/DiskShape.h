#pragma once

#include <vector>

/// How far a disk reaches to the side in its row 0, 1 ... `radius` above the middle: the largest w with
/// w² + row² <= radius².
inline std::vector<int> DiskHalfWidths(int radius)
{
    std::vector<int> widths;
    int width = radius;
    for (int row = 0; row <= radius; ++row) {
        while (width * width + row * row > radius * radius)
            --width;
        widths.push_back(width);
    }
    return widths;
}
