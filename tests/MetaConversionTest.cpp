// Between metadata and messages, and from formats to the metadata of older parsers.

#include <gtest/gtest.h>

#include <map>
#include <variant>

#include "platform/Buffer.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "support/Platform.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::ABuffer;
using android::AMessage;
using android::AString;
using android::MediaCodecHelper;
using android::MetaData;
using android::MetaDataBase;
using android::sp;
using test::Bytes;

bool findsAnyType = false;

uint32_t code(std::string_view characters) {
    uint32_t value = 0;
    for (const char c : characters) value = value << 8 | static_cast<uint8_t>(c);
    return value;
}

// Nothing, or what stands under a key of either store.
using Value = std::variant<std::monostate, int32_t, int64_t, std::string, Bytes>;

Value valueIn(const MetaDataBase& meta, uint32_t key) {
    int32_t number = 0;
    int64_t longNumber = 0;
    const char* text = nullptr;
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    if (meta.findInt32(key, &number)) return number;
    if (meta.findInt64(key, &longNumber)) return longNumber;
    if (meta.findCString(key, &text)) return text;
    if (!meta.findData(key, &type, &data, &size)) return {};
    return Bytes(static_cast<const uint8_t*>(data), static_cast<const uint8_t*>(data) + size);
}

uint32_t typeIn(const MetaDataBase& meta, const char* key) {
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    return meta.findData(code(key), &type, &data, &size) ? type : 0;
}

Value valueIn(const sp<AMessage>& message, const char* key) {
    int32_t number = 0;
    int64_t longNumber = 0;
    AString text;
    sp<ABuffer> buffer;
    if (message->findInt32(key, &number)) return number;
    if (message->findInt64(key, &longNumber)) return longNumber;
    if (message->findString(key, &text)) return text.c_str();
    if (!message->findBuffer(key, &buffer)) return {};
    return Bytes(buffer->data(), buffer->data() + buffer->size());
}

// Code and message key of every row, by kind of value; the codec data in their order.
enum Kind { kInt32 = 1, kInt64, kText, kData, kCodecData };  // as in Value, but for codec data
// clang-format off
const std::vector<std::pair<std::string, const char*>> kRows[] = {
        {},
        {{"brte", "bitrate"}, {"DivX", "divx-version"}, {"eopt", "wma-encode-opt"},
         {"blka", "wma-block-align"}, {"wmav", "wma-version"}, {"ade1", "wma-adv-enc-opt1"},
         {"ade2", "wma-adv-enc-opt2"}, {"fmtt", "wma-format-tag"}, {"bsps", "wma-bits-per-sample"},
         {"vpks", "wma-vir-pkt-size"}, {"chmk", "wma-channel-mask"},
         {"enc1", "wma-voice-enc-opt1"}, {"en20", "wma-voice-enc-opt2_0"},
         {"en21", "wma-voice-enc-opt2_1"}, {"widt", "stride"}, {"heig", "slice-height"},
         {"adif", "aac-format-adif"}, {"altp", "aac-format-ltp"}, {"adts", "aac-format-adts"},
         {"aacp", "aac-profile"}, {"dtss", "dts-subtype"}, {"ArbM", "use-arbitrary-mode"},
         {"ESmS", "smooth-streaming"}, {"hfr ", "hfr"}, {"srte", "sample-rate"},
         {"#chn", "channel-count"}, {"bPsp", "bits-per-sample"}, {"sbit", "Sample-Bits"},
         {"rotA", "rotation-degrees"}, {"inpS", "max-input-size"}, {"MQls", "mqa-light-state"},
         {"MOsr", "mqa-original-sample-rate"}, {"Rsrt", "real-sample-rate"},
         {"Rsbt", "real-sample-bits"}, {"rafc", "ra-fourcc"}, {"raar", "ra-actual-rate"},
         {"raaq", "ra-audio-quality"}, {"rafi", "ra-flavor-index"}, {"rabf", "ra-bits-per-frame"},
         {"ragr", "ra-granularity"}, {"layr", "Layer-info"}, {"PCMe", "pcm-encoding"},
         {"mibs", "min-block-size"}, {"mabs", "max-block-size"}, {"mifs", "min-frame-size"},
         {"mafs", "max-frame-size"}, {"rotO", "rotation-offset"}, {"FPS1", "editor-fps-100"},
         {"SncN", "editor-sync-num"}, {"edof", "edit-offset"}, {"adzc", "audio-zoom"},
         {"m4dp", "mpeg4-data-partition"}, {"SMod", "dlna-scan-mode"}, {"adzx", "audio-zoom-x"},
         {"adzy", "audio-zoom-y"}, {"adze", "audio-zoom-enable"}, {"SA3D", "foa-info"},
         {"prdm", "play-ready"}, {"adts", "is-adts"}, {"noff", "no-offload"},
         {"Dsrt", "dsd-sample-rate"}, {"zrmh", "is-zr-mpegh"}, {"mxet", "mixed-encoding-type"}},
        {{"bkOf", "bookmark-offset"}, {"bkSz", "bookmark-size"}, {"rfOf", "wav-RIFF-offset"},
         {"rfSz", "wav-RIFF-size"}, {"ltOf", "wav-LIST-offset"}, {"ltSz", "wav-LIST-size"},
         {"pdOf", "flac-padding-offset"}, {"pdSz", "flac-padding-size"}, {"enot", "end-of-text"},
         {"stss", "exist-sync-frame"}, {"ntpT", "dlna-npt-offset"}},
        {{"ffmt", "file-format"}, {"uSlY", "unsynced-lyrics"}, {"vrty", "video-record-type"},
         {"rmod", "key-rec-mode"}, {"buid", "key-burst-id"}, {"umsg", "user-message"}},
        {{"QDrm", "divx-drm"}, {"wafm", "wavefrom-data"}, {"waf2", "wavefrom-data2"},
         {"svdt", "sphere-view"}, {"SncT", "editor-sync-table"}, {"fLSi", "FLAC-streaminfo"}},
        {{"nacc", "aac-codec-specific-data"}, {"rcsd", "raw-codec-specific-data"},
         {"vcsh", "vc1-sequence-header"}, {"fLaC", "flac-codec-specific-data"},
         {"wfmt", "adpcm-codec-specific-data"}, {"theo", "theora-codec-specific-data"},
         {"alac", "alac-codec-specific-data"}, {"rvfi", "rv-codec-specific-data"},
         {"opaq", "rm-codec-specific-data"}},
};
// clang-format on

