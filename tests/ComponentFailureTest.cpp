// What ends the process, and what is left alone.

#include <gtest/gtest.h>

#include <array>

#include "support/ComponentSetup.h"
#include "support/Platform.h"

namespace {

using namespace test;

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
    const sp<android::MetaData> metadata = new android::MetaData;
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

}  // namespace
