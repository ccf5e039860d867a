// Between metadata and messages, and from formats to the metadata of older parsers.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
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

Value valueIn(const sp<AMessage>& message, const std::string& key) {
    int32_t number = 0;
    int64_t longNumber = 0;
    AString text;
    sp<ABuffer> buffer;
    if (message->findInt32(key.c_str(), &number)) return number;
    if (message->findInt64(key.c_str(), &longNumber)) return longNumber;
    if (message->findString(key.c_str(), &text)) return text.c_str();
    if (!message->findBuffer(key.c_str(), &buffer)) return {};
    return Bytes(buffer->data(), buffer->data() + buffer->size());
}

uint32_t typeIn(const MetaDataBase& meta, const char* key) {
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    return meta.findData(code(key), &type, &data, &size) ? type : 0;
}

// A code and the key that belongs to it, from a text of "code=key " in which codes have four
// characters.
using Row = std::pair<std::string, std::string>;
std::vector<Row> rowsOf(const std::string& text) {
    std::vector<Row> rows;
    for (size_t at = 0; at < text.size(); at = text.find(' ', at + 5) + 1)
        rows.emplace_back(text.substr(at, 4), text.substr(at + 5, text.find(' ', at + 5) - at - 5));
    return rows;
}

// Every row by kind of value, in its order.
enum Kind { kInt32 = 1, kInt64, kText, kData, kCodecData };  // as in Value, but for codec data
const std::string kRows[] = {
        "",
        "brte=bitrate DivX=divx-version eopt=wma-encode-opt blka=wma-block-align "
        "wmav=wma-version ade1=wma-adv-enc-opt1 ade2=wma-adv-enc-opt2 fmtt=wma-format-tag "
        "bsps=wma-bits-per-sample vpks=wma-vir-pkt-size chmk=wma-channel-mask "
        "enc1=wma-voice-enc-opt1 en20=wma-voice-enc-opt2_0 en21=wma-voice-enc-opt2_1 widt=stride "
        "heig=slice-height adif=aac-format-adif altp=aac-format-ltp adts=aac-format-adts "
        "aacp=aac-profile dtss=dts-subtype ArbM=use-arbitrary-mode ESmS=smooth-streaming "
        "hfr =hfr srte=sample-rate #chn=channel-count bPsp=bits-per-sample sbit=Sample-Bits "
        "rotA=rotation-degrees inpS=max-input-size MQls=mqa-light-state "
        "MOsr=mqa-original-sample-rate Rsrt=real-sample-rate Rsbt=real-sample-bits "
        "rafc=ra-fourcc raar=ra-actual-rate raaq=ra-audio-quality rafi=ra-flavor-index "
        "rabf=ra-bits-per-frame ragr=ra-granularity layr=Layer-info PCMe=pcm-encoding "
        "mibs=min-block-size mabs=max-block-size mifs=min-frame-size mafs=max-frame-size "
        "rotO=rotation-offset FPS1=editor-fps-100 SncN=editor-sync-num edof=edit-offset "
        "adzc=audio-zoom m4dp=mpeg4-data-partition SMod=dlna-scan-mode adzx=audio-zoom-x "
        "adzy=audio-zoom-y adze=audio-zoom-enable SA3D=foa-info prdm=play-ready adts=is-adts "
        "noff=no-offload Dsrt=dsd-sample-rate zrmh=is-zr-mpegh mxet=mixed-encoding-type ",
        "bkOf=bookmark-offset bkSz=bookmark-size rfOf=wav-RIFF-offset rfSz=wav-RIFF-size "
        "ltOf=wav-LIST-offset ltSz=wav-LIST-size pdOf=flac-padding-offset pdSz=flac-padding-size "
        "enot=end-of-text stss=exist-sync-frame ntpT=dlna-npt-offset ",
        "ffmt=file-format uSlY=unsynced-lyrics vrty=video-record-type rmod=key-rec-mode "
        "buid=key-burst-id umsg=user-message ",
        "QDrm=divx-drm wafm=wavefrom-data waf2=wavefrom-data2 svdt=sphere-view "
        "SncT=editor-sync-table fLSi=FLAC-streaminfo ",
        "nacc=aac-codec-specific-data rcsd=raw-codec-specific-data vcsh=vc1-sequence-header "
        "fLaC=flac-codec-specific-data wfmt=adpcm-codec-specific-data "
        "theo=theora-codec-specific-data alac=alac-codec-specific-data "
        "rvfi=rv-codec-specific-data opaq=rm-codec-specific-data ",
};

TEST(MetaConversion, KeysByCode) {
    std::map<std::string, std::string> keys;  // of two rows the first
    for (const std::string& text : kRows)
        for (const Row& row : rowsOf(text)) keys.insert(row);
    EXPECT_EQ(keys.size(), 94u);
    for (const auto& [characters, key] : keys)
        EXPECT_EQ(MediaCodecHelper::getMsgKey(static_cast<int>(code(characters))), key);
    EXPECT_STREQ(MediaCodecHelper::getMsgKey(0), "unknown");
}

