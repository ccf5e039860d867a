#include "zrcodecparser/DataSource.h"

#include <algorithm>
#include <cstring>

#include "Helper/base/Status.h"

namespace android {

DataSourceHelper::DataSourceHelper(CDataSource* source) : mSource(source) {}

DataSourceHelper::~DataSourceHelper() = default;

ssize_t DataSourceHelper::readAt(off64_t offset, void* data, size_t size) {
    return mSource->readAt(mSource->handle, offset, data, size);
}

status_t DataSourceHelper::getSize(off64_t* size) {
    return mSource->getSize(mSource->handle, size);
}

uint32_t DataSourceHelper::flags() {
    return mSource->flags(mSource->handle);
}

MemorySource::MemorySource(const uint8_t* data, size_t size) : mData(data), mSize(size) {}

MemorySource::~MemorySource() = default;

status_t MemorySource::initCheck() const {
    return OK;
}

ssize_t MemorySource::readAt(off64_t offset, void* data, size_t size) {
    if (offset < 0 || static_cast<uint64_t>(offset) >= mSize) return 0;
    const auto start = static_cast<size_t>(offset);
    const size_t count = std::min(mSize - start, size);
    if (count != 0) std::memcpy(data, mData + start, count);
    return static_cast<ssize_t>(count);
}

status_t MemorySource::getSize(off64_t* size) {
    return DataSourceBase::getSize(size);
}

bool MemorySource::getUri(char*, size_t) {
    return false;
}

uint32_t MemorySource::flags() {
    return 0;
}

void MemorySource::close() {}

status_t MemorySource::getAvailableSize(off64_t, off64_t*) {
    return base::kFailed;
}

}  // namespace android
