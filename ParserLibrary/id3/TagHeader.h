// The headers in front of the frames of an ID3v2 tag.

#pragma once

#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::id3 {

using base::Bytes;

inline constexpr size_t kTagHeaderSize = 10;
inline constexpr size_t kMaxTagSize = 0x700000;

// Flags of the tag header.
inline constexpr uint8_t kUnsynchronised = 0x80;
inline constexpr uint8_t kHasExtendedHeader = 0x40;

struct TagHeader {
    uint8_t majorVersion;  // 2, 3 or 4
    uint8_t flags;
    size_t size;  // of what follows the header
};

// ID3v2.2 3.1, ID3v2.3 3.1, ID3v2.4 3.1. Nothing for bytes that are no such header, or have a flag
// that their version does not know. The data are kTagHeaderSize bytes.
std::optional<TagHeader> readTagHeader(Bytes data);

// Four bytes of 7 bits each, most significant first (ID3v2.4 6.2), or nothing when one has its top
// bit set. The data are 4 bytes or more.
inline std::optional<uint32_t> readSyncsafe(const uint8_t* data) {
    const uint32_t bits = base::bigEndian32(data);
    if ((bits & 0x80808080) != 0) return std::nullopt;
    return (bits >> 24) << 21 | (bits >> 16 & 0x7F) << 14 | (bits >> 8 & 0x7F) << 7 | (bits & 0x7F);
}

struct ExtendedHeader {
    size_t firstFrameOffset;
    size_t paddingSize;  // at the end of the tag
};

// The extended header at the start of a tag's body, or nothing when it does not fit into it.
std::optional<ExtendedHeader> readExtendedHeaderV2_3(Bytes body);  // ID3v2.3 3.2
std::optional<ExtendedHeader> readExtendedHeaderV2_4(Bytes body);  // ID3v2.4 3.2

}  // namespace android::id3
