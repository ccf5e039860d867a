// What a sequence parameter set says about the pictures.

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "inspect/media/HeaderTrace.h"

namespace inspect {

using Elements = std::span<const SyntaxElement>;

struct VideoFacts {
    uint64_t profile = 0;        // the numbers of the codec's standard
    uint64_t compatibility = 0;  // the flags beside the profile, the first of them highest
    uint64_t level = 0;
    uint64_t codedWidth = 0;
    uint64_t codedHeight = 0;
    uint64_t width = 0;  // after cropping
    uint64_t height = 0;
    uint64_t bitDepth = 8;
    uint64_t chromaBitDepth = 8;
    uint64_t chroma = 1;  // chroma_format_idc of ITU-T H.264 Table 6-1: 0 = monochrome, 1 = 4:2:0
    bool isInterlaced = false;
    std::optional<uint64_t> refs = {};     // reference frames: the buffer beside the picture itself
    std::optional<uint64_t> maxRefs = {};  // so many are allowed at this size and level

    // ITU-T H.273; 2 = unspecified
    uint64_t primaries = 2;
    uint64_t transfer = 2;
    uint64_t matrix = 2;
    uint64_t isFullRange = 0;

    uint64_t frames = 0;  // in so many seconds; 0 = unknown
    uint64_t seconds = 0;

    bool operator==(const VideoFacts&) const = default;
};

using VideoFactsReader = std::optional<VideoFacts> (*)(Elements unit);

// Nothing of a unit that is no such set, or not whole up to the picture.
std::optional<VideoFacts> avcFacts(Elements unit);   // ITU-T H.264 7.3.2.1, A.3
std::optional<VideoFacts> hevcFacts(Elements unit);  // ITU-T H.265 7.3.2.2, A.4
std::optional<VideoFacts> vp9Facts(Elements unit);   // VP9 6.2
std::optional<VideoFacts> av1Facts(Elements unit);   // AV1 5.5

// The value of the first of that name.
uint64_t valueOf(Elements elements, std::string_view name);
std::string wordsFor(const SyntaxElement& element, Elements unit);  // that explain its value

}  // namespace inspect
