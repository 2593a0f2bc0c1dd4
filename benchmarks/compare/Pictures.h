#pragma once

#include <QImage>

/// The pictures that the contests are run on; each the same in every run.
namespace Pictures {
/// Soft clouds with discs on them; `isOpaque` or with an alpha of its own clouds.
QImage SmoothNoise(int side, bool isOpaque);
QImage Flat(int side);
/// White pixels, 62 of 100, among black ones: just enough to hang together.
QImage Percolation(int side);
/// White corridors one pixel wide between black walls, every place reached by one way only; (1, 1) is white.
QImage Maze(int side);
/// A photo, enlarged to the size.
QImage Photo(int side);
} // namespace Pictures
