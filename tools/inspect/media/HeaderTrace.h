// The syntax elements of video headers, by the names of the standards, as libavcodec reads them.

#pragma once

#include <string>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/media/LibAv.h"

namespace inspect {

struct SyntaxElement {
    std::string name;
    unsigned bits = 0;  // 0: heads a part, such as the payload of an SEI message
    int64_t value = 0;
};

// Reads the units of one record. Those that others refer to come first.
class HeaderTrace {
public:
    explicit HeaderTrace(AVCodecID codec);

    // A NAL unit of H.264 or H.265 (without start code), a frame of VP9, or OBUs of AV1. The
    // elements of the first follow one another without gap, as far as they can be read; emulation
    // prevention bytes do not count. However many units there are, the elements have an end.
    std::vector<SyntaxElement> read(Bytes unit);

    bool isOfNalUnits() const { return mHasStartCodes; }  // which hold emulation prevention bytes

private:
    const bool mHasStartCodes;
    size_t mBudget;
    LibAvPtr<AVBSFContext> mFilter;
};

}  // namespace inspect
