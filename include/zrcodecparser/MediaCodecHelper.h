// What decoder glue calls between a track's format and the decoder component.
//
// All operations are static and keep no state. Objects and bytes belong to the caller and are only
// used during the call; whatever a store takes is its own copy.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Errors.h"
#include "platform/MetaData.h"
#include "zrcodecparser/Export.h"

namespace android {

class ZR_EXPORT MediaCodecHelper {
public:
    // Turns an HEVC decoder configuration record (ISO/IEC 14496-15 8.3.3.1.2) into the stream of
    // its VPS, SPS and PPS units and stores that under the key 'hcsd' with the type 'hvcc'. Each
    // unit stands behind as many bytes as the record's NAL unit lengths have: 00 00 00 01 for 4, 00
    // 00 01 for 3, zeros for 1 and 2. Where the record ends too early, its bytes read as zero.
    //
    // Returns 0; -1 when there is no such unit; -1007 when the record is shorter than 23 bytes, its
    // version is not 1, or the stream would exceed 1024 bytes. Nothing is stored but on 0.
    static status_t parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                               size_t size);
};

}  // namespace android
