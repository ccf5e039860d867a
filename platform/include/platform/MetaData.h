// The legacy key/value store, keyed by four-character codes.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/RefBase.h"

namespace android {

// Each setter stores a copy of the value in place of whatever was under the key, and returns
// whether something was. A finder returns true, and writes its outputs, only for a value of the
// type that it was set with; texts and data stay the store's own and are valid until it changes.
class MetaDataBase {
public:
    MetaDataBase();
    virtual ~MetaDataBase();
    MetaDataBase(const MetaDataBase&) = delete;
    MetaDataBase& operator=(const MetaDataBase&) = delete;

    bool setInt32(uint32_t key, int32_t value);
    bool setInt64(uint32_t key, int64_t value);
    bool setCString(uint32_t key, const char* value);
    bool setData(uint32_t key, uint32_t type, const void* data, size_t size);

    bool findInt32(uint32_t key, int32_t* value) const;
    bool findInt64(uint32_t key, int64_t* value) const;
    bool findCString(uint32_t key, const char** value) const;
    bool findData(uint32_t key, uint32_t* type, const void** data, size_t* size) const;

private:
    struct Entries;
    Entries* mEntries;  // owned
};

class MetaData : public MetaDataBase, public RefBase {
public:
    MetaData();

protected:
    ~MetaData() override;
};

}  // namespace android
