// What "dumpsys media.player" prints on a device.

#pragma once

#include <string>
#include <string_view>

#include "inspect/devices/Decoder.h"

namespace inspect {

bool isMediaPlayerDump(std::string_view text);

// Throws a FileError for more decoders than a device has.
DeviceDescription readMediaPlayerDump(std::string_view text, const std::string& file);

}  // namespace inspect
