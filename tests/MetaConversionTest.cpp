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

void store(MetaDataBase* meta, uint32_t key, const Value& value) {
    if (value.index() == 1) meta->setInt32(key, std::get<1>(value));
    if (value.index() == 2) meta->setInt64(key, std::get<2>(value));
    if (value.index() == 3) meta->setCString(key, std::get<3>(value).c_str());
    if (value.index() == 4)
        meta->setData(key, 7, std::get<4>(value).data(), std::get<4>(value).size());
}

sp<ABuffer> bufferOf(const Bytes& bytes) {
    sp<ABuffer> buffer = new ABuffer(bytes.size() + 1);
    buffer->setRange(1, bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer->data());
    return buffer;
}

void store(const sp<AMessage>& message, const char* key, const Value& value) {
    if (value.index() == 1) message->setInt32(key, std::get<1>(value));
    if (value.index() == 2) message->setInt64(key, std::get<2>(value));
    if (value.index() == 3) message->setString(key, std::get<3>(value).c_str());
    if (value.index() == 4) message->setBuffer(key, bufferOf(std::get<4>(value)));
}

// Code and message key of every row, by the kind of its values; the codec data in their order.
const char* const kKeys[] = {
        // 32 bits
        "brte=bitrate DivX=divx-version eopt=wma-encode-opt blka=wma-block-align "
        "wmav=wma-version ade1=wma-adv-enc-opt1 ade2=wma-adv-enc-opt2 fmtt=wma-format-tag "
        "bsps=wma-bits-per-sample vpks=wma-vir-pkt-size chmk=wma-channel-mask "
        "enc1=wma-voice-enc-opt1 en20=wma-voice-enc-opt2_0 en21=wma-voice-enc-opt2_1 "
        "widt=stride heig=slice-height adif=aac-format-adif altp=aac-format-ltp "
        "adts=aac-format-adts aacp=aac-profile dtss=dts-subtype ArbM=use-arbitrary-mode "
        "ESmS=smooth-streaming hfr =hfr srte=sample-rate #chn=channel-count "
        "bPsp=bits-per-sample sbit=Sample-Bits rotA=rotation-degrees inpS=max-input-size "
        "MQls=mqa-light-state MOsr=mqa-original-sample-rate Rsrt=real-sample-rate "
        "Rsbt=real-sample-bits rafc=ra-fourcc raar=ra-actual-rate raaq=ra-audio-quality "
        "rafi=ra-flavor-index rabf=ra-bits-per-frame ragr=ra-granularity layr=Layer-info "
        "PCMe=pcm-encoding mibs=min-block-size mabs=max-block-size mifs=min-frame-size "
        "mafs=max-frame-size rotO=rotation-offset FPS1=editor-fps-100 SncN=editor-sync-num "
        "edof=edit-offset adzc=audio-zoom m4dp=mpeg4-data-partition SMod=dlna-scan-mode "
        "adzx=audio-zoom-x adzy=audio-zoom-y adze=audio-zoom-enable SA3D=foa-info "
        "prdm=play-ready adts=is-adts noff=no-offload Dsrt=dsd-sample-rate zrmh=is-zr-mpegh "
        "mxet=mixed-encoding-type ",
        // 64 bits
        "bkOf=bookmark-offset bkSz=bookmark-size rfOf=wav-RIFF-offset rfSz=wav-RIFF-size "
        "ltOf=wav-LIST-offset ltSz=wav-LIST-size pdOf=flac-padding-offset "
        "pdSz=flac-padding-size enot=end-of-text stss=exist-sync-frame ntpT=dlna-npt-offset ",
        // texts
        "ffmt=file-format uSlY=unsynced-lyrics vrty=video-record-type rmod=key-rec-mode "
        "buid=key-burst-id umsg=user-message ",
        // data
        "QDrm=divx-drm wafm=wavefrom-data waf2=wavefrom-data2 svdt=sphere-view "
        "SncT=editor-sync-table fLSi=FLAC-streaminfo ",
        // codec data
        "nacc=aac-codec-specific-data rcsd=raw-codec-specific-data vcsh=vc1-sequence-header "
        "fLaC=flac-codec-specific-data wfmt=adpcm-codec-specific-data "
        "theo=theora-codec-specific-data alac=alac-codec-specific-data "
        "rvfi=rv-codec-specific-data opaq=rm-codec-specific-data "};

struct Row {
    std::string code;
    std::string key;
    size_t kind;  // as in Value, and 5 for codec data
};

std::vector<Row> rows() {
    std::vector<Row> all;
    for (size_t kind = 1; kind <= std::size(kKeys); ++kind) {
        std::string_view text = kKeys[kind - 1];
        for (size_t end = 0; !text.empty(); text.remove_prefix(end + 1)) {
            end = text.find(' ', 4);
            all.push_back(
                    {std::string(text.substr(0, 4)), std::string(text.substr(5, end - 5)), kind});
        }
    }
    return all;
}

TEST(MetaConversion, KeysByCode) {
    std::map<std::string, std::string> keys;  // of two rows the first
    for (const Row& row : rows()) keys.emplace(row.code, row.key);
    EXPECT_EQ(keys.size(), 94u);
    for (const auto& [characters, key] : keys) {
        EXPECT_EQ(MediaCodecHelper::getMsgKey(static_cast<int>(code(characters))), key);
    }
    EXPECT_STREQ(MediaCodecHelper::getMsgKey(0), "unknown");
}

