/// @file
/// A counted buffer of bytes.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Message.h"
#include "platform/RefBase.h"

namespace android {

/// Owns `capacity` bytes; data() and size() describe the range in use, at first the whole of it.
class ABuffer : public RefBase {
public:
    /// Bytes of any value.
    explicit ABuffer(size_t capacity);

    /// @{
    /// The first byte in use.
    uint8_t* data() { return mData + mOffset; }
    const uint8_t* data() const { return mData + mOffset; }
    /// @}
    /// How many bytes are in use.
    size_t size() const { return mSize; }
    /// How many bytes there are in all.
    size_t capacity() const { return mCapacity; }

    /// Requires offset + size <= capacity().
    void setRange(size_t offset, size_t size);

    /// The message that travels with the buffer, empty at first.
    sp<AMessage> meta();

protected:
    ~ABuffer() override;  ///< when the last reference goes

private:
    uint8_t* mData;
    size_t mCapacity;
    size_t mOffset = 0;
    size_t mSize;
    sp<AMessage> mMeta;
};

}  // namespace android
