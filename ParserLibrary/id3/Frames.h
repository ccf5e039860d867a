// Where the frames of a tag stand.

#pragma once

#include <array>
#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::id3 {

using base::Bytes;

// In the order of ID3::Version.
enum class Version { kUnknown, kV1, kV1_1, kV2_2, kV2_3, kV2_4 };

inline bool isV1(Version version) {
    return version == Version::kV1 || version == Version::kV1_1;
}

// A tag that has been read, without the header of a v2 tag.
struct TagView {
    Bytes bytes;
    size_t firstFrameOffset;
    Version version;
};

// Ids compare as C strings, so an id is the characters up to the first NUL, most significant first,
// and zeros. An id of more than four characters is none.
using FrameId = uint64_t;
inline constexpr FrameId kNoFrameId = uint64_t{1} << 32;

constexpr FrameId frameId(const char* text) {
    FrameId id = 0;
    for (unsigned i = 0; i < 4; ++i) {
        id = id << 8 | static_cast<uint8_t>(*text);
        if (*text != '\0') ++text;
    }
    return *text == '\0' ? id : kNoFrameId;
}

struct Frame {
    FrameId id;
    size_t size;    // with the header
    bool readable;  // neither compressed nor encrypted
};

// Bytes before the data of a frame.
constexpr size_t frameHeaderSize(Version version) {
    if (version == Version::kV2_2) return 6;
    return version == Version::kV2_3 || version == Version::kV2_4 ? 10 : 0;
}

// The frame at an offset into the tag, or nothing at the end of the frames: of the tag, at padding,
// or at a frame that does not fit. Requires a version that has frames. Fatal: an offset into a v1
// tag at which no field starts.
std::optional<Frame> frameAt(const TagView& tag, size_t offset);

// The data of a frame at an offset, size bytes with the header.
Bytes frameData(const TagView& tag, size_t offset, size_t size);

// The first byte of these data, the encoding of a text; see ID3::Iterator::getEncodingType.
inline uint8_t encodingAt(const TagView& tag, size_t frameOffset) {
    if (isV1(tag.version)) return 0;
    // A frame without data may be the last thing in the tag.
    return base::byteAt(tag.bytes, frameOffset + frameHeaderSize(tag.version));
}

struct ChosenFrame {
    size_t offset = 0;
    size_t size = 0;  // with the header; 0 for no frame
    bool hasFirstId = false;
};

// Of each row, which has a firstId and a secondId, the first frame with the former, or else the
// first with the latter: all rows in one walk.
template <typename Row, size_t kRows>
std::array<ChosenFrame, kRows> chooseFrames(const TagView& tag,
                                            const std::array<Row, kRows>& rows) {
    std::array<ChosenFrame, kRows> chosen;
    size_t nextOffset = tag.firstFrameOffset;
    while (const auto frame = frameAt(tag, nextOffset)) {
        const size_t offset = nextOffset;
        nextOffset += frame->size;
        if (!frame->readable) continue;
        for (size_t i = 0; i < kRows; ++i) {
            const bool isFirst = frame->id == rows[i].firstId;
            if (!isFirst && frame->id != rows[i].secondId) continue;
            if (chosen[i].size == 0 || (isFirst && !chosen[i].hasFirstId)) {
                chosen[i] = {offset, frame->size, isFirst};
            }
        }
    }
    return chosen;
}

// The id under which the field at an offset into a v1 tag is known, or null for no field.
const char* v1FieldId(size_t offset);

// Whether that field is a number, of one byte: the track or the genre.
bool isV1Number(size_t offset);

}  // namespace android::id3
