#include <gtest/gtest.h>

#include "support/Component.h"
#include "support/Platform.h"

namespace {

using namespace test;

// The status of the form, or the fatal text behind its location. Of what has no form for metadata,
// the message's counts again.
std::string resultOf(const Operation& setup, bool isMetadata, const Numbers& format,
                     const sp<Component>& node) {
    const sp<AMessage> message = messageOf(format);
    const sp<android::MetaData> metadata = new android::MetaData;
    Helper::ZRCodeConvertMessageToMetaData(message, metadata);
    int32_t status = 0;
    const std::string fatal = test::fatalText([&] {
        const bool hasForm = isMetadata && setup.metadata != nullptr;
        status = hasForm ? setup.metadata(metadata, node) : setup.message(message, node);
    });
    const std::string location = "Helper/MediaCodecHelper ";
    EXPECT_TRUE(fatal.empty() || fatal.starts_with(location)) << fatal;
    return fatal.empty() ? std::to_string(status) : fatal.substr(location.size());
}

// Every call with the words that are sent, in either form, and what comes of it: when all succeed,
// then when the first fails, the second and so on. The calls end there, unless the result is 0 all
// the same.
TEST(Component, CallsAndResults) {
    const std::string err = "CHECK_EQ( err,(status_t)0) failed: -5 vs. 0";
    const std::string definition =
            "CHECK_EQ( mOMXNode->setParameter(OMX_IndexParamPortDefinition, "
            "&def, sizeof(def)),(status_t)0) failed: -5 vs. 0";
    const Calls pcm = {"get 02000001",
                       "set 02000001 70 1 1 - - - - - - - - - - - - 2 - - - - - - - - - - - -",
                       "get 04000002",
                       "set 04000002 68 1 1 2 0 - 1 10 ac44 0 1 2 - - - - - - - - - - - - - -"};
    Calls aac = pcm;
    aac.insert(aac.end(), {"get 04000003", "set 04000003 34 1 0 2 ac44 - - - - - - 4 -",
                           "set 6f400003 0 0 6 b c d e f 0"});
    const std::string leftToDecoder =
            "set 6f400003 0 0 ffffffff ffffffff ffffffff ffffffff ffffffff ffffffff 0";
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
            {setPcm, kAac, pcm, {"0", err, definition, err, "-5"}},
            {setG711, kAac, pcm, {"0", err, definition, err, "-5"}},
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
                expected.back() = leftToDecoder;
            if (result != "0") expected.resize(failing);
            EXPECT_EQ(node->calls.size(), expected.size());
            const bool isWhole = failing == 0 || result != "0";
            EXPECT_EQ(isWhole ? node->transcript() : expected, expected);
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
            {setAac, without(kAac, "aac-format-adif"), "-1", ""},
            {setAac, without(kAac, "channel-count"), "-38", ""},
            {setAac, without(kAac, "sample-rate"), "-38", ""},
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
            EXPECT_EQ(node->calls.empty() ? "" : node->transcript().back(), row.lastCall);
            EXPECT_EQ(log.lines(), row.lines);
        }
    }
    // ITU-T G.726: a mode for each number of bits; 32000 bit/s for what is none.
    for (const auto& [bitRate, mode] :
         {std::pair{16000, "1"}, {24000, "2"}, {40000, "4"}, {48000, "3"}}) {
        const sp<Component> node = new Component;
        resultOf(setG726, false, {{"bitrate", bitRate}}, node);
        EXPECT_EQ(node->transcript().at(1), std::string("set 0400000f 14 1 0 1 ") + mode);
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
            EXPECT_EQ(resultOf(setup, i % 2 == 0, numbers, node),
                      "CHECK(msg->findInt32(getMsgKey(kZreKey" + text + ")) failed.");
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
        EXPECT_TRUE(component->calls.empty());
        Helper::setDivxFormat(format, node, true);
        EXPECT_EQ(component->calls.size(), 1u) << "looks at no flag";
    } else {
        EXPECT_EQ(Helper::setDivxFormat(format, node, true), -1);
        EXPECT_TRUE(component->calls.empty());
    }
}

TEST(Component, EncodersAndOtherPortsAreLeftAlone) {
    expectLeftAlone(messageOf(kRa));
    expectLeftAlone(sp<android::MetaData>(new android::MetaData));
}

TEST(Component, ChannelMaps) {
    const std::vector<int> maps[] = {{},
                                     {3},
                                     {1, 2},
                                     {1, 2, 3},
                                     {1, 2, 8, 9},
                                     {1, 2, 3, 8, 9},
                                     {1, 2, 3, 6, 8, 9},
                                     {1, 2, 3, 6, 8, 9, 7},
                                     {1, 2, 3, 6, 8, 9, 4, 5},
                                     {}};
    for (size_t channels = 0; channels < std::size(maps); ++channels) {
        std::vector<int> map(8, -1), expected = maps[channels];
        const int status = expected.empty() ? -22 : 0;
        expected.resize(8, -1);
        EXPECT_EQ(Helper::getOMXChannelMapping(channels, map.data()), status);
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
        EXPECT_EQ(node->transcript(), row.calls) << row.component;
        EXPECT_EQ(log.lines(), row.lines) << row.component;
    }
}

}  // namespace
