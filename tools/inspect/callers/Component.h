// The decoder glue's part: what a component is sent to play a track.

#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "inspect/callers/Calls.h"
#include "inspect/callers/Session.h"

namespace inspect {

struct ComponentOptions {
    std::string name;                                   // of a Qualcomm video decoder
    std::vector<std::pair<std::string, int32_t>> keys;  // of a parser that knows more of the track
};

// Belongs into a Session's life.
std::vector<Call> setUpComponent(const Stream& stream, const TrackFindings& track,
                                 const ComponentOptions& options);

}  // namespace inspect
