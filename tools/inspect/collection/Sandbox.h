// What a process that reads strangers' files cannot do, whatever they make of it.

#pragma once

namespace inspect {

// A sanitizer's runtime opens files, counts memory of its own and writes where it likes.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kIsSanitized = __has_feature(address_sanitizer) ||
                                     __has_feature(memory_sanitizer) ||
                                     __has_feature(thread_sanitizer);
#else
inline constexpr bool kIsSanitized = false;
#endif

// Both hold to the process's end, and for those it starts. They return whether the kernel has
// agreed; if not, nothing is refused.

// Refused: the network, other programs, the memory of other processes.
bool forbidOutsideWorld();

// Refused: all but to read and write what is open. Nothing can be opened or started, nor code be
// loaded, nor a signal reach others.
bool forbidAllButOpenFiles();

}  // namespace inspect
