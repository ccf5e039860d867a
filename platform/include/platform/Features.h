// Feature flags of the device.

#pragma once

#include <optional>

namespace com::zre::config {

class Features2 {
public:
    // Whether DivX 4 to 6 may be decoded as MPEG-4 Visual; empty when the device does not say.
    static std::optional<bool> enable_divx_alternative();
};

}  // namespace com::zre::config
