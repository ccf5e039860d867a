// How much of a file is media: less than the sizes written in it say, or more.

#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "inspect/base/InputFile.h"

namespace inspect {

// One byte over and over at the end of a file.
struct Fill {
    int64_t begin = 0;
    bool isBeginKnown = true;  // else there may be more of it before
};

// Looks at a bounded part.
Fill findFill(const InputFile& file);

inline constexpr uint64_t kUnknownSize = std::numeric_limits<uint64_t>::max();

// ISO/IEC 14496-12 4.2: of a whole box, before which the cursor is, and whose header it goes over.
// 0: this is no box.
uint64_t boxSize(ByteCursor& cursor);
uint64_t ebmlSize(ByteCursor& cursor);  // the same of an EBML element, RFC 8794 4

struct Extent {
    int64_t end = 0;                          // nothing of what lies behind is media
    bool isEndKnown = true;                   // else some of what lies before is none either
    std::optional<std::string> truncation{};  // what is missing, in words
    std::optional<std::string> junk{};        // what stands behind the end, in words
};

// Finds nothing to say when the format does not tell. Knows the ISO base media family, RIFF, AIFF,
// CAF, Matroska, FLV, Ogg, ASF, RealMedia, MPEG-2 TS, and plain streams of frames. Format is the
// demuxer's name. Reads the headers of the outermost elements, and bytes at the end.
Extent measure(std::string_view format, const InputFile& file, const Fill& fill);

}  // namespace inspect
