// The size of a picture, and what cropping leaves of it.

#pragma once

#include <cstdint>

#include "Helper/base/Checked.h"

namespace android::csd {

struct PictureSize {
    int32_t width;   // luma samples
    int32_t height;  // luma samples

    // Without so many columns and rows; fatal when there are fewer.
    PictureSize without(uint32_t columns, uint32_t rows) const {
        return {static_cast<int32_t>(base::checkedSub(static_cast<uint32_t>(width), columns)),
                static_cast<int32_t>(base::checkedSub(static_cast<uint32_t>(height), rows))};
    }
};

}  // namespace android::csd
