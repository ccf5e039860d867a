#include "platform/MediaFormat.h"

#include <algorithm>
#include <cstdio>

#include "platform/Host.h"

using android::host::FormatEntry;
using android::host::FormatValue;

// A track has some twenty entries, so a walk over them beats any index.
struct AMediaFormat {
    std::vector<FormatEntry> entries;
    std::string text;

    void set(const char* key, FormatValue value) {
        auto entry = find(key);
        if (entry == entries.end()) {
            entries.push_back({key, std::move(value)});
        } else {
            entry->value = std::move(value);
        }
    }

    template <typename T>
    T* get(const char* key) {
        auto entry = find(key);
        return entry == entries.end() ? nullptr : std::get_if<T>(&entry->value);
    }

private:
    std::vector<FormatEntry>::iterator find(const char* key) {
        return std::find_if(entries.begin(), entries.end(),
                            [key](const FormatEntry& entry) { return entry.key == key; });
    }
};

namespace {

struct Printer {
    std::string operator()(int32_t value) const { return "int32(" + std::to_string(value) + ")"; }
    std::string operator()(int64_t value) const { return "int64(" + std::to_string(value) + ")"; }
    std::string operator()(const std::string& value) const { return "string(" + value + ")"; }
    std::string operator()(const std::vector<uint8_t>& value) const {
        std::string text = "data(";
        for (uint8_t byte : value) {
            char hex[3];
            std::snprintf(hex, sizeof(hex), "%02x", byte);
            text += hex;
        }
        return text + ")";
    }
};

}  // namespace

extern "C" {

AMediaFormat* AMediaFormat_new() {
    return new AMediaFormat;
}

media_status_t AMediaFormat_delete(AMediaFormat* format) {
    delete format;
    return AMEDIA_OK;
}

void AMediaFormat_setInt32(AMediaFormat* format, const char* key, int32_t value) {
    format->set(key, value);
}

void AMediaFormat_setInt64(AMediaFormat* format, const char* key, int64_t value) {
    format->set(key, value);
}

void AMediaFormat_setString(AMediaFormat* format, const char* key, const char* value) {
    if (value == nullptr) return;
    format->set(key, std::string(value));
}

void AMediaFormat_setBuffer(AMediaFormat* format, const char* key, const void* data, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    format->set(key,
                size == 0 ? std::vector<uint8_t>() : std::vector<uint8_t>(bytes, bytes + size));
}

bool AMediaFormat_getInt32(AMediaFormat* format, const char* key, int32_t* out) {
    const auto* value = format->get<int32_t>(key);
    if (value != nullptr) *out = *value;
    return value != nullptr;
}

bool AMediaFormat_getInt64(AMediaFormat* format, const char* key, int64_t* out) {
    const auto* value = format->get<int64_t>(key);
    if (value != nullptr) *out = *value;
    return value != nullptr;
}

bool AMediaFormat_getString(AMediaFormat* format, const char* key, const char** out) {
    const auto* value = format->get<std::string>(key);
    if (value != nullptr) *out = value->c_str();
    return value != nullptr;
}

bool AMediaFormat_getBuffer(AMediaFormat* format, const char* key, void** data, size_t* size) {
    auto* value = format->get<std::vector<uint8_t>>(key);
    if (value == nullptr) return false;
    *data = value->data();
    *size = value->size();
    return true;
}

const char* AMediaFormat_toString(AMediaFormat* format) {
    format->text.clear();
    for (const FormatEntry& entry : format->entries) {
        if (!format->text.empty()) format->text += ", ";
        format->text += entry.key + ": " + std::visit(Printer{}, entry.value);
    }
    return format->text.c_str();
}

}  // extern "C"

namespace android::host {

std::vector<FormatEntry> formatEntries(const AMediaFormat* format) {
    return format->entries;
}

}  // namespace android::host
