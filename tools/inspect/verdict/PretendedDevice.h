// A device to judge files for: what its decoders can do, and how the platform on it answers.

#pragma once

#include "inspect/devices/Decoder.h"
#include "platform/Host.h"

namespace inspect {

struct PretendedDevice {
    DeviceDescription description;
    host::Device host;  // its decoders are those of the description: see nameDecoders
};

// Tells the platform the types of the decoders that count, each as the library spells it.
void nameDecoders(PretendedDevice& device);

// A text that is another for a device that may judge otherwise.
std::string describe(const PretendedDevice& device);

}  // namespace inspect
