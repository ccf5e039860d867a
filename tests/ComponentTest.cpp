#include <gtest/gtest.h>

#include "support/ComponentSetup.h"
#include "support/Platform.h"

namespace {

using namespace test;

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

}  // namespace
