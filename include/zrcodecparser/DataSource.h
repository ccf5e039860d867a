/// @file
/// The sources of bytes that tags are read from.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/DataSource.h"
#include "zrcodecparser/Export.h"

namespace android {

/// A source over the plain record that container parsers are handed. The record stays the caller's
/// and must outlive the source. The virtual operations stand in the order of their slots.
///
/// Who derives: the class ID3 reads through the overrides of readAt and getSize. The tag operations
/// of ID3Wrapper and MediaExtractorHelper do not: they read through the record itself, and of the
/// object they ask for flags() only.
///
/// Threads: as the record allows; the source adds no state of its own.
class ZR_EXPORT DataSourceHelper {
public:
    /// Keeps the record's address; the record is not used yet.
    explicit DataSourceHelper(CDataSource* source);
    /// Leaves the record as it is.
    virtual ~DataSourceHelper();

    DataSourceHelper(const DataSourceHelper&) = delete;
    DataSourceHelper& operator=(const DataSourceHelper&) = delete;

    /// @{
    /// Returns what the record's entry of that name does.
    virtual ssize_t readAt(off64_t offset, void* data, size_t size);
    virtual status_t getSize(off64_t* size);
    virtual uint32_t flags();
    /// @}

private:
    friend class ID3Wrapper;  // reads tags through a source of its own over the same record
    friend struct LayoutProbe;

    CDataSource* mSource;
};

/// A source over bytes in memory, which stay the caller's and must outlive the source. Its size is
/// deliberately not to be had: a tag at the end of the bytes is not looked for. Any thread may read
/// at any time.
class ZR_EXPORT MemorySource : public DataSourceBase {
public:
    /// Keeps the address of the bytes.
    MemorySource(const uint8_t* data, size_t size);
    /// Leaves the bytes as they are.
    ~MemorySource() override;

    /// @return 0.
    status_t initCheck() const override;
    /// Copies what there is of size bytes at an offset and returns how many that were; 0 for an
    /// offset that is negative or past the end.
    ssize_t readAt(off64_t offset, void* data, size_t size) override;
    /// Stores 0 and returns ERROR_UNSUPPORTED.
    status_t getSize(off64_t* size) override;
    /// @return false.
    bool getUri(char* uri, size_t capacity) override;
    /// @return 0.
    uint32_t flags() override;
    /// Does nothing.
    void close() override;
    /// @return -1 and writes nothing.
    status_t getAvailableSize(off64_t offset, off64_t* size) override;

private:
    friend struct LayoutProbe;

    const uint8_t* mData;
    size_t mSize;
};

}  // namespace android
