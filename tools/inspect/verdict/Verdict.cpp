#include "inspect/verdict/Verdict.h"

#include <algorithm>
#include <array>
#include <set>

#include "inspect/callers/Offer.h"
#include "inspect/devices/Judge.h"
#include "inspect/devices/Profiles.h"
#include "inspect/media/CodecMap.h"
#include "platform/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace android;

// The library's own names for the decoders that the maker of a device adds in software.
constexpr auto kSoftwareMimes = std::to_array<std::string_view>({
        ZRE_MEDIA_MIMETYPE_AUDIO_QCELP_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_EVRC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_FLAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_ALAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_AAC_ZRSW,
        ZRE_MEDIA_MIMETYPE_AUDIO_MPEG_ZRSW,
});

template <typename List>
std::string joined(const List& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

bool hasNoCode(const Stream& stream) {
    return stream.codecType == kCodecTypeNoVideo || stream.codecType == kCodecTypeNoAudio ||
           stream.codecType == kNoSubtitleCodec;
}

std::vector<std::string> complaints(const Offer& offer) {
    std::vector<std::string> texts;
    for (const host::LogLine& line : offer.log) {
        if (line.priority >= ANDROID_LOG_WARN) texts.push_back(line.text);
    }
    return texts;
}

bool hasDecoder(const PretendedDevice& device, const std::string& mime) {
    return std::ranges::count(device.host.decoders, mime) > 0;
}

// "AVC High 10, level 4.0"
std::string askedOf(const Refusal& refusal) {
    std::vector<std::string> asked;
    for (const Shortfall& each : refusal.judgement.beyond) asked.push_back(each.asked);
    return listed(asked);
}

std::vector<Step> chainOf(const Stream& stream, const Offer& offer, const PretendedDevice& device) {
    std::vector<Step> chain = {
            {stream.codec,
             hasNoCode(stream) ? "no codec code" : "code " + std::to_string(stream.codecType)}};
    for (const std::string& mime : offer.asked) {
        Step step = {"asks for " + mime, hasDecoder(device, mime) ? "found" : "none"};
        if (chain.back() != step) chain.push_back(std::move(step));
    }
    for (const std::string& text : complaints(offer)) chain.push_back({"logs", text});
    chain.push_back({"stores", offer.mime.value_or("no MIME type")});
    return chain;
}

// "audio/x-ms-wma" and "audio/wma" are near, and makers use both.
std::string plainType(std::string_view mime) {
    std::string plain;
    for (const char c : mime.substr(std::min(mime.find('/') + 1, mime.size()))) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            plain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (plain == "x" || plain == "vnd" || plain == "ms" || plain == "zr") {
            plain.clear();
        }
    }
    return plain;
}

// Types that the device decodes and the library never asks for, though their names say the same.
std::set<std::string> nearTypes(const std::set<std::string>& wanted,
                                const PretendedDevice& device) {
    std::set<std::string> near;
    for (const std::string& mime : device.host.decoders) {
        const std::string plain = plainType(mime);
        if (plain.empty()) continue;
        for (const std::string& each : wanted) {
            const std::string other = plainType(each);
            const bool isNear = plain.starts_with(other) || other.starts_with(plain);
            if (isNear && mime.substr(0, 5) == each.substr(0, 5) && mime != each) near.insert(mime);
        }
    }
    return near;
}

bool isOfferedWithDivx(const Stream& stream, const PretendedDevice& device) {
    host::Device other = device.host;
    other.divxAlternative = true;
    return isOffered(stream, other);
}

std::string whatHelps(const Stream& stream, const std::set<std::string>& wanted,
                      const PretendedDevice& device) {
    const std::string decoder = "a decoder for " + joined(wanted, " or ");
    return isOfferedWithDivx(stream, device) ? "its DivX alternative switched on, or " + decoder
                                             : decoder;
}

