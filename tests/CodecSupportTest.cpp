#include <sstream>

#include "support/Helper.h"

namespace {

using test::DeviceScope;
using test::Format;
using test::helper;

// Everything that SupportCodecEx stores and logs, or the text that it ends in.
std::string chosen(int codecType, const host::Device& device, bool useArbitraryMode = true) {
    const DeviceScope scope(device);
    const Format format;
    const auto choose = [&] {
        EXPECT_EQ(helper->SupportCodecEx(codecType, format.get(), useArbitraryMode), 1);
    };
    std::string fatal;
    const std::string trace = test::trace(format, [&] { fatal = test::fatalText(choose); });
    return trace + fatal;
}

std::string mime(const std::string& text) {
    return "mime: string(" + text + ")";
}

// What checkIsZRSWCodec logs and answers.
std::string probed(int codecType, const host::Device& device, bool before) {
    const DeviceScope scope(device);
    bool isSoftware = before;
    int32_t result = 0;
    const std::string trace =
            test::trace({}, [&] { result = helper->checkIsZRSWCodec(codecType, isSoftware); });
    return trace + (result == 0 ? "" : " fails") + (isSoftware == before ? "" : " and says so");
}

// Codes and the decoder that the device has for each, whose type is stored and nothing else.
constexpr const char* kPlainCodes =
        "101 video/mpeg2  103 video/3gpp  104 video/avc  105 video/x-ms-wmv  "
        "106 video/x-ms-wmv7  108 video/x-ms-wmv  109 video/x-ms-wmv  110 video/x-ms-wmv  "
        "114 video/mjpg  117 video/x-vnd.on2.vp8  119 video/mpeg2  121 video/theora  "
        "127 video/x-pn-realvideo  128 video/x-vnd.on2.vp9  129 video/hevc  130 video/av01  "
        "131 video/dolby-vision  203 audio/ac3  204 audio/eac3  205 audio/dts  206 audio/raw  "
        "207 audio/flac  208 audio/vorbis  215 audio/3gpp  218 audio/adpcm  "
        "220 audio/g711-alaw  221 audio/g711-mlaw  222 audio/g726  223 audio/x-pn-realaudio  "
        "224 audio/amr-wb  225 audio/dts-lbr  227 audio/mpeg-L1  228 audio/opus  "
        "233 audio/mha1  234 audio/mhm1";

struct Row {
    int codecType;
    const char* decoder;
    const char* mime;
    const char* extras;
    const char* alternative = nullptr;  // a second decoder, which is looked for first
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
    {201, "audio/mp4a-latm",     "audio/mp4a-latm",    "", "audio/mp4a-latm"},
    {202, "audio/mpeg",          "audio/mpeg",         ", Layer-info: int32(3)", "audio/mpeg"},
    {209, "audio/x-zr-ms-wma",   "audio/notsupport",   ""},
    {210, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(0), wma-format-tag: int32(352)"},
    {211, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(0), wma-format-tag: int32(353)"},
    {212, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(1), wma-format-tag: int32(354)"},
    {213, "audio/x-zr-ms-wma",   "audio/x-zr-ms-wma",  ", wma-version: int32(2), wma-format-tag: int32(355)"},
    {214, "audio/zr-wma-voice",  "audio/zr-wma-voice", ", wma-version: int32(3), wma-format-tag: int32(10)"},
    {216, "audio/evrc",          "audio/evrc",         "", "audio/x-zr-evrc"},
    {217, "audio/qcelp",         "audio/qcelp",        "", "audio/x-zr-qcelp"},
    {219, "audio/mpeg-L2",       "audio/mpeg",         ", Layer-info: int32(2)", "audio/mpeg"},
    {226, "audio/aac-adts",      "audio/aac-adts",     "", "audio/mp4a-latm"},
    {229, "audio/alac",          "audio/alac",         "", "audio/x-zr-alac"},
    {230, "audio/dop",           "audio/notsupport",   ""},
    {231, "audio/dsd",           "audio/notsupport",   ""},
    {232, "audio/ac4",           "audio/notsupport",   ""},
};
// clang-format on

void checkRow(const Row& row) {
    const auto& [code, decoder, type, extras, alternative] = row;
    const host::Device plain{{decoder}};
    const bool offered = code == 101 || code == 204 || code == 233 || code == 234;
    const char* refused = code < 200 ? "video/notsupport" : "audio/notsupport";
    EXPECT_EQ(chosen(code, {}), mime(offered ? type : refused)) << code;
    if (alternative == nullptr || std::string(alternative) != decoder) {
        EXPECT_EQ(chosen(code, plain), mime(type) + extras) << code;
        EXPECT_EQ(probed(code, plain, false), "") << code;
    }
    if (alternative == nullptr) return;
    const std::string found =
            std::string("4 \"#### Succuss to find ZRSWCodec in mediaCodecList : ") + alternative +
            '"';
    for (const host::Device& device : {host::Device{{alternative}}, {{decoder, alternative}}}) {
        EXPECT_EQ(chosen(code, device), found + '\n' + mime(alternative) + extras) << code;
        EXPECT_EQ(probed(code, device, false), found + " and says so") << code;
        EXPECT_EQ(probed(code, device, true), found) << code;
    }
}

TEST(CodecSupport, EachCodeAsksForItsDecoderAndStoresItsKeys) {
    std::istringstream plain(kPlainCodes);
    int code = 0;
    size_t count = 0;
    for (std::string type; plain >> code >> type; ++count) {
        checkRow({code, type.c_str(), type.c_str(), ""});
    }
    for (const Row& row : kRows) checkRow(row);
    EXPECT_EQ(count + std::size(kRows), 31u + 34u);
    EXPECT_EQ(chosen(125, {.decoders = {"video/divx"}}, false),
              mime("video/divx") + ", divx-version: int32(3), use-arbitrary-mode: int32(0)");
}

TEST(CodecSupport, WhatTheDeviceLacks) {
    const std::string noVideo = mime("video/notsupport"), noAudio = mime("audio/notsupport");
    const std::string asMpeg4 = mime("video/mp4v-es") + ", use-arbitrary-mode: int32(1)";
    const std::string asDivx =
            mime("video/divx") + ", divx-version: int32(2), use-arbitrary-mode: int32(1)";
    const std::string die = "6 \"mediaserver die !!\"";
    const std::string noServiceList = "6 \"Can't get codec list\"";
    const std::string notAlive = "\n6 \"#### mediaserver is not alive !!so return error\"";
    const std::string probe = "\n6 \"checkIsZRSWCodec - mediaserver is not alive! return error\"";
    const std::string noList = "6 \"#### mediacodec list instance returned NULL\"";
    const host::Device dead{.mediaServerAlive = false}, noService{.serverHasCodecList = false};
    const host::Device listless{.codecListAvailable = false};
    const struct {
        int codecType;
        host::Device device;
        std::string trace;
    } cases[] = {
            {201, {.decoders = {"audio/x-zr-aac"}}, noAudio},
            {207, {.decoders = {"audio/x-zr-flac"}}, noAudio},
            {123, {.divxAlternative = true}, asMpeg4},
            {124, {.divxAlternative = true}, asMpeg4},
            {125, {.divxAlternative = true}, asMpeg4},
            {123, {.divxAlternative = false}, noVideo},
            {118, {.divxAlternative = true}, noVideo},
            {124, {.decoders = {"video/divx"}, .divxAlternative = true}, asDivx},
            {200, dead, noAudio},
            {104, dead, die + notAlive},
            {201, dead, die + probe},
            {104, noService, noServiceList + notAlive},
            {216, noService, noServiceList + probe},
            {104, listless, noList},
            {229, listless, noList},
            {104,
             {.decoders = {"video/avc"}, .codecInfoAvailable = false},
             "Helper/MediaExtractorHelper CHECK(info != NULL) failed."},
    };
    for (const auto& c : cases) EXPECT_EQ(chosen(c.codecType, c.device), c.trace) << c.codecType;
    for (const int code : {INT32_MIN, -1, 0, 99, 100, 132, 150, 199, 235, 250, 301, INT32_MAX}) {
        EXPECT_EQ(chosen(code, dead), noVideo) << code;
        EXPECT_EQ(probed(code, {}, true), "") << code;
    }
    EXPECT_EQ(probed(104, dead, false), die + probe + " fails");
    EXPECT_EQ(probed(203, listless, true), noList + " fails");
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
