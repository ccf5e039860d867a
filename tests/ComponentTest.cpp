// Audio, DivX and video components that remember what they are told.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "support/Platform.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace {

using android::AMessage;
using android::IOMXNode;
using android::MetaData;
using android::sp;
using test::Line;
using test::LogCapture;
using Helper = android::MediaCodecHelper;

using Calls = std::vector<std::string>;

std::string hex(const char* format, uint32_t number) {
    char text[20];
    std::snprintf(text, sizeof(text), format, number);
    return text;
}

// Returns A5 for every byte behind size, version and port.
struct Component : IOMXNode {
    // "get 0400000a", "extension NAME", "set 0400000a" and the words in hex, "-" for A5A5A5A5.
    Calls calls;
    std::map<size_t, android::status_t> errors;  // by the number of the call

    android::status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override {
        auto* bytes = static_cast<uint8_t*>(params);
        const uint32_t header[] = {static_cast<uint32_t>(size), 1};
        EXPECT_EQ(std::memcmp(bytes, header, sizeof(header)), 0);
        for (size_t i = 12; i < size; ++i) EXPECT_EQ(bytes[i], 0) << i;
        const auto status = record(hex("get %08x", index));
        if (status == 0 && size > 12) std::memset(bytes + 12, 0xA5, size - 12);
        return status;
    }
    android::status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        std::string call = hex("set %08x", index);
        for (size_t at = 0; at + 4 <= size; at += 4) {
            uint32_t word = 0;
            std::memcpy(&word, static_cast<const uint8_t*>(params) + at, 4);
            call += word == 0xA5A5A5A5 ? " -" : hex(" %x", word);
        }
        return record(call);
    }
    android::status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) override {
        *index = static_cast<OMX_INDEXTYPE>(0x7F0000EE);
        return record(std::string("extension ") + name);
    }

private:
    android::status_t record(const std::string& call) {
        calls.push_back(call);
        const auto error = errors.find(calls.size() - 1);
        return error == errors.end() ? 0 : error->second;
    }
};

using Numbers = std::map<std::string, int32_t>;

sp<AMessage> messageOf(const Numbers& numbers) {
    sp<AMessage> message = new AMessage;
    for (const auto& [key, value] : numbers) message->setInt32(key.c_str(), value);
    return message;
}

Numbers without(Numbers numbers, const char* key) {
    numbers.erase(key);
    return numbers;
}

Numbers withValue(Numbers numbers, const char* key, int32_t value) {
    numbers[key] = value;
    return numbers;
}

const Numbers kAac{{"channel-count", 2},
                   {"sample-rate", 44100},
                   {"aac-format-adif", 1},
                   {"aac-max-output-channel_count", 6},
                   {"aac-drc-cut-level", 11},
                   {"aac-drc-boost-level", 12},
                   {"aac-drc-heavy-compression", 13},
                   {"aac-target-ref-level", 14},
                   {"aac-encoded-target-level", 15}};
const Numbers kWma{{"wma-version", 2},           {"wma-adv-enc-opt1", 0x11112222},
                   {"wma-adv-enc-opt2", 7},      {"wma-vir-pkt-size", 99},
                   {"channel-count", 2},         {"sample-rate", 44100},
                   {"bitrate", 128000},          {"wma-encode-opt", 0x10015},
                   {"wma-block-align", 5},       {"wma-bits-per-sample", 16},
                   {"wma-format-tag", 0x161},    {"wma-voice-enc-opt1", 31},
                   {"wma-voice-enc-opt2_0", 32}, {"wma-voice-enc-opt2_1", 33}};
const Numbers kRa{{"channel-count", 1},       {"sample-rate", 8000},   {"ra-actual-rate", 8001},
                  {"bits-per-sample", 16},    {"ra-audio-quality", 3}, {"ra-flavor-index", 70000},
                  {"ra-bits-per-frame", 160}, {"ra-granularity", 20},  {"ra-fourcc", 0x6C706376}};

