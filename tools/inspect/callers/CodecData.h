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

// The format of a track around the codec data operation.
struct FormatChange {
    Entries before;
    Entries after;
};

// Every buffer in a track's format, by key; where the library stored none, the private data, if it
// took numbers from them or they are known here, or the header of the first key frame.
std::vector<Record> readCodecData(const Stream& stream, const FormatChange& change, Detail detail);

// The buffers among these in words; the numbers that the operation added where it added none.
std::vector<CodecDatum> describeCodecData(const std::vector<Record>& records,
                                          const FormatChange& change);

}  // namespace inspect
