#include "inspect/callers/OtherDevices.h"

#include <algorithm>
#include <array>

#include "inspect/callers/Format.h"
#include "inspect/callers/Hooks.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

// Every type that a decoder can have.
constexpr auto kStreamMimes = std::to_array<const char*>({
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC,
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADIF,
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ADTS,
        ZRE_MEDIA_MIMETYPE_AUDIO_AC3,
        ZRE_MEDIA_MIMETYPE_AUDIO_ADPCM,
        ZRE_MEDIA_MIMETYPE_AUDIO_AMR_NB,
        ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB,
        ZRE_MEDIA_MIMETYPE_AUDIO_AMR_WB_PLUS,
        ZRE_MEDIA_MIMETYPE_AUDIO_DTS,
        ZRE_MEDIA_MIMETYPE_AUDIO_DTS_LBR,
        ZRE_MEDIA_MIMETYPE_AUDIO_EAC3,
        ZRE_MEDIA_MIMETYPE_AUDIO_EVRC,
        ZRE_MEDIA_MIMETYPE_AUDIO_FLAC,
        ZRE_MEDIA_MIMETYPE_AUDIO_G711_ALAW,
        ZRE_MEDIA_MIMETYPE_AUDIO_G711_MLAW,
        ZRE_MEDIA_MIMETYPE_AUDIO_G726,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_I,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_LAYER_II,
        ZRE_MEDIA_MIMETYPE_AUDIO_MSGSM,
        ZRE_MEDIA_MIMETYPE_AUDIO_QCELP,
        ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_FLAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_RA,
        ZRE_MEDIA_MIMETYPE_AUDIO_RAW,
        ZRE_MEDIA_MIMETYPE_AUDIO_VORBIS,
        ZRE_MEDIA_MIMETYPE_AUDIO_WMA,
        ZRE_MEDIA_MIMETYPE_AUDIO_WMA_VOICE,
        ZRE_MEDIA_MIMETYPE_AUDIO_OPUS,
        ZRE_MEDIA_MIMETYPE_AUDIO_MIDI,
        ZRE_MEDIA_MIMETYPE_AUDIO_ALAC,
        ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_DOP,
        ZRE_MEDIA_MIMETYPE_AUDIO_DSD,
        ZRE_MEDIA_MIMETYPE_AUDIO_AC4,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHA1,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEGH_MHM1,
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_ZRSW,
        ZRE_MEDIA_MIMETYPE_VIDEO_AVC,
        ZRE_MEDIA_MIMETYPE_VIDEO_AVCS,
        ZRE_MEDIA_MIMETYPE_VIDEO_DIVX,
        ZRE_MEDIA_MIMETYPE_VIDEO_DIVX311,
        ZRE_MEDIA_MIMETYPE_VIDEO_DIVX4,
        ZRE_MEDIA_MIMETYPE_VIDEO_H263,
        ZRE_MEDIA_MIMETYPE_VIDEO_HEVC,
        ZRE_MEDIA_MIMETYPE_VIDEO_MJPG,
        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG1,
        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2,
        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4,
        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4_DP,
        ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4ASP,
        ZRE_MEDIA_MIMETYPE_VIDEO_RAW,
        ZRE_MEDIA_MIMETYPE_VIDEO_RV,
        ZRE_MEDIA_MIMETYPE_VIDEO_THEORA,
        ZRE_MEDIA_MIMETYPE_VIDEO_WMV7,
        ZRE_MEDIA_MIMETYPE_VIDEO_WMV8,
        ZRE_MEDIA_MIMETYPE_VIDEO_WMV,
        ZRE_MEDIA_MIMETYPE_VIDEO_WMVS,
        ZRE_MEDIA_MIMETYPE_VIDEO_VP8,
        ZRE_MEDIA_MIMETYPE_VIDEO_VP9,
        ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4,
        ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V2,
        ZRE_MEDIA_MIMETYPE_VIDEO_MSMPEG4V3,
        ZRE_MEDIA_MIMETYPE_VIDEO_AV1,
        ZRE_MEDIA_MIMETYPE_VIDEO_DOLBY_VISION,
});

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
    std::vector<std::string> found;
    std::ranges::copy_if(kStreamMimes, std::back_inserter(found), [&](const char* mime) {
        return other.offers(codecType, withDecoders(device, {mime}));
    });
    return found;
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
