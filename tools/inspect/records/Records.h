// The kinds of codec data that the library stores, by format key and codec.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "inspect/base/Bytes.h"
#include "inspect/records/Record.h"

namespace inspect {

// For the name of the container's private data, where the library only reads numbers from these.
inline constexpr std::string_view kPrivateData = "private data";

// Anything unknown counts as a run of bytes.
Record readRecord(uint32_t codecType, std::string_view key, Bytes data);

bool hasReader(uint32_t codecType, std::string_view key);

// Of a record of video; nothing of one without a whole parameter set.
std::optional<VideoFacts> videoFacts(uint32_t codecType, const Record& record);

// Whether it is a configuration record of ISO/IEC 14496-15 with a whole parameter set.
bool isConfiguration(uint32_t codecType, const Record& record);

// The record in one line.
std::string summarise(uint32_t codecType, const Record& record);

}  // namespace inspect
