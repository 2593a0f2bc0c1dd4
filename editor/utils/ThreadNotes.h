#pragma once

#if defined(__SANITIZE_THREAD__)
extern "C" {
// The sanitizer's own names. NOLINTBEGIN(bugprone-reserved-identifier)
void __tsan_acquire(void* address);
void __tsan_release(void* address);
// NOLINTEND(bugprone-reserved-identifier)
}
#endif

/// Tells the thread sanitizer what it can't see, because Debian's Qt isn't instrumented: that Qt passes an
/// object from one thread to another in order. Nothing in other builds.
namespace ThreadNotes {
inline void HandedOver([[maybe_unused]] void* object)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_release(object);
#endif
}

inline void TakenOver([[maybe_unused]] void* object)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(object);
#endif
}
} // namespace ThreadNotes
