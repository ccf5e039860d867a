// The codec-specific bytes behind the WAVEFORMATEX of a Windows Media Audio track: which fields
// each version of the codec has, and the format key of each.

#pragma once

#include <span>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::csd {

struct WmaField {
    const char* key;
    uint8_t offset;  // bytes
    uint8_t size;    // bytes; little-endian, unsigned
};

struct WmaLayout {
    size_t minSize;         // bytes; shorter data are not read at all
    bool shortDataIsError;  // else short data give a value of 0 in every field
    std::span<const WmaField> fields;
};

// Null for a code that is none of kCodecTypeWmaV1 to kCodecTypeWmaVoice.
const WmaLayout* wmaLayout(uint32_t codecType);

struct WmaValue {
    const char* key;
    int32_t value;
};

// The values of a layout's fields, in its order. Bytes past the end of the data are zero.
std::vector<WmaValue> readWmaFields(base::Bytes data, const WmaLayout& layout);

}  // namespace android::csd
