// The range of a sample buffer.

#pragma once

#include <cstddef>
#include <cstdint>

#include "Helper/base/Checked.h"
#include "platform/SampleBuffer.h"

namespace android {

struct SampleRange {
    explicit SampleRange(MediaBufferHelper* buffer)
        : offset(buffer->range_offset()),
          data(static_cast<uint8_t*>(buffer->data())),
          length(buffer->range_length()) {}

    uint8_t* begin() const { return data + offset; }

    // Where a conversion reads or writes that deliberately counts the offset in samples.
    uint8_t* beginTimes(size_t factor) const { return data + base::checkedMul(offset, factor); }

    size_t offset;
    uint8_t* data;  // of the whole buffer
    size_t length;
};

}  // namespace android
