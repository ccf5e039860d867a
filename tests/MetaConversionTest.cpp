// Between metadata and messages, and from formats to the metadata of older parsers.

#include <gtest/gtest.h>

#include <map>

#include "support/Platform.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace {

using android::ABuffer;
using android::AMessage;
using android::AString;
using android::MediaCodecHelper;
using android::MetaData;
using android::MetaDataBase;
using android::sp;
using test::Bytes;

uint32_t code(const char* characters) {
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(characters[i]);
    return value;
}

sp<ABuffer> bufferOf(const Bytes& bytes) {
    sp<ABuffer> buffer = new ABuffer(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer->data());
    return buffer;
}

Bytes bytesOf(const sp<ABuffer>& buffer) {
    return {buffer->data(), buffer->data() + buffer->size()};
}

// Codes and keys of each kind, from either end of the table; the codec data in its order.
// clang-format off
const struct {
    const char* metaKey;
    const char* messageKey;
} kInt32Rows[] = {{"brte", "bitrate"},        {"widt", "stride"},   {"#chn", "channel-count"},
                  {"sbit", "Sample-Bits"},    {"hfr ", "hfr"},      {"ragr", "ra-granularity"},
                  {"mxet", "mixed-encoding-type"}, {"en21", "wma-voice-enc-opt2_1"}},
  kInt64Rows[] = {{"bkOf", "bookmark-offset"}, {"enot", "end-of-text"}, {"ntpT", "dlna-npt-offset"}},
  kTextRows[] = {{"ffmt", "file-format"}, {"uSlY", "unsynced-lyrics"}, {"rmod", "key-rec-mode"}},
  kDataRows[] = {{"QDrm", "divx-drm"}, {"wafm", "wavefrom-data"}, {"fLSi", "FLAC-streaminfo"}},
  kCodecDataRows[] = {{"nacc", "aac-codec-specific-data"}, {"rcsd", "raw-codec-specific-data"},
                      {"vcsh", "vc1-sequence-header"},     {"fLaC", "flac-codec-specific-data"},
                      {"wfmt", "adpcm-codec-specific-data"}, {"theo", "theora-codec-specific-data"},
                      {"alac", "alac-codec-specific-data"}, {"rvfi", "rv-codec-specific-data"},
                      {"opaq", "rm-codec-specific-data"}};
// clang-format on

TEST(MetaConversion, KeysByCode) {
    for (const auto& row : kInt32Rows) {
        EXPECT_STREQ(MediaCodecHelper::getMsgKey(static_cast<int>(code(row.metaKey))),
                     row.messageKey);
    }
    EXPECT_STREQ(MediaCodecHelper::getMsgKey(static_cast<int>(code("adts"))), "aac-format-adts");
    EXPECT_STREQ(MediaCodecHelper::getMsgKey(0), "unknown");
}

TEST(MetaConversion, MetadataToMessageAndBack) {
    const sp<MetaData> meta = new MetaData;
    for (const auto& row : kInt32Rows) meta->setInt32(code(row.metaKey), row.metaKey[0]);
    for (const auto& row : kInt64Rows) meta->setInt64(code(row.metaKey), int64_t{1} << 40);
    for (const auto& row : kTextRows) meta->setCString(code(row.metaKey), row.messageKey);
    for (const auto& row : kDataRows) meta->setData(code(row.metaKey), 7, row.messageKey, 3);
    meta->setInt32(code("adts"), 5);
    meta->setInt64(code("srte"), 44100);  // of another type: absent
    meta->setInt32(code("svdt"), 1);
    meta->setInt32(code("xxxx"), 1);

    sp<AMessage> message = new AMessage;
    EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataToMessage(meta, &message), 0);
    const sp<MetaData> back = new MetaData;
    EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMessageToMetaData(message, back), 0);
    for (const auto& row : kInt32Rows) {
        int32_t value = 0;
        EXPECT_TRUE(message->findInt32(row.messageKey, &value)) << row.messageKey;
        EXPECT_EQ(value, row.metaKey[0]);
        EXPECT_TRUE(back->findInt32(code(row.metaKey), &value));
        EXPECT_EQ(value, row.metaKey[0]);
    }
    for (const auto& row : kInt64Rows) {
        int64_t value = 0;
        EXPECT_TRUE(message->findInt64(row.messageKey, &value) &&
                    back->findInt64(code(row.metaKey), &value));
        EXPECT_EQ(value, int64_t{1} << 40);
    }
    for (const auto& row : kTextRows) {
        AString value;
        const char* text = nullptr;
        EXPECT_TRUE(message->findString(row.messageKey, &value) &&
                    back->findCString(code(row.metaKey), &text));
        EXPECT_STREQ(text, row.messageKey);
    }
    for (const auto& row : kDataRows) {
        sp<ABuffer> buffer;
        uint32_t type = 0;
        const void* data = nullptr;
        size_t size = 0;
        ASSERT_TRUE(message->findBuffer(row.messageKey, &buffer) &&
                    back->findData(code(row.metaKey), &type, &data, &size));
        EXPECT_EQ(bytesOf(buffer), Bytes(row.messageKey, row.messageKey + 3));
        EXPECT_EQ(type, code("none"));
        EXPECT_EQ(size, 3u);
    }
    int32_t value = 0;
    sp<ABuffer> buffer;
    EXPECT_TRUE(message->findInt32("aac-format-adts", &value));
    EXPECT_TRUE(message->findInt32("is-adts", &value));
    EXPECT_FALSE(message->findInt32("sample-rate", &value));
    EXPECT_FALSE(message->findBuffer("sphere-view", &buffer));
    EXPECT_NE(test::fatalText([&] {
                  MediaCodecHelper::ZRCodeConvertMessageToMetaData(nullptr, back);
              }).find("Helper/MediaCodecHelper CHECK((format != NULL) && (meta != NULL)) failed."),
              std::string::npos);
}

