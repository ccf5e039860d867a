#include <gtest/gtest.h>

#include <array>

#include "support/Component.h"
#include "support/Platform.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace {

using android::AMessage;
using android::IOMXNode;
using android::MediaCodecHelper;
using android::MetaData;
using android::sp;
using test::Component;
using test::Line;
using test::LogCapture;

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

const Numbers kPcm{{"channel-count", 6}, {"sample-rate", 48000}};
const std::string kPcmCalls = "get 02000001\nset 02000001\nget 04000002\nset 04000002\n";

using Operation = int32_t (*)(const sp<AMessage>&, const sp<IOMXNode>&);

int32_t setPcm(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setRawAudioFormat(format, 1, node, false);
}
int32_t setG711(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setG711Format(format, 1, node, false);
}
int32_t setG726(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setG726Format(format, node, false);
}
int32_t setAac(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setAACFormat(format, 0, node, false);
}
int32_t setAlac(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setAlacFormat(format, 0, node, false);
}
int32_t setWma(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setWMAFormat(format, node, false);
}
int32_t setRa(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setRAFormat(format, 7, node, false);
}
int32_t setDivx(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setDivxFormat(format, node, true);
}
int32_t setDolby(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setDolbyFormat(format, 0, node, false);
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

Numbers withValue(Numbers numbers, const char* key, int32_t value) {
    numbers[key] = value;
    return numbers;
}

// What a component is told, in which order, and what comes of it when it answers with an error.
TEST(Component, CallsAndStatuses) {
    const std::string aac = kPcmCalls + "get 04000003\nset 04000003\nset 6f400003\n";
    const std::string wma = "get 0400000a\nset 0400000a\n";
    // clang-format off
    const struct {
        const char* name;
        Operation setup;
        Numbers format;
        std::map<size_t, int32_t> errors;
        int32_t status;
        std::string calls;
        std::vector<Line> lines = {};
    } rows[] = {
            {"pcm", setPcm, kPcm, {}, 0, kPcmCalls},
            {"pcm: last set", setPcm, kPcm, {{3, -5}}, -5, kPcmCalls},
            {"g711", setG711, kPcm, {}, 0, kPcmCalls},
            {"g726", setG726, {{"bitrate", 1}}, {}, 0,
             "get 0400000f\nset 0400000f\nget 04000002\nset 04000002\n"},
            {"g726: no bit rate", setG726, {}, {}, -38, "",
             {{6, "INVALID_OPERATION bitratemode 0"}}},
            {"aac", setAac, kAac, {}, 0, aac},
            {"aac: presentation refused", setAac, kAac, {{6, -5}}, 0, aac},
            {"aac: profile refused", setAac, kAac, {{5, -5}}, -5, aac.substr(0, aac.size() - 13),
             {{5, "did not set AudioAndroidAacPresentation due to error -5 when setting AudioAac"}}},
            {"aac: no profile", setAac, kAac, {{4, -5}}, -5, aac.substr(0, aac.size() - 26)},
            {"aac: pcm refused", setAac, kAac, {{3, -5}}, -5, kPcmCalls},
            {"aac: not ADIF", setAac, withValue(kAac, "aac-format-adif", 0), {}, -1, ""},
            {"aac: ADIF missing", setAac, without(kAac, "aac-format-adif"), {}, -1, ""},
            {"aac: no channels", setAac, without(kAac, "channel-count"), {}, -38, ""},
            {"aac: no rate", setAac, without(kAac, "sample-rate"), {}, -38, ""},
            {"alac", setAlac, kPcm, {}, 0, "get 7fa30c07\nset 7fa30c07\n"},
            {"alac refused", setAlac, kPcm, {{1, -5}}, -5, "get 7fa30c07\nset 7fa30c07\n"},
            {"wma", setWma, kWma, {}, 0, wma},
            {"wma 0", setWma, withValue(kWma, "wma-version", 0), {{1, -5}}, -5, wma},
            {"wma: no get", setWma, kWma, {{0, -5}}, -5, "get 0400000a\n"},
            {"wma 3: no get", setWma, withValue(kWma, "wma-version", 3), {{0, -5}}, 0, wma},
            {"wma 4", setWma, withValue(kWma, "wma-version", 4), {}, 0, ""},
            {"wma -1", setWma, withValue(kWma, "wma-version", -1), {}, 0, ""},
            {"wma: 3 channels", setWma, without(withValue(kWma, "channel-count", 3), "bitrate"),
             {}, -1010, ""},
            {"wma: no version", setWma, without(kWma, "wma-version"), {}, -1, "",
             {{5, "Can't not find kZreKeyWMAVersion"}}},
            {"ra", setRa, kRa, {{1, -5}}, -5, "get 04000004\nset 04000004\n"},
            {"divx", setDivx, {}, {{0, -5}}, -5, "set 7f00000b\n",
             {{5, "Divx version key missing, initializing the version to 1"}}},
            {"dolby", setDolby, {}, {{1, -5}}, -5,
             "extension omx.index.dolby.reconfig_on_endp_change\nset 7f0000ee\n"},
            {"dolby: unknown", setDolby, {}, {{0, -5}}, -5,
             "extension omx.index.dolby.reconfig_on_endp_change\n"},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        const sp<Component> node = new Component;
        node->errors = row.errors;
        EXPECT_EQ(row.setup(messageOf(row.format), node), row.status) << row.name;
        EXPECT_EQ(node->text(), row.calls) << row.name;
        EXPECT_EQ(log.lines(), row.lines) << row.name;
    }
}

// The numbers in the last parameters of a successful setup: offset, size, value.
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
        const test::Call& call = node->calls[row.call];
        EXPECT_EQ(call.bytes.size(), row.size) << row.name;
        for (const Field& field : row.fields) {
            EXPECT_EQ(call.at(field.offset, field.size), field.value)
                    << row.name << " at " << field.offset;
        }
    }
}

