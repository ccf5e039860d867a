#include "inspect/callers/OtherDevices.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "inspect/callers/Format.h"
#include "inspect/callers/Hooks.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

// Silent questions; the device and the log sink come back afterwards.
class OtherDevice {
public:
    explicit OtherDevice(host::Device device) : mDevice(std::move(device)) {}
    ~OtherDevice() { host::setDevice(mDevice); }
    OtherDevice(const OtherDevice&) = delete;
    OtherDevice& operator=(const OtherDevice&) = delete;

    bool offers(uint32_t codecType, host::Device other) const {
        other.codecInfoAvailable = true;  // its absence would be fatal
        host::setDevice(std::move(other));
        const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
        const Format format;
        helper->SupportCodecEx(static_cast<int>(codecType), format.get(), false);
        return format.mime() != nullptr && !isNotSupported(format.mime());
    }

private:
    host::Device mDevice;
    LogSink mSilence{LogSink::drop};
};

// Adds what the library looks up for the codec where it finds nothing.
void addLookedUp(uint32_t codecType, const OtherDevice& other, host::Device device,
                 std::set<std::string>& mimes) {
    device.decoders.clear();
    device.onLookUp = [&mimes](const std::string& mime) { mimes.insert(mime); };
    other.offers(codecType, std::move(device));
}

host::Device withDecoders(host::Device device, std::vector<std::string> decoders) {
    device.decoders = std::move(decoders);
    return device;
}

}  // namespace

bool isNotSupported(std::string_view mime) {
    return mime == ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED ||
           mime == ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED;
}

std::vector<std::string> decodersThatHelp(uint32_t codecType, const host::Device& device) {
    const OtherDevice other(device);
    std::set<std::string> lookedUp;
    addLookedUp(codecType, other, device, lookedUp);
    std::vector<std::string> found;
    std::ranges::copy_if(lookedUp, std::back_inserter(found), [&](const std::string& mime) {
        return other.offers(codecType, withDecoders(device, {mime}));
    });
    return found;
}

std::set<std::string> knownDecoders() {
    const OtherDevice other(host::typicalPhone());
    std::set<std::string> mimes;
    for (uint32_t code = kCodecTypeMpeg2; code <= kCodecTypeMpegHMhm1; code++) {
        addLookedUp(code, other, {}, mimes);
    }
    return mimes;
}

bool isOfferedWithDivxAlternative(uint32_t codecType, const host::Device& device) {
    host::Device changed = device;
    changed.divxAlternative = true;
    return OtherDevice(device).offers(codecType, changed);
}

bool isOfferedWithoutDecoder(uint32_t codecType, const host::Device& device) {
    return OtherDevice(device).offers(codecType, withDecoders(device, {}));
}

}  // namespace inspect
