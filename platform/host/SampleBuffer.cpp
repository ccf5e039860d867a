#include "platform/SampleBuffer.h"

#include "platform/Host.h"

namespace android {

MediaBufferHelper::~MediaBufferHelper() = default;

namespace host {

SampleBuffer::SampleBuffer(void* data, size_t capacity, size_t offset, size_t length)
    : mData(data), mCapacity(capacity), mOffset(offset), mLength(length) {}

SampleBuffer::~SampleBuffer() = default;

void* SampleBuffer::data() {
    return mData;
}

size_t SampleBuffer::size() {
    return mCapacity;
}

size_t SampleBuffer::range_offset() {
    return mOffset;
}

size_t SampleBuffer::range_length() {
    return mLength;
}

void SampleBuffer::set_range(size_t offset, size_t length) {
    mOffset = offset;
    mLength = length;
}

}  // namespace host
}  // namespace android
