// Base64 by vectors.

#pragma once

#include <cstddef>
#include <cstdint>

namespace android::vorbis {

// Decodes groups of four characters from the first on, as many as make whole vectors of characters
// of the alphabets, and returns how many these are: 0 where the machine has no vectors for it.
// Writes three bytes a group, and may write whatever it likes where the rest will go, for which
// there is room: three bytes for each of all groups but the last.
size_t decodeBase64Blocks(const char* text, size_t groups, uint8_t* out);

}  // namespace android::vorbis
