// Where the frames of a tag stand.

#pragma once

#include <optional>

#include "Helper/base/ByteReader.h"
#include "zrcodecparser/ID3.h"

namespace android::id3 {

using base::Bytes;

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
size_t frameHeaderSize(ID3::Version version);

// The frame at an offset into the tag, or nothing at the end of the frames: of the tag, at padding,
// or at a frame that does not fit. Requires a version that has frames. Fatal: an offset into a v1
// tag at which no field starts.
std::optional<Frame> frameAt(Bytes tag, ID3::Version version, size_t offset);

// The id under which the field at an offset into a v1 tag is known, or null for no field.
const char* v1FieldId(size_t offset);

// Where a v1 tag has numbers for a text.
inline constexpr size_t kV1TrackOffset = 126;
inline constexpr size_t kV1GenreOffset = 127;

inline bool isV1(ID3::Version version) {
    return version == ID3::ID3_V1 || version == ID3::ID3_V1_1;
}

}  // namespace android::id3