TEST(MetaConversion, CodecData) {
    // In the order in which they are looked for.
    const char* order[] = {"vcsh", "fLaC", "wfmt", "theo", "opaq", "rvfi", "alac"};
    for (size_t i = std::size(order); i > 0; --i) {
        const sp<MetaData> meta = new MetaData;
        const sp<AMessage> own = new AMessage;
        for (size_t k = i - 1; k < std::size(order); ++k) {
            meta->setData(code(order[k]), 1, order[k], 4);
            for (const auto& row : kCodecDataRows) {
                if (code(row.metaKey) == code(order[k])) {
                    own->setBuffer(row.messageKey, bufferOf(Bytes(order[k], order[k] + 4)));
                }
            }
        }
        const void* data = nullptr;
        size_t size = 0;
        ASSERT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size), 0);
        EXPECT_EQ(std::string(static_cast<const char*>(data), size), order[i - 1]);
        EXPECT_EQ(bytesOf(MediaCodecHelper::ZRgetCodecSpecificData(own)),
                  Bytes(order[i - 1], order[i - 1] + 4));
    }
    const void* data = nullptr;
    size_t size = 77;
    EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(sp<MetaData>(new MetaData), data, size), -1);
    EXPECT_EQ(size, 77u);
    EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(sp<AMessage>(new AMessage)), nullptr);

    // Under "csd-0" the last of the table counts.
    MetaDataBase all;
    for (const auto& row : kCodecDataRows) {
        all.setData(code(row.metaKey), 1, row.metaKey, 4);
        sp<AMessage> message = new AMessage;
        MediaCodecHelper::ZRCodeConvertMetaDataBaseToMessage(&all, &message);
        sp<ABuffer> csd;
        ASSERT_TRUE(message->findBuffer("csd-0", &csd));
        EXPECT_EQ(bytesOf(csd), Bytes(row.metaKey, row.metaKey + 4));
        int32_t isCsd = 0;
        int64_t time = -1;
        EXPECT_TRUE(csd->meta()->findInt32("csd", &isCsd) &&
                    csd->meta()->findInt64("timeUs", &time));
        EXPECT_EQ(isCsd, 1);
        EXPECT_EQ(time, 0);
        EXPECT_FALSE(message->findBuffer(row.messageKey, &csd));
    }
}

const sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

std::string mimeOf(const MetaDataBase& meta) {
    const char* mime = "(none)";
    meta.findCString(code("mime"), &mime);
    return mime;
}

TEST(LegacyBridge, MimeTypes) {
    const std::map<int, std::string> accepted = {
            {101, "video/mpeg2"},   {102, "video/mp4v-es"}, {104, "video/avc"},
            {119, "video/mpeg2"},   {129, "video/hevc"},    {201, "audio/mp4a-latm"},
            {202, "audio/mpeg"},    {203, "audio/ac3"},     {204, "audio/eac3"},
            {205, "audio/dts"},     {206, "audio/raw"},     {219, "audio/mpeg"},
            {225, "audio/dts-lbr"}, {232, "audio/ac4"}};
    host::Device everything = host::typicalPhone();
    for (const auto& [codec, mime] : accepted) everything.decoders.push_back(mime);
    for (const char* mime : {"video/3gpp", "audio/flac", "audio/mha1"})
        everything.decoders.push_back(mime);
    everything.codecInfoAvailable = false;  // nobody asks for it here
    const test::DeviceScope scope(everything);
    for (int codec = 90; codec < 320; ++codec) {
        MetaDataBase meta;
        const test::LogCapture log;
        EXPECT_EQ(helper->SupportCodecEx(codec, meta), 0);
        const auto row = accepted.find(codec);
        const bool audio = codec >= 200 && codec <= 234;
        EXPECT_EQ(mimeOf(meta), row != accepted.end() ? row->second
                                : audio               ? "audio/notsupport"
                                                      : "video/notsupport")
                << codec;
        int32_t mode = -1;
        EXPECT_EQ(meta.findInt32(code("ArbM"), &mode), codec == 102);
        EXPECT_EQ(mode, codec == 102 ? 0 : -1);
    }
}

