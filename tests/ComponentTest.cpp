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
            {"packing", setPacking, {{"use-arbitrary-mode", 2}}, {}, "0", "set 7f000002\n",
             {{4, "Decoder will be in arbitrary mode"}}},
            {"dolby", setDolby, {}, {{1, -5}}, "-5", dolby + "set 7f0000ee\n"},
            {"dolby: unknown", setDolby, {}, {{0, -5}}, "-5", dolby},
    };
    // clang-format on
    for (const auto& row : rows) {
        for (const bool isMetadata : {false, true}) {
            const LogCapture log("MediaCodecHelper");
            const sp<Component> node = new Component;
            node->errors = row.errors;
            EXPECT_EQ(resultOf(row.setup, isMetadata, row.format, node), row.result) << row.name;
            EXPECT_EQ(node->text(), row.calls) << row.name;
            EXPECT_EQ(log.lines(), row.lines) << row.name;
        }
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
        EXPECT_EQ(component->text(), "");
        Helper::setDivxFormat(format, node, true);
        EXPECT_EQ(component->text(), "set 7f00000b\n") << "looks at no flag";
    } else {
        EXPECT_EQ(Helper::setDivxFormat(format, node, true), -1);
        EXPECT_EQ(component->text(), "");
    }
}

TEST(Component, EncodersAndOtherPortsAreLeftAlone) {
    expectLeftAlone(messageOf(kRa));
    expectLeftAlone(sp<android::MetaData>(new android::MetaData));
}

// All words of what is sent, in the layouts of the standard and of the device's decoders.
TEST(Component, Parameters) {
    const auto wma = [](int32_t version) { return withValue(kWma, "wma-version", version); };
    // clang-format off
    const struct {
        Operation setup;
        Numbers format;
        size_t call;
        std::string words;
        std::string metadataWords = words;
    } rows[] = {
            {setPcm, kPcm, 1, " 70 1 1 - - - - - - - - - - - - 2 - - - - - - - - - - - -"},
            {setPcm, kPcm, 3, " 68 1 1 6 0 - 1 10 bb80 0 1 2 3 6 8 9 - - - - - - - - - -"},
            {setG726, {{"bitrate", 40000}}, 1, " 14 1 0 1 4"},
            {setG726, {{"bitrate", 24000}}, 1, " 14 1 0 1 2"},
            {setG726, {{"bitrate", 16000}}, 1, " 14 1 0 1 1"},
            {setG726, {{"bitrate", 48000}}, 1, " 14 1 0 1 3"},
            {setG726, {{"bitrate", 48000}}, 3,
             " 68 1 1 1 - - - - 1f40 - - - - - - - - - - - - - - - - -"},
            {setAac, kAac, 5, " 34 1 0 2 ac44 - - - - - - 4 -"},
            {setAac, kAac, 6, " 0 0 6 b c d e f 0",
             " 0 0 ffffffff ffffffff ffffffff ffffffff ffffffff ffffffff 0"},
            {setAlac, kPcm, 1, " 2c 1 0 6 bb80 - - - - - -"},
            {setWma, wma(0), 0, " 40 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0"},
            {setWma, wma(0), 1, " 40 1 0 a5a50002 1f400 - - ac44 150005 - - 100161 - - - -"},
            {setWma, wma(1), 1, " 40 1 0 a5a50002 1f400 - - ac44 150005 a5a52222 7 100161 - - - -"},
            {setWma, wma(2), 1, " 40 1 0 a5a50002 1f400 - - ac44 150005 a5a52222 7 100161 - - - -"},
            {setWma, wma(3), 1,
             " 40 1 0 a5a50002 1f400 - - ac44 150005 a5a52222 - 100161 - 1f 20 21"},
            {setRa, kRa, 1, " 2c 1 0 1 1f40 1f41 30010 a5a51170 a0 14 6c706376"},
            {setDivx, {}, 0, " 14 1 1 4 0"},
            {setDivx, {{"divx-version", 0}}, 0, " 14 1 1 2 0"},
            {setDivx, {{"divx-version", 3}}, 0, " 14 1 1 10 0"},
            {setDivx, {{"divx-version", 7}}, 0, " 14 1 1 1 0"},
            {setDivx, {{"divx-version", -1}}, 0, " 14 1 1 1 0"},
            {setPacking, {}, 0, " 0 0 0 0 0 3"},
            {setPacking, {{"use-arbitrary-mode", 0}}, 0, " 0 0 0 0 0 3"},
            {setPacking, {{"use-arbitrary-mode", 2}}, 0, " 0 0 0 0 0 1"},
            {setDolby, {}, 1, " 1"},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        for (const bool isMetadata : {false, true}) {
            const sp<Component> node = new Component;
            resultOf(row.setup, isMetadata, row.format, node);
            ASSERT_GT(node->calls.size(), row.call) << row.words;
            EXPECT_EQ(node->calls[row.call].words(), isMetadata ? row.metadataWords : row.words);
        }
    }
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
    const std::string packing = "set 7f000002 0 0 0 0 0 3\n", reorder = "set 7f00001b 10 1 1 1\n";
    const std::string extension = "extension OMX.QCOM.index.param.video.SyncFrameDecodingMode\n";
    const std::string sync = extension + "set 7f0000ee 1\n", user = "set 7f000020 1\n";
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
        std::string calls;
        std::vector<Line> lines;
    } rows[] = {
            {"OMX.qcom.video.decoder.vc", "", 0x3FF, 0, {}, packing, {called, packed}},
            {"OMX.qcom.video.decoder.vc1.secure", nullptr, 0, 0, {}, packing + reorder,
             {called, packed, ordered}},
            {"OMX.qcom.video.decoder.mpeg4", "video/mp4", 0, 2, {{0, -1}, {1, -1}},
             packing + reorder,
             {called, packed, {5, "Failed to set frame packing format on component"}, ordered,
              {5, "Failed to enable timestamp reordering"}}},
            {"other", "video/avi;x", 0, 1, {{2, -1}}, packing + reorder + user,
             {called, packed, ordered, asked, {5, "[other] Failed to enable user-extradata"}}},
            {"other", "video/av", 0x400, 1, {}, packing + sync + user,
             {called, packed, {4, "Thumbnail mode enabled."}, asked}},
            {"other", nullptr, 0x400, 1, {{1, -1}}, packing + extension, {called, packed, noSync}},
            {"other", nullptr, 0x400, 1, {{2, -1}}, packing + sync, {called, packed, noSync}},
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
        std::string calls;
        for (const Call& call : node->calls) calls += call.name + call.words() + "\n";
        EXPECT_EQ(calls, row.calls) << row.component;
        EXPECT_EQ(log.lines(), row.lines) << row.component;
    }
}

}  // namespace
