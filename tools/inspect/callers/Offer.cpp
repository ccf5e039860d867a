#include "inspect/callers/Offer.h"

#include <cstring>

#include "inspect/callers/Format.h"
#include "inspect/callers/Hooks.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

const char* orNull(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

TrackInfo::Video videoInfo(const Stream& stream, bool hasWholeFrames) {
    return {.width = stream.video.width,
            .height = stream.video.height,
            .bitRate = stream.bitRate,
            .frameRate = stream.video.frameRate,
            .hasSyncFrame = hasWholeFrames};
}

TrackInfo::Audio audioInfo(const Stream& stream) {
    TrackInfo::Audio info{};
    info.channelCount = stream.audio.channelCount;
    info.sampleRate = stream.audio.sampleRate;
    info.bitsPerSample = stream.audio.bitsPerSample;
    info.bitRate = stream.bitRate;
    info.blockAlign = stream.audio.blockAlign;
    info.language = orNull(stream.language);
    std::memcpy(info.codecDelay, &stream.audio.codecDelayNs, sizeof info.codecDelay);
    std::memcpy(info.seekPreRoll, &stream.audio.seekPreRollNs, sizeof info.seekPreRoll);
    return info;
}

TrackInfo::Text textInfo(const Stream& stream) {
    return {.isBitmapSubtitle = stream.text.isBitmap,
            .isUnsupportedBitmap = stream.text.isUnsupportedBitmap,
            .bitmapLanguage = orNull(stream.language),
            .textLanguage = stream.language.empty() ? "und" : stream.language.c_str()};
}

// Without its messages: they would be the same again.
std::optional<std::string> typeOffered(const Stream& stream, host::Device device) {
    device.codecInfoAvailable = true;  // its absence would be fatal
    const OnDevice scope(std::move(device));
    const LogSink silence(LogSink::drop);
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const Format format;
    helper->SupportCodecEx(static_cast<int>(stream.codecType), format.get(), false);
    if (format.mime() == nullptr || isNotSupported(format.mime())) return {};
    return format.mime();
}

// What it looks up for the codec where it finds nothing.
std::set<std::string> lookedUp(const Stream& stream, host::Device device) {
    std::set<std::string> mimes;
    device.decoders.clear();
    device.onLookUp = [&mimes](const std::string& mime) { mimes.insert(mime); };
    typeOffered(stream, std::move(device));
    return mimes;
}

}  // namespace

TrackInfo trackInfo(const Stream& stream, bool hasWholeFrames) {
    TrackInfo info{};
    info.codecType = stream.codecType;
    switch (stream.kind) {
        case Kind::kVideo:
            info.trackType = kTrackTypeVideo;
            info.video = videoInfo(stream, hasWholeFrames);
            break;
        case Kind::kAudio:
            info.trackType = kTrackTypeAudio;
            info.audio = audioInfo(stream);
            break;
        default:
            info.trackType = kTrackTypeText;
            info.text = textInfo(stream);
            break;
    }
    return info;
}

Offer offerOf(const Stream& stream, bool hasWholeFrames, const host::Device& device) {
    Offer offer;
    host::Device heard = device;
    heard.onLookUp = [&offer](const std::string& mime) { offer.asked.push_back(mime); };
    const OnDevice scope(std::move(heard));
    const LogSink sink([&offer](const host::LogLine& line) { offer.log.push_back(line); });
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const Format format;
    TrackInfo info = trackInfo(stream, hasWholeFrames);
    try {
        helper->setTrackMeta(&info, format.get(), !hasWholeFrames);
    } catch (const LibraryFatal& fatal) {
        offer.fatal = fatal.what();
    }
    if (format.mime() != nullptr) offer.mime = format.mime();
    return offer;
}

bool isNotSupported(std::string_view mime) {
    return mime == ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED ||
           mime == ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED;
}

std::set<std::string> decodersThatHelp(const Stream& stream, const host::Device& device) {
    std::set<std::string> mimes = lookedUp(stream, device);
    std::erase_if(mimes, [&](const std::string& mime) {
        host::Device other = device;
        other.decoders = {mime};
        return !isOffered(stream, other);
    });
    return mimes;
}

bool isOffered(const Stream& stream, const host::Device& device) {
    return typeOffered(stream, device).has_value();
}

std::set<std::string> knownDecoders() {
    std::set<std::string> mimes;
    for (uint32_t code = kCodecTypeMpeg2; code <= kCodecTypeMpegHMhm1; code++) {
        Stream stream;
        stream.codecType = code;
        mimes.merge(lookedUp(stream, {}));
    }
    return mimes;
}

}  // namespace inspect
