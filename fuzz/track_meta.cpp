// Input: the device, the track's kind and codec, seven 32-bit fields (big-endian), a language.

#include "Fuzz.h"
#include "zrcodecparser/TrackInfo.h"

using android::TrackInfo;
using fuzz::Format;
using fuzz::helper;

namespace {

android::host::Device deviceOf(uint32_t flags) {
    android::host::Device device;
    if (flags & 1) device = android::host::typicalPhone();
    if (flags & 2) device.decoders.push_back("audio/x-zr-evrc");
    device.mediaServerAlive = !(flags & 4);
    device.serverHasCodecList = !(flags & 8);
    device.codecListAvailable = !(flags & 16);
    device.codecInfoAvailable = !(flags & 32);
    if (flags & 64) device.divxAlternative = (flags & 128) != 0;
    return device;
}

TrackInfo trackOf(fuzz::Bytes& input, const char* language) {
    TrackInfo info{};
    info.trackType = fuzz::take(input, 1) % 5;
    info.codecType = fuzz::take(input, 2);
    uint32_t fields[7];
    for (uint32_t& field : fields) field = fuzz::take(input, 4);
    if (info.trackType == android::kTrackTypeVideo) {
        info.video = {fields[0], fields[1], fields[2], fields[3], fields[4]};
    } else if (info.trackType == android::kTrackTypeAudio) {
        info.audio = {};
        info.audio.channelCount = fields[0];
        info.audio.sampleRate = fields[1];
        info.audio.bitsPerSample = fields[2];
        info.audio.bitRate = fields[3];
        info.audio.blockAlign = static_cast<uint16_t>(fields[4]);
        info.audio.language = language;
        std::memcpy(info.audio.codecDelay, &fields[5], 8);
    } else if (info.trackType == android::kTrackTypeText) {
        info.text = {fields[0], fields[1], language, language};
    }
    return info;
}

std::string videoKeys(const TrackInfo::Video& video) {
    return std::string("max-input-size width height stride slice-height bitrate ") +
           (video.hasSyncFrame ? "exist-sync-frame " : "") + (video.frameRate ? "frame-rate " : "");
}

std::string audioKeys(const TrackInfo::Audio& audio, uint32_t codecType) {
    return std::string(
                   "max-input-size real-sample-rate real-sample-bits sample-rate channel-count "
                   "bitrate ") +
           (codecType == 222 ? "csd-0 " : "") +
           (audio.bitsPerSample ? "bits-per-sample Sample-Bits pcm-encoding " : "") +
           "wma-bits-per-sample wma-block-align wma-vir-pkt-size " +
           (codecType == 228 ? "csd-1 csd-2 " : "") + "language ";
}

// Behind the track's own keys stand the MIME type and at most two keys of its codec; or nothing,
// when the device's codecs cannot be asked for.
void checkMime(const Format& format, const std::string& trackKeys, bool reachable) {
    std::string keys = format.keys();
    REQUIRE(keys.starts_with(trackKeys));
    keys.erase(0, trackKeys.size());
    if (keys.empty()) {
        REQUIRE(!reachable && helper->getCodecType(format.get()) == 0x7fffffff);
        return;
    }
    REQUIRE(keys == "mime " || keys == "mime use-arbitrary-mode " || keys == "mime Layer-info " ||
            keys == "mime divx-version use-arbitrary-mode " ||
            keys == "mime wma-version wma-format-tag ");
    const int32_t code = helper->getCodecType(format.get());
    REQUIRE(code == 200 || (code > 200 && format.string("mime").starts_with("audio/")));
}

void checkFileMeta(int kind) {
    const Format format;
    const bool known = kind >= 300 && kind <= 309;
    REQUIRE(helper->setFileMeta(kind, format.get()) == (known ? 0 : -10000));
    REQUIRE(format.keys() == (known ? "mime " : ""));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Bytes input(data, size);
    const uint32_t flags = fuzz::take(input, 1);
    android::host::setDevice(deviceOf(flags));
    const std::string text(data, data + size);
    // The language is what the fields leave over, up to its first zero byte.
    const char* language = size > 32 ? text.c_str() + 32 : nullptr;
    TrackInfo info = trackOf(input, language);

    const Format format;
    int32_t status = -1;
    const bool fatal = fuzz::endsFatally(
            [&] { status = helper->setTrackMeta(&info, format.get(), (flags & 1) != 0); });
    REQUIRE(fatal ? (flags & 32) != 0 : status == 0);
    const bool reachable = (flags & (4 | 8 | 16 | 32)) == 0;
    switch (info.trackType) {
        case android::kTrackTypeVideo: checkMime(format, videoKeys(info.video), reachable); break;
        case android::kTrackTypeAudio:
            checkMime(format, audioKeys(info.audio, info.codecType), reachable);
            break;
        case android::kTrackTypeText:
            REQUIRE(format.keys() == "max-input-size mime " ||
                    (language && format.keys() == "max-input-size language mime "));
            break;
        default: REQUIRE(format.keys() == "mime " && format.string("mime") == "audio/notsupport");
    }
    const bool described = info.trackType >= 1 && info.trackType <= 3;
    REQUIRE((helper->getMaxInputBuffer(format.get()) != 0) == described);
    checkFileMeta(static_cast<int>(info.codecType));
    return 0;
}