sp<ABuffer> bufferOf(const Bytes& bytes) {
    sp<ABuffer> buffer = new ABuffer(bytes.size() + 1);
    buffer->setRange(1, bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer->data());
    return buffer;
}

void put(const Value& value, MetaDataBase& meta, uint32_t metaKey, AMessage& message,
         const char* key) {
    if (const auto* number = std::get_if<int32_t>(&value)) {
        meta.setInt32(metaKey, *number), message.setInt32(key, *number);
    } else if (const auto* longNumber = std::get_if<int64_t>(&value)) {
        meta.setInt64(metaKey, *longNumber), message.setInt64(key, *longNumber);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        meta.setCString(metaKey, text->c_str()), message.setString(key, text->c_str());
    } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
        meta.setData(metaKey, 7, bytes->data(), bytes->size());
        message.setBuffer(key, bufferOf(*bytes));
    } else {
        message.setBuffer(key, nullptr);
    }
}

// What a store's findData says, to whoever asks, of a key without data: the type, or 0 for no such
// key. There are devices whose stores give out the bytes of any value.
uint32_t typeOfOthers = 0;

// Every row with a value of every type, its own and others, and without one.
TEST(MetaConversion, EachRowTakesValuesOfItsType) {
    const Value values[] = {{}, -5, int64_t{1} << 40, "text", Bytes{3, 0, 9}, Bytes()};
    for (size_t kind = kInt32; kind <= kCodecData; ++kind) {
        for (const auto& [characters, key] : rowsOf(kRows[kind])) {
            for (const Value& value : values) {
                const sp<MetaData> meta = new MetaData, back = new MetaData;
                const sp<AMessage> own = new AMessage;
                put(value, *meta, code(characters), *own, key.c_str());
                const bool fits = value.index() == std::min<size_t>(kind, kData);
                const Value expected = fits ? value : Value();
                for (const char* type : {"", "in32", "in64", "cstr"}) {
                    sp<AMessage> message;
                    typeOfOthers = code(type);
                    EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMetaDataToMessage(meta, &message), 0);
                    typeOfOthers = 0;
                    EXPECT_EQ(valueIn(message, key), kind == kCodecData ? Value() : expected)
                            << key << " from type " << value.index();
                    EXPECT_EQ(valueIn(message, "csd-0"), kind == kCodecData ? expected : Value())
                            << key << " from type " << value.index();
                }
                EXPECT_EQ(MediaCodecHelper::ZRCodeConvertMessageToMetaData(own, back), 0);
                EXPECT_EQ(valueIn(*back, code(characters)), expected) << key;
            }
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
        typeOfOthers = code("in32");  // no codec data
        const auto status = MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size);
        typeOfOthers = 0;
        EXPECT_EQ(status, last == 77 ? -1 : 0);
        EXPECT_EQ(size, last) << "as before, or untouched";

        last = (last + 1) % 4;
        put(Bytes(last, static_cast<uint8_t>(*next)), *meta, code(next), *message,
            MediaCodecHelper::getMsgKey(static_cast<int>(code(next))));
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(meta, data, size), 0);
        EXPECT_EQ(std::string(static_cast<const char*>(data), size), std::string(last, *next));
        EXPECT_EQ(MediaCodecHelper::ZRgetCodecSpecificData(message)->size(), last) << next;
    }
}