// An operation, for a decoder or an encoder, in its two forms; of metadata there may be none.
struct Operation {
    template <typename Call>
    constexpr Operation(Call call) : message(call), metadata(call) {}
    constexpr Operation(int32_t (*call)(const sp<AMessage>&, const sp<IOMXNode>&, bool))
        : message(call), metadata(nullptr) {}

    int32_t (*message)(const sp<AMessage>&, const sp<IOMXNode>&, bool);
    int32_t (*metadata)(const sp<MetaData>&, const sp<IOMXNode>&, bool);
};

// clang-format off
constexpr Operation
        setPcm([](auto& f, auto& n, bool e) { return Helper::setRawAudioFormat(f, 1, n, e); }),
        setG711([](auto& f, auto& n, bool e) { return Helper::setG711Format(f, 0, n, e); }),
        setG726([](auto& f, auto& n, bool e) { return Helper::setG726Format(f, n, e); }),
        setAac([](auto& f, auto& n, bool e) { return Helper::setAACFormat(f, 0, n, e); }),
        setAlac([](auto& f, auto& n, bool e) { return Helper::setAlacFormat(f, 0, n, e); }),
        setAlacOutput([](auto& f, auto& n, bool e) { return Helper::setAlacFormat(f, 1, n, e); }),
        setWma([](auto& f, auto& n, bool e) { return Helper::setWMAFormat(f, n, e); }),
        setRa([](auto& f, auto& n, bool e) { return Helper::setRAFormat(f, 7, n, e); }),
        setRaOutput([](auto& f, auto& n, bool e) { return Helper::setRAFormat(f, 1, n, e); }),
        setVo([](auto& f, auto& n, bool e) { return Helper::setVOCodecFormat(f, "c", n, e); }),
        setDivx([](auto& f, auto& n, bool e) { return Helper::setDivxFormat(f, n, e); }),
        setPacking([](auto& f, auto& n, bool) {
            return Helper::configureFramePackingFormat(f, n), 0;
        }),
        setDolby(+[](const sp<AMessage>& f, const sp<IOMXNode>& n, bool e) {
            return Helper::setDolbyFormat(f, 0, n, e);
        });
// clang-format on

// The status of the form, or the fatal text behind its location. Of what has no form for metadata,
// the message's counts again.
std::string resultOf(const Operation& setup, bool isMetadata, const Numbers& format,
                     const sp<Component>& node, bool encoder = false) {
    const sp<AMessage> message = messageOf(format);
    const sp<MetaData> metadata = new MetaData;
    Helper::ZRCodeConvertMessageToMetaData(message, metadata);
    int32_t status = 0;
    const std::string fatal = test::fatalText([&] {
        const bool hasForm = isMetadata && setup.metadata != nullptr;
        status = hasForm ? setup.metadata(metadata, node, encoder)
                         : setup.message(message, node, encoder);
    });
    const std::string location = "Helper/MediaCodecHelper ";
    EXPECT_TRUE(fatal.empty() || fatal.starts_with(location)) << fatal;
    return fatal.empty() ? std::to_string(status) : fatal.substr(location.size());
}

// An AAC presentation that is left to the decoder.
const std::string kNoPresentation =
        "set 6f400003 0 0 ffffffff ffffffff ffffffff ffffffff ffffffff ffffffff 0";