TEST(MetaConversion, KeysByCode) {
    std::map<std::string, std::string> keys;  // of two rows the first
    for (const auto& rows : kRows) keys.insert(rows.begin(), rows.end());
    EXPECT_EQ(keys.size(), 94u);
    for (const auto& [characters, key] : keys) {
        EXPECT_EQ(MediaCodecHelper::getMsgKey(static_cast<int>(code(characters))), key);
    }
    EXPECT_STREQ(MediaCodecHelper::getMsgKey(0), "unknown");
}

sp<ABuffer> bufferOf(const Bytes& bytes) {
    sp<ABuffer> buffer = new ABuffer(bytes.size() + 1);
    buffer->setRange(1, bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer->data());
    return buffer;
}

// Every row with a value of every type, its own and others, in a store that finds data by their
// type only and in one that gives out the bytes of any value.
TEST(MetaConversion, EachRowTakesValuesOfItsType) {
    const Bytes bytes{3, 0, 9};
    const Value values[] = {{}, -5, int64_t{1} << 40, "text", bytes, Bytes()};
    for (size_t kind = kInt32; kind <= kCodecData; ++kind) {
        for (size_t i = 0; i < kRows[kind].size() * 5; ++i) {
            const char* key = kRows[kind][i / 5].second;
            const uint32_t metaKey = code(kRows[kind][i / 5].first);
            const size_t type = i % 5 + 1;
            const sp<MetaData> meta = new MetaData, back = new MetaData;
            const sp<AMessage> own = new AMessage;
            if (type == 1) meta->setInt32(metaKey, -5), own->setInt32(key, -5);
            if (type == 2)
                meta->setInt64(metaKey, int64_t{1} << 40), own->setInt64(key, int64_t{1} << 40);
            if (type == 3) meta->setCString(metaKey, "text"), own->setString(key, "text");
            if (type == 4)
                meta->setData(metaKey, 7, bytes.data(), 3), own->setBuffer(key, bufferOf(bytes));
            if (type == 5) meta->setData(metaKey, 7, nullptr, 0), own->setBuffer(key, bufferOf({}));
            const bool fits = std::min<size_t>(type, kData) == std::min<size_t>(kind, kData);
            const Value expected = fits ? values[type] : Value();
            for (const bool findsAny : {false, true}) {
                sp<AMessage> message;
                findsAnyType = findsAny;
                EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataToMessage(meta, &message), 0);
                findsAnyType = false;
                EXPECT_EQ(valueIn(message, kind == kCodecData ? "csd-0" : key), expected)
                        << key << " from type " << type;
            }
            EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMessageToMetaData(own, back), 0);
            EXPECT_EQ(valueIn(*back, metaKey), expected) << key;
        }
    }
}

