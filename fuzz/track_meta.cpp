// Input: the device, the track's kind and codec, seven 32-bit fields (big-endian), a language;
// behind its zero byte the codecs for whose types the device has decoders besides.
//
// Aims at Helper/MediaExtractorHelper/TrackMeta, Helper/MediaExtractorHelper/CodecSupport,
// Helper/MediaExtractorHelper/DecoderQuery, Helper/MediaExtractorHelper/LegacyBridge,
// Helper/vocabulary/CodecTable.

#include "Fuzz.h"
#include "Helper/vocabulary/CodecTable.h"
#include "zrcodecparser/MetaKeys.h"
#include "zrcodecparser/TrackInfo.h"

using android::TrackInfo;
using fuzz::Format;
using fuzz::helper;

namespace {

std::vector<std::string> lookedUp;

bool has(const std::vector<std::string>& texts, const std::string& text) {
    return std::ranges::find(texts, text) != texts.end();
}

android::host::Device deviceOf(uint32_t flags, fuzz::Bytes codecs) {
    android::host::Device device;
    if (flags & 1) device = android::host::typicalPhone();
    for (const uint8_t byte : codecs) {
        const auto* row = android::findCodecRow(byte / 2 + (byte / 2 < 64 ? 100 : 137));
        if (row == nullptr) continue;
        const bool first = byte % 2 == 0 || row->alternative == nullptr;
        device.decoders.push_back(first ? row->primary : row->alternative);
    }
    device.onLookUp = [](const std::string& type) { lookedUp.push_back(type); };
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
    const uint32_t code = fuzz::take(input, 2);
    info.codecType = code < 0x200 || code >= 0xF000 ? code : 100 + code % 135;
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

bool isAudio(int code) {
    return code >= 200 && code <= 234;
}

// Whether the device was asked for a decoder: for at most two types, the later of them the answer.
bool wasFound(const android::host::Device& device) {
    REQUIRE(lookedUp.size() <= 2);
    return !lookedUp.empty() && has(device.decoders, lookedUp.back());
}

// By what was looked up, the type is that, or says that there is no decoder, or is one of the
// exceptions that the header names.
void checkChoice(int code, const android::host::Device& device, bool reachable) {
    const Format format;
    lookedUp.clear();
    if (fuzz::endsFatally([&] { helper->SupportCodecEx(code, format.get(), true); })) {
        REQUIRE(!device.codecInfoAvailable && wasFound(device));
        return;
    }
    const std::string refusal =
            isAudio(code) || code == 200 ? "audio/notsupport" : "video/notsupport";
    const bool known = (code > 100 && code < 132) || (code > 200 && code < 235);
    if (!known) {
        REQUIRE(lookedUp.empty() && format.string("mime") == refusal);
        return;
    }
    REQUIRE(!reachable || !lookedUp.empty());
    if (format.keys().empty()) return;
    const std::string mime = format.string("mime");
    const bool offered = code == 101 || code == 204 || code == 233 || code == 234;
    const bool isDivx = code >= 123 && code <= 125;
    if (wasFound(device) || offered) {
        const bool renamed = mime == "audio/notsupport" ||
                             (code == 107 && mime == "video/x-ms-wmv7") ||
                             (code == 219 && mime == "audio/mpeg");
        REQUIRE(mime == lookedUp.back() || renamed);
    } else {
        const bool isMpeg4 = isDivx && device.divxAlternative.value_or(false);
        REQUIRE(mime == (isMpeg4 ? "video/mp4v-es" : refusal));
    }
}

// Older parsers get the same type where they are offered the codec at all.
void checkBridge(int code, const android::host::Device& device, bool reachable) {
    constexpr int kOffered[] = {101, 102, 104, 119, 129, 201, 202,
                                203, 204, 205, 206, 219, 225, 232};
    android::MetaDataBase meta;
    lookedUp.clear();
    const int32_t status = helper->SupportCodecEx(code, meta);
    const char* mime = nullptr;
    REQUIRE(meta.findCString(android::kZreKeyMime, &mime));
    const bool isRefusal = std::string(mime).ends_with("/notsupport");
    const bool found = wasFound(device) || code == 101 || code == 204;
    const bool isOffered = reachable && found && std::ranges::count(kOffered, code) != 0;
    REQUIRE(isRefusal == !isOffered && (status == 0 || !reachable));
    const bool audio = isAudio(code) || code == 200;
    REQUIRE(std::string(mime).starts_with(audio ? "audio/" : "video/"));
    REQUIRE(!isOffered || mime == lookedUp.back() || code == 219);
}

// Of a track's format older parsers get its type, width and height.
void checkMeta(const Format& format) {
    android::MetaDataBase meta;
    REQUIRE(helper->convertZRAMediaFormatToMeta(format.get(), &meta) == 0);
    const std::string keys = ' ' + format.keys();
    const char* mime = nullptr;
    const bool hasMime = meta.findCString(android::kZreKeyMime, &mime);
    REQUIRE(hasMime == (keys.find(" mime ") != keys.npos));
    REQUIRE(!hasMime || format.string("mime") == mime);
    for (const auto& [key, code] :
         {std::pair("width", android::kZreKeyWidth), std::pair("height", android::kZreKeyHeight)}) {
        int32_t value = 0;
        REQUIRE(meta.findInt32(code, &value) == keys.starts_with(" max-input-size width "));
        REQUIRE(keys.find(key) == keys.npos || format.int32(key) == value);
    }
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
    const std::string text(data, data + size);
    // The language is what the fields leave over, up to its first zero byte.
    const char* language = size > 32 ? text.c_str() + 32 : nullptr;
    const size_t behind = language != nullptr ? 33 + std::strlen(language) : size;
    const auto device = deviceOf(flags, fuzz::Bytes(data, size).subspan(std::min(behind, size)));
    android::host::setDevice(device);
    TrackInfo info = trackOf(input, language);

    const Format format;
    int32_t status = -1;
    lookedUp.clear();
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
    checkMeta(format);
    checkChoice(static_cast<int>(info.codecType), device, reachable);
    checkBridge(static_cast<int>(info.codecType), device, (flags & (4 | 8 | 16)) == 0);
    return 0;
}
