// The kinds of codec data that the library stores, by format key and codec.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "inspect/base/Bytes.h"
#include "inspect/records/Annotator.h"

namespace inspect {

struct RecordKind {
    std::string (*describe)(Bytes);  // in words
    void (*explain)(Annotator&);     // byte by byte
};

// For the name of the container's private data, where the library only reads numbers from these.
inline constexpr std::string_view kPrivateData = "private data";

// Anything unknown counts as a run of bytes.
const RecordKind& recordKind(uint32_t codecType, std::string_view key);

}  // namespace inspect