// Every call with the words that are sent, in either form, and what comes of it: when all succeed,
// then when the first fails, the second and so on. The calls end there, unless the result is 0 all
// the same.
TEST(Component, CallsAndResults) {
    const std::string err = "CHECK_EQ( err,(status_t)0) failed: -5 vs. 0";
    const std::string definition =
            "CHECK_EQ( mOMXNode->setParameter(OMX_IndexParamPortDefinition, "
            "&def, sizeof(def)),(status_t)0) failed: -5 vs. 0";
    const auto pcm = [](const std::string& port) {
        return Calls{
                "get 02000001",
                "set 02000001 70 1 " + port + " - - - - - - - - - - - - 2 - - - - - - - - - - - -",
                "get 04000002",
                "set 04000002 68 1 " + port + " 2 0 - 1 10 ac44 0 1 2 - - - - - - - - - - - - - -"};
    };
    Calls aac = pcm("1");
    aac.insert(aac.end(), {"get 04000003", "set 04000003 34 1 0 2 ac44 - - - - - - 4 -",
                           "set 6f400003 0 0 6 b c d e f 0"});
    const Line refused{
            5, "did not set AudioAndroidAacPresentation due to error -5 when setting AudioAac"};
    const std::string wma = "set 0400000a 40 1 0 a5a50002 1f400 - - ac44 150005 ";
    // clang-format off
    const struct {
        Operation setup;
        Numbers format;
        Calls calls;
        Calls results;
        Line failure = {};  // what is logged of the call before the last
    } rows[] = {
            {setPcm, kAac, pcm("1"), {"0", err, definition, err, "-5"}},
            {setG711, kAac, pcm("0"), {"0", err, definition, err, "-5"}},
            {setAac, kAac, aac, {"0", err, definition, err, "-5", "-5", "-5", "0"}, refused},
            {setG726, {{"bitrate", 40000}},
             {"get 0400000f", "set 0400000f 14 1 0 1 4", "get 04000002",
              "set 04000002 68 1 1 1 - - - - 1f40 - - - - - - - - - - - - - - - - -"},
             {"0", err, err, err, "-5"}},
            {setAlac, kAac, {"get 7fa30c07", "set 7fa30c07 2c 1 0 2 ac44 - - - - - -"},
             {"0", err, "-5"}},
            {setWma, withValue(kWma, "wma-version", 0),
             {"get 0400000a", wma + "- - 100161 - - - -"}, {"0", "-5", "-5"}},
            {setWma, withValue(kWma, "wma-version", 1),
             {"get 0400000a", wma + "a5a52222 7 100161 - - - -"}, {"0", "-5", "-5"}},
            {setWma, kWma,
             {"get 0400000a", wma + "a5a52222 7 100161 - - - -"}, {"0", "-5", "-5"}},
            {setWma, withValue(kWma, "wma-version", 3),
             {"get 0400000a", wma + "a5a52222 - 100161 - 1f 20 21"}, {"0", "0", "-5"}},
            {setRa, kRa,
             {"get 04000004", "set 04000004 2c 1 0 1 1f40 1f41 30010 a5a51170 a0 14 6c706376"},
             {"0", err, "-5"}},
            {setDivx, {{"divx-version", 2}}, {"set 7f00000b 14 1 1 8 0"}, {"0", "-5"}},
            {setDolby, {},
             {"extension omx.index.dolby.reconfig_on_endp_change", "set 7f0000ee 1"},
             {"0", "-5", "-5"}},
    };
    // clang-format on
    for (const auto& row : rows) {
        for (size_t run = 0; run < 2 * row.results.size(); ++run) {
            const bool isMetadata = run % 2 == 1;
            const size_t failing = run / 2;
            const LogCapture log("MediaCodecHelper");
            const sp<Component> node = new Component;
            if (failing > 0) node->errors[failing - 1] = -5;
            const std::string& result = row.results[failing];
            EXPECT_EQ(resultOf(row.setup, isMetadata, row.format, node), result);
            Calls expected = row.calls;
            if (isMetadata && row.setup.metadata == setAac.metadata)
                expected.back() = kNoPresentation;
            if (result != "0") expected.resize(failing);
            EXPECT_EQ(node->calls.size(), expected.size());
            const bool isWhole = failing == 0 || result != "0";
            EXPECT_EQ(isWhole ? node->calls : expected, expected);
            const bool isLogged = row.failure.priority != 0 && failing + 1 == row.calls.size();
            EXPECT_EQ(log.lines(), isLogged ? std::vector{row.failure} : std::vector<Line>());
        }
    }
}

