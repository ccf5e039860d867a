#include "inspect/callers/PcmFormat.h"

#include <algorithm>
#include <array>

#include "platform/Host.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

// The library keeps the order of 16-bit samples, takes those of 32 bits for little-endian, and has
// no way from float to 16 bits but over 24.
// clang-format off
constexpr auto kPcmFormats = std::to_array<PcmFormat>({
    {"pcm_u8",     8, false, false, "ConvertXtoX(8 to 16, unsigned)"},
    {"pcm_s8",     8, true,  false, "ConvertXtoX(8 to 16, signed)"},
    {"pcm_s16le", 16, false, false, "not needed"},
    {"pcm_s16be", 16, true,  false, "ConvertEndian(16)"},
    {"pcm_s24le", 24, false, false, "ConvertXtoX(24 to 16, little-endian)"},
    {"pcm_s24be", 24, true,  false, "ConvertXtoX(24 to 16, big-endian)"},
    {"pcm_s32le", 32, false, false, "ConvertXtoX(32 to 16)"},
    {"pcm_s32be", 32, true,  false, "ConvertEndian(32), ConvertXtoX(32 to 16)"},
    {"pcm_f32le", 32, false, true,
     "ConvertXto24packed(float), ConvertXtoX(24 to 16), as there is none from float to 16"},
    {"pcm_f32be", 32, true,  true,
     "ConvertEndian(32), ConvertXto24packed(float), ConvertXtoX(24 to 16), as there is none from "
     "float to 16"},
});
// clang-format on

}  // namespace

bool isPcm(const Stream& stream) {
    return stream.kind == Kind::kAudio && stream.codecType == kCodecTypePcm;
}

const PcmFormat* findPcmFormat(const Stream& stream) {
    const auto row = std::ranges::find(kPcmFormats, stream.codec, &PcmFormat::codec);
    return isPcm(stream) && row != kPcmFormats.end() ? &*row : nullptr;
}

std::string whyNotTo16(const Stream& stream, MediaExtractorHelper& helper) {
    host::SampleBuffer none(nullptr, 0, 0, 0);
    const auto bits = static_cast<int32_t>(stream.audio.bitsPerSample);
    const status_t status = helper.ConvertXtoX(&none, bits, 16, false, false);
    return "no conversion to 16 bits for " + stream.codec + ": ConvertXtoX(" +
           std::to_string(bits) + " to 16) gives status " + std::to_string(status) +
           (status == OK ? " and wrong samples" : "");
}

void convertTo16(const PcmFormat& format, MediaBufferHelper& buffer, MediaExtractorHelper& helper) {
    auto bits = static_cast<int32_t>(format.bits);
    const bool isSwapped = format.isBigEndian && (bits == 16 || bits == 32);
    if (isSwapped) helper.ConvertEndian(&buffer, bits);
    if (format.isFloat) {
        helper.ConvertXto24packed(&buffer, bits, true, false);
        bits = 24;
    }
    helper.ConvertXtoX(&buffer, bits, 16, false, format.isBigEndian && !isSwapped);
}

}  // namespace inspect
