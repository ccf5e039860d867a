/// @file
/// Sources of bytes: the plain record that container parsers are handed, and the framework's class.

#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

#include "platform/Errors.h"

extern "C" {

/// A source of bytes as a plain record. Every entry takes the record's handle first.
struct CDataSource {
    /// Reads up to size bytes at an offset; returns how many were read, or a negative status.
    ssize_t (*readAt)(void* handle, off64_t offset, void* data, size_t size);
    /// Stores the size in bytes; returns 0 or a negative status.
    int32_t (*getSize)(void* handle, off64_t* size);
    /// What kind of source it is; 0x40 beside an http address: tags are not read.
    uint32_t (*flags)(void* handle);
    /// Writes at most capacity characters of the source's address; false when it has none.
    bool (*getUri)(void* handle, char* uri, size_t capacity);
    void* handle;  ///< the record's own
};

}  // extern "C"

namespace android {

/// A source of bytes as a class. The virtual operations stand in the order of their slots, which
/// derived classes of other binaries depend on.
class DataSourceBase {
public:
    DataSourceBase() = default;
    DataSourceBase(const DataSourceBase&) = delete;
    DataSourceBase& operator=(const DataSourceBase&) = delete;

    /// Whether the source can be read; 0 when it can.
    virtual status_t initCheck() const = 0;
    /// Reads up to size bytes at an offset; returns how many were read, or a negative status.
    virtual ssize_t readAt(off64_t offset, void* data, size_t size) = 0;
    /// Stores 0 and returns ERROR_UNSUPPORTED unless overridden.
    virtual status_t getSize(off64_t* size);
    /// Writes at most capacity characters of its address; false when it has none, as unless
    /// overridden.
    virtual bool getUri(char* uri, size_t capacity);
    /// What kind of source it is; 0 unless overridden.
    virtual uint32_t flags();
    /// Ends the reading; does nothing unless overridden.
    virtual void close();
    /// Stores how many bytes behind an offset can be read without waiting; returns -1 unless
    /// overridden.
    virtual status_t getAvailableSize(off64_t offset, off64_t* size);
    /// Of a derived class.
    virtual ~DataSourceBase();
};

}  // namespace android
