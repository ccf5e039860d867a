#pragma once
#include "handset/handset.h"
#include "platform/Errors.h"

extern "C" struct CDataSource {
    ssize_t (*readAt)(void* handle, off64_t offset, void* data, size_t size);
    int (*getSize)(void* handle, off64_t* size);
    uint32_t (*flags)(void* handle);
    bool (*getUri)(void* handle, char* uri, size_t capacity);
    void* handle;
};

namespace android {
using DataSourceBase = handset::Source;
}  // namespace android
