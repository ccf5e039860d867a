// What a device says that its decoders can do.

#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

// From the one to the other, both included.
struct Range {
    int64_t from = 0;
    int64_t to = std::numeric_limits<int64_t>::max();
};

struct Size {
    int64_t width = 0;
    int64_t height = 0;
};

// Numbers of the platform's class CodecProfileLevel: the profile is decoded up to the level.
struct ProfileLevel {
    int64_t profile = 0;
    int64_t level = 0;
};

// What is not there is not known.
struct Limits {
    std::optional<Range> width;
    std::optional<Range> height;
    bool canSwapSides = false;  // a picture of turned sides is as good
    Size alignment = {1, 1};    // sizes are rounded up to it before they are judged
    std::optional<Size> blockSize;
    std::optional<Range> blockCount;  // of a picture
    std::optional<Range> blocksPerSecond;
    std::optional<Range> frameRate;  // a second
    std::optional<Range> bitRate;    // bits a second
    std::optional<Range> channelCount;
    std::vector<Range> sampleRates;           // Hz; empty = not known
    std::vector<ProfileLevel> profileLevels;  // likewise
};

struct Decoder {
    std::string name;
    std::string type;          // MIME type, as the description spells it
    std::string whyIgnored{};  // why it does not count for an ordinary file; empty = it counts
    std::string remark{};      // what to know when it is used; empty = nothing
    std::vector<std::string> aliases{};  // names of earlier releases
    bool isSoftware = false;
    Limits limits{};
};

struct DeviceDescription {
    std::string name;                       // for a person
    std::vector<Decoder> decoders;          // in the order of preference
    std::vector<std::string> missingFiles;  // that it names
    std::vector<std::string> warnings;      // "media_codecs.xml:12: ..."
};

}  // namespace inspect
