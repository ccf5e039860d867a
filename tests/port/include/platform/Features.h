#pragma once
#include <optional>

namespace com::zre::config {
struct Features2 {
    static std::optional<bool> enable_divx_alternative() { return true; }
};
}  // namespace com::zre::config
