#include <gtest/gtest.h>

#include "platform/MetaData.h"
#include "support/Component.h"
#include "support/Platform.h"

namespace {

using namespace test;

// What a component is told, in which order, and what comes of it when it answers with an error: a
// status, or the text of a fatal end.
TEST(Component, CallsAndStatuses) {
    const std::string profile = kPcmCalls + "get 04000003\nset 04000003\n";
    const std::string g726 = "get 0400000f\nset 0400000f\nget 04000002\nset 04000002\n";
    const std::string wma = "get 0400000a\nset 0400000a\n";
    const std::string dolby = "extension omx.index.dolby.reconfig_on_endp_change\n";
    const std::string err = "CHECK_EQ( err,(status_t)0) failed: -5 vs. 0";
    // clang-format off
    const struct {
        const char* name;
        Operation setup;
        Numbers format;
        std::map<size_t, int32_t> errors;
        std::string result;
        std::string calls;
        std::vector<Line> lines = {};
    } rows[] = {
            {"pcm", setPcm, kPcm, {}, "0", kPcmCalls},
            {"pcm: last set", setPcm, kPcm, {{3, -5}}, "-5", kPcmCalls},
            {"pcm: no definition", setPcm, kPcm, {{0, -5}}, err, kPcmCalls.substr(0, 13)},
            {"pcm: definition refused", setPcm, kPcm, {{1, -5}},
             "CHECK_EQ( mOMXNode->setParameter(OMX_IndexParamPortDefinition, &def, "
             "sizeof(def)),(status_t)0) failed: -5 vs. 0", kPcmCalls.substr(0, 26)},
            {"pcm: no mode", setPcm, kPcm, {{2, -5}}, err, kPcmCalls.substr(0, 39)},
            {"pcm: 9 channels", setPcm, withValue(kPcm, "channel-count", 9), {},
             "CHECK_EQ( getOMXChannelMapping((size_t)numChannels, "
             "(int*)pcmParams.eChannelMapping),(status_t)0) failed: -22 vs. 0",
             kPcmCalls.substr(0, 39)},
            {"g711", setG711, kPcm, {}, "0", kPcmCalls},
            {"g726", setG726, {{"bitrate", 1}}, {}, "0", g726},
            {"g726: pcm refused", setG726, {{"bitrate", 1}}, {{3, -5}}, "-5", g726},
            {"g726: no mode", setG726, {{"bitrate", 1}}, {{0, -5}}, err, g726.substr(0, 13)},
            {"g726: mode refused", setG726, {{"bitrate", 1}}, {{1, -5}}, err, g726.substr(0, 26)},
            {"g726: no pcm", setG726, {{"bitrate", 1}}, {{2, -5}}, err, g726.substr(0, 39)},
            {"g726: no bit rate", setG726, {}, {}, "-38", "",
             {{6, "INVALID_OPERATION bitratemode 0"}}},
            {"aac", setAac, kAac, {}, "0", profile + "set 6f400003\n"},
            {"aac: presentation refused", setAac, kAac, {{6, -5}}, "0", profile + "set 6f400003\n"},
            {"aac: profile refused", setAac, kAac, {{5, -5}}, "-5", profile,
             {{5, "did not set AudioAndroidAacPresentation due to error -5 when setting AudioAac"}}},
            {"aac: no profile", setAac, kAac, {{4, -5}}, "-5", kPcmCalls + "get 04000003\n"},
            {"aac: pcm refused", setAac, kAac, {{3, -5}}, "-5", kPcmCalls},
            {"aac: not ADIF", setAac, withValue(kAac, "aac-format-adif", 0), {}, "-1", ""},
            {"aac: ADIF missing", setAac, without(kAac, "aac-format-adif"), {}, "-1", ""},
            {"aac: no channels", setAac, without(kAac, "channel-count"), {}, "-38", ""},
            {"aac: no rate", setAac, without(kAac, "sample-rate"), {}, "-38", ""},
            {"alac", setAlac, kPcm, {}, "0", "get 7fa30c07\nset 7fa30c07\n"},
            {"alac: refused", setAlac, kPcm, {{1, -5}}, "-5", "get 7fa30c07\nset 7fa30c07\n"},
            {"alac: no get", setAlac, kPcm, {{0, -5}}, err, "get 7fa30c07\n"},
            {"wma", setWma, kWma, {}, "0", wma},
            {"wma 0", setWma, withValue(kWma, "wma-version", 0), {{1, -5}}, "-5", wma},
            {"wma: no get", setWma, kWma, {{0, -5}}, "-5", "get 0400000a\n"},
            {"wma 3: no get", setWma, withValue(kWma, "wma-version", 3), {{0, -5}}, "0", wma},
            {"wma 4", setWma, withValue(kWma, "wma-version", 4), {}, "0", ""},
            {"wma -1", setWma, withValue(kWma, "wma-version", -1), {}, "0", ""},
            {"wma: 3 channels", setWma, without(withValue(kWma, "channel-count", 3), "sample-rate"),
             {}, "-1010", ""},
            {"wma: no version", setWma, without(kWma, "wma-version"), {}, "-1", "",
             {{5, "Can't not find kZreKeyWMAVersion"}}},
            {"ra", setRa, kRa, {{1, -5}}, "-5", "get 04000004\nset 04000004\n"},
            {"ra: no get", setRa, kRa, {{0, -5}}, err, "get 04000004\n"},
            {"divx", setDivx, {}, {{0, -5}}, "-5", "set 7f00000b\n",
             {{5, "Divx version key missing, initializing the version to 1"}}},
            {"dolby", setDolby, {}, {{1, -5}}, "-5", dolby + "set 7f0000ee\n"},
            {"dolby: unknown", setDolby, {}, {{0, -5}}, "-5", dolby},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        const sp<Component> node = new Component;
        node->errors = row.errors;
        std::string result;
        const auto fatal = test::fatalText(
                [&] { result = std::to_string(row.setup(messageOf(row.format), node)); });
        const bool isFatal = row.result.starts_with("CHECK");
        EXPECT_EQ(fatal, isFatal ? "Helper/MediaCodecHelper " + row.result : "") << row.name;
        EXPECT_EQ(result, isFatal ? "" : row.result) << row.name;
        EXPECT_EQ(node->text(), row.calls) << row.name;
        EXPECT_EQ(log.lines(), row.lines) << row.name;
    }
}

// The lack of each key, in the order in which they are asked for: with that one and all after it
// missing, its own text comes.
TEST(Component, MissingKeysInOrder) {
    const struct {
        const char* key;
        std::string text;
        std::string formats;  // that need it: PCM, ALAC, RealAudio, and the versions of WMA
    } keys[] = {{"wma-adv-enc-opt1", "WMAAdvEncOpt1),&advencopt1", "123"},
                {"wma-adv-enc-opt2", "WMAAdvEncOpt2), &advencopt2", "12"},
                {"wma-voice-enc-opt1", "WMAVoiceEncOpt1), &voiceencopt1", "3"},
                {"wma-voice-enc-opt2_0", "WMAVoiceEncOpt20), &voiceencopt20", "3"},
                {"wma-voice-enc-opt2_1", "WMAVoiceEncOpt21), &voiceencopt21", "3"},
                {"wma-vir-pkt-size", "WMAVirPktSize), &virpktsize", "123"},
                {"channel-count", "ChannelCount), &numChannels", "PAR01234"},
                {"sample-rate", "SampleRate), &sampleRate", "PAR01234"},
                {"bitrate", "BitRate), &bitRate", "01234"},
                {"wma-encode-opt", "WMAEncodeOpt), &encodeOpt", "01234"},
                {"wma-block-align", "WMABlockAlign), &blockAlign", "01234"},
                {"wma-bits-per-sample", "WMABitsPerSample), &bitsPerSample", "01234"},
                {"wma-format-tag", "WMAFormatTag), &formatTag", "01234"},
                {"ra-actual-rate", "RAActualRate), &raActualRate", "R"},
                {"bits-per-sample", "BitsPerSample), &bitsPerSample", "R"},
                {"ra-audio-quality", "RAAudioQuality), &raAudioQuality", "R"},
                {"ra-flavor-index", "RAFlavorIndex), &raFlavorIndex", "R"},
                {"ra-bits-per-frame", "RABitsPerFrame), &raBitsPerFrame", "R"},
                {"ra-granularity", "RAGranularity), &raGranularity", "R"},
                {"ra-fourcc", "RAFourCC), &raFourCC", "R"}};
    for (const char format : std::string("PAR01234")) {
        const Operation setup = format == 'P'   ? setPcm
                                : format == 'A' ? setAlac
                                : format == 'R' ? setRa
                                                : setWma;
        Numbers numbers = format == 'R' ? kRa : withValue(kWma, "wma-version", format - '0');
        for (size_t i = std::size(keys); i > 0; --i) {
            const auto& [key, text, formats] = keys[i - 1];
            numbers.erase(key);
            if (formats.find(format) == std::string::npos) continue;
            const sp<Component> node = new Component;
            EXPECT_EQ(test::fatalText([&] { setup(messageOf(numbers), node); }),
                      "Helper/MediaCodecHelper CHECK(msg->findInt32(getMsgKey(kZreKey" + text +
                              ")) failed.");
            EXPECT_TRUE(node->calls.empty());
        }
    }
}

template <typename Format>
void expectLeftAlone(const Format& format) {
    const sp<Component> component = new Component;
    const sp<IOMXNode> node = component;
    EXPECT_EQ(Helper::setRawAudioFormat(format, 0, node, true), -1);
    EXPECT_EQ(Helper::setG711Format(format, 0, node, true), -1);
    EXPECT_EQ(Helper::setG726Format(format, node, true), -1);
    EXPECT_EQ(Helper::setAACFormat(format, 0, node, true), -1);
    EXPECT_EQ(Helper::setAlacFormat(format, 0, node, true), -1);
    EXPECT_EQ(Helper::setAlacFormat(format, 1, node, false), -1);
    EXPECT_EQ(Helper::setWMAFormat(format, node, true), -1);
    EXPECT_EQ(Helper::setRAFormat(format, 0, node, true), -1);
    EXPECT_EQ(Helper::setRAFormat(format, 1, node, false), -1);
    EXPECT_EQ(Helper::setVOCodecFormat(format, "c", node, false), -1);
    if constexpr (std::is_same_v<Format, sp<AMessage>>) {
        EXPECT_EQ(Helper::setDolbyFormat(format, 0, node, true), -1);
    } else {
        EXPECT_EQ(Helper::setDivxFormat(format, node, true), -1);
    }
    EXPECT_EQ(component->text(), "");
}

TEST(Component, EncodersAndOtherPortsAreLeftAlone) {
    expectLeftAlone(messageOf(kRa));
    expectLeftAlone(sp<android::MetaData>(new android::MetaData));
}

TEST(Component, Parameters) {
    struct Field {
        size_t offset;
        size_t size;
        uint32_t value;
    };
    // clang-format off
    const struct {
        const char* name;
        Operation setup;
        Numbers format;
        size_t call;
        size_t size;
        std::vector<Field> fields;
    } rows[] = {
            {"port definition", setPcm, kPcm, 1, 112, {{0, 4, 112}, {4, 4, 1}, {8, 4, 1},
             {56, 4, 0xA5A5A5A5}, {60, 4, 2}}},
            {"pcm", setPcm, kPcm, 3, 104, {{0, 4, 104}, {4, 4, 1}, {8, 4, 1}, {12, 4, 6},
             {16, 4, 0}, {20, 4, 0xA5A5A5A5}, {24, 4, 1}, {28, 4, 16}, {32, 4, 48000}, {36, 4, 0},
             {40, 4, 1}, {44, 4, 2}, {48, 4, 3}, {52, 4, 6}, {56, 4, 8}, {60, 4, 9},
             {64, 4, 0xA5A5A5A5}}},
            {"g726", setG726, {{"bitrate", 40000}}, 1, 20, {{8, 4, 0}, {12, 4, 1}, {16, 4, 4}}},
            {"g726: 24", setG726, {{"bitrate", 24000}}, 1, 20, {{16, 4, 2}}},
            {"g726: 16", setG726, {{"bitrate", 16000}}, 1, 20, {{16, 4, 1}}},
            {"g726: other", setG726, {{"bitrate", 48000}}, 1, 20, {{16, 4, 3}}},
            {"g726: pcm", setG726, {{"bitrate", 1}}, 3, 104, {{8, 4, 1}, {12, 4, 1},
             {28, 4, 0xA5A5A5A5}, {32, 4, 8000}, {40, 4, 0xA5A5A5A5}}},
            {"aac", setAac, kAac, 5, 52, {{8, 4, 0}, {12, 4, 2}, {16, 4, 44100},
             {20, 4, 0xA5A5A5A5}, {44, 4, 4}}},
            {"aac: presentation", setAac, kAac, 6, 36, {{0, 4, 0}, {4, 4, 0}, {8, 4, 6},
             {12, 4, 11}, {16, 4, 12}, {20, 4, 13}, {24, 4, 14}, {28, 4, 15}, {32, 4, 0}}},
            {"alac", setAlac, kPcm, 1, 44, {{0, 4, 44}, {4, 4, 1}, {8, 4, 0}, {12, 4, 6},
             {16, 4, 48000}, {20, 4, 0xA5A5A5A5}}},
            {"wma 2", setWma, kWma, 1, 64, {{0, 4, 64}, {4, 4, 1}, {8, 4, 0}, {12, 2, 2},
             {14, 2, 0xA5A5}, {16, 4, 128000}, {20, 4, 0xA5A5A5A5}, {24, 4, 0xA5A5A5A5},
             {28, 4, 44100}, {32, 2, 5}, {34, 2, 0x15}, {36, 2, 0x2222}, {38, 2, 0xA5A5},
             {40, 4, 7}, {44, 2, 0x161}, {46, 2, 16}, {48, 4, 0xA5A5A5A5}, {52, 4, 0xA5A5A5A5},
             {60, 4, 0xA5A5A5A5}}},
            {"wma 0", setWma, withValue(kWma, "wma-version", 0), 1, 64, {{36, 2, 0xA5A5},
             {40, 4, 0xA5A5A5A5}, {44, 2, 0x161}}},
            {"wma 3", setWma, withValue(kWma, "wma-version", 3), 1, 64, {{36, 2, 0x2222},
             {40, 4, 0xA5A5A5A5}, {52, 4, 31}, {56, 4, 32}, {60, 4, 33}}},
            {"ra", setRa, kRa, 1, 44, {{0, 4, 44}, {4, 4, 1}, {8, 4, 0}, {12, 4, 1},
             {16, 4, 8000}, {20, 4, 8001}, {24, 2, 16}, {26, 2, 3}, {28, 2, 4464}, {30, 2, 0xA5A5},
             {32, 4, 160}, {36, 4, 20}, {40, 4, 0x6C706376}}},
            {"divx", setDivx, {}, 0, 20, {{0, 4, 20}, {4, 4, 1}, {8, 4, 1}, {12, 4, 4},
             {16, 4, 0}}},
            {"divx 0", setDivx, {{"divx-version", 0}}, 0, 20, {{12, 4, 2}}},
            {"divx 3", setDivx, {{"divx-version", 3}}, 0, 20, {{12, 4, 16}}},
            {"divx 7", setDivx, {{"divx-version", 7}}, 0, 20, {{12, 4, 1}}},
            {"divx -1", setDivx, {{"divx-version", -1}}, 0, 20, {{12, 4, 1}}},
            {"dolby", setDolby, {}, 1, 4, {{0, 4, 1}}},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        const sp<Component> node = new Component;
        row.setup(messageOf(row.format), node);
        ASSERT_GT(node->calls.size(), row.call) << row.name;
        const Call& call = node->calls[row.call];
        EXPECT_EQ(call.bytes.size(), row.size) << row.name;
        for (const Field& field : row.fields) {
            EXPECT_EQ(call.at(field.offset, field.size), field.value)
                    << row.name << " at " << field.offset;
        }
    }
}

TEST(Component, ChannelMaps) {
    const std::vector<std::vector<int>> maps = {{3},
                                                {1, 2},
                                                {1, 2, 3},
                                                {1, 2, 8, 9},
                                                {1, 2, 3, 8, 9},
                                                {1, 2, 3, 6, 8, 9},
                                                {1, 2, 3, 6, 8, 9, 7},
                                                {1, 2, 3, 6, 8, 9, 4, 5}};
    for (size_t channels = 0; channels < 12; ++channels) {
        std::vector<int> map(8, -1);
        const bool known = channels >= 1 && channels <= 8;
        EXPECT_EQ(Helper::getOMXChannelMapping(channels, map.data()), known ? 0 : -22);
        auto expected = known ? maps[channels - 1] : std::vector<int>();
        expected.resize(8, -1);
        EXPECT_EQ(map, expected);
    }
}

}  // namespace