TEST(Component, FatalTextsAndTheCallsBeforeThem) {
    const std::string at = "Helper/MediaCodecHelper ";
    const std::string err = "CHECK_EQ( err,(status_t)0) failed: -5 vs. 0";
    const auto missing = [](const std::string& key, const std::string& variable) {
        return "CHECK(msg->findInt32(getMsgKey(kZreKey" + key + ")," + variable + ")) failed.";
    };
    // clang-format off
    const struct {
        Operation setup;
        Numbers format;
        std::map<size_t, int32_t> errors;
        std::string text;
        size_t calls;
    } rows[] = {
            {setPcm, {}, {}, missing("ChannelCount", " &numChannels"), 0},
            {setPcm, {{"channel-count", 2}}, {}, missing("SampleRate", " &sampleRate"), 0},
            {setPcm, kPcm, {{0, -5}}, err, 1},
            {setPcm, kPcm, {{1, -5}},
             "CHECK_EQ( mOMXNode->setParameter(OMX_IndexParamPortDefinition, &def, "
             "sizeof(def)),(status_t)0) failed: -5 vs. 0", 2},
            {setPcm, kPcm, {{2, -5}}, err, 3},
            {setPcm, withValue(kPcm, "channel-count", 9), {},
             "CHECK_EQ( getOMXChannelMapping((size_t)numChannels, "
             "(int*)pcmParams.eChannelMapping),(status_t)0) failed: -22 vs. 0", 3},
            {setG726, {{"bitrate", 1}}, {{0, -5}}, err, 1},
            {setG726, {{"bitrate", 1}}, {{1, -5}}, err, 2},
            {setG726, {{"bitrate", 1}}, {{2, -5}}, err, 3},
            {setAlac, {}, {}, missing("ChannelCount", " &numChannels"), 0},
            {setAlac, kPcm, {{0, -5}}, err, 1},
            {setWma, without(kWma, "wma-adv-enc-opt1"), {},
             missing("WMAAdvEncOpt1", "&advencopt1"), 0},
            {setRa, without(kRa, "ra-fourcc"), {}, missing("RAFourCC", " &raFourCC"), 0},
            {setRa, kRa, {{0, -5}}, err, 1},
    };
    // clang-format on
    for (const auto& row : rows) {
        const sp<Component> node = new Component;
        node->errors = row.errors;
        const auto text = test::fatalText([&] { row.setup(messageOf(row.format), node); });
        EXPECT_EQ(text, at + row.text);
        EXPECT_EQ(node->calls.size(), row.calls) << row.text;
    }
}

