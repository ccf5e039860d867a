// Which code in a MetaDataBase and which key in an AMessage belong together, and what stands there.

#pragma once

#include <cstdint>
#include <span>

#include "Helper/base/FourCC.h"

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

// The type of data that are no particular record.
inline constexpr uint32_t kMetaTypeNone = base::fourcc("none");

// Whether a value of this type in a MetaDataBase is data, whichever; the others are what setInt32,
// setInt64 and setCString store. A store may give out the bytes of those as well.
constexpr bool isMetaData(uint32_t type) {
    return type != base::fourcc("in32") && type != base::fourcc("in64") &&
           type != base::fourcc("cstr");
}

}  // namespace android
