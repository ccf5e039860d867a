// Asks the library what it would do on other devices.

#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Host.h"

namespace inspect {

// The MIME types by which the library says that a track cannot be played.
bool isNotSupported(std::string_view mime);

// The MIME types each of which, as the only decoder of such a device, makes the library offer the
// codec. The device and the log sink are put back.
std::vector<std::string> decodersThatHelp(uint32_t codecType, const host::Device& device);

// The MIME types of decoders that matter to the library for some codec, found by asking it for all.
// The device becomes that of a typical phone.
std::set<std::string> knownDecoders();

// Whether it would be offered, with the device's own decoders, were the DivX alternative on.
bool isOfferedWithDivxAlternative(uint32_t codecType, const host::Device& device);

// Whether the library offers the codec on such a device without any decoder.
bool isOfferedWithoutDecoder(uint32_t codecType, const host::Device& device);

}  // namespace inspect
