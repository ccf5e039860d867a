// A device's own codec list, as far as codec selection needs it: services go by another text type
// than the stand-in's, and so have another look-up.

#pragma once

#include <sys/types.h>

#include "platform/Errors.h"
#include "platform/RefBase.h"

namespace android {

struct MediaCodecInfo : RefBase {
    virtual const char* getCodecName() const = 0;
};

struct IMediaCodecList : RefBase {
    virtual ssize_t findCodecByType(const char* mime, bool encoder, size_t startIndex) const = 0;
    virtual sp<MediaCodecInfo> getCodecInfo(size_t index) const = 0;
};

struct MediaCodecList {
    static sp<IMediaCodecList> getInstance();
};

struct IMediaPlayerService : RefBase {
    virtual sp<IMediaCodecList> getCodecList() const = 0;
};
sp<IMediaPlayerService> mediaPlayerService();

}  // namespace android