// The lack of each key, in the order in which they are asked for: with that one and all after it
// missing, its own text comes.
TEST(Component, MissingKeysInOrder) {
    using Names = std::vector<std::array<const char*, 3>>;  // message key, code, variable
    const Names common = {{"channel-count", "ChannelCount", "numChannels"},
                          {"sample-rate", "SampleRate", "sampleRate"}};
    const Names wma = {{"bitrate", "BitRate", "bitRate"},
                       {"wma-encode-opt", "WMAEncodeOpt", "encodeOpt"},
                       {"wma-block-align", "WMABlockAlign", "blockAlign"},
                       {"wma-bits-per-sample", "WMABitsPerSample", "bitsPerSample"},
                       {"wma-format-tag", "WMAFormatTag", "formatTag"}};
    const Names size = {{"wma-vir-pkt-size", "WMAVirPktSize", "virpktsize"}};
    const Names pro = {{"wma-adv-enc-opt2", "WMAAdvEncOpt2", "advencopt2"}};
    const Names voice = {{"wma-voice-enc-opt1", "WMAVoiceEncOpt1", "voiceencopt1"},
                         {"wma-voice-enc-opt2_0", "WMAVoiceEncOpt20", "voiceencopt20"},
                         {"wma-voice-enc-opt2_1", "WMAVoiceEncOpt21", "voiceencopt21"}};
    const Names ra = {{"ra-actual-rate", "RAActualRate", "raActualRate"},
                      {"bits-per-sample", "BitsPerSample", "bitsPerSample"},
                      {"ra-audio-quality", "RAAudioQuality", "raAudioQuality"},
                      {"ra-flavor-index", "RAFlavorIndex", "raFlavorIndex"},
                      {"ra-bits-per-frame", "RABitsPerFrame", "raBitsPerFrame"},
                      {"ra-granularity", "RAGranularity", "raGranularity"},
                      {"ra-fourcc", "RAFourCC", "raFourCC"}};
    const struct {
        Operation setup;
        Numbers format;
        std::vector<Names> order;
    } rows[] = {{setWma, kWma, {pro, size, common, wma}},
                {setWma, withValue(kWma, "wma-version", 3), {voice, size, common, wma}},
                {setWma, withValue(kWma, "wma-version", 0), {common, wma}},
                {setRa, kRa, {common, ra}}};
    for (const auto& row : rows) {
        Numbers format = row.format;
        Names keys;
        for (const Names& names : row.order) keys.insert(keys.end(), names.begin(), names.end());
        for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
            const auto& [messageKey, code, variable] = *key;
            format.erase(messageKey);
            const sp<Component> node = new Component;
            EXPECT_EQ(
                    test::fatalText([&] { row.setup(messageOf(format), node); }),
                    std::string("Helper/MediaCodecHelper CHECK(msg->findInt32(getMsgKey(kZreKey") +
                            code + "), &" + variable + ")) failed.");
            EXPECT_TRUE(node->calls.empty());
        }
    }
}

TEST(Component, EncodersAndOtherPortsAreLeftAlone) {
    const sp<AMessage> message = messageOf(kRa);
    const sp<MetaData> metadata = new MetaData;
    const sp<Component> component = new Component;
    const sp<IOMXNode> node = component;
    using Helper = MediaCodecHelper;
    EXPECT_EQ(Helper::setRawAudioFormat(message, 0, node, true), -1);
    EXPECT_EQ(Helper::setRawAudioFormat(metadata, 0, node, true), -1);
    EXPECT_EQ(Helper::setG711Format(metadata, 0, node, true), -1);
    EXPECT_EQ(Helper::setG726Format(message, node, true), -1);
    EXPECT_EQ(Helper::setG726Format(metadata, node, true), -1);
    EXPECT_EQ(Helper::setAACFormat(message, 0, node, true), -1);
    EXPECT_EQ(Helper::setAACFormat(metadata, 0, node, true), -1);
    EXPECT_EQ(Helper::setAlacFormat(message, 0, node, true), -1);
    EXPECT_EQ(Helper::setAlacFormat(message, 1, node, false), -1);
    EXPECT_EQ(Helper::setAlacFormat(metadata, 1, node, false), -1);
    EXPECT_EQ(Helper::setWMAFormat(message, node, true), -1);
    EXPECT_EQ(Helper::setWMAFormat(metadata, node, true), -1);
    EXPECT_EQ(Helper::setRAFormat(message, 0, node, true), -1);
    EXPECT_EQ(Helper::setRAFormat(message, 1, node, false), -1);
    EXPECT_EQ(Helper::setRAFormat(metadata, 1, node, false), -1);
    EXPECT_EQ(Helper::setVOCodecFormat(message, "c", node, false), -1);
    EXPECT_EQ(Helper::setVOCodecFormat(metadata, "c", node, false), -1);
    EXPECT_EQ(Helper::setDolbyFormat(message, 0, node, true), -1);
    EXPECT_EQ(Helper::setDivxFormat(metadata, node, true), -1);
    EXPECT_EQ(component->text(), "");
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
        EXPECT_EQ(MediaCodecHelper::getOMXChannelMapping(channels, map.data()), known ? 0 : -22);
        auto expected = known ? maps[channels - 1] : std::vector<int>();
        expected.resize(8, -1);
        EXPECT_EQ(map, expected);
    }
}

