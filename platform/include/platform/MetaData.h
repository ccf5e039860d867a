/// @file
/// The legacy key/value store, keyed by four-character codes.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/RefBase.h"

namespace android {

/// A store of numbers, texts and data under codes, one thread at a time.
///
/// Each setter stores a copy of the value in place of whatever was under the key, and returns
/// whether something was. A finder returns true, and writes its outputs, only for a value of the
/// type that it was set with; texts and data stay the store's own and are valid until it changes.
class MetaDataBase {
public:
    MetaDataBase();           ///< empty
    virtual ~MetaDataBase();  ///< with all that it holds
    MetaDataBase(const MetaDataBase&) = delete;
    MetaDataBase& operator=(const MetaDataBase&) = delete;

    /// @{
    /// Stores a value and returns whether there was one.
    bool setInt32(uint32_t key, int32_t value);
    bool setInt64(uint32_t key, int64_t value);
    bool setCString(uint32_t key, const char* value);
    bool setData(uint32_t key, uint32_t type, const void* data, size_t size);
    /// @}

    /// @{
    /// Whether there is a value of this type, and the value.
    bool findInt32(uint32_t key, int32_t* value) const;
    bool findInt64(uint32_t key, int64_t* value) const;
    bool findCString(uint32_t key, const char** value) const;
    bool findData(uint32_t key, uint32_t* type, const void** data, size_t* size) const;
    /// @}

private:
    struct Entries;
    Entries* mEntries;  // owned
};

/// The same, counted by references.
class MetaData : public MetaDataBase, public RefBase {
public:
    MetaData();  ///< empty

protected:
    ~MetaData() override;  ///< when the last reference goes
};

}  // namespace android
