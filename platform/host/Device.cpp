#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

#include "platform/CodecList.h"
#include "platform/Features.h"
#include "platform/Host.h"

namespace android {
namespace {

struct DeviceState {
    std::mutex mutex;
    std::shared_ptr<const host::Device> device =
            std::make_shared<const host::Device>(host::typicalPhone());
};

// Never destroyed: a program's static objects may use the library from their destructors.
DeviceState& state() {
    static auto& instance = *new DeviceState;
    return instance;
}

std::shared_ptr<const host::Device> currentDevice() {
    const std::lock_guard lock(state().mutex);
    return state().device;
}

class HostCodecInfo : public MediaCodecInfo {
public:
    explicit HostCodecInfo(const std::string& mime) : mName("host.decoder." + mime) {}
    const char* getCodecName() const override { return mName.c_str(); }

private:
    std::string mName;
};

// Answers for decoders only: the pretended device encodes nothing.
class HostCodecList : public IMediaCodecList {
public:
    ssize_t findCodecByType(const char* mime, bool encoder, size_t startIndex) const override {
        const auto& decoders = mDevice->decoders;
        if (!encoder && mDevice->onLookUp) mDevice->onLookUp(mime);
        if (encoder || startIndex > decoders.size()) return -1;
        const auto first = decoders.begin() + static_cast<ssize_t>(startIndex);
        const auto found = std::find(first, decoders.end(), mime);
        return found == decoders.end() ? -1 : found - decoders.begin();
    }

    sp<MediaCodecInfo> getCodecInfo(size_t index) const override {
        if (!mDevice->codecInfoAvailable || index >= mDevice->decoders.size()) return nullptr;
        return new HostCodecInfo(mDevice->decoders[index]);
    }

private:
    std::shared_ptr<const host::Device> mDevice = currentDevice();
};

class HostPlayerService : public IBinder {};

class HostPlayerInterface : public IMediaPlayerService {
public:
    sp<IMediaCodecList> getCodecList() const override {
        if (!currentDevice()->serverHasCodecList) return nullptr;
        return new HostCodecList;
    }
};

class HostServiceManager : public IServiceManager {
public:
    sp<IBinder> getService(const char* name) const override {
        if (std::strcmp(name, "media.player") != 0 || !currentDevice()->mediaServerAlive)
            return nullptr;
        return new HostPlayerService;
    }
};

}  // namespace

sp<IServiceManager> defaultServiceManager() {
    return new HostServiceManager;
}

sp<IMediaPlayerService> IMediaPlayerService::asInterface(const sp<IBinder>& service) {
    if (service == nullptr) return nullptr;
    return new HostPlayerInterface;
}

sp<IMediaPlayerService> mediaPlayerService() {
    return IMediaPlayerService::asInterface(defaultServiceManager()->getService("media.player"));
}

sp<IMediaCodecList> MediaCodecList::getInstance() {
    if (!currentDevice()->codecListAvailable) return nullptr;
    return new HostCodecList;
}

namespace host {

Device typicalPhone() {
    Device device;
    device.decoders = {
            "audio/mp4a-latm", "audio/mpeg",      "audio/3gpp",          "audio/amr-wb",
            "audio/g711-alaw", "audio/g711-mlaw", "audio/vorbis",        "audio/opus",
            "audio/flac",      "audio/raw",       "video/avc",           "video/hevc",
            "video/mp4v-es",   "video/3gpp",      "video/x-vnd.on2.vp8", "video/x-vnd.on2.vp9",
            "video/av01",
    };
    return device;
}

Device setDevice(Device device) {
    auto next = std::make_shared<const Device>(std::move(device));
    const std::lock_guard lock(state().mutex);
    state().device.swap(next);
    return *next;
}

}  // namespace host
}  // namespace android

namespace com::zre::config {

std::optional<bool> Features2::enable_divx_alternative() {
    return android::currentDevice()->divxAlternative;
}

}  // namespace com::zre::config