std::string whyNoDecoder(const Stream& stream, const std::set<std::string>& wanted,
                         const PretendedDevice& device) {
    std::string text = "the device has no decoder for " + joined(wanted, " or ");
    if (isOfferedWithDivx(stream, device)) text += ", and its DivX alternative is off";
    const std::set<std::string> near = nearTypes(wanted, device);
    if (!near.empty()) {
        text += "; it has one for " + joined(near, ", ") + ", for which the library does not ask";
    }
    for (const Decoder& each : device.description.decoders) {
        const auto isIt = [&](const std::string& mime) { return isSameMime(mime, each.type); };
        if (!each.whyIgnored.empty() && std::ranges::any_of(wanted, isIt)) {
            text += "; " + sentence({&each, {}});
        }
    }
    const auto& missing = device.description.missingFiles;
    if (!missing.empty())
        text += "; files of its description are missing: " + joined(missing, ", ");
    return text;
}

// Of a track of whose type the device has decoders.
Verdict chosen(const std::string& mime, const TrackFacts& facts, const PretendedDevice& device) {
    const Choice choice = chooseDecoder(facts, mime, device.description.decoders);
    Verdict verdict;
    std::vector<std::string> reasons;
    for (const Refusal& each : choice.refused) {
        verdict.chain.push_back({each.decoder->name, sentence(each)});
        if (each.decoder->whyIgnored.empty()) reasons.push_back(sentence(each));
    }
    if (choice.taken == nullptr) {
        verdict.play = Play::kBeyondDecoder;
        verdict.reason = "beyond the decoder: " + joined(reasons, "; ");
        verdict.lack = "a decoder for " + mime + " that takes " + askedOf(choice.refused.front());
        return verdict;
    }
    const Decoder& taken = *choice.taken;
    const bool inSoftware = taken.isSoftware || std::ranges::count(kSoftwareMimes, mime) > 0;
    verdict.play = inSoftware ? Play::kPlaysInSoftware : Play::kPlays;
    verdict.decoder = taken.name;
    verdict.bitRate = taken.limits.bitRate;
    verdict.notKnown = choice.judgement.unknown;
    if (!taken.remark.empty()) verdict.notKnown.push_back(taken.remark);
    verdict.chain.push_back({taken.name, "takes it"});
    return verdict;
}

Verdict because(Play play, std::string reason, std::string lack = {}) {
    Verdict verdict;
    verdict.play = play;
    verdict.reason = std::move(reason);
    verdict.lack = std::move(lack);
    return verdict;
}

// Of a track that the library does not offer.
Verdict notOffered(const Stream& stream, const Offer& offer, const PretendedDevice& device) {
    if (hasNoCode(stream)) {
        return because(Play::kNotSupported,
                       "no codec code of the library stands for " + stream.codec);
    }
    if (!offer.mime) {
        const std::vector<std::string> texts = complaints(offer);
        const char* what = device.host.mediaServerAlive ? "has no codec list" : "does not answer";
        return because(Play::kNoDecoder,
                       std::string("the device's media server ") + what +
                               ", so no MIME type is stored; the library says: " +
                               (texts.empty() ? "nothing" : texts.front()),
                       "a media server that answers with its codec list");
    }
    if (stream.kind == Kind::kText) {
        return because(Play::kNotSupported, "subtitles of this kind cannot be shown");
    }
    const std::set<std::string> wanted = decodersThatHelp(stream, device.host);
    if (wanted.empty()) {
        return because(Play::kNotSupported,
                       "the library does not offer this codec, whatever decoders there are");
    }
    return because(Play::kNoDecoder, whyNoDecoder(stream, wanted, device),
                   whatHelps(stream, wanted, device));
}

std::string words(const Protection& protection) {
    const std::string key = protection.keyId.empty() ? "" : ", key " + protection.keyId;
    return "encrypted: " + protection.scheme + key;
}

