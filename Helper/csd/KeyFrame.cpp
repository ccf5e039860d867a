#include "Helper/csd/KeyFrame.h"

#include "Helper/csd/NalUnits.h"

namespace android::csd {
namespace {

// Moves the data on behind the next start code that has at least two bytes behind it.
bool takeStartCode(Bytes& data) {
    const Bytes found = data.subspan(findStartCode(data));
    if (found.size() < kStartCodeSize + 2) return false;
    data = found.subspan(kStartCodeSize);
    return true;
}

}  // namespace

bool isMpeg4KeyFrame(Bytes sample) {
    constexpr uint8_t kVopStartCode = 0xB6;
    constexpr uint8_t kFirstNonIntra = 0x40;  // vop_coding_type, the two top bits, is not 0
    while (takeStartCode(sample)) {
        if (sample[0] == kVopStartCode) return sample[1] < kFirstNonIntra;
    }
    return false;
}

bool isAvcKeyFrame(Bytes sample) {
    constexpr unsigned kIdrSlice = 5;
    while (takeStartCode(sample)) {
        if (avcNalType(sample) == kIdrSlice) return true;
    }
    return false;
}

H263Picture h263Picture(Bytes sample) {
    // picture_start_code: 0000 0000 0000 0000 1000 00
    if (base::bigEndianAt(sample, 0, 3) >> 2 != 0x20) return H263Picture::kNoPicture;
    const unsigned b4 = base::byteAt(sample, 4);
    const unsigned b5 = base::byteAt(sample, 5);
    const unsigned b7 = base::byteAt(sample, 7);
    if ((b4 & 0x1C) != 0x1C) {
        return (b4 & 0x02) == 0 ? H263Picture::kIntra : H263Picture::kInterPtype;
    }
    if ((b5 & 0x80) != 0) {
        return (b7 & 0x1C) == 0 ? H263Picture::kIntra : H263Picture::kInterPlusPtypeOpptype;
    }
    return (b5 & 0x70) == 0 ? H263Picture::kIntra : H263Picture::kInterPlusPtype;
}

}  // namespace android::csd
