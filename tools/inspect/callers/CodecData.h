// The codec data that the library stored for a track.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/callers/Format.h"
#include "inspect/media/MediaFile.h"
#include "inspect/records/Record.h"

namespace inspect {

struct CodecDatum {
    std::string key;
    std::optional<size_t> sizeBytes;  // of a buffer; a number has none
    std::string words;
};

// Every buffer in a track's format, by key; the numbers that the codec data operation added where
// it added no buffer. before and after are the format around that operation.
std::vector<CodecDatum> describeCodecData(uint32_t codecType, const Entries& before,
                                          const Entries& after);

// Every buffer in a track's format byte by byte, by key; where the library stored numbers instead,
// the private data that it took them from.
std::vector<Record> explainCodecData(const Stream& stream, const Entries& entries,
                                     const std::vector<CodecDatum>& codecData);

}  // namespace inspect
