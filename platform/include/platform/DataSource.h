// Sources of bytes: the plain record that container parsers are handed, and the framework's class.

#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

#include "platform/Errors.h"

extern "C" {

// Every entry takes the record's handle first.
struct CDataSource {
    // Reads up to size bytes at an offset; returns how many were read, or a negative status.
    ssize_t (*readAt)(void* handle, off64_t offset, void* data, size_t size);
    int32_t (*getSize)(void* handle, off64_t* size);
    uint32_t (*flags)(void* handle);
    // Writes at most capacity characters of the source's address; false when it has none.
    bool (*getUri)(void* handle, char* uri, size_t capacity);
    void* handle;
};

}  // extern "C"

namespace android {

// The virtual operations stand in the order of their slots, which derived classes of other
// binaries depend on.
class DataSourceBase {
public:
    DataSourceBase() = default;
    DataSourceBase(const DataSourceBase&) = delete;
    DataSourceBase& operator=(const DataSourceBase&) = delete;

    virtual status_t initCheck() const = 0;
    virtual ssize_t readAt(off64_t offset, void* data, size_t size) = 0;
    // Stores 0 and returns ERROR_UNSUPPORTED unless overridden.
    virtual status_t getSize(off64_t* size);
    virtual bool getUri(char* uri, size_t capacity);
    virtual uint32_t flags();
    virtual void close();
    virtual status_t getAvailableSize(off64_t offset, off64_t* size);
    virtual ~DataSourceBase();
};

}  // namespace android
