/// @file
/// The buffer in which samples travel.

#pragma once

#include <cstddef>

namespace android {

/// Memory of size() bytes, of which a range is in use. The virtual operations stand in the order of
/// their slots, which derived classes of other binaries depend on.
class MediaBufferHelper {
public:
    MediaBufferHelper() = default;
    MediaBufferHelper(const MediaBufferHelper&) = delete;
    MediaBufferHelper& operator=(const MediaBufferHelper&) = delete;

    virtual void* data() = 0;           ///< of the whole memory
    virtual size_t size() = 0;          ///< of the whole memory
    virtual size_t range_offset() = 0;  ///< where the range begins
    virtual size_t range_length() = 0;  ///< of the range
    /// Takes a new range.
    virtual void set_range(size_t offset, size_t length) = 0;
    virtual ~MediaBufferHelper();  ///< of a derived class
};

}  // namespace android