// What other values of a format come to, in either form: the result, the last call, the log.
TEST(Component, ResultsByFormat) {
    const std::string divx = "set 7f00000b 14 1 1 ", packing = "set 7f000002 0 0 0 0 0 ";
    const std::string pcm = " 68 1 1 1 - - - - 1f40 - - - - - - - - - - - - - - - - -";
    const Line frames{4, "Decoder will be in frame by frame mode"};
    // clang-format off
    const struct {
        Operation setup;
        Numbers format;
        std::string result;
        std::string lastCall;
        std::vector<Line> lines = {};
    } rows[] = {
            {setG726, {{"bitrate", 24000}}, "0", "set 04000002" + pcm},
            {setG726, {}, "-38", "", {{6, "INVALID_OPERATION bitratemode 0"}}},
            {setAac, withValue(kAac, "aac-format-adif", 0), "-1", ""},
            {setAac, {{"channel-count", 2}, {"sample-rate", 1}}, "-1", ""},
            {setAac, {{"channel-count", 2}}, "-38", ""},
            {setAac, {{"sample-rate", 1}}, "-38", ""},
            {setAac, {{"channel-count", 2}, {"sample-rate", 1}, {"aac-format-adif", 2}}, "0",
             kNoPresentation},
            {setWma, withValue(kWma, "wma-version", 4), "0", ""},
            {setWma, withValue(kWma, "wma-version", -1), "0", ""},
            {setWma, without(withValue(kWma, "channel-count", 3), "sample-rate"), "-1010", ""},
            {setWma, without(kWma, "wma-version"), "-1", "",
             {{5, "Can't not find kZreKeyWMAVersion"}}},
            {setDivx, {}, "0", divx + "4 0",
             {{5, "Divx version key missing, initializing the version to 1"}}},
            {setDivx, {{"divx-version", 0}}, "0", divx + "2 0"},
            {setDivx, {{"divx-version", 3}}, "0", divx + "10 0"},
            {setDivx, {{"divx-version", 4}}, "0", divx + "1 0"},
            {setDivx, {{"divx-version", -1}}, "0", divx + "1 0"},
            {setPacking, {}, "0", packing + "3", {frames}},
            {setPacking, {{"use-arbitrary-mode", 0}}, "0", packing + "3", {frames}},
            {setPacking, {{"use-arbitrary-mode", 2}}, "0", packing + "1",
             {{4, "Decoder will be in arbitrary mode"}}},
            {setPcm, withValue(kAac, "channel-count", 9),
             "CHECK_EQ( getOMXChannelMapping((size_t)numChannels, "
             "(int*)pcmParams.eChannelMapping),(status_t)0) failed: -22 vs. 0", "get 04000002"},
    };
    // clang-format on
    for (const auto& row : rows) {
        for (const bool isMetadata : {false, true}) {
            const LogCapture log("MediaCodecHelper");
            const sp<Component> node = new Component;
            EXPECT_EQ(resultOf(row.setup, isMetadata, row.format, node), row.result);
            EXPECT_EQ(node->calls.empty() ? "" : node->calls.back(), row.lastCall);
            EXPECT_EQ(log.lines(), row.lines);
        }
    }
    // ITU-T G.726: a mode for each number of bits; 32000 bit/s for what is none.
    for (const auto& [bitRate, mode] :
         {std::pair{16000, "1"}, {24000, "2"}, {40000, "4"}, {48000, "3"}}) {
        const sp<Component> node = new Component;
        resultOf(setG726, false, {{"bitrate", bitRate}}, node);
        EXPECT_EQ(node->calls.at(1), std::string("set 0400000f 14 1 0 1 ") + mode);
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
        for (const auto& row : keys) {
            if (row.formats.find(format) == std::string::npos) numbers.erase(row.key);
        }
        for (size_t i = std::size(keys); i > 0; --i) {
            const auto& [key, text, formats] = keys[i - 1];
            if (numbers.erase(key) == 0) continue;
            const sp<Component> node = new Component;
            EXPECT_EQ(resultOf(setup, i % 2 == 0, numbers, node),
                      "CHECK(msg->findInt32(getMsgKey(kZreKey" + text + ")) failed.");
            EXPECT_TRUE(node->calls.empty());
        }
    }
}

