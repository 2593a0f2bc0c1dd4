#pragma once

#include "EditorExport.h"

/// Places where the tests make the editor fail on purpose, off unless a test arms them. Any thread.
namespace FaultSeams {
enum class Seam
{
    TileAllocation,        ///< LXTileManager::MakeTile() throws std::bad_alloc
    StrangeTileAllocation, ///< LXTileManager::MakeTile() throws a StrangeFailure
    FileWrite,             ///< a write of a saved file reports a full disk
    FileCommit,            ///< a step of putting a saved file into its place; only for ExitAtNth
    DocumentLock,          ///< LXDocumentInterface::Lock() is refused
    DocumentUnlock,        ///< LXDocumentInterface::Unlock() is refused
    FloodFill,             ///< LXFloodFillHelper throws std::runtime_error
    DocumentAdd,           ///< LXDocumentManager::AddDocument() refuses
    HelperCall,            ///< TileThreads finds no memory for another helper
    SwapWrite,             ///< a write of the swap file reports a full disk
    SwapRead,              ///< a read of the swap file fails
};

/// Something that isn't a `std::exception`, for those who must stand whatever is thrown.
struct StrangeFailure
{};

/// Lets the n-th pass from now through this place fail, 1 being the next one; later passes succeed again.
ZK_EDITOR_EXPORT void FailNth(Seam seam, int n);

/// Ends the process at once, as a crash would, at the n-th pass from now through this place.
ZK_EDITOR_EXPORT void ExitAtNth(Seam seam, int n);

/// With which ExitAtNth ends the process.
constexpr int ExitCode = 86;

/// Makes each pass through this place wait for so long, to stretch a job; 0 takes it back.
ZK_EDITOR_EXPORT void SlowDown(Seam seam, int milliseconds);

/// Disarms everything.
ZK_EDITOR_EXPORT void Reset();

/// Called by the place itself, once a pass: waits when slowed down, then tells whether to fail.
ZK_EDITOR_EXPORT bool Pass(Seam seam);
} // namespace FaultSeams
