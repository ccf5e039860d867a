// Devices that --device can name.

#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "inspect/base/InputFile.h"
#include "inspect/devices/Decoder.h"

namespace inspect {

struct BuiltInDevice {
    std::string_view name;
    std::string_view description;              // a line
    std::array<std::string_view, 3> decoders;  // as lists of MIME types
};

std::span<const BuiltInDevice> builtInDevices();

// Of a name that is neither a built-in device nor a file.
class UnknownDevice : public FileError {
public:
    using FileError::FileError;
};

// A built-in device, or else a file or folder: a codec list in XML with what it includes, the
// output of "dumpsys media.player", a list of MIME types; "-" is standard input. Throws a
// FileError, which names the file, for what is none of them.
DeviceDescription loadDevice(const std::string& what);

}  // namespace inspect
