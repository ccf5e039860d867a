// What a track that does not play can be converted to.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/media/MediaFile.h"
#include "inspect/verdict/PretendedDevice.h"

namespace inspect {

// What is converted arrives in whole frames.
inline constexpr bool kHasWholeFrames = true;

struct Target {
    std::vector<std::string> options;  // of ffmpeg, each for one output stream: "-c", "libx264"
    std::string words;                 // "H.264 High 4.0, 1280x720"
    Stream stream;                     // as it will be
};

// The one that changes least among those that the device takes: rather another codec than fewer
// frames a second, and rather those than fewer pixels. isKept: may stand in the file to be.
using IsKept = std::function<bool(const Stream&)>;
std::optional<Target> findTarget(const Stream& stream, const PretendedDevice& device,
                                 const IsKept& isKept);

}  // namespace inspect
