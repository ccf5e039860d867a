// Four-character codes as text.

#pragma once

#include <cstdint>

namespace android::base {

// The characters from the most significant byte down: fourcc("hvcc") is 0x68766363.
consteval uint32_t fourcc(const char (&text)[5]) {
    uint32_t code = 0;
    for (int i = 0; i < 4; ++i) code = (code << 8) | static_cast<uint8_t>(text[i]);
    return code;
}

}  // namespace android::base
