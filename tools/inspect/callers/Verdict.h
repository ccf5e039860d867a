// Whether a track plays on the pretended device, and if not, why.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/media/MediaFile.h"
#include "platform/Host.h"

namespace inspect {

enum class Play { kPlays, kPlaysInSoftware, kDoesNotPlay, kEndsProcess };

struct Verdict {
    Play play = Play::kDoesNotPlay;
    std::string reason;  // empty when there is nothing to explain
};

std::string_view toString(Play play);

// The verdict on a track that the library gave this MIME type, null for none, and wrote these log
// lines about. Asks the library again, on other devices, for the reason.
Verdict judge(const Stream& stream, const char* mime, const std::vector<host::LogLine>& log,
              const host::Device& device);

}  // namespace inspect
