// What a person knows the keys of tags by.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "inspect/callers/Format.h"

namespace inspect {

struct TagRow {
    const char* name;
    const char* key;
    uint32_t mixedEncodingBit = 0;
    const char* unit = "";
};

std::span<const TagRow> tagRows();

// The texts that are marked as 8-bit, whose real encoding nobody knows.
std::vector<const TagRow*> eightBitRows(const Entries& entries);

}  // namespace inspect
