// Which code in a MetaDataBase and which key in an AMessage belong together, and what stands there.

#pragma once

#include <array>
#include <cstdint>
#include <span>

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

}  // namespace android
