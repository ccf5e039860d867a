// Which code in a MetaDataBase and which key in an AMessage belong together, and what stands there.

#pragma once

#include <cstdint>
#include <span>

#include "zrcodecparser/MetaKeys.h"

namespace android {

enum class MetaValue : int32_t {
    kInt32,
    kInt64,
    kText,
    kData,
    kCodecData,  // in a message under "csd-0", whichever codec they are for
};

struct MetaKeyRow {
    uint32_t metaKey;
    const char* messageKey;
    MetaValue value;
};

std::span<const MetaKeyRow> metaKeyRows();

// The message key of the first row with the code, or null.
const char* findMessageKey(uint32_t metaKey);

// Whether a value of this type in a MetaDataBase is data, whichever; the others are what setInt32,
// setInt64 and setCString store. A store may give out the bytes of those as well.
constexpr bool isMetaData(uint32_t type) {
    return type != metakeys::code("in32") && type != metakeys::code("in64") &&
           type != metakeys::code("cstr");
}

}  // namespace android