TEST(MetaConversion, TwoKeysOfOneCode) {
    const sp<MetaData> meta = new MetaData, back = new MetaData;
    meta->setInt32(code("adts"), 5);
    sp<AMessage> message = new AMessage;
    const sp<AMessage> same = message;
    MediaCodecHelper::ZRCodeConvertMetaDataToMessage(meta, &message);
    EXPECT_EQ(message, same);
    EXPECT_EQ(valueIn(message, "aac-format-adts"), Value(5));
    EXPECT_EQ(valueIn(message, "is-adts"), Value(5));
    message->setInt32("is-adts", 6);
    message->setBuffer("divx-drm", bufferOf({1}));
    MediaCodecHelper::ZRCodeConvertMessageToMetaData(message, back);
    EXPECT_EQ(valueIn(*back, code("adts")), Value(6));
    EXPECT_EQ(typeIn(*back, "QDrm"), code("none"));
    for (const auto& [from, to] : {std::pair{sp<AMessage>(), back}, {message, sp<MetaData>()}}) {
        EXPECT_EQ(test::fatalText([&, &from = from, &to = to] {
                      MediaCodecHelper::ZRCodeConvertMessageToMetaData(from, to);
                  }),
                  "Helper/MediaCodecHelper CHECK((format != NULL) && (meta != NULL)) failed.");
    }
}

TEST(MetaConversion, CodecDataLookedFor) {
    const sp<MetaData> meta = new MetaData;
    const sp<AMessage> message = new AMessage;
    const void* data = nullptr;
    size_t size = 77, last = 77;
    EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(message), nullptr);
    // From the last that is looked for to the first; some are empty.
    for (const char* next : {"alac", "rvfi", "opaq", "theo", "wfmt", "fLaC", "vcsh"}) {
        meta->setInt32(code(next), 1);  // no codec data, whatever the store finds
        findsAnyType = true;
        const auto status = MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size);
        findsAnyType = false;
        EXPECT_EQ(status, last == 77 ? -1 : 0);
        EXPECT_EQ(size, last) << "as before, or untouched";

        last = (last + 1) % 4;
        const Bytes bytes(last, 'c');
        meta->setData(code(next), 1, bytes.data(), bytes.size());
        message->setBuffer(MediaCodecHelper::getMsgKey(static_cast<int>(code(next))),
                           bufferOf(bytes));
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size), 0);
        EXPECT_EQ(size, last) << next;
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(message)->size(), last) << next;
    }
}

// Under "csd-0" the last of the table counts.
TEST(MetaConversion, CodecDataOfLaterRowsReplaceEarlierOnes) {
    MetaDataBase meta;
    for (const auto& [characters, key] : kRows[kCodecData]) {
        meta.setData(code(characters), 1, characters.data(), 4);
        sp<AMessage> message;
        EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataBaseToMessage(&meta, &message), 0);
        sp<ABuffer> csd;
        ASSERT_TRUE(message->findBuffer("csd-0", &csd));
        EXPECT_EQ(valueIn(message, "csd-0"), Value(Bytes(characters.begin(), characters.end())));
        EXPECT_EQ(valueIn(message, key), Value());
        EXPECT_EQ(valueIn(csd->meta(), "csd"), Value(1));
        EXPECT_EQ(valueIn(csd->meta(), "timeUs"), Value(int64_t{0}));
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
    const test::Line notAlive{6, "checkIsZRSWCodec - mediaserver is not alive! return error"};
    // clang-format off
    const struct {
        int codec;
        host::Device device;
        int32_t status;
        const char* mime;
        std::optional<test::Line> last;
    } rows[] = {
            {101, {}, 0, "video/mpeg2", {}},
            {204, {}, 0, "audio/eac3", {}},
            {104, {}, 0, "video/notsupport", unsupported},
            {123, {.divxAlternative = true}, 0, "video/notsupport", unsupported},
            {233, {}, 0, "audio/notsupport", unsupported},
            {104, {.mediaServerAlive = false}, INT32_MIN, "video/notsupport", dead},
            {203, {.codecListAvailable = false}, INT32_MIN, "audio/notsupport", noList},
            {201, {.codecListAvailable = false}, INT32_MIN, "audio/notsupport", noList},
            {201, {.mediaServerAlive = false}, INT32_MIN, "audio/notsupport", notAlive},
    };
    // clang-format on
    for (const auto& row : rows) {
        const test::DeviceScope scope(row.device);
        MetaDataBase meta;
        const test::LogCapture log;
        EXPECT_EQ(helper->SupportCodecEx(row.codec, meta), row.status) << row.codec;
        EXPECT_EQ(mimeOf(meta), row.mime) << row.codec;
        const auto& lines = log.lines();
        EXPECT_EQ(lines.empty() ? std::nullopt : std::optional(lines.back()), row.last)
                << row.codec;
    }
}

