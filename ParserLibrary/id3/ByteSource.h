// The two kinds of sources that tags are read from, as one.

#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

#include "platform/Errors.h"

namespace android::id3 {

struct ByteSource {
    void* source;
    ssize_t (*readAt)(void* source, off64_t offset, void* data, size_t size);
    status_t (*getSize)(void* source, off64_t* size);

    // Whether the source gave all that was asked for.
    bool readFully(off64_t offset, uint8_t* data, size_t size) const {
        return readAt(source, offset, data, size) >= static_cast<ssize_t>(size);
    }
};

template <typename Source>
ByteSource byteSource(Source* source) {
    return {source,
            [](void* self, off64_t offset, void* data, size_t size) {
                return static_cast<Source*>(self)->readAt(offset, data, size);
            },
            [](void* self, off64_t* size) { return static_cast<Source*>(self)->getSize(size); }};
}

}  // namespace android::id3
