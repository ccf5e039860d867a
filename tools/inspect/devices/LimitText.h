// Limits as descriptions write them: "1-244800", "64x64-1920x1088", "8000,11025,16000-48000".

#pragma once

#include <string_view>

#include "inspect/devices/Decoder.h"

namespace inspect {

enum class LimitResult { kTaken, kUnknown, kBroken };

// The name is that of the XML form: "size". Either end of a range may be missing.
LimitResult setLimit(Limits& limits, std::string_view name, std::string_view value);

// The pairs of "1/65536 (Main/Main 5.1), 0x2/0x10000"; what is between them does not matter.
// Returns whether there are any.
bool setProfileLevels(Limits& limits, std::string_view text);

// Such as "secure-playback".
void setFeature(Decoder& decoder, std::string_view name, bool isRequired, bool isOn);

}  // namespace inspect
