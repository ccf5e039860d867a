// The head of a native FLAC stream: marker, metadata block header, STREAMINFO (RFC 9639 8.2).

#pragma once

#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::csd {

struct FlacStreamInfo {
    uint32_t minBlockSize;  // samples per channel
    uint32_t maxBlockSize;  // samples per channel
    uint32_t minFrameSize;  // bytes; 0 = unknown
    uint32_t maxFrameSize;  // bytes; 0 = unknown
};

// Empty when the data are shorter than 26 bytes or do not open with "fLaC" in any case of letters.
// The block header is taken for that of a STREAMINFO.
std::optional<FlacStreamInfo> parseFlacStreamInfo(base::Bytes data);

}  // namespace android::csd