TEST(Component, EncodersAndOtherPortsAreLeftAlone) {
    const LogCapture quiet("MediaCodecHelper");
    const auto leavesAlone = [](const Operation& setup, bool encoder, bool isMetadata) {
        const sp<Component> node = new Component;
        return resultOf(setup, isMetadata, kRa, node, encoder) == "-1" && node->calls.empty();
    };
    for (const bool isMetadata : {false, true}) {
        for (const Operation& setup :
             {setPcm, setG711, setG726, setAac, setAlac, setWma, setRa, setVo, setDolby})
            EXPECT_TRUE(leavesAlone(setup, true, isMetadata));
        for (const Operation& setup : {setAlacOutput, setRaOutput, setVo})
            EXPECT_TRUE(leavesAlone(setup, false, isMetadata));
        // A message's looks at no flag.
        EXPECT_EQ(leavesAlone(setDivx, true, isMetadata), isMetadata);
    }
}

TEST(Component, ChannelMaps) {
    const std::string maps[] = {"",      "3",      "12",      "123",      "1289",
                                "12389", "123689", "1236897", "12368945", ""};
    for (size_t channels = 0; channels < std::size(maps); ++channels) {
        std::vector<int> map(8, -1), expected(8, -1);
        std::ranges::transform(maps[channels], expected.begin(), [](char c) { return c - '0'; });
        EXPECT_EQ(Helper::getOMXChannelMapping(channels, map.data()),
                  maps[channels].empty() ? -22 : 0);
        EXPECT_EQ(map, expected);
    }
}

TEST(Component, QcomVideoDecoder) {
    const std::string packing = "set 7f000002 0 0 0 0 0 3", reorder = "set 7f00001b 10 1 1 1",
                      extension = "extension OMX.QCOM.index.param.video.SyncFrameDecodingMode",
                      sync = "set 7f0000ee 1", user = "set 7f000020 1";
    const Line called{5, "configureQCOMVideoDecoder"}, ordered{4, "Enabling timestamp reordering"},
            packed{4, "Decoder will be in frame by frame mode"},
            asked{4, "[other] User-extradata requested"},
            noSync{5, "Failed to get extension for SYNCFRAMEDECODINGMODE"};
    // clang-format off
    const struct {
        const char* component;
        const char* fileFormat;
        uint32_t flags;
        int32_t userData;
        std::map<size_t, int32_t> errors;
        Calls calls;
        std::vector<Line> lines;
    } rows[] = {
            {"OMX.qcom.video.decoder.vc", "", 0x3FF, 0, {}, {packing}, {called, packed}},
            {"OMX.qcom.video.decoder.vc1.secure", nullptr, 0, 0, {}, {packing, reorder},
             {called, packed, ordered}},
            {"OMX.qcom.video.decoder.mpeg4", "video/mp4", 0, 2, {{0, -1}, {1, -1}},
             {packing, reorder},
             {called, packed, {5, "Failed to set frame packing format on component"}, ordered,
              {5, "Failed to enable timestamp reordering"}}},
            {"other", "video/avi;x", 0, 1, {{2, -1}}, {packing, reorder, user},
             {called, packed, ordered, asked, {5, "[other] Failed to enable user-extradata"}}},
            {"other", "video/av", 0x400, 1, {}, {packing, extension, sync, user},
             {called, packed, {4, "Thumbnail mode enabled."}, asked}},
            {"OMX.qcom.video.decoder.mpeg2", nullptr, 0x400, 1, {{1, -1}}, {packing, extension},
             {called, packed, noSync}},
            {"other", nullptr, 0x400, 1, {{2, -1}}, {packing, extension, sync},
             {called, packed, noSync}},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        const sp<AMessage> format = messageOf({{"enable-extradata-user", row.userData}});
        if (row.fileFormat != nullptr) format->setString("file-format", row.fileFormat);
        if (row.flags == 0) format->setInt32("use-arbitrary-mode", 0);
        const sp<Component> node = new Component;
        node->errors = row.errors;
        Helper::configureQCOMVideoDecoder(format, node, row.flags, row.component);
        EXPECT_EQ(node->calls, row.calls) << row.component;
        EXPECT_EQ(log.lines(), row.lines) << row.component;
    }
}

}  // namespace
