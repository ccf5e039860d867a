#include <gtest/gtest.h>

#include <sstream>

#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::DeviceScope;
using test::Format;
using test::Line;

constexpr int kInfo = 4;
constexpr int kError = 6;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

// Everything that SupportCodecEx stores, as text.
std::string chosen(int codecType, const host::Device& device, bool useArbitraryMode = true) {
    const DeviceScope scope(device);
    const Format format;
    EXPECT_EQ(helper->SupportCodecEx(codecType, format.get(), useArbitraryMode), 1);
    return format.text();
}

std::string mime(const std::string& text) {
    return "mime: string(" + text + ")";
}

// Codes and the decoder that the device has for each, whose type is stored and nothing else.
constexpr const char* kPlainCodes =
        "101 video/mpeg2  103 video/3gpp  104 video/avc  105 video/x-ms-wmv  "
        "106 video/x-ms-wmv7  108 video/x-ms-wmv  109 video/x-ms-wmv  110 video/x-ms-wmv  "
        "114 video/mjpg  117 video/x-vnd.on2.vp8  119 video/mpeg2  121 video/theora  "
        "127 video/x-pn-realvideo  128 video/x-vnd.on2.vp9  129 video/hevc  130 video/av01  "
        "131 video/dolby-vision  201 audio/mp4a-latm  203 audio/ac3  204 audio/eac3  "
        "205 audio/dts  206 audio/raw  207 audio/flac  208 audio/vorbis  215 audio/3gpp  "
        "216 audio/evrc  217 audio/qcelp  218 audio/adpcm  220 audio/g711-alaw  "
        "221 audio/g711-mlaw  222 audio/g726  223 audio/x-pn-realaudio  224 audio/amr-wb  "
        "225 audio/dts-lbr  226 audio/aac-adts  227 audio/mpeg-L1  228 audio/opus  "
        "229 audio/alac  233 audio/mha1  234 audio/mhm1";

struct Row {
    int codecType;
    const char* decoder;
    const char* mime;
    const char* extras;
};

