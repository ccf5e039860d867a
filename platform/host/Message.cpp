#include "platform/Message.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Buffer.h"

namespace android {
namespace {

using Value = std::variant<int32_t, int64_t, std::string, sp<ABuffer>>;

}  // namespace

// A message has some twenty entries, so a walk over them beats any index.
struct AMessage::Entries {
    std::vector<std::pair<std::string, Value>> values;

    void set(const char* key, Value value) {
        for (auto& [existing, old] : values) {
            if (existing == key) {
                old = std::move(value);
                return;
            }
        }
        values.emplace_back(key, std::move(value));
    }

    template <typename T>
    const T* find(const char* key) const {
        for (const auto& [existing, value] : values) {
            if (existing == key) return std::get_if<T>(&value);
        }
        return nullptr;
    }

    template <typename T>
    bool find(const char* key, T* out) const {
        const T* value = find<T>(key);
        if (value != nullptr) *out = *value;
        return value != nullptr;
    }
};

AMessage::AMessage() : mEntries(new Entries) {}

AMessage::~AMessage() {
    delete mEntries;
}

void AMessage::setInt32(const char* key, int32_t value) {
    mEntries->set(key, value);
}

void AMessage::setInt64(const char* key, int64_t value) {
    mEntries->set(key, value);
}

void AMessage::setString(const char* key, const char* value) {
    mEntries->set(key, std::string(value));
}

void AMessage::setBuffer(const char* key, const sp<ABuffer>& value) {
    mEntries->set(key, value);
}

bool AMessage::findInt32(const char* key, int32_t* value) const {
    return mEntries->find(key, value);
}

bool AMessage::findInt64(const char* key, int64_t* value) const {
    return mEntries->find(key, value);
}

bool AMessage::findString(const char* key, AString* value) const {
    const auto* text = mEntries->find<std::string>(key);
    if (text != nullptr) *value = AString(text->c_str());
    return text != nullptr;
}

bool AMessage::findBuffer(const char* key, sp<ABuffer>* value) const {
    return mEntries->find(key, value);
}

void AMessage::clear() {
    mEntries->values.clear();
}

}  // namespace android