Verdict withoutChain(const Stream& stream, const Offer& offer, const TrackFacts& facts,
                     const TrackFaults& faults, const PretendedDevice& device) {
    if (stream.protection) return because(Play::kEncrypted, words(*stream.protection));
    // Broken codec data can make the samples unreadable.
    if (!stream.nothingReadable.empty() && faults.brokenData.empty()) {
        return because(Play::kNothingReadable, stream.nothingReadable);
    }
    const std::string& fatal = offer.fatal.empty() ? faults.endsProcess : offer.fatal;
    if (!fatal.empty()) {
        return because(Play::kEndsProcess, "the library would end the process: " + fatal);
    }
    if (!faults.brokenData.empty())
        return because(Play::kCodecDataBroken, "no decoder can start: " + faults.brokenData);
    if (!offer.mime || isNotSupported(*offer.mime)) return notOffered(stream, offer, device);
    if (stream.kind == Kind::kText) return because(Play::kPlays, "");
    if (hasDecoder(device, *offer.mime)) return chosen(*offer.mime, facts, device);
    return because(Play::kOfferedWithoutDecoder,
                   "the library offers it whatever the device has, but there is no decoder for " +
                           *offer.mime,
                   "a decoder for " + *offer.mime);
}

}  // namespace

std::string nameOf(const Stream& stream) {
    return std::string(toString(stream.kind)) + " track " + std::to_string(stream.index);
}

std::string_view toString(Play play) {
    switch (play) {
        case Play::kPlays: return "plays";
        case Play::kPlaysInSoftware: return "plays-in-software";
        case Play::kBeyondDecoder: return "beyond-decoder";
        case Play::kOfferedWithoutDecoder: return "offered-without-decoder";
        case Play::kNoDecoder: return "no-decoder";
        case Play::kNotSupported: return "not-supported";
        case Play::kEncrypted: return "encrypted";
        case Play::kCodecDataBroken: return "codec-data-broken";
        case Play::kNothingReadable: return "nothing-readable";
        case Play::kEndsProcess: return "ends-process";
    }
    return "";
}

bool plays(Play play) {
    return play == Play::kPlays || play == Play::kPlaysInSoftware;
}

Verdict judge(const Stream& stream, bool hasWholeFrames, const TrackFacts& facts,
              const TrackFaults& faults, const PretendedDevice& device) {
    const Offer offer = offerOf(stream, hasWholeFrames, device.host);
    Verdict verdict = withoutChain(stream, offer, facts, faults, device);
    const std::vector<Step> chain = chainOf(stream, offer, device);
    verdict.chain.insert(verdict.chain.begin(), chain.begin(), chain.end());
    return verdict;
}

std::string_view toString(FilePlay play) {
    switch (play) {
        case FilePlay::kPlays: return "plays";
        case FilePlay::kPlaysInPart: return "plays-in-part";
        case FilePlay::kDoesNotPlay: return "does-not-play";
        case FilePlay::kNoParser: return "no-parser";
        case FilePlay::kUnreadable: return "unreadable";
    }
    return "";
}

FileVerdict judge(const Container& container, std::span<const JudgedTrack> tracks) {
    if (container.fileKind == 0 && container.mime == nullptr) {
        return {FilePlay::kNoParser, "no container parser reads this kind of file"};
    }
    FileVerdict result;
    bool hasPicturesOrSound = false;
    bool hasOneThatPlays = false;
    std::vector<std::string> lost;
    std::set<std::string> decoders;
    for (const auto& [stream, facts, verdict] : tracks) {
        if (stream->kind == Kind::kOther) {
            const std::string& why = stream->nothingReadable;
            if (!why.empty()) lost.push_back(nameOf(*stream) + ": " + why);
            continue;
        }
        const bool isMain = stream->kind != Kind::kText;
        hasPicturesOrSound |= isMain;
        result.chain.push_back({nameOf(*stream), std::string(toString(verdict->play))});
        if (plays(verdict->play)) {
            hasOneThatPlays |= isMain;
            if (!verdict->decoder.empty()) decoders.insert(verdict->decoder);
        } else {
            lost.push_back(nameOf(*stream) + ": " + verdict->reason);
        }
    }
    const bool isWhole = hasOneThatPlays && lost.empty();
    const FilePlay playing = isWhole ? FilePlay::kPlays : FilePlay::kPlaysInPart;
    result.play = hasOneThatPlays ? playing : FilePlay::kDoesNotPlay;
    result.reason = (result.play == FilePlay::kPlaysInPart ? "lost: " : "") + joined(lost, "; ");
    if (!hasPicturesOrSound) result.reason = "it has neither video nor audio";
    result.decoder = joined(decoders, ", ");
    return result;
}

}  // namespace inspect
