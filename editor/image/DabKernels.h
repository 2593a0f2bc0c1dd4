#pragma once

/// Distances of pixels to the middles of dabs.
namespace DabKernels {
/// Brings each of `count` numbers down to the square of a distance: of pixel i it is
/// (first + i x RoundDab::Unit)² + across². All of them fit into 31 bits.
void Nearest(int* squares, int count, int first, int across);
} // namespace DabKernels
