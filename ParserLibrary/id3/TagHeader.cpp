#include "ParserLibrary/id3/TagHeader.h"

#include <array>
#include <cstring>

namespace android::id3 {
namespace {

// Flags that must not be set, from major version 2 on. In v2.3, 0x20 marks a tag as experimental;
// in v2.4, 0x10 says that a footer follows it.
constexpr auto kUnknownFlags = std::to_array<uint8_t>({0x7F, 0x1F, 0x0F});

}  // namespace

std::optional<TagHeader> readTagHeader(Bytes data) {
    const uint8_t major = data[3];
    const uint8_t revision = data[4];
    const uint8_t flags = data[5];
    if (std::memcmp(data.data(), "ID3", 3) != 0 || revision == 0xFF) return std::nullopt;
    if (major < 2 || major > 4) return std::nullopt;
    if ((flags & kUnknownFlags[major - 2u]) != 0) return std::nullopt;
    const auto size = readSyncsafe(data.data() + 6);
    if (!size) return std::nullopt;
    return TagHeader{major, flags, *size};
}

std::optional<ExtendedHeader> readExtendedHeaderV2_3(Bytes body) {
    if (body.size() < 4) return std::nullopt;
    // Extended header size: does not count itself.
    const size_t size = base::bigEndianAt(body, 0, 4);
    if (size > body.size() - 4) return std::nullopt;
    // Extended flags (2 bytes) tell of a CRC, which nobody checks. Size of padding (4 bytes).
    const size_t paddingSize = size >= 6 ? base::bigEndianAt(body, 6, 4) : 0;
    return ExtendedHeader{size + 4, paddingSize};
}

std::optional<ExtendedHeader> readExtendedHeaderV2_4(Bytes body) {
    if (body.size() < 4) return std::nullopt;
    // Extended header size: counts itself.
    const auto size = readSyncsafe(body.data());
    if (!size || *size < 6 || *size > body.size()) return std::nullopt;
    return ExtendedHeader{*size, 0};
}

}  // namespace android::id3
