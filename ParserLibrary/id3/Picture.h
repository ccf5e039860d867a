// The picture in a frame.

#pragma once

#include "Helper/base/ByteReader.h"

namespace android::id3 {

using base::Bytes;

enum class PictureFault {
    kNone,
    kMime,         // the MIME type has no end
    kPictureType,  // nothing stands behind the picture type
    kDescription,  // the description has no end, or nothing stands behind it
    kUnnamed,      // some other fault
};

struct Picture {
    PictureFault fault;
    const char* mimeType;  // null unless known; stands in the frame or is constant
    Bytes data{};          // in the frame
};

Picture readApic(Bytes frameData);  // ID3v2.4 4.14
Picture readPic(Bytes frameData);   // ID3v2.2 4.15

}  // namespace android::id3
