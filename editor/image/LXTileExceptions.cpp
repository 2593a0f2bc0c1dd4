#include "image/LXTileExceptions.h"

const char* LXTMAlreadyFree::what() const noexcept
{
    return "The tile is already free";
}

const char* LXTMBadInstance::what() const noexcept
{
    return "There is no tile store";
}

const char* LXTMInvalidBlock::what() const noexcept
{
    return "The tile's handle is invalid";
}

const char* LXTMSwapError::what() const noexcept
{
    return "The swap file cannot be read or written";
}

const char* LXTMSwapFileError::what() const noexcept
{
    return "The swap file cannot be created";
}

const char* LXImageTooLarge::what() const noexcept
{
    return "bad allocation";
}