TEST(LegacyBridge, FormatEntries) {
    // clang-format off
    const std::tuple<const char*, const char*, Value> rows[] = {
            {"mime", "mime", "a"}, {"album", "albu", "b"}, {"artist", "arti", "c"},
            {"albumartist", "aart", "d"}, {"composer", "comp", "e"}, {"genre", "genr", "f"},
            {"title", "titl", "g"}, {"year", "year", "h"}, {"author", "auth", "i"},
            {"cdtracknum", "cdtr", "j"}, {"discnum", "dnum", "k"}, {"compilation", "cpil", "l"},
            {"unsynced-lyrics", "uSlY", "m"}, {"width", "widt", 640}, {"height", "heig", 480},
            {"csd-hevc", "hvcc", Bytes{1, 0, 2}}, {"albumart", "albA", Bytes{3}}};
    // clang-format on
    const test::Format format;
    for (const auto& [key, metaKey, value] : rows) {
        if (const auto* number = std::get_if<int32_t>(&value)) {
            AMediaFormat_setInt32(format.get(), key, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            AMediaFormat_setString(format.get(), key, text->c_str());
        } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
            AMediaFormat_setBuffer(format.get(), key, bytes->data(), bytes->size());
        }
    }
    AMediaFormat_setInt32(format.get(), "dsd-sample-rate", 2822400);

    sp<MetaData> meta = new MetaData;
    EXPECT_EQ(helper->convertZRAMediaFormatToMeta(format.get(), meta), 0);
    for (const auto& [key, metaKey, value] : rows) {
        EXPECT_EQ(valueIn(*meta, code(metaKey)), value) << key;
    }
    EXPECT_EQ(valueIn(*meta, code("Dsrt")), Value(0));
    EXPECT_EQ(valueIn(*meta, code("mxet")), Value());
    EXPECT_EQ(typeIn(*meta, "hvcc"), code("hvcc"));
    EXPECT_EQ(typeIn(*meta, "albA"), code("none"));

    AMediaFormat_setInt32(format.get(), "encoding-type", 2);
    MetaDataBase base;
    helper->convertZRAMediaFormatToMeta(format.get(), &base);
    EXPECT_EQ(valueIn(base, code("Dsrt")), Value(2));
    EXPECT_EQ(valueIn(base, code("mxet")), Value(2));
}

TEST(LegacyBridge, Statuses) {
    const int rows[][2] = {{INT32_MIN, -10000}, {-1011, -10006}, {-1007, -10001}, {-1004, -10007},
                           {-38, -10005},       {-1, -1},        {0, 0},          {5, 5}};
    for (const auto& row : rows) EXPECT_EQ(helper->convertZRErrorToAMediaError(row[0]), row[1]);
}

}  // namespace

// The platform's findData, or on demand that of devices whose stores give out any value's bytes.
using FindData = bool(const MetaDataBase*, uint32_t, uint32_t*, const void**, size_t*);
extern "C" FindData __real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm;
extern "C" FindData __wrap__ZNK7android12MetaDataBase8findDataEjPjPPKvPm;

bool __wrap__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(const MetaDataBase* meta, uint32_t key,
                                                          uint32_t* type, const void** data,
                                                          size_t* size) {
    if (__real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(meta, key, type, data, size))
        return true;
    int32_t number = 0;
    int64_t longNumber = 0;
    const char* text = nullptr;
    *data = "any";
    *size = 4;
    *type = code(meta->findInt32(key, &number)       ? "in32"
                 : meta->findInt64(key, &longNumber) ? "in64"
                 : meta->findCString(key, &text)     ? "cstr"
                                                     : "");
    return findsAnyType && *type != 0;
}