// clang-format off
constexpr Row kRows[] = {
    {102, "video/mp4v-es",       "video/mp4v-es",      ", use-arbitrary-mode: int32(1)"},
    {107, "video/x-ms-wmv8",     "video/x-ms-wmv7",    ""},
    {111, "video/x-ms-mpeg4",    "audio/notsupport",   ""},
    {112, "video/x-ms-mpeg4v2",  "audio/notsupport",   ""},
    {113, "video/x-ms-mpeg4v3",  "audio/notsupport",   ""},
    {115, "video/x-vnd.on2.vp8", "audio/notsupport",   ""},
    {116, "video/x-vnd.on2.vp8", "audio/notsupport",   ""},
    {118, "video/divx311",       "video/divx311",      ", divx-version: int32(0), use-arbitrary-mode: int32(0)"},
    {120, "video/mp4v-es",       "video/mp4v-es",      ", use-arbitrary-mode: int32(1)"},
    {122, "video/3gpp",          "audio/notsupport",   ""},
    {123, "video/divx",          "video/divx",         ", divx-version: int32(1), use-arbitrary-mode: int32(1)"},
    {124, "video/divx",          "video/divx",         ", divx-version: int32(2), use-arbitrary-mode: int32(1)"},
    {125, "video/divx",          "video/divx",         ", divx-version: int32(3), use-arbitrary-mode: int32(1)"},
    {126, "video/mp4v-es",       "video/mp4v-es",      ", use-arbitrary-mode: int32(1)"},
    {202, "audio/mpeg",          "audio/mpeg",         ", Layer-info: int32(3)"},
    {209, "audio/x-zr-ms-wma",   "audio/notsupport",   ""},
    {210, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(0), wma-format-tag: int32(352)"},
    {211, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(0), wma-format-tag: int32(353)"},
    {212, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(1), wma-format-tag: int32(354)"},
    {213, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(2), wma-format-tag: int32(355)"},
    {214, "audio/zr-wma-voice",  "audio/zr-wma-voice", ", wma-version: int32(3), wma-format-tag: int32(10)"},
    {219, "audio/mpeg-L2",       "audio/mpeg",         ", Layer-info: int32(2)"},
    {230, "audio/dop",           "audio/notsupport",   ""},
    {231, "audio/dsd",           "audio/notsupport",   ""},
    {232, "audio/ac4",           "audio/notsupport",   ""},
};
// clang-format on

void checkRow(int code, const std::string& decoder, const std::string& type,
              const std::string& extras) {
    EXPECT_EQ(chosen(code, {.decoders = {decoder}}), mime(type) + extras) << code;
    const bool offered = code == 101 || code == 204 || code == 233 || code == 234;
    const char* refused = code < 200 ? "video/notsupport" : "audio/notsupport";
    EXPECT_EQ(chosen(code, {}), mime(offered ? type : refused)) << code;
}

TEST(CodecSupport, EachCodeAsksForItsDecoderAndStoresItsKeys) {
    std::istringstream plain(kPlainCodes);
    int code = 0;
    size_t count = 0;
    for (std::string type; plain >> code >> type; ++count) checkRow(code, type, type, "");
    for (const Row& row : kRows) checkRow(row.codecType, row.decoder, row.mime, row.extras);
    EXPECT_EQ(count + std::size(kRows), 31u + 34u);
    EXPECT_EQ(chosen(125, {.decoders = {"video/divx"}}, false),
              mime("video/divx") + ", divx-version: int32(3), use-arbitrary-mode: int32(0)");
}

TEST(CodecSupport, CodesWithoutACodecNeedNoServer) {
    const host::Device dead{.mediaServerAlive = false};
    for (const int code : {INT32_MIN, -1, 0, 99, 100, 132, 150, 199, 235, 250, 301, INT32_MAX}) {
        EXPECT_EQ(chosen(code, dead), mime("video/notsupport")) << code;
    }
    EXPECT_EQ(chosen(200, dead), mime("audio/notsupport"));
}

TEST(CodecSupport, AlternativesAreTakenWhenTheyHaveADecoder) {
    const struct {
        int codecType;
        std::vector<std::string> decoders;
        const char* mime;
    } cases[] = {
            {216, {"audio/x-zr-evrc"}, "audio/x-zr-evrc"},
            {216, {"audio/evrc", "audio/x-zr-evrc"}, "audio/x-zr-evrc"},
            {217, {"audio/qcelp", "audio/x-zr-qcelp"}, "audio/x-zr-qcelp"},
            {229, {"audio/x-zr-alac"}, "audio/x-zr-alac"},
            {226, {"audio/aac-adts", "audio/mp4a-latm"}, "audio/mp4a-latm"},
            {219, {"audio/mpeg"}, "audio/mpeg), Layer-info: int32(2"},
            {201, {"audio/x-zr-aac"}, "audio/notsupport"},
            {207, {"audio/x-zr-flac"}, "audio/notsupport"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(chosen(c.codecType, {.decoders = c.decoders}), mime(c.mime)) << c.codecType;
    }
}

TEST(CodecSupport, DivxBecomesMpeg4OnlyWhereTheDeviceSaysSo) {
    const std::string asMpeg4 = mime("video/mp4v-es") + ", use-arbitrary-mode: int32(1)";
    for (const int code : {123, 124, 125}) {
        EXPECT_EQ(chosen(code, {.divxAlternative = true}), asMpeg4) << code;
        EXPECT_EQ(chosen(code, {.divxAlternative = false}), mime("video/notsupport")) << code;
        EXPECT_EQ(chosen(code, {.divxAlternative = std::nullopt}), mime("video/notsupport"))
                << code;
    }
    EXPECT_EQ(chosen(124, {.decoders = {"video/divx"}, .divxAlternative = true}),
              mime("video/divx") + ", divx-version: int32(2), use-arbitrary-mode: int32(1)");
    EXPECT_EQ(chosen(118, {.divxAlternative = true}), mime("video/notsupport"));
}

const Line kDie{kError, "mediaserver die !!"};
const Line kNoServiceList{kError, "Can't get codec list"};
const Line kNotAlive{kError, "#### mediaserver is not alive !!so return error"};
const Line kProbeFailed{kError, "checkIsZRSWCodec - mediaserver is not alive! return error"};
const Line kNoList{kError, "#### mediacodec list instance returned NULL"};

TEST(CodecSupport, UnreachableServicesLeaveNoMimeAndSayWhy) {
    const struct {
        host::Device device;
        int codecType;
        std::vector<Line> lines;
    } cases[] = {
            {{.mediaServerAlive = false}, 104, {kDie, kNotAlive}},
            {{.mediaServerAlive = false}, 201, {kDie, kProbeFailed}},
            {{.serverHasCodecList = false}, 104, {kNoServiceList, kNotAlive}},
            {{.serverHasCodecList = false}, 216, {kNoServiceList, kProbeFailed}},
            {{.codecListAvailable = false}, 104, {kNoList}},
            {{.codecListAvailable = false}, 229, {kNoList}},
    };
    for (const auto& c : cases) {
        const test::LogCapture log;
        EXPECT_EQ(chosen(c.codecType, c.device), "") << c.codecType;
        EXPECT_EQ(log.lines(), c.lines) << c.codecType;
    }
}

TEST(CodecSupport, MissingCodecInfoIsFatal) {
    const DeviceScope scope({.decoders = {"video/avc"}, .codecInfoAvailable = false});
    const Format format;
    EXPECT_EQ(test::fatalText([&] { helper->SupportCodecEx(104, format.get(), false); }),
              "Helper/MediaExtractorHelper CHECK(info != NULL) failed.");
    EXPECT_EQ(format.text(), "");
}

TEST(CodecSupport, SoftwareProbe) {
    const Line found{kInfo, "#### Succuss to find ZRSWCodec in mediaCodecList : audio/x-zr-qcelp"};
    const struct {
        int codecType;
        host::Device device;
        int result;
        bool found;
        std::vector<Line> lines;
    } cases[] = {
            {217, {.decoders = {"audio/x-zr-qcelp"}}, 0, true, {found}},
            {217, {.decoders = {"audio/qcelp"}}, 0, false, {}},
            {203, {.decoders = {"audio/ac3"}}, 0, false, {}},
            {104, {.decoders = {"video/avc"}}, 0, false, {}},
            {104, {.mediaServerAlive = false}, -1, false, {kDie, kProbeFailed}},
            {203, {.codecListAvailable = false}, -1, false, {kNoList}},
    };
    for (const auto& c : cases) {
        const DeviceScope scope(c.device);
        for (const bool before : {false, true}) {
            const test::LogCapture log;
            bool isSoftware = before;
            EXPECT_EQ(helper->checkIsZRSWCodec(c.codecType, isSoftware), c.result) << c.codecType;
            EXPECT_EQ(isSoftware, before || c.found) << c.codecType;
            EXPECT_EQ(log.lines(), c.lines) << c.codecType;
        }
    }
}

TEST(CodecSupport, CodeOfAMimeType) {
    const std::pair<const char*, int> cases[] = {
            {"audio/mp4a-latm", 201}, {"audio/mpeg", 202},
            {"audio/mpeg-L2", 219},   {"audio/aac-adts", 226},
            {"audio/x-zr-alac", 229}, {"audio/x-zr-ms-wma", 209},
            {"audio/mhm1", 234},      {"audio/MPEG", 200},
            {"video/avc", 200},       {"", 200}};
    for (const auto& [mime, code] : cases) {
        const Format format;
        AMediaFormat_setString(format.get(), "mime", mime);
        EXPECT_EQ(helper->getCodecType(format.get()), code) << mime;
    }
    EXPECT_EQ(helper->getCodecType(Format().get()), 0x7FFFFFFF);
}

}  // namespace
