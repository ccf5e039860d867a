#include "platform/MetaData.h"

#include <cstring>
#include <map>
#include <vector>

namespace android {
namespace {

// Types of the values that the typed setters store.
constexpr uint32_t kTypeInt32 = 0x696e3332;    // 'in32'
constexpr uint32_t kTypeInt64 = 0x696e3634;    // 'in64'
constexpr uint32_t kTypeCString = 0x63737472;  // 'cstr'

// Values of these types have finders of their own.
bool isTyped(uint32_t type) {
    return type == kTypeInt32 || type == kTypeInt64 || type == kTypeCString;
}

struct Entry {
    uint32_t type;
    std::vector<uint8_t> data;
};

}  // namespace

struct MetaDataBase::Entries {
    std::map<uint32_t, Entry> byKey;

    const std::vector<uint8_t>* find(uint32_t key, uint32_t type) const {
        const auto entry = byKey.find(key);
        return entry != byKey.end() && entry->second.type == type ? &entry->second.data : nullptr;
    }

    template <typename T>
    bool find(uint32_t key, uint32_t type, T* value) const {
        const auto* data = find(key, type);
        if (data == nullptr || data->size() != sizeof(T)) return false;
        std::memcpy(value, data->data(), sizeof(T));
        return true;
    }
};

MetaDataBase::MetaDataBase() : mEntries(new Entries) {}

MetaDataBase::~MetaDataBase() {
    delete mEntries;
}

bool MetaDataBase::setInt32(uint32_t key, int32_t value) {
    return setData(key, kTypeInt32, &value, sizeof(value));
}

bool MetaDataBase::setInt64(uint32_t key, int64_t value) {
    return setData(key, kTypeInt64, &value, sizeof(value));
}

bool MetaDataBase::setCString(uint32_t key, const char* value) {
    return setData(key, kTypeCString, value, std::strlen(value) + 1);
}

bool MetaDataBase::setData(uint32_t key, uint32_t type, const void* data, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    Entry entry{type,
                size == 0 ? std::vector<uint8_t>() : std::vector<uint8_t>(bytes, bytes + size)};
    return !mEntries->byKey.insert_or_assign(key, std::move(entry)).second;
}

bool MetaDataBase::findInt32(uint32_t key, int32_t* value) const {
    return mEntries->find(key, kTypeInt32, value);
}

bool MetaDataBase::findInt64(uint32_t key, int64_t* value) const {
    return mEntries->find(key, kTypeInt64, value);
}

bool MetaDataBase::findCString(uint32_t key, const char** value) const {
    const auto* data = mEntries->find(key, kTypeCString);
    if (data == nullptr) return false;
    *value = reinterpret_cast<const char*>(data->data());
    return true;
}

bool MetaDataBase::findData(uint32_t key, uint32_t* type, const void** data, size_t* size) const {
    const auto entry = mEntries->byKey.find(key);
    if (entry == mEntries->byKey.end() || isTyped(entry->second.type)) return false;
    *type = entry->second.type;
    *data = entry->second.data.data();
    *size = entry->second.data.size();
    return true;
}

MetaData::MetaData() = default;

MetaData::~MetaData() = default;

}  // namespace android
