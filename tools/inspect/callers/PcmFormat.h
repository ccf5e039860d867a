// How the library makes 16-bit samples, signed and little-endian, of PCM.

#pragma once

#include <string>
#include <string_view>

#include "inspect/media/MediaFile.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {

struct PcmFormat {
    std::string_view codec;  // as in Stream
    size_t bits;
    bool isBigEndian;  // of 8 bits: signed, as in the library
    bool isFloat;
    const char* conversion;  // the library's operations
};

bool isPcm(const Stream& stream);
const PcmFormat* findPcmFormat(const Stream& stream);  // null where the library has no conversion
std::string whyNotTo16(const Stream& stream, android::MediaExtractorHelper& helper);

// By the operations above. The buffer has room for two bytes a sample.
void convertTo16(const PcmFormat& format, android::MediaBufferHelper& buffer,
                 android::MediaExtractorHelper& helper);

}  // namespace inspect
