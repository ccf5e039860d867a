// The codec code by which a container parser names a stream's codec.

#pragma once

#include <cstdint>

#include "inspect/media/LibAv.h"

namespace inspect {

// No codec code is meant by it; the library answers as for any subtitles that it does not know.
inline constexpr uint32_t kNoSubtitleCodec = 300;

// An android::CodecType. A codec without a code of its own gets "no codec" of its kind: 100, 200 or
// kNoSubtitleCodec.
uint32_t codecTypeOf(const AVStream& stream);

// The same of a stream that is to come; tag: the four-character code, 0 = none.
uint32_t codecTypeOf(AVCodecID id, uint32_t tag, int profile);

}  // namespace inspect
