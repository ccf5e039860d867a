// Fatal conditions: states that a correct program never reaches end the process through the
// platform's assertion, never through a status.
//
// A program may install a fatal handler that throws or jumps, so nothing on the way to one of these
// is noexcept, and nothing that needs releasing should be held where one can fire.

#pragma once

namespace android::base {

// The source locations that the texts carry. Tools search logs for them, so they stay the same
// whichever file the code moves to.
inline constexpr const char* kAtMediaExtractorHelper = "Helper/MediaExtractorHelper";
inline constexpr const char* kAtMediaCodecHelper = "Helper/MediaCodecHelper";
inline constexpr const char* kAtId3 = "ParserLibrary/id3/ID3";

[[noreturn]] void fatal(const char* location, const char* text);

// Two numbers that should be equal: operands is how they are spelled, with a comma between them.
[[noreturn]] void fatalNotEqual(const char* location, const char* operands, long long left,
                                long long right);

// Size or offset arithmetic that left its type.
[[noreturn]] void fatalOverflow();

}  // namespace android::base

#define ZR_CHECK(location, condition)                                            \
    do {                                                                         \
        if (!(condition)) {                                                      \
            ::android::base::fatal((location), "CHECK(" #condition ") failed."); \
        }                                                                        \
    } while (false)
