#pragma once

#include <cstdint>

namespace android::csd {

struct PictureSize {
    int32_t width;   // luma samples
    int32_t height;  // luma samples
};

}  // namespace android::csd
