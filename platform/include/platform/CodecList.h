// Which codecs the device offers: a service hands out the list, and says whether it is alive.

#pragma once

#include <sys/types.h>

#include "platform/Errors.h"
#include "platform/RefBase.h"

namespace android {

class IBinder : public RefBase {};

class IServiceManager : public RefBase {
public:
    // Null when there is no service of that name.
    virtual sp<IBinder> getService(const char* name) const = 0;
};

sp<IServiceManager> defaultServiceManager();

class MediaCodecInfo : public RefBase {
public:
    virtual const char* getCodecName() const = 0;
};

class IMediaCodecList : public RefBase {
public:
    // The index of the first codec at or after startIndex that handles the MIME type, or a negative
    // value.
    virtual ssize_t findCodecByType(const char* mime, bool encoder, size_t startIndex) const = 0;
    // Null when there is no information about that codec.
    virtual sp<MediaCodecInfo> getCodecInfo(size_t index) const = 0;
};

class MediaCodecList {
public:
    static sp<IMediaCodecList> getInstance();  // null when it cannot be had
};

class IMediaPlayerService : public RefBase {
public:
    static sp<IMediaPlayerService> asInterface(const sp<IBinder>& service);  // null for null
    virtual sp<IMediaCodecList> getCodecList() const = 0;
};

// The media player service, or null when it does not answer. The way to ask for it: devices name
// their services by text types of their own.
sp<IMediaPlayerService> mediaPlayerService();

}  // namespace android
