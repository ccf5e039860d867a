#include "ParserLibrary/id3/Frames.h"

#include <algorithm>
#include <array>

#include "Helper/base/Check.h"
#include "ParserLibrary/id3/TagHeader.h"

namespace android::id3 {
namespace {

struct V1Field {
    uint8_t offset;
    uint8_t size;
    char id[4];
};

// The fields of an ID3v1 tag, known by the v2.2 ids of the same meaning. In v1.1 the last two bytes
// of the comment are a 0 and the track number.
constexpr auto kV1Fields = std::to_array<V1Field>({
        {3, 30, "TT2"},   // title
        {33, 30, "TP1"},  // artist
        {63, 30, "TAL"},  // album
        {93, 4, "TYE"},   // year
        {97, 30, "COM"},  // comment
        {126, 1, "TRK"},  // track number
        {127, 1, "TCO"},  // genre
});
constexpr size_t kV1CommentOffset = 97;
constexpr size_t kV1TrackOffset = 126;
constexpr size_t kV1GenreOffset = 127;

const V1Field* v1FieldAt(size_t offset) {
    const auto* field = std::ranges::find(kV1Fields, offset, &V1Field::offset);
    return field == kV1Fields.end() ? nullptr : field;
}

std::optional<Frame> v1FrameAt(const TagView& tag, size_t offset) {
    if (offset >= tag.bytes.size()) return std::nullopt;
    const V1Field* field = v1FieldAt(offset);
    if (field == nullptr) {
        base::fatal(base::kAtId3, "CHECK(!\"Should not be here, invalid offset.\") failed.");
    }
    const bool shorter = tag.version == Version::kV1_1 && offset == kV1CommentOffset;
    return Frame{frameId(field->id), field->size - (shorter ? size_t{1} : size_t{0}), true};
}

// Flags of a frame header: compression and encryption.
constexpr uint32_t kUnreadableV2_3 = 0x0080 | 0x0040;
constexpr uint32_t kUnreadableV2_4 = 0x0008 | 0x0004;

// As many of the characters as stand before a NUL.
uint32_t upToNul(uint32_t characters) {
    uint32_t kept = 0;
    for (uint32_t mask = 0xFF000000; (characters & mask) != 0; mask >>= 8) {
        kept |= characters & mask;
    }
    return kept;
}

struct HeaderFields {
    uint32_t characters;  // of the id, in the upper bytes
    size_t dataSize;
    bool readable;
};

// ID3v2.2 3.2: a frame without data is the end.
std::optional<HeaderFields> readV2_2(const uint8_t* header) {
    const uint32_t characters = base::bigEndian32(header) & 0xFFFFFF00;
    const size_t dataSize = base::bigEndian32(header + 2) & 0xFFFFFF;
    if (dataSize == 0) return std::nullopt;
    return HeaderFields{characters, dataSize, true};
}

// ID3v2.3 3.3
std::optional<HeaderFields> readV2_3(const uint8_t* header) {
    const bool readable = (base::bigEndian16(header + 8) & kUnreadableV2_3) == 0;
    return HeaderFields{base::bigEndian32(header), base::bigEndian32(header + 4), readable};
}

// ID3v2.4 4
std::optional<HeaderFields> readV2_4(const uint8_t* header) {
    const auto dataSize = readSyncsafe(header + 4);
    if (!dataSize) return std::nullopt;
    const bool readable = (base::bigEndian16(header + 8) & kUnreadableV2_4) == 0;
    return HeaderFields{base::bigEndian32(header), *dataSize, readable};
}

std::optional<HeaderFields> readHeader(Version version, const uint8_t* header) {
    if (version == Version::kV2_2) return readV2_2(header);
    return version == Version::kV2_3 ? readV2_3(header) : readV2_4(header);
}

}  // namespace

std::optional<Frame> frameAt(const TagView& tag, size_t offset) {
    const size_t headerSize = frameHeaderSize(tag.version);
    if (headerSize == 0) return v1FrameAt(tag, offset);

    const size_t tagSize = tag.bytes.size();
    if (offset > tagSize || tagSize - offset < headerSize) return std::nullopt;
    const auto header = readHeader(tag.version, tag.bytes.data() + offset);
    if (!header || header->characters == 0) return std::nullopt;
    if (header->dataSize > tagSize - offset - headerSize) return std::nullopt;
    return Frame{upToNul(header->characters), header->dataSize + headerSize, header->readable};
}

Bytes frameData(const TagView& tag, size_t offset, size_t size) {
    const size_t headerSize = frameHeaderSize(tag.version);
    return tag.bytes.subspan(offset + headerSize, size - headerSize);
}

const char* v1FieldId(size_t offset) {
    const V1Field* field = v1FieldAt(offset);
    return field == nullptr ? nullptr : field->id;
}

bool isV1Number(size_t offset) {
    return offset == kV1TrackOffset || offset == kV1GenreOffset;
}

}  // namespace android::id3
