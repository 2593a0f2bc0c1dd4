#pragma once

#include "ZKHostExport.h"

#include <exception>
#include <new>

/// What the tile store and the images throw. Exported, so that the plug-in's handlers know them.

/// A tile was cleaned up, or its memory freed, once too often.
class ZK_HOST_EXPORT LXTMAlreadyFree : public std::exception
{
public:
    const char* what() const noexcept override;
};

/// There is no tile store any more: the program is ending.
class ZK_HOST_EXPORT LXTMBadInstance : public std::exception
{
public:
    const char* what() const noexcept override;
};

/// The handle was never given out.
class ZK_HOST_EXPORT LXTMInvalidBlock : public std::exception
{
public:
    const char* what() const noexcept override;
};

/// Reading or writing the swap file failed; the tile keeps what it held.
class ZK_HOST_EXPORT LXTMSwapError : public std::exception
{
public:
    const char* what() const noexcept override;
};

/// The swap file couldn't be made.
class ZK_HOST_EXPORT LXTMSwapFileError : public std::exception
{
public:
    const char* what() const noexcept override;
};

/// An image has too many tiles. Its own class because the words of std::bad_alloc differ between libraries,
/// and these are logged.
class ZK_HOST_EXPORT LXImageTooLarge : public std::bad_alloc
{
public:
    /// "bad allocation"
    const char* what() const noexcept override;
};
