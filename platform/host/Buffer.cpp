#include "platform/Buffer.h"

#include <cassert>

namespace android {

ABuffer::ABuffer(size_t capacity)
    : mData(new uint8_t[capacity]), mCapacity(capacity), mSize(capacity) {}

ABuffer::~ABuffer() {
    delete[] mData;
}

void ABuffer::setRange(size_t offset, size_t size) {
    assert(offset <= mCapacity && size <= mCapacity - offset);
    mOffset = offset;
    mSize = size;
}

sp<AMessage> ABuffer::meta() {
    if (mMeta == nullptr) mMeta = new AMessage;
    return mMeta;
}

}  // namespace android
