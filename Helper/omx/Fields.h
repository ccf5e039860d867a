// The numbers that a component is set up with: where a message has them, where they stand in the
// component's structure, and what is said where one is missing. They are read before anything is
// done with them. What is missing is only an error where it is needed: the calls before that are
// made.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Helper/base/Check.h"
#include "Helper/omx/Parameters.h"
#include "Helper/vocabulary/MetaKeyTable.h"
#include "platform/Message.h"
#include "zrcodecparser/MetaKeys.h"

namespace android::omx {

// A key and the fatal text for want of it. Tools search logs for these texts, the blanks in them
// included.
struct Key {
    uint32_t metaKey;
    const char* missing;
};

// clang-format off
inline constexpr Key kChannelCount{
        kZreKeyChannelCount, "CHECK(msg->findInt32(getMsgKey(kZreKeyChannelCount), &numChannels)) failed."};
inline constexpr Key kSampleRate{
        kZreKeySampleRate, "CHECK(msg->findInt32(getMsgKey(kZreKeySampleRate), &sampleRate)) failed."};
// clang-format on

using Value = std::optional<int32_t>;

inline Value find(const AMessage& message, const char* messageKey) {
    int32_t value = 0;
    return message.findInt32(messageKey, &value) ? Value(value) : std::nullopt;
}

// Of a code in the key table.
inline Value find(const AMessage& message, uint32_t metaKey) {
    return find(message, findMessageKey(metaKey));
}

inline Value find(const AMessage& message, const Key& key) {
    return find(message, key.metaKey);
}

// Fatal where there is none.
inline int32_t require(const Key& key, Value value) {
    if (!value) base::fatal(base::kAtMediaCodecHelper, key.missing);
    return *value;
}

// Versions of a stream, a bit each.
using Versions = uint32_t;
inline constexpr Versions kAllVersions = ~Versions{0};

// A row of a structure's table; the rows stand in the order in which the lack of one is found.
struct Field {
    size_t offset;
    size_t width;  // in bytes
    Versions versions;
    Key key;
};

// The width of a value that must be there all the same.
inline constexpr size_t kNotSent = 0;

template <size_t kCount>
using Fields = std::array<Field, kCount>;

// Whether the fields are numbers of 16 or 32 bits within a structure, and no two of a version share
// a byte.
template <size_t kCount>
consteval bool areApart(const Fields<kCount>& fields, size_t structureSize) {
    for (const Field& field : fields) {
        if (field.width == kNotSent) continue;
        if (field.width != 2 && field.width != 4) return false;
        if (field.offset + field.width > structureSize) return false;
        for (const Field& other : fields) {
            const bool meet = other.offset < field.offset + field.width &&
                              field.offset < other.offset + other.width;
            if (&other != &field && meet && (field.versions & other.versions) != 0) return false;
        }
    }
    return true;
}

template <size_t kCount>
using Values = std::array<Value, kCount>;  // of the fields, in their order

template <size_t kCount>
Values<kCount> readFields(const Fields<kCount>& fields, const AMessage& message) {
    Values<kCount> values;
    for (size_t i = 0; i < kCount; ++i) values[i] = find(message, fields[i].key);
    return values;
}

// Requires the values of the version's fields.
template <size_t kSize, size_t kCount>
void putFields(const Fields<kCount>& fields, const Values<kCount>& values,
               ParameterImage<kSize>* params, Versions version) {
    for (size_t i = 0; i < kCount; ++i) {
        const Field& field = fields[i];
        if ((field.versions & version) != 0) params->put(field.offset, *values[i], field.width);
    }
}

// Sets all fields in the structure that the component tells, and returns the status of its taking
// it. Fatal: a missing value; then a component that does not tell.
template <size_t kSize, size_t kCount>
status_t setFields(const Fields<kCount>& fields, const Values<kCount>& values, IOMXNode& node,
                   OMX_INDEXTYPE index) {
    for (size_t i = 0; i < kCount; ++i) require(fields[i].key, values[i]);
    ParameterImage<kSize> params;
    params.putHeader(kInputPort);
    checkOk(params.get(node, index));
    putFields(fields, values, &params, kAllVersions);
    return params.set(node, index);
}

}  // namespace android::omx