// Under "csd-0" the last of the table counts.
TEST(MetaConversion, CodecDataOfLaterRowsReplaceEarlierOnes) {
    MetaDataBase meta;
    for (const auto& [characters, key] : rowsOf(kRows[kCodecData])) {
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

// Status, what is stored, the last line of the log where that is a complaint.
std::string bridged(int codec, const host::Device& device) {
    const test::DeviceScope scope(device);
    const test::LogCapture log;
    MetaDataBase meta;
    std::ostringstream out;
    const char* mime = "(none)";
    int32_t mode = 0;
    out << helper->SupportCodecEx(codec, meta);
    meta.findCString(code("mime"), &mime);
    out << ' ' << mime;
    if (meta.findInt32(code("ArbM"), &mode)) out << ' ' << mode;
    if (!log.lines().empty() && log.lines().back().priority > 4) out << ' ' << log.lines().back();
    return out.str();
}

TEST(LegacyBridge, MimeTypes) {
    std::istringstream rows(
            "101 video/mpeg2  102 video/mp4v-es  104 video/avc  119 video/mpeg2  129 video/hevc  "
            "201 audio/mp4a-latm  202 audio/mpeg  203 audio/ac3  204 audio/eac3  205 audio/dts  "
            "206 audio/raw  219 audio/mpeg  225 audio/dts-lbr  232 audio/ac4");
    std::map<int, std::string> types;
    host::Device everything = host::typicalPhone();
    int number = 0;
    for (std::string type; rows >> number >> type; types[number] = type)
        everything.decoders.push_back(type);
    for (const char* type : {"video/3gpp", "audio/flac", "audio/mha1"})
        everything.decoders.push_back(type);
    everything.codecInfoAvailable = false;  // nobody asks for it here
    for (int codec = 90; codec < 320; ++codec) {
        const char* none = codec < 200 || codec > 234 ? "video/notsupport" : "audio/notsupport";
        const std::string bridge = bridged(codec, everything);
        const std::string type = types.contains(codec) ? types[codec] : none;
        EXPECT_EQ(bridge.substr(0, bridge.find(" 5 ")), "0 " + type + (codec == 102 ? " 0" : ""));
    }
}

TEST(LegacyBridge, WhatTheDeviceLacks) {
    const std::string noVideo = "video/notsupport ", noAudio = "audio/notsupport ";
    const std::string unsupported = "5 \"#### Can not find Codec... Unsupported codec!!!!!\"",
                      dead = "6 \"#### mediaserver is not alive !!so return error\"",
                      noList = "6 \"#### mediacodec list instance returned NULL\"",
                      failed = "-2147483648 ";
    const std::tuple<int, host::Device, std::string> rows[] = {
            {101, {}, "0 video/mpeg2"},
            {204, {}, "0 audio/eac3"},
            {104, {}, "0 " + noVideo + unsupported},
            {123, {.divxAlternative = true}, "0 " + noVideo + unsupported},
            {233, {}, "0 " + noAudio + unsupported},
            {104, {.mediaServerAlive = false}, failed + noVideo + dead},
            {203, {.codecListAvailable = false}, failed + noAudio + noList},
            {201, {.codecListAvailable = false}, failed + noAudio + noList},
            {201,
             {.mediaServerAlive = false},
             failed + noAudio + "6 \"checkIsZRSWCodec - mediaserver is not alive! return error\""},
    };
    for (const auto& [codec, device, expected] : rows) EXPECT_EQ(bridged(codec, device), expected);
}

TEST(LegacyBridge, FormatEntries) {
    const test::Format format;
    const auto texts = rowsOf(
            "mime=mime albu=album arti=artist aart=albumartist comp=composer genr=genre titl=title "
            "year=year auth=author cdtr=cdtracknum dnum=discnum cpil=compilation "
            "uSlY=unsynced-lyrics ");
    for (const auto& [characters, key] : texts)
        AMediaFormat_setString(format.get(), key.c_str(), key.c_str());
    AMediaFormat_setInt32(format.get(), "width", 640);
    AMediaFormat_setInt32(format.get(), "height", 480);
    AMediaFormat_setInt32(format.get(), "dsd-sample-rate", 2822400);
    AMediaFormat_setBuffer(format.get(), "csd-hevc", "\1\0\2", 3);
    AMediaFormat_setBuffer(format.get(), "albumart", "\3", 1);

    sp<MetaData> meta = new MetaData;
    EXPECT_EQ(helper->convertZRAMediaFormatToMeta(format.get(), meta), 0);
    for (const auto& [characters, key] : texts)
        EXPECT_EQ(valueIn(*meta, code(characters)), Value(key));
    const std::pair<const char*, Value> others[] = {{"widt", 640}, {"heig", 480},
                                                    {"Dsrt", 0},   {"hvcc", Bytes{1, 0, 2}},
                                                    {"mxet", {}},  {"albA", Bytes{3}}};
    for (const auto& [characters, value] : others)
        EXPECT_EQ(valueIn(*meta, code(characters)), value) << characters;
    EXPECT_EQ(typeIn(*meta, "hvcc"), code("hvcc"));
    EXPECT_EQ(typeIn(*meta, "albA"), code("none"));

    AMediaFormat_setInt32(format.get(), "encoding-type", 2);
    MetaDataBase base;
    helper->convertZRAMediaFormatToMeta(format.get(), &base);
    EXPECT_EQ(valueIn(base, code("Dsrt")), Value(2));
    EXPECT_EQ(valueIn(base, code("mxet")), Value(2));
}

TEST(LegacyBridge, AnEmptyFormatStoresNothing) {
    MetaDataBase base;
    EXPECT_EQ(helper->convertZRAMediaFormatToMeta(test::Format().get(), &base), 0);
    for (const char* characters : {"mime", "titl", "widt", "heig", "hvcc", "albA"})
        EXPECT_EQ(valueIn(base, code(characters)), Value()) << characters;
}

TEST(LegacyBridge, Statuses) {
    const int rows[][2] = {{INT32_MIN, -10000}, {-1011, -10006}, {-1007, -10001}, {-1004, -10007},
                           {-38, -10005},       {-1, -1},        {0, 0},          {5, 5}};
    for (const auto& row : rows) EXPECT_EQ(helper->convertZRErrorToAMediaError(row[0]), row[1]);
}

}  // namespace

using FindData = bool(const MetaDataBase*, uint32_t, uint32_t*, const void**, size_t*);
extern "C" FindData __real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm;
extern "C" FindData __wrap__ZNK7android12MetaDataBase8findDataEjPjPPKvPm;

bool __wrap__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(const MetaDataBase* meta, uint32_t key,
                                                          uint32_t* type, const void** data,
                                                          size_t* size) {
    if (__real__ZNK7android12MetaDataBase8findDataEjPjPPKvPm(meta, key, type, data, size))
        return true;
    *type = typeOfOthers;
    *data = "any";
    *size = 4;
    return typeOfOthers != 0;
}
