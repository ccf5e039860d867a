// Reads a tag from a source of bytes and readies it for a walk over its frames.

#pragma once

#include <cstdlib>
#include <memory>
#include <optional>

#include "ParserLibrary/id3/ByteSource.h"
#include "ParserLibrary/id3/Frames.h"
#include "ParserLibrary/id3/TagHeader.h"

namespace android::id3 {

struct FreeMemory {
    void operator()(uint8_t* memory) const { std::free(memory); }
};

struct Tag {
    std::unique_ptr<uint8_t[], FreeMemory> memory{};  // by malloc; null: there is no tag
    size_t size = 0;
    size_t firstFrameOffset = 0;
    Version version = Version::kUnknown;
    size_t rawSize = 0;  // with the header of a v2 tag, as it says; 0 for v1
};

// The header of a v2 tag at an offset, or nothing when there is none.
std::optional<TagHeader> readTagHeader(const ByteSource& source, off64_t offset);

// The tag behind such a header: undoes unsynchronisation, passes over an extended header, and gives
// a v2.4 tag the frame sizes that it should have. No tag: a short read, no memory, an extended
// header that does not fit, v2.4 frames that fit in neither reading of their sizes. Fatal: an
// offset that overflows with the header.
Tag readTagV2(const ByteSource& source, off64_t offset, const TagHeader& header);

// The v1 tag in the last bytes of a source that knows its size.
Tag readTagV1(const ByteSource& source);

}  // namespace android::id3
