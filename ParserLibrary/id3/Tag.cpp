#include "ParserLibrary/id3/Tag.h"

#include <array>
#include <cstring>

#include "Helper/base/Check.h"
#include "Helper/base/Checked.h"
#include "ParserLibrary/id3/Unsynchronization.h"

namespace android::id3 {
namespace {

// ID3v1: "TAG", the fields; in v1.1 the last byte but two is a 0.
constexpr size_t kV1TagSize = 128;
constexpr size_t kV1FirstFieldOffset = 3;
constexpr size_t kV1_1MarkOffset = 125;

Version versionOf(uint8_t majorVersion) {
    switch (majorVersion) {
        case 2: return Version::kV2_2;
        case 3: return Version::kV2_3;
        case 4: return Version::kV2_4;
        default: base::fatalNotEqual(base::kAtId3, "header.version_major,4", majorVersion, 4);
    }
}

// Some bytes of a source, or no tag when it does not give them all.
Tag readBytes(const ByteSource& source, off64_t offset, size_t size) {
    Tag tag;
    tag.memory.reset(static_cast<uint8_t*>(std::malloc(size)));
    if (tag.memory == nullptr || !source.readFully(offset, tag.memory.get(), size)) return {};
    tag.size = size;
    return tag;
}

bool skipExtendedHeader(Tag& tag) {
    const Bytes body{tag.memory.get(), tag.size};
    const auto header = tag.version == Version::kV2_3 ? readExtendedHeaderV2_3(body)
                                                      : readExtendedHeaderV2_4(body);
    if (!header || header->paddingSize > tag.size - header->firstFrameOffset) return false;
    tag.firstFrameOffset = header->firstFrameOffset;
    tag.size -= header->paddingSize;
    return true;
}

// The sizes of v2.4 frames are plain where the frames do not fit by syncsafe ones.
bool repairFrames(Tag& tag, bool allUnsynchronised) {
    const std::span<uint8_t> body{tag.memory.get(), tag.size};
    const bool fit = framesFit(body, tag.firstFrameOffset);
    const auto result =
            simplifyFrames(body, tag.firstFrameOffset,
                           fit ? FrameSizes::kSyncsafe : FrameSizes::kPlain, allUnsynchronised);
    tag.size = result.size;
    return result.ok;
}

bool prepareFrames(Tag& tag, uint8_t flags) {
    const bool unsynchronised = (flags & kUnsynchronised) != 0;
    const bool hasExtendedHeader = (flags & kHasExtendedHeader) != 0;
    // The extended header of a v2.4 tag is not unsynchronised, its frames are, one by one.
    const bool isV2_4 = tag.version == Version::kV2_4;
    if (unsynchronised && !isV2_4) tag.size = removeUnsynchronization({tag.memory.get(), tag.size});
    if (hasExtendedHeader && tag.version != Version::kV2_2 && !skipExtendedHeader(tag)) {
        return false;
    }
    return !isV2_4 || repairFrames(tag, unsynchronised);
}

}  // namespace

std::optional<TagHeader> readTagHeader(const ByteSource& source, off64_t offset) {
    std::array<uint8_t, kTagHeaderSize> bytes;
    if (!source.readFully(offset, bytes.data(), bytes.size())) return std::nullopt;
    return readTagHeader(bytes);
}

Tag readTagV2(const ByteSource& source, off64_t offset, const TagHeader& header) {
    const Version version = versionOf(header.majorVersion);
    const off64_t bodyOffset = base::checkedAdd(offset, off64_t{kTagHeaderSize});

    Tag tag = readBytes(source, bodyOffset, header.size);
    tag.version = version;
    tag.rawSize = header.size + kTagHeaderSize;
    if (tag.memory == nullptr || !prepareFrames(tag, header.flags)) return {};
    return tag;
}

Tag readTagV1(const ByteSource& source) {
    off64_t size = 0;
    if (source.getSize(source.source, &size) != OK || size < off64_t{kV1TagSize}) return {};
    Tag tag = readBytes(source, size - off64_t{kV1TagSize}, kV1TagSize);
    if (tag.memory == nullptr || std::memcmp(tag.memory.get(), "TAG", 3) != 0) return {};
    tag.firstFrameOffset = kV1FirstFieldOffset;
    tag.version = tag.memory[kV1_1MarkOffset] == 0 ? Version::kV1_1 : Version::kV1;
    return tag;
}

}  // namespace android::id3
