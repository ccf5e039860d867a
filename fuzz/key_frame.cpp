// Input: a byte that picks the codec (96 and up), then a sample of a video track.
//
// Aims at Helper/MediaExtractorHelper/KeyFrame, Helper/csd/KeyFrame.

#include "Fuzz.h"

using fuzz::Bytes;
using fuzz::helper;

namespace {

enum class Picture { kIntra, kOther, kInterH263 };  // the last is logged

// By the first VOP that has a byte behind its start code, ISO/IEC 14496-2 6.2.5.
Picture mpeg4(Bytes sample) {
    for (size_t i = 0; i + 4 < sample.size(); ++i) {
        if (sample[i] != 0 || sample[i + 1] != 0 || sample[i + 2] != 1) continue;
        if (sample[i + 3] != 0xb6) continue;
        const int vopCodingType = sample[i + 4] / 64;
        return vopCodingType == 0 ? Picture::kIntra : Picture::kOther;
    }
    return Picture::kOther;
}

// An IDR slice that goes on behind its header, ITU-T H.264 7.3.1.
Picture avc(Bytes sample) {
    for (size_t i = 0; i + 4 < sample.size(); ++i) {
        const bool startCode = sample[i] == 0 && sample[i + 1] == 0 && sample[i + 2] == 1;
        if (startCode && sample[i + 3] % 32 == 5) return Picture::kIntra;
    }
    return Picture::kOther;
}

uint32_t bits(Bytes sample, size_t at, size_t count) {
    uint32_t value = 0;
    for (; count > 0; --count, ++at) {
        const uint32_t byte = at / 8 < sample.size() ? sample[at / 8] : 0u;
        value = 2 * value + (byte >> (7 - at % 8)) % 2;
    }
    return value;
}

// ITU-T H.263 5.1, by the numbers of the bits.
Picture h263(Bytes sample) {
    if (bits(sample, 0, 22) != 0x20) return Picture::kOther;  // picture start code
    const bool plusType = bits(sample, 35, 3) == 7;           // source format: extended PTYPE
    const bool opptype = bits(sample, 40, 1) == 1;            // last bit of UFEP
    uint32_t coding = bits(sample, 38, 1);
    if (plusType) coding = opptype ? bits(sample, 59, 3) : bits(sample, 41, 3);
    return coding == 0 ? Picture::kIntra : Picture::kInterH263;
}

Picture expected(int code, Bytes sample) {
    if (code == 103) return h263(sample);
    if (code == 104) return avc(sample);
    const bool isMpeg4 = code == 102 || code == 120 || (code >= 123 && code <= 126);
    return isMpeg4 ? mpeg4(sample) : Picture::kOther;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes sample(data, size);
    const int code = static_cast<int>(96 + fuzz::take(sample, 1) % 40);
    static int warnings;
    warnings = 0;
    android::host::setLogSink(
            [](const android::host::LogLine& line) { warnings += line.priority == 5; });
    const bool key = helper->isKeyFrame(sample.data(), sample.size(), code);
    const Picture picture = expected(code, sample);
    REQUIRE(key == (picture == Picture::kIntra));
    REQUIRE(warnings == (picture == Picture::kInterH263 ? 1 : 0));
    REQUIRE(!helper->isKeyFrame(nullptr, sample.size(), code));
    return 0;
}
