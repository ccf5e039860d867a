// The forms that take metadata, and the operation that sets up a video decoder as a whole.

#include <gtest/gtest.h>

#include "platform/MetaData.h"
#include "support/Component.h"
#include "support/Platform.h"
#include "zrcodecparser/MetaKeys.h"

namespace {

using namespace test;

TEST(Component, MetadataGoByWayOfAMessage) {
    const sp<android::MetaData> metadata = new android::MetaData;
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
    EXPECT_EQ(Helper::setWMAFormat(metadata, node, false), 0);
    EXPECT_EQ(component->calls.back().at(32, 2), 2230u);
    EXPECT_EQ(Helper::setG711Format(metadata, 1, node, false), 0);
    EXPECT_EQ(component->calls.back().at(32), 44100u);
    EXPECT_EQ(Helper::setG726Format(metadata, node, false), 0);
    EXPECT_EQ(Helper::setAACFormat(metadata, 0, node, false), 0);
    EXPECT_EQ(component->calls.back().name, "set 6f400003");
    EXPECT_EQ(Helper::setAlacFormat(metadata, 0, node, false), 0);
    EXPECT_EQ(Helper::setDivxFormat(metadata, node, false), 0);
    EXPECT_EQ(component->calls.back().at(12), 8u);
    Helper::configureFramePackingFormat(metadata, node);
    EXPECT_EQ(component->calls.back().at(20), 3u);
    EXPECT_NE(test::fatalText([&] { Helper::setRAFormat(metadata, 0, node, false); }), "");
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
        Helper::configureQCOMVideoDecoder(format, node, row.flags, row.component);
        EXPECT_EQ(node->text(), row.calls) << row.component;
        EXPECT_EQ(log.lines(), row.lines) << row.component;
        EXPECT_EQ(node->calls[0].bytes.size(), 24u);
    }
    const sp<Component> node = new Component;
    const LogCapture log("MediaCodecHelper");
    Helper::configureFramePackingFormat(messageOf({{"use-arbitrary-mode", 2}}), node);
    EXPECT_EQ(log.lines(), (std::vector<Line>{{4, "Decoder will be in arbitrary mode"}}));
    EXPECT_EQ(node->calls[0].bytes, (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                                          0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
}

}  // namespace
