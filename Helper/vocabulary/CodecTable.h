// What each codec code means to the player: which MIME type is asked of the codec list, which one
// the format receives, and which keys come with it.

#pragma once

#include <array>
#include <cstdint>

namespace android {

// What becomes of a track whose MIME type has no decoder.
enum class WithoutDecoder {
    kNotSupported,
    kOfferAnyway,  // the player finds a way of its own
    kDivxAsMpeg4,  // the row of kCodecTypeMpeg4 takes over, if the device has that feature
};

struct CodecExtra {
    const char* key = nullptr;  // null = unused
    int32_t value = 0;
};

// In the place of a value: 1 or 0, as the caller says whether samples come in arbitrary pieces.
inline constexpr int32_t kCallersArbitraryMode = -1;

struct CodecRow {
    int32_t code;
    const char* primary;      // asked of the codec list
    const char* alternative;  // asked in its place if a decoder for it exists; null = none
    const char* mime;         // what the format receives; null = the one that was asked
    WithoutDecoder withoutDecoder;
    std::array<CodecExtra, 2> extras;
};

// Null for a code of no codec, as the codes for "no video" and "no audio" are.
const CodecRow* findCodecRow(int32_t code);

// Whether the code is one of the audio codes, that for "no audio" among them. Every other code
// counts as video, those next to the audio codes too.
bool isAudioCode(int32_t code);

// The MIME type that says that a codec cannot be played.
const char* notSupportedMime(int32_t code);

// The audio code that comes first among those with this MIME type as primary or alternative, or
// kCodecTypeNoAudio.
int32_t findAudioCode(const char* mime);

}  // namespace android
