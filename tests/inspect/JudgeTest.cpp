// What a decoder takes of a track, at the edges of its limits.

#include <gtest/gtest.h>

#include "inspect/devices/Judge.h"
#include "inspect/devices/Profiles.h"
#include "inspect/verdict/TrackFacts.h"

namespace inspect {
namespace {

using F = TrackFacts;
using L = Limits;

Decoder decoderOf(const char* name, const char* type, Limits limits, const char* whyIgnored = "") {
    Decoder decoder;
    decoder.name = name;
    decoder.type = type;
    decoder.whyIgnored = whyIgnored;
    decoder.limits = std::move(limits);
    return decoder;
}

// "size: 2700x2400; x takes up to 1920x1088", or "taken", with what is unknown in brackets
std::string told(const TrackFacts& facts, const Decoder& decoder) {
    const Judgement judgement = judge(facts, decoder);
    std::string text;
    for (const Shortfall& each : judgement.beyond) text += each.what + ": ";
    text = judgement.isTaken() ? "taken" : text + sentence({&decoder, judgement});
    for (const std::string& each : judgement.unknown) text += " (" + each + ")";
    return text;
}

TEST(Judge, NumbersAgainstLimits) {
    // clang-format off
    const struct {
        void (*change)(F& f, L& l);  // of 1920x1080 at 25 frames a second
        const char* told;
    } cases[] = {
        {[](F&, L& l) { l.width = {64, 1920}, l.height = {64, 1080}; }, "taken"},
        {[](F&, L& l) { l.width = {64, 1919}, l.height = {64, 1088}; },
         "size: 1920x1080; x takes up to 1919x1088"},
        {[](F&, L& l) { l.width = {64, 4096}, l.height = {1081, 4096}; },
         "size: 1920x1080; x takes no less than 64x1081"},
        {[](F&, L& l) { l.width = {2, 1920}, l.height = {2, 1087}, l.alignment = {2, 16}; },
         "size: 1920x1080, rounded up to 1920x1088; x takes up to 1920x1087"},
        {[](F&, L& l) { l.width = {2, 1080}, l.height = {2, 1920}, l.canSwapSides = true; },
         "taken"},
        {[](F&, L& l) { l.width = {2, 1079}, l.height = {2, 1920}, l.canSwapSides = true; },
         "size: 1920x1080; x takes up to 1079x1920 or turned"},
        {[](F& f, L& l) { f.height.reset(), l.width = {1, 2}; },
         "taken (the picture size of the file is not known)"},
        // 120 x 67.5 blocks
        {[](F&, L& l) { l.blockSize = {16, 16}, l.blockCount = {1, 8160}; }, "taken"},
        {[](F&, L& l) { l.blockSize = {16, 16}, l.blockCount = {1, 8159}; },
         "blocks: 8160 blocks a picture; x takes up to 8159 blocks a picture"},
        {[](F&, L& l) { l.blockCount = {1, 2}; },
         "taken (the block size of this decoder is not known)"},
        {[](F&, L& l) { l.blockSize = {16, 16}, l.blocksPerSecond = {1, 204000}; }, "taken"},
        {[](F&, L& l) { l.blockSize = {16, 16}, l.blocksPerSecond = {1, 203999}; },
         "blocks a second: 204000 blocks a second; x takes up to 203999 blocks a second"},
        {[](F& f, L& l) { f.frameRate = {}, l.blockSize = {16, 16}, l.blocksPerSecond = {1, 2}; },
         "taken (the frame rate of the file is not known)"},
        {[](F&, L& l) { l.frameRate = {1, 24}; },
         "frame rate: 25 frames a second; x takes up to 24 frames a second"},
        {[](F& f, L& l) { f.frameRate = 31, f.baseFrameRate = 30, l.frameRate = {1, 30}; },
         "taken"},
        {[](F& f, L& l) { f.frameRate = 29.97, f.baseFrameRate = 60, l.frameRate = {1, 29}; },
         "frame rate: 29.97 and 60 frames a second; x takes up to 29 frames a second"},
        {[](F& f, L& l) { f.bitRate = 20'000'001, l.bitRate = {1, 20'000'000}; },
         "bit rate: 20000001 bits a second; x takes up to 20000000 bits a second"},
        {[](F&, L& l) { l.bitRate = {1, 2}; }, "taken (the bit rate of the file is not known)"},
        {[](F& f, L& l) { f.channelCount = 2, l.channelCount = {1, 1}; },
         "channels: 2 channels; x takes up to 1 channel"},
        {[](F& f, L& l) { f.sampleRate = 9000, l.sampleRates = {{8000, 8000}, {11025, 48000}}; },
         "sample rate: 9000 Hz; x takes 8000 and 11025-48000 Hz"},
        {[](F&, L&) {}, "taken (nothing is known of this decoder but its type)"},
    };
    // clang-format on
    for (const auto& [change, expected] : cases) {
        TrackFacts facts;
        facts.width = 1920, facts.height = 1080, facts.frameRate = 25;
        Decoder decoder = decoderOf("x", "video/other", {});
        change(facts, decoder.limits);
        EXPECT_EQ(told(facts, decoder), expected);
    }
}

TEST(Judge, ProfilesAndLevelsAgainstLists) {
    const auto none = std::nullopt;
    // clang-format off
    const struct {
        const char* mime;
        Indication stream;  // in the standards' numbers, where not noted
        std::vector<ProfileLevel> list;
        const char* told;
    } cases[] = {
        {"Video/AVC", {100, 40}, {{8, 0x800}}, "taken"},
        {"video/avc", {100, 41}, {{8, 0x400}, {8, 0x800}, {8, 1}},
         "level: AVC High, level 4.1; x takes High up to 4.0"},
        {"video/avc", {110, 40}, {{1, 0x8000}, {8, 0x8000}, {0x80, 1}},
         "profile: AVC High 10, level 4.0; x takes Baseline and High up to 5.1, 0x80 up to 1.0"},
        {"video/avc", {66, 30}, {{2, 0x100}},
         "profile: AVC Baseline, level 3.0; x takes Main up to 3.0"},
        {"video/avc", {66 + 512, 30}, {{2, 0x100}}, "taken"},  // constraint_set1_flag
        {"video/avc", {100, 30}, {{0x80000, 0x100}},
         "profile: AVC High, level 3.0; x takes Constrained High up to 3.0"},
        {"video/avc", {100, 30, none, 0x0C}, {{0x80000, 0x100}}, "taken"},
        {"video/avc", {77, 11}, {{2, 2}}, "level: AVC Main, level 1.1; x takes Main up to 1b"},
        {"video/avc", {77, 11, none, 0x10}, {{2, 2}}, "taken"},
        {"video/avc", {44, 40}, {{0x40, 0x80000}},
         "profile: AVC CAVLC 4:4:4, level 4.0; x takes High 4:4:4 up to 6.2"},
        {"video/avc", {100, none}, {{8, 1}}, "taken (the level of the file is not known)"},
        {"video/avc", {none, 40, 10}, {{8, 1}},
         "bit depth: 10 bits a sample; x takes up to 8 bits a sample "
         "(the profile of the file is not known)"},
        {"video/avc", {100, 40}, {}, "taken (profiles and levels are not known of this decoder)"},
        {"video/hevc", {2, 153}, {{2, 0x10000}}, "taken"},
        {"video/hevc", {1, 153}, {{2, 0x10000}}, "taken"},
        {"video/hevc", {2, 153, none, 0, true}, {{2, 0x40000}},
         "level: HEVC Main 10, level 5.1 High tier; x takes Main 10 up to 5.2"},
        {"video/hevc", {2, 153}, {{2, 0x8000}},
         "level: HEVC Main 10, level 5.1; x takes Main 10 up to 5.0 High tier"},
        {"video/hevc", {3, 30}, {{1, 1}}, "taken"},
        {"video/hevc", {2, 30}, {{1, 1}, {0x1000, 1}},
         "profile: HEVC Main 10, level 1.0; x takes Main and Main 10 HDR10 up to 1.0"},
        {"video/hevc", {4, 30}, {{2, 0x2000000}},
         "profile: HEVC Rext, level 1.0; x takes Main 10 up to 6.2 High tier"},
        {"video/hevc", {1, 255}, {{1, 0x2000000}},
         "level: HEVC Main, level number 255; x takes Main up to 6.2 High tier"},
        {"video/mp4v-es", {15, 7}, {{0x8000, 0x18}}, "taken"},
        {"video/mp4v-es", {0, 4}, {{0x8000, 0x20}},
         "level: MPEG-4 Visual Simple, level 4a; x takes Advanced Simple up to 4"},
        {"video/mpeg2", {4, 4}, {{1, 2}, {0, 1}},  // libavcodec's number of the profile
         "level: MPEG-2 Main, level High; x takes Main up to High 1440"},
        {"video/x-vnd.on2.vp9", {0, 0}, {{1, 1}}, "taken (the level of the file is not known)"},
        {"video/av01", {0, 0, 8}, {{1, 1}}, "taken"},
        {"video/av01", {0, 8, 10}, {{1, 0x100}},
         "profile: AV1 Main 10 bits, level 4.0; x takes Main 8 bits up to 4.0"},
        {"audio/mp4a-latm", {1, none}, {{29, 0}}, "taken"},  // one less than the object type
        {"audio/mp4a-latm", {28, none}, {{2, 0}, {5, 0}}, "profile: AAC HE v2; x takes LC and HE"},
    };
    // clang-format on
    for (const auto& [mime, stream, list, expected] : cases) {
        const CodecProfiles* codec = profilesOfMime(mime);
        ASSERT_NE(codec, nullptr);
        TrackFacts facts;
        facts.profile = profileOf(*codec, stream);
        facts.level = levelOf(*codec, stream);
        facts.bitDepth = stream.bitDepth;
        facts.width = facts.height = 1;
        Limits limits;
        limits.width = Range{};
        limits.profileLevels = list;
        EXPECT_EQ(told(facts, decoderOf("x", mime, limits)), expected);
    }
}

// Of streams as a demuxer describes them.
TEST(Judge, KnowsWhatStreamsSay) {
    Stream stream;
    stream.codec = "mpeg1video";
    stream.bitRate = 104'857'200;  // ISO/IEC 11172-2 2.4.3.2: variable
    EXPECT_FALSE(factsOf(stream, {}).bitRate);
    stream.codec = "mpeg2video";
    EXPECT_EQ(factsOf(stream, {}).bitRate, 104'857'200);
    EXPECT_FALSE(factsOf(stream, {}).width || factsOf(stream, {}).frameRate);
    stream.codec = "vp9";
    stream.privateData = {1, 1, 0, 2, 1, 31, 3, 1, 8};  // WebM's features: profile, level, depth
    EXPECT_EQ(factsOf(stream, {}).level.value_or(Rank{}).number, 0x20);
}

TEST(Judge, ChoosesTheFirstThatTakesIt) {
    TrackFacts facts;
    facts.bitRate = 1000;
    std::vector<Decoder> decoders;
    const auto add = [&](const char* name, int64_t most, const char* whyIgnored = "") {
        Limits limits;
        limits.bitRate = {1, most};
        decoders.push_back(decoderOf(name, "audio/Other", limits, whyIgnored));
    };
    const auto names = [&](const char* mime) {
        const Choice choice = chooseDecoder(facts, mime, decoders);
        std::string text = choice.taken != nullptr ? choice.taken->name + ":" : "none:";
        for (const Refusal& each : choice.refused) text += " " + each.decoder->name;
        return text;
    };
    add("far", 10), add("secure", 9000, "it wants a secure surface"), add("near", 900);
    EXPECT_EQ(names("audio/other"), "none: near far secure");
    add("first", 1000), add("second", 9000);
    EXPECT_EQ(names("AUDIO/other"), "first: near far secure");
    EXPECT_EQ(names("audio/another"), "none:");
}

}  // namespace
}  // namespace inspect
