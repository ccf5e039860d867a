// What the library offers of a track on a device, and on others: it alone knows its rules.

#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/media/MediaFile.h"
#include "platform/Host.h"
#include "zrcodecparser/TrackInfo.h"

namespace inspect {

struct Offer {
    std::optional<std::string> mime;  // that it stores for the track
    std::vector<std::string> asked;   // the MIME types for which it looks for a decoder
    std::vector<host::LogLine> log;
    std::string fatal;  // the assertion that would end the process; empty = none
};

// What a container parser tells the library of a track; points into the stream.
android::TrackInfo trackInfo(const Stream& stream, bool hasWholeFrames);

Offer offerOf(const Stream& stream, bool hasWholeFrames, const host::Device& device);

bool isNotSupported(std::string_view mime);  // the MIME types that say so

// The MIME types of which a decoder on the device would make the library offer the track.
std::set<std::string> decodersThatHelp(const Stream& stream, const host::Device& device);

bool isOffered(const Stream& stream, const host::Device& device);

// All that the library ever looks for.
std::set<std::string> knownDecoders();

}  // namespace inspect