TEST(Component, MetadataGoByWayOfAMessage) {
    const sp<MetaData> metadata = new MetaData;
    for (const auto& [key, value] : {std::pair{android::kZreKeyWMAVersion, 0},
                                     {android::kZreKeyChannelCount, 2},
                                     {android::kZreKeySampleRate, 44100},
                                     {android::kZreKeyBitRate, 64000},
                                     {android::kZreKeyWMAEncodeOpt, 1},
                                     {android::kZreKeyWMABlockAlign, 2230},
                                     {android::kZreKeyWMABitsPerSample, 16},
                                     {android::kZreKeyWMAFormatTag, 0x161},
                                     {android::kZreKeyDivXVersion, 2},
                                     {android::kZreKeyAACFormatADIF, 1}}) {
        metadata->setInt32(key, value);
    }
    const sp<Component> component = new Component;
    const sp<IOMXNode> node = component;
    const LogCapture log("MediaCodecHelper");
    EXPECT_EQ(MediaCodecHelper::setWMAFormat(metadata, node, false), 0);
    EXPECT_EQ(component->calls.back().at(32, 2), 2230u);
    EXPECT_EQ(MediaCodecHelper::setG711Format(metadata, 1, node, false), 0);
    EXPECT_EQ(component->calls.back().at(32), 44100u);
    EXPECT_EQ(MediaCodecHelper::setG726Format(metadata, node, false), 0);
    EXPECT_EQ(MediaCodecHelper::setAACFormat(metadata, 0, node, false), 0);
    EXPECT_EQ(component->calls.back().name, "set 6f400003");
    EXPECT_EQ(MediaCodecHelper::setAlacFormat(metadata, 0, node, false), 0);
    EXPECT_EQ(MediaCodecHelper::setDivxFormat(metadata, node, false), 0);
    EXPECT_EQ(component->calls.back().at(12), 8u);
    MediaCodecHelper::configureFramePackingFormat(metadata, node);
    EXPECT_EQ(component->calls.back().at(20), 3u);
    EXPECT_NE(test::fatalText([&] { MediaCodecHelper::setRAFormat(metadata, 0, node, false); }),
              "");
}

TEST(Component, QcomVideoDecoder) {
    const std::string packing = "set 7f000002\n", reorder = "set 7f00001b\n";
    const std::string sync = "extension OMX.QCOM.index.param.video.SyncFrameDecodingMode\n";
    const Line packed{4, "Decoder will be in frame by frame mode"};
    const Line called{5, "configureQCOMVideoDecoder"}, ordered{4, "Enabling timestamp reordering"};
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
            {"OMX.qcom.video.decoder.vc", nullptr, 0x3FF, 0, {}, packing, {called, packed}},
            {"OMX.qcom.video.decoder.vc1.secure", nullptr, 0, 0, {}, packing + reorder,
             {called, packed, ordered}},
            {"OMX.qcom.video.decoder.mpeg4", "video/mp4", 0, 2, {{0, -1}, {1, -1}}, packing +
             reorder, {called, packed, {5, "Failed to set frame packing format on component"},
             ordered, {5, "Failed to enable timestamp reordering"}}},
            {"other", "video/avi;x", 0, 1, {{2, -1}}, packing + reorder + "set 7f000020\n",
             {called, packed, ordered, {4, "[other] User-extradata requested"}, {5,
             "[other] Failed to enable user-extradata"}}},
            {"other", "video/av", 0x400, 1, {}, packing + sync + "set 7f0000ee\nset 7f000020\n",
             {called, packed, {4, "Thumbnail mode enabled."},
             {4, "[other] User-extradata requested"}}},
            {"other", nullptr, 0x400, 1, {{1, -1}}, packing + sync, {called, packed, {5,
             "Failed to get extension for SYNCFRAMEDECODINGMODE"}}},
            {"other", nullptr, 0x400, 1, {{2, -1}}, packing + sync + "set 7f0000ee\n", {called,
             packed, {5, "Failed to get extension for SYNCFRAMEDECODINGMODE"}}},
    };
    // clang-format on
    for (const auto& row : rows) {
        const LogCapture log("MediaCodecHelper");
        const sp<AMessage> format = messageOf({{"enable-extradata-user", row.userData}});
        if (row.fileFormat != nullptr) format->setString("file-format", row.fileFormat);
        const sp<Component> node = new Component;
        node->errors = row.errors;
        MediaCodecHelper::configureQCOMVideoDecoder(format, node, row.flags, row.component);
        EXPECT_EQ(node->text(), row.calls) << row.component;
        EXPECT_EQ(log.lines(), row.lines) << row.component;
        EXPECT_EQ(node->calls[0].bytes.size(), 24u);
    }
    const sp<Component> node = new Component;
    const LogCapture log("MediaCodecHelper");
    MediaCodecHelper::configureFramePackingFormat(messageOf({{"use-arbitrary-mode", 2}}), node);
    EXPECT_EQ(log.lines(), (std::vector<Line>{{4, "Decoder will be in arbitrary mode"}}));
    EXPECT_EQ(node->calls[0].bytes, (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                                          0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
}

}  // namespace
