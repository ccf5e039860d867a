// Whether a sample can be decoded on its own, from its first bytes.

#pragma once

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

// MPEG-4 Visual: the first VOP is an I-VOP (ISO/IEC 14496-2 6.2.5, vop_coding_type). The byte
// behind the VOP start code must be there.
bool isMpeg4KeyFrame(Bytes sample);

// H.264: some slice is of an IDR picture (ITU-T H.264 Table 7-1, nal_unit_type 5). A NAL unit
// header that is the last byte of the sample is deliberately not looked at.
bool isAvcKeyFrame(Bytes sample);

enum class H263Picture {
    kNoPicture,  // the sample does not open with a picture start code
    kIntra,
    kInterPtype,             // not INTRA by bit 9 of PTYPE
    kInterPlusPtype,         // by MPPTYPE, without OPPTYPE before it
    kInterPlusPtypeOpptype,  // by MPPTYPE behind OPPTYPE
};

// H.263: the picture's coding type (ITU-T H.263 5.1.3 and 5.1.4). Missing bytes read as zero.
H263Picture h263Picture(Bytes sample);

}  // namespace android::csd