// Every row with a value of every type, its own and others, in a store that finds data by their
// type only and in one that gives out the bytes of any value.
TEST(MetaConversion, EachRowTakesValuesOfItsType) {
    for (const Row& row : rows()) {
        for (const Value& value : {Value(-5), Value(int64_t{1} << 40), Value("text"),
                                   Value(Bytes{3, 0, 9}), Value(Bytes())}) {
            const size_t kind = std::min<size_t>(row.kind, 4);
            const Value expected = value.index() == kind ? value : Value();
            const sp<MetaData> meta = new MetaData, back = new MetaData;
            store(meta.get(), code(row.code), value);
            for (findsAnyType = false;; findsAnyType = true) {
                sp<AMessage> message;
                EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataToMessage(meta, &message), 0);
                EXPECT_EQ(valueIn(message, row.kind == 5 ? "csd-0" : row.key.c_str()), expected)
                        << row.key << " from type " << value.index();
                if (findsAnyType) break;
            }
            findsAnyType = false;
            const sp<AMessage> message = new AMessage;
            store(message, row.key.c_str(), value);
            EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMessageToMetaData(message, back), 0);
            EXPECT_EQ(valueIn(*back, code(row.code)), expected) << row.key;
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
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    EXPECT_TRUE(back->findData(code("QDrm"), &type, &data, &size) && type == code("none"));
    for (const auto& [from, to] : {std::pair{sp<AMessage>(), back}, {message, sp<MetaData>()}}) {
        EXPECT_EQ(test::fatalText([&, &from = from, &to = to] {
                      MediaCodecHelper::ZRCodeConvertMessageToMetaData(from, to);
                  }),
                  "Helper/MediaCodecHelper CHECK((format != NULL) && (meta != NULL)) failed.");
    }
}

TEST(MetaConversion, CodecDataLookedFor) {
    const std::pair<const char*, const char*> order[] = {
            {"vcsh", "vc1-sequence-header"},       {"fLaC", "flac-codec-specific-data"},
            {"wfmt", "adpcm-codec-specific-data"}, {"theo", "theora-codec-specific-data"},
            {"opaq", "rm-codec-specific-data"},    {"rvfi", "rv-codec-specific-data"},
            {"alac", "alac-codec-specific-data"}};
    const sp<MetaData> meta = new MetaData;
    const sp<AMessage> message = new AMessage;
    const void* data = nullptr;
    size_t size = 77;
    EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(message), nullptr);
    for (size_t i = std::size(order); i > 0; --i) {
        const auto& [characters, key] = order[i - 1];
        meta->setInt32(code(characters), 1);  // no codec data, whatever the store finds
        findsAnyType = true;
        const auto status = MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size);
        findsAnyType = false;
        EXPECT_EQ(status, i == std::size(order) ? -1 : 0);
        EXPECT_EQ(size, i == std::size(order) ? 77 : (i + 1) % 4) << "as it was";

        const Bytes bytes(i % 4, 'c');  // some are empty
        store(meta.get(), code(characters), bytes);
        store(message, key, bytes);
        size = 78;
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size), 0);
        EXPECT_EQ(size, bytes.size()) << key;
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(message)->size(), bytes.size()) << key;
    }
}

// Under "csd-0" the last of the table counts.
TEST(MetaConversion, CodecDataOfLaterRowsReplaceEarlierOnes) {
    MetaDataBase meta;
    for (const Row& row : rows()) {
        if (row.kind != 5) continue;
        store(&meta, code(row.code), Bytes(row.code.begin(), row.code.end()));
        sp<AMessage> message;
        EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataBaseToMessage(&meta, &message), 0);
        sp<ABuffer> csd;
        ASSERT_TRUE(message->findBuffer("csd-0", &csd));
        EXPECT_EQ(valueIn(message, "csd-0"), Value(Bytes(row.code.begin(), row.code.end())));
        EXPECT_EQ(valueIn(message, row.key.c_str()), Value());
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
    const std::tuple<const char*, const char*, Value> rows[] = {
            {"mime", "mime", "a"},
            {"album", "albu", "b"},
            {"artist", "arti", "c"},
            {"albumartist", "aart", "d"},
            {"composer", "comp", "e"},
            {"genre", "genr", "f"},
            {"title", "titl", "g"},
            {"year", "year", "h"},
            {"author", "auth", "i"},
            {"cdtracknum", "cdtr", "j"},
            {"discnum", "dnum", "k"},
            {"compilation", "cpil", "l"},
            {"unsynced-lyrics", "uSlY", "m"},
            {"width", "widt", 640},
            {"height", "heig", 480},
            {"csd-hevc", "hvcc", Bytes{1, 0, 2}},
            {"albumart", "albA", Bytes{3}}};
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
    for (const auto& [key, type] : {std::pair{"hvcc", "hvcc"}, {"albA", "none"}}) {
        uint32_t found = 0;
        const void* data = nullptr;
        size_t size = 0;
        EXPECT_TRUE(meta->findData(code(key), &found, &data, &size) && found == code(type));
    }

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

// The platform's findData as other devices have it, whose stores give out the bytes of any value,
// where a test asks for that.
extern "C" bool __real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(const MetaDataBase*, uint32_t,
                                                                     uint32_t*, const void**,
                                                                     size_t*);
extern "C" bool __wrap__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(const MetaDataBase* meta,
                                                                     uint32_t key, uint32_t* type,
                                                                     const void** data,
                                                                     size_t* size) {
    static int64_t bytes = 0;
    const char* text = nullptr;
    const auto number = reinterpret_cast<int32_t*>(&bytes);
    if (__real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(meta, key, type, data, size))
        return true;
    *type = meta->findInt32(key, number)    ? code("in32")
            : meta->findInt64(key, &bytes)  ? code("in64")
            : meta->findCString(key, &text) ? code("cstr")
                                            : 0;
    *data = text != nullptr ? static_cast<const void*>(text) : &bytes;
    *size = 4;
    return findsAnyType && *type != 0;
}
