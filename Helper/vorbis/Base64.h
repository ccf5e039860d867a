// Base64 as in RFC 4648, in the alphabet of its section 4 or that of section 5 or a mix of both.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace android::vorbis {

// The size in bytes of what the text decodes to, or nothing when its length is no multiple of 4. Up
// to three "=" at the end count as padding, each for a byte less.
std::optional<size_t> base64DecodedSize(std::string_view text);

// Decodes a text that has such a size, and requires room for that at out. Returns false for a
// character of neither alphabet, or an "=" before the padding; what out holds is undefined then.
bool base64Decode(std::string_view text, uint8_t* out);

}  // namespace android::vorbis