TEST(LegacyBridge, WhatTheDeviceLacks) {
    const test::Line unsupported{5, "#### Can not find Codec... Unsupported codec!!!!!"};
    const test::Line dead{6, "#### mediaserver is not alive !!so return error"};
    const test::Line noList{6, "#### mediacodec list instance returned NULL"};
    const struct {
        int codec;
        host::Device device;
        int32_t status;
        const char* mime;
        std::vector<test::Line> last;
    } rows[] = {
            {101, {}, 0, "video/mpeg2", {}},
            {204, {}, 0, "audio/eac3", {}},
            {104, {}, 0, "video/notsupport", {unsupported}},
            {123, {.divxAlternative = true}, 0, "video/notsupport", {unsupported}},
            {233, {}, 0, "audio/notsupport", {unsupported}},
            {104, {.mediaServerAlive = false}, INT32_MIN, "video/notsupport", {dead}},
            {203, {.codecListAvailable = false}, INT32_MIN, "audio/notsupport", {noList}},
            {201, {.codecListAvailable = false}, INT32_MIN, "audio/notsupport", {noList}},
            {201,
             {.mediaServerAlive = false},
             INT32_MIN,
             "audio/notsupport",
             {{6, "checkIsZRSWCodec - mediaserver is not alive! return error"}}},
    };
    for (const auto& row : rows) {
        const test::DeviceScope scope(row.device);
        MetaDataBase meta;
        const test::LogCapture log;
        EXPECT_EQ(helper->SupportCodecEx(row.codec, meta), row.status) << row.codec;
        EXPECT_EQ(mimeOf(meta), row.mime) << row.codec;
        if (row.last.empty()) {
            EXPECT_TRUE(log.lines().empty());
        } else {
            ASSERT_FALSE(log.lines().empty());
            EXPECT_EQ(log.lines().back(), row.last[0]) << row.codec;
        }
    }
}

TEST(LegacyBridge, FormatEntries) {
    const char* texts[][2] = {
            {"mime", "mime"},           {"album", "albu"},    {"artist", "arti"},
            {"albumartist", "aart"},    {"composer", "comp"}, {"genre", "genr"},
            {"title", "titl"},          {"year", "year"},     {"author", "auth"},
            {"cdtracknum", "cdtr"},     {"discnum", "dnum"},  {"compilation", "cpil"},
            {"unsynced-lyrics", "uSlY"}};
    const test::Format format;
    for (const auto& row : texts) AMediaFormat_setString(format.get(), row[0], row[1]);
    AMediaFormat_setInt32(format.get(), "width", 640);
    AMediaFormat_setInt32(format.get(), "height", 480);
    AMediaFormat_setInt32(format.get(), "dsd-sample-rate", 2822400);
    AMediaFormat_setBuffer(format.get(), "csd-hevc", "hevc!", 5);
    AMediaFormat_setBuffer(format.get(), "albumart", "art", 3);

    sp<MetaData> meta = new MetaData;
    EXPECT_EQ(helper->convertZRAMediaFormatToMeta(format.get(), meta), 0);
    for (const auto& row : texts) {
        const char* text = nullptr;
        ASSERT_TRUE(meta->findCString(code(row[1]), &text)) << row[1];
        EXPECT_STREQ(text, row[1]);
    }
    int32_t value = 0;
    EXPECT_TRUE(meta->findInt32(code("widt"), &value) && value == 640);
    EXPECT_TRUE(meta->findInt32(code("heig"), &value) && value == 480);
    EXPECT_TRUE(meta->findInt32(code("Dsrt"), &value));
    EXPECT_EQ(value, 0);
    EXPECT_FALSE(meta->findInt32(code("mxet"), &value));
    for (const auto& [key, type, bytes] :
         {std::tuple{"hvcc", "hvcc", "hevc!"}, {"albA", "none", "art"}}) {
        uint32_t found = 0;
        const void* data = nullptr;
        size_t size = 0;
        ASSERT_TRUE(meta->findData(code(key), &found, &data, &size));
        EXPECT_EQ(found, code(type));
        EXPECT_EQ(std::string(static_cast<const char*>(data), size), bytes);
    }

    AMediaFormat_setInt32(format.get(), "encoding-type", 2);
    MetaDataBase base;
    helper->convertZRAMediaFormatToMeta(format.get(), &base);
    EXPECT_TRUE(base.findInt32(code("Dsrt"), &value) && value == 2);
    EXPECT_TRUE(base.findInt32(code("mxet"), &value) && value == 2);
}

TEST(LegacyBridge, Statuses) {
    const int rows[][2] = {{INT32_MIN, -10000}, {-1011, -10006}, {-1007, -10001}, {-1004, -10007},
                           {-38, -10005},       {-1, -1},        {0, 0},          {5, 5}};
    for (const auto& row : rows) EXPECT_EQ(helper->convertZRErrorToAMediaError(row[0]), row[1]);
}

}  // namespace
