// The options that say which devices files are judged for.

#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "inspect/verdict/PretendedDevice.h"

namespace inspect {

struct DeviceOptions {
    std::vector<std::string> devices;
    std::vector<std::string> compared;
    std::vector<std::string> add;
    std::vector<std::string> remove;
    std::vector<std::string> only;
    std::string divxAlternative;
    std::string mediaServer;
    std::string codecInfo;
};

void addDeviceOptions(CLI::App& app, DeviceOptions& options);

// At least one. Throws a FileError for a description that cannot be read, an UnknownDevice for a
// name that is none.
std::vector<PretendedDevice> readDevices(const DeviceOptions& options);

// With one value each time.
template <typename Target>
CLI::Option* addOption(CLI::App& app, const char* name, Target& target, const char* type,
                       const char* help) {
    return app.add_option(name, target, help)->type_name(type)->allow_extra_args(false);
}

}  // namespace inspect
