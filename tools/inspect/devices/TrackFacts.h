// What a track asks of a decoder.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace inspect {

// Of a codec's profiles or levels.
struct Rank {
    std::string name;               // "High 10", "4.0"
    std::optional<int64_t> number;  // of the platform's class CodecProfileLevel; not there: it has
                                    // none, and no decoder's list can hold it
};

// What is not there is not known.
struct TrackFacts {
    std::string codec;  // for a person: "AVC"
    std::optional<int64_t> width;
    std::optional<int64_t> height;
    std::optional<double> frameRate;      // on average
    std::optional<double> baseFrameRate;  // the least that holds every timestamp
    std::optional<int64_t> bitRate;
    std::optional<int64_t> sampleRate;
    std::optional<int64_t> channelCount;
    std::optional<Rank> profile;
    std::optional<Rank> level;
    std::optional<int64_t> bitDepth;
};

}  // namespace inspect
