#pragma once

/// Per-pixel blending for TileMap, put together from an operation and the tiles that it needs. The operation
/// is a type with a static `Blend`, so that the compiler sees through to the arithmetic.
namespace LXBlend {
/// Replaces the target whole. Zero is the number of the source among an operation's inputs.
template <int Number>
struct LXSource
{
    template <class Pixel>
    static void Blend(const Pixel& source, Pixel& target)
    {
        target = source;
    }
};

/// `Operation::Blend(source, target)` for the pixels of two tiles.
template <class Pixel, class Operation>
struct LXBlender
{
    const Pixel* source;
    Pixel* target;

    void operator()(int index) const { Operation::Blend(source[index], target[index]); }
};

/// `Operation::Blend(source, target, selection)` for the pixels of three tiles.
template <class Pixel, class Operation, class SelectionPixel>
struct LXSelectionBlender
{
    const Pixel* source;
    Pixel* target;
    const SelectionPixel* selection;

    void operator()(int index) const { Operation::Blend(source[index], target[index], selection[index]); }
};
} // namespace LXBlend
