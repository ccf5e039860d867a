#include "inspect/callers/Verdict.h"

#include <algorithm>
#include <array>

#include "inspect/callers/OtherDevices.h"
#include "inspect/media/CodecMap.h"
#include "platform/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace android;

constexpr auto kSoftwareMimes = std::to_array<std::string_view>({
        ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_FLAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_ZRSW,
});

std::string lastError(const std::vector<host::LogLine>& log) {
    for (auto line = log.rbegin(); line != log.rend(); ++line) {
        if (line->priority >= ANDROID_LOG_ERROR) return line->text;
    }
    return "nothing";
}

bool hasNoCode(const Stream& stream) {
    return stream.codecType == kCodecTypeNoVideo || stream.codecType == kCodecTypeNoAudio ||
           stream.codecType == kNoSubtitleCodec;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " or ") + word;
    return text;
}

std::string whyNot(const Stream& stream, const host::Device& device) {
    if (hasNoCode(stream)) return "no codec code of the library stands for " + stream.codec;
    if (stream.kind == Kind::kText) return "subtitles of this kind cannot be shown";
    const auto decoders = decodersThatHelp(stream.codecType, device);
    if (decoders.empty()) return "no decoder would make the library offer this codec";
    const bool alternative = isOfferedWithDivxAlternative(stream.codecType, device);
    return "the device has no decoder for " + joined(decoders) +
           (alternative ? ", and its DivX alternative is off" : "");
}

std::string remark(const Stream& stream, const std::string& mime, const host::Device& device) {
    if (stream.kind == Kind::kText || std::ranges::count(device.decoders, mime) > 0) return {};
    if (!isOfferedWithoutDecoder(stream.codecType, device)) return {};
    return "offered although the device has no decoder for " + mime;
}

}  // namespace

std::string_view toString(Play play) {
    switch (play) {
        case Play::kPlays: return "plays";
        case Play::kPlaysInSoftware: return "plays in software";
        case Play::kDoesNotPlay: return "does not play";
        case Play::kEndsProcess: return "the library would end the process";
    }
    return "";
}

Verdict judge(const Stream& stream, const char* mime, const std::vector<host::LogLine>& log,
              const host::Device& device) {
    if (mime == nullptr) {
        return {Play::kDoesNotPlay, "no MIME type stored; the library says: " + lastError(log)};
    }
    const std::string type = mime;
    if (isNotSupported(type)) return {Play::kDoesNotPlay, whyNot(stream, device)};
    const bool inSoftware = std::ranges::count(kSoftwareMimes, type) > 0;
    return {inSoftware ? Play::kPlaysInSoftware : Play::kPlays, remark(stream, type, device)};
}

}  // namespace inspect
