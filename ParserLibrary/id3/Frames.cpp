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

const V1Field* v1FieldAt(size_t offset) {
    const auto* field = std::ranges::find(kV1Fields, offset, &V1Field::offset);
    return field == kV1Fields.end() ? nullptr : field;
}

std::optional<Frame> v1FrameAt(Bytes tag, ID3::Version version, size_t offset) {
    if (offset >= tag.size()) return std::nullopt;
    const V1Field* field = v1FieldAt(offset);
    if (field == nullptr) {
        base::fatal(base::kAtId3, "CHECK(!\"Should not be here, invalid offset.\") failed.");
    }
    const bool shorter = version == ID3::ID3_V1_1 && offset == kV1CommentOffset;
    return Frame{frameId(field->id), field->size - (shorter ? size_t{1} : size_t{0}), true};
}

// Flags of a frame header: compression and encryption.
constexpr uint32_t kUnreadableV2_3 = 0x0080 | 0x0040;
constexpr uint32_t kUnreadableV2_4 = 0x0008 | 0x0004;

// As many of the characters as stand before a NUL.
uint32_t upToNul(uint32_t characters) {
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        if ((characters >> (shift - 8) & 0xFF) == 0) {
            return shift == 32 ? 0 : characters >> shift << shift;
        }
    }
    return characters;
}

// ID3v2.2 3.2: a frame without data is the end.
std::optional<Frame> v2_2FrameAt(Bytes rest) {
    const uint32_t characters = base::bigEndianAt(rest, 0, 3) << 8;
    const size_t dataSize = base::bigEndianAt(rest, 3, 3);
    if (characters == 0 || dataSize == 0) return std::nullopt;
    return Frame{upToNul(characters), dataSize + 6, true};
}

// ID3v2.3 3.3
std::optional<Frame> v2_3FrameAt(Bytes rest) {
    const uint32_t characters = base::bigEndianAt(rest, 0, 4);
    if (characters == 0) return std::nullopt;
    const size_t dataSize = base::bigEndianAt(rest, 4, 4);
    const bool readable = (base::bigEndianAt(rest, 8, 2) & kUnreadableV2_3) == 0;
    return Frame{upToNul(characters), dataSize + 10, readable};
}

// ID3v2.4 4
std::optional<Frame> v2_4FrameAt(Bytes rest) {
    const uint32_t characters = base::bigEndianAt(rest, 0, 4);
    const auto dataSize = readSyncsafe(rest.data() + 4);
    if (characters == 0 || !dataSize) return std::nullopt;
    const bool readable = (base::bigEndianAt(rest, 8, 2) & kUnreadableV2_4) == 0;
    return Frame{upToNul(characters), *dataSize + size_t{10}, readable};
}

}  // namespace

FrameId frameId(const char* text) {
    FrameId id = 0;
    for (unsigned i = 0; i < 4; ++i) {
        id = id << 8 | static_cast<uint8_t>(*text);
        if (*text != '\0') ++text;
    }
    return *text == '\0' ? id : kNoFrameId;
}

size_t frameHeaderSize(ID3::Version version) {
    switch (version) {
        case ID3::ID3_V2_2: return 6;
        case ID3::ID3_V2_3:
        case ID3::ID3_V2_4: return 10;
        case ID3::ID3_V1:
        case ID3::ID3_V1_1:
        case ID3::ID3_UNKNOWN: break;
    }
    return 0;
}

std::optional<Frame> frameAt(Bytes tag, ID3::Version version, size_t offset) {
    const size_t headerSize = frameHeaderSize(version);
    if (headerSize == 0) return v1FrameAt(tag, version, offset);

    if (offset > tag.size() || tag.size() - offset < headerSize) return std::nullopt;
    const Bytes rest = tag.subspan(offset);
    const auto frame = version == ID3::ID3_V2_2   ? v2_2FrameAt(rest)
                       : version == ID3::ID3_V2_3 ? v2_3FrameAt(rest)
                                                  : v2_4FrameAt(rest);
    if (!frame || frame->size > rest.size()) return std::nullopt;
    return frame;
}

const char* v1FieldId(size_t offset) {
    const V1Field* field = v1FieldAt(offset);
    return field == nullptr ? nullptr : field->id;
}

}  // namespace android::id3
