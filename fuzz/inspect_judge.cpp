// Input: a list of MIME types up to a zero byte, whether to look for a fix, the numbers of a track,
// its codec data.

#include "Inspect.h"
#include "inspect/callers/Offer.h"
#include "inspect/devices/Judge.h"
#include "inspect/devices/MimeList.h"
#include "inspect/media/CodecMap.h"
#include "inspect/verdict/BrokenData.h"
#include "inspect/verdict/Fix.h"
#include "inspect/verdict/TrackFacts.h"
#include "inspect/verdict/Verdict.h"

namespace {

using namespace inspect;

constexpr AVCodecID kCodecs[] = {
        AV_CODEC_ID_H264,  AV_CODEC_ID_HEVC,   AV_CODEC_ID_VP9,        AV_CODEC_ID_AV1,
        AV_CODEC_ID_MPEG4, AV_CODEC_ID_H263,   AV_CODEC_ID_MPEG2VIDEO, AV_CODEC_ID_VP8,
        AV_CODEC_ID_AAC,   AV_CODEC_ID_OPUS,   AV_CODEC_ID_VORBIS,     AV_CODEC_ID_FLAC,
        AV_CODEC_ID_AC3,   AV_CODEC_ID_AMR_NB, AV_CODEC_ID_PCM_S16LE,  AV_CODEC_ID_SUBRIP};

Stream takeStream(fuzz::Bytes& data) {
    Stream stream;
    const uint32_t choice = fuzz::take(data, 1) % std::size(kCodecs);
    const AVCodecID codec = kCodecs[choice];
    stream.kind = choice < 8 ? Kind::kVideo : choice < 15 ? Kind::kAudio : Kind::kText;
    stream.codec = avcodec_get_name(codec);
    stream.codecType = codecTypeOf(codec, 0, 0);
    const auto profile = static_cast<int>(fuzz::take(data, 1));
    const auto level = static_cast<int>(fuzz::take(data, 1));
    if (profile < 255) stream.profile = profile;
    if (level < 255) stream.level = level;
    stream.bitRate = fuzz::take(data, 4);
    if (stream.kind == Kind::kVideo) {
        stream.video.width = fuzz::take(data, 2);
        stream.video.height = fuzz::take(data, 2);
        stream.video.averageFrameRate = fuzz::take(data, 2) / 64.0;
        stream.video.baseFrameRate = fuzz::take(data, 2) / 64.0;
        stream.video.bitDepth = fuzz::take(data, 1);
    } else if (stream.kind == Kind::kAudio) {
        stream.audio.channelCount = fuzz::take(data, 1);
        stream.audio.sampleRate = fuzz::take(data, 3);
    }
    if (!data.empty() && data[0] == 0xEE) stream.protection = Protection{"cenc", ""};
    stream.privateData.assign(data.begin(), data.end());
    return stream;
}

bool isIn(const std::optional<Range>& range, double value) {
    return !range ||
           (value >= static_cast<double>(range->from) && value <= static_cast<double>(range->to));
}

// What Judge.h says of sizes and rates, in the plainest form: a word for each that is beyond.
std::string beyond(const TrackFacts& facts, const Limits& limits) {
    std::string text;
    const auto check = [&](bool isGood, const char* what) { text += isGood ? "" : what; };
    const auto up = [](int64_t value, int64_t unit) { return (value + unit - 1) / unit; };
    const double average = facts.frameRate.value_or(0);
    const double base = facts.baseFrameRate.value_or(average);
    if (facts.width && facts.height) {
        const Size unit = limits.alignment;
        const auto width = static_cast<double>(up(*facts.width, unit.width) * unit.width);
        const auto height = static_cast<double>(up(*facts.height, unit.height) * unit.height);
        const bool fits = isIn(limits.width, width) && isIn(limits.height, height);
        const bool turned = isIn(limits.width, height) && isIn(limits.height, width);
        check(fits || (turned && limits.canSwapSides), "size,");
    }
    if (facts.width && facts.height && limits.blockSize) {
        const auto blocks = static_cast<double>(up(*facts.width, limits.blockSize->width) *
                                                up(*facts.height, limits.blockSize->height));
        check(isIn(limits.blockCount, blocks), "blocks,");
        check(!facts.frameRate || isIn(limits.blocksPerSecond, blocks * average) ||
                      isIn(limits.blocksPerSecond, blocks * base),
              "blocks a second,");
    }
    const bool isRate = isIn(limits.frameRate, average) || isIn(limits.frameRate, base);
    check(!facts.frameRate || isRate, "frame rate,");
    const auto checkOne = [&](const auto& fact, const auto& range, const char* what) {
        check(!fact || isIn(range, static_cast<double>(*fact)), what);
    };
    checkOne(facts.bitRate, limits.bitRate, "bit rate,");
    checkOne(facts.channelCount, limits.channelCount, "channels,");
    const auto rate = static_cast<double>(facts.sampleRate.value_or(0));
    const bool isListed = std::ranges::any_of(limits.sampleRates,
                                              [&](const Range& each) { return isIn(each, rate); });
    check(isListed || limits.sampleRates.empty() || !facts.sampleRate, "sample rate,");
    return text;
}

bool checkJudgement(const TrackFacts& facts, const Decoder& decoder) {
    const Judgement judgement = judge(facts, decoder);
    std::string text;
    for (const Shortfall& each : judgement.beyond) {
        REQUIRE(!each.what.empty() && !each.asked.empty() && !each.taken.empty());
        REQUIRE(each.excess > 0 && each.excess <= kOtherTools);
        const bool isOfProfile =
                each.what == "profile" || each.what == "level" || each.what == "bit depth";
        if (!isOfProfile) text += each.what + ",";
    }
    REQUIRE(text == beyond(facts, decoder.limits));
    REQUIRE(judgement.isTaken() || !sentence({&decoder, judgement}).empty());
    for (const std::string& each : judgement.unknown) REQUIRE(!each.empty());
    return judgement.isTaken();
}

void checkChoice(const TrackFacts& facts, const std::vector<Decoder>& decoders) {
    const Decoder* first = nullptr;
    for (const Decoder& each : decoders) {
        const bool isTaken = checkJudgement(facts, each);
        const bool isOne = each.type == decoders[0].type;  // letter case aside
        if (isTaken && isOne && first == nullptr) first = &each;
    }
    const Choice choice = chooseDecoder(facts, decoders[0].type, decoders);
    REQUIRE(choice.taken != nullptr || first == nullptr);
    REQUIRE(choice.taken == nullptr || first == nullptr || choice.taken <= first);
    for (const Refusal& each : choice.refused) REQUIRE(!sentence(each).empty());
}

void checkVerdict(const Stream& stream, const PretendedDevice& device, bool isFixed) {
    const std::vector<Record> records = {
            readRecord(stream.codecType, kPrivateData, stream.privateData)};
    const TrackFacts facts = factsOf(stream, records);
    checkChoice(facts, device.description.decoders);
    const TrackFaults faults = {.brokenData = whyNoDecoderStarts(stream, records, true),
                                .endsProcess = offerOf(stream, true, device.host).fatal};
    const Verdict verdict = judge(stream, true, facts, faults, device);
    REQUIRE(plays(verdict.play) || !verdict.reason.empty());
    REQUIRE(!toString(verdict.play).empty() && !verdict.chain.empty());
    MediaFile file;
    file.container = {.fileKind = 1, .mime = nullptr, .hasWholeFrames = true};
    file.streams = {stream};
    const JudgedTrack track = {&stream, &facts, &verdict};
    const FileVerdict whole = judge(file.container, std::span(&track, 1));
    if (whole.play == FilePlay::kPlays) return;
    REQUIRE(!whole.reason.empty());
    if (isFixed) REQUIRE(!proposeFix(file, std::span(&track, 1), device).sentence.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    const fuzz::Bytes all(bytes, size);
    const auto zero = std::ranges::find(all, 0);
    fuzz::Bytes rest(zero, all.end());
    fuzz::take(rest, 1);
    const bool isFixed = fuzz::take(rest, 1) % 8 == 1;  // which takes long
    PretendedDevice device;
    const std::string list(all.begin(), zero);
    if (fuzz::refuses([&] { device.description = readMimeList(list, "list"); })) return 0;
    const size_t count = device.description.decoders.size();
    if (count == 0 || count > 16) return 0;
    nameDecoders(device);
    checkVerdict(takeStream(rest), device, isFixed);
    return 0;
}
