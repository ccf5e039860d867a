// Of the linker, programs with these operations want --wrap=fopen: files are in memory.

#include "robustness/Operations.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "Helper/vocabulary/MetaKeyTable.h"
#include "platform/BitReader.h"
#include "platform/Strings.h"
#include "support/Tag.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"
#include "zrcodecparser/TrackInfo.h"
#include "zrcodecparser/WavDump.h"

namespace sweeps {
namespace {

using namespace android;
using Codec = MediaCodecHelper;
using Iterator = ID3::Iterator;

thread_local Trial* performing = nullptr;

const bool kLogIsKept = [] {
    host::setLogSink([](const host::LogLine& line) {
        const Unwatched own;
        if (performing != nullptr)
            performing->log += std::to_string(line.priority) + line.text + '\n';
    });
    return true;
}();

std::string hex(const void* bytes, size_t size) {
    const auto* data = static_cast<const uint8_t*>(bytes);
    return test::dataText(test::Bytes(data, data + size));
}

// --- Inputs ---

std::string bytesOf(const std::string& digits) {
    const auto bytes = test::fromHex(digits);
    return {bytes.begin(), bytes.end()};
}
std::string filled(size_t size) {
    return std::string(size, 'U');
}
// Units of 176x144 with a PPS that is nearly as large as may be, and behind it an AUD.
constexpr size_t kLargePps = 65000;
std::string avcStream(size_t size) {
    const std::string mark = bytesOf("00000001");
    const size_t pps = std::min(size, kLargePps);
    return mark + bytesOf("6742000AF80B131380") + mark + bytesOf("68CE3880") + filled(pps) + mark +
           '\x09' + filled(size - pps) + mark + bytesOf("4142");
}
std::string avcLengths(size_t) {
    return bytesOf("000167FFFF");  // a PPS of 65535 bytes, none of which is there
}
std::string hevcStream(size_t size) {
    const std::string mark = bytesOf("00000001");
    const size_t pps = std::min(size, kLargePps);
    return mark + bytesOf("40010C01FFFF") + mark +
           bytesOf("420101016000000300B0000003000003005DA005020171F2E5BA4AC2F0100000") + mark +
           bytesOf("4401C172B46240") + filled(pps) + mark + bytesOf("4601") + filled(size - pps) +
           mark + bytesOf("0201");
}
std::string hevcRecord(size_t) {
    return bytesOf(
            "01"
            "01600000000000000000005D"
            "F000FCFDF8F80000"
            "0F01"
            "2100010003420101");
}
std::string vorbisHeaders(size_t size) {
    return bytesOf("020701") + "\1vorbis" + "\3\5vorbis" + filled(size);
}
std::string flacInfo(size_t size) {
    return "fLaC" + filled(size);
}
std::string title(size_t size) {
    return "TITLE=" + filled(size);
}
// A front cover (RFC 9639 8.8) of zeros, as many as there are but for less than 256.
std::string picture(size_t size) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string base64(size / 4 * 4, 'A');
    base64.replace(0, 14, "AAAAAwAAAAJhYQ");
    const size_t length = (size / 4 * 3 - 34) / 256;
    for (size_t i = 0; i < 4; ++i) base64[40 + i] = kDigits[length >> (18 - 6 * i) & 63];
    return "METADATA_BLOCK_PICTURE=" + base64;
}
std::string v1() {
    return "TAG" + std::string(125, 'v');
}
std::string tagOf(const std::string& frames) {
    return test::tag(3, 0, frames) + v1();
}
std::string pictureTag(size_t size) {
    return tagOf(test::frameV2_3("TALB", test::text("\0album")) +
                 test::frameV2_3("COMM", test::text("\0engiTunSMPB\0 00000000 00000840 000001C0")) +
                 test::frameV2_3("APIC", test::text("\0image/png\0\3\0") + filled(size)));
}
std::string textTag(size_t size, const std::string& mark, const std::string& unit) {
    std::string units;
    while (units.size() < size) units += unit;
    return tagOf(test::frameV2_3("TIT2", mark + units));
}
std::string wideTextTag(size_t size) {
    return textTag(size, "\1\xFF\xFE", "\x20\x26");
}
std::string narrowTextTag(size_t size) {
    return textTag(size, "\1\xFF\xFE", test::text("\xE9\0"));
}
std::string unsynchronisedTag(size_t size) {
    const std::string data = filled(size) + test::text("\xFF\0");
    return test::tag(4, 0x80, test::frameV2_4("TIT2", '\3' + data, 2)) + v1();
}
std::string plainSizesTag(size_t size) {
    return test::tag(4, 0, test::frameV2_3("TIT2", '\3' + filled(size))) + v1();
}
std::string framesTag(size_t size) {
    std::string frames;
    while (frames.size() < size) frames += test::frameV2_3("TXXX", "\3U");
    return tagOf(frames);
}

std::string claimingTag(size_t) {
    return bytesOf("49443303000003400000");  // the largest tag that is read, and nothing of it
}

TrackInfo track(uint32_t kind, uint32_t codec) {
    TrackInfo info;
    info.trackType = kind;
    info.codecType = codec;
    if (kind == kTrackTypeVideo) info.video = {640, 360, 500000, 25, 1};
    return info;
}

constexpr auto kNumbers = std::to_array<std::pair<const char*, int32_t>>(
        {{"channel-count", 2},         {"sample-rate", 44100},       {"aac-format-adif", 1},
         {"wma-version", 2},           {"wma-adv-enc-opt1", 1},      {"wma-adv-enc-opt2", 7},
         {"wma-vir-pkt-size", 99},     {"bitrate", 128000},          {"wma-encode-opt", 21},
         {"wma-block-align", 5},       {"wma-bits-per-sample", 16},  {"wma-format-tag", 0x161},
         {"wma-voice-enc-opt1", 31},   {"wma-voice-enc-opt2_0", 32}, {"wma-voice-enc-opt2_1", 33},
         {"ra-actual-rate", 8001},     {"bits-per-sample", 16},      {"ra-audio-quality", 3},
         {"ra-flavor-index", 7},       {"ra-bits-per-frame", 160},   {"ra-granularity", 20},
         {"ra-fourcc", 0x6C706376},    {"divx-version", 2},          {"use-arbitrary-mode", 1},
         {"enable-extradata-user", 1}, {"max-input-size", 1000}});

// --- Calls ---

void noteFrames(Trial& run, const ID3& id3) {
    run.note(id3.isValid(), id3.version());
    if (!id3.isValid()) return;
    for (Iterator frame(id3, nullptr); !frame.done(); frame.next()) {
        String8 id, whole, half;
        frame.getID(&id);
        frame.getString(&whole, &half);
        frame.getstring(&whole, false);
        size_t length = 0;
        const bool hasData = frame.getData(&length) != nullptr;
        run.note(id.c_str(), whole.c_str(), hasData, length, frame.getEncodingType(),
                 frame.getHeaderLength());
    }
    size_t length = 0;
    String8 mime;
    const bool hasPicture = id3.getAlbumArt(&length, &mime) != nullptr;
    run.note(hasPicture, length, mime.c_str());
}
template <typename Parse>
void parse(Trial& run, Parse call) {
    ID3 id3(nullptr, 0, true);
    run.note(call(id3));
    run.note(id3.isValid(), id3.version());
}
void find(Trial& run, sp<ABuffer> buffer) {
    if (buffer != nullptr)
        run.note(buffer->size(), hex(buffer->data(), std::min<size_t>(buffer->size(), 2)));
}
template <typename Call>
void onBuffer(Trial& run, Call call) {
    host::SampleBuffer buffer(run.input.data(), run.size, 0, run.size / 4);
    run.note(call(buffer));
    run.note(buffer.range_offset(), buffer.range_length());
}
template <uint32_t kCodec>
void setAudio(Trial& run) {
    run.note(run.helper->setAudioConfig(kCodec, run.data(), &run.size, run.format.get()));
}
template <uint32_t kCodec>
void setVideo(Trial& run) {
    TrackInfo info = track(kTrackTypeVideo, kCodec);
    run.note(run.helper->setVideoConfig(&info, run.data(), run.size, run.format.get()));
}
template <uint32_t kKind, uint32_t kCodec>
void setTrack(Trial& run) {
    TrackInfo info = track(kKind, kCodec);
    if (kKind == kTrackTypeAudio) info.audio.language = run.input.c_str();
    if (kKind == kTrackTypeText) info.text.textLanguage = run.input.c_str();
    run.note(run.helper->setTrackMeta(&info, run.format.get(), true));
}
void comment(Trial& run) {
    run.helper->parseVorbisComment(run.format.get(), run.input.c_str(), run.size);
}
void convertThere(Trial& run) {
    run.metadata->setData(kZreKeyFLACCodecSpecificData, 0, run.data(), run.size);
}

// clang-format off
constexpr auto kOperations = std::to_array<Operation>({
        {"MediaExtractorHelper::MediaExtractorHelper", [](Trial&) { const sp<MediaExtractorHelper> one = new MediaExtractorHelper; }, filled},
        {"MediaExtractorHelper::SupportCodecEx AAC", [](Trial& r) { r.note(r.helper->SupportCodecEx(201, r.format.get(), true)); }, filled},
        {"MediaExtractorHelper::SupportCodecEx DivX", [](Trial& r) { r.note(r.helper->SupportCodecEx(124, r.format.get(), true)); }, filled},
        {"MediaExtractorHelper::SupportCodecEx bridge, MPEG-4", [](Trial& r) { r.note(r.helper->SupportCodecEx(102, *r.metadata)); }, filled},
        {"MediaExtractorHelper::SupportCodecEx bridge, DTS", [](Trial& r) { r.note(r.helper->SupportCodecEx(205, *r.metadata)); }, filled},
        {"MediaExtractorHelper::checkIsZRSWCodec", [](Trial& r) { bool is = false; r.note(r.helper->checkIsZRSWCodec(201, is), is); }, filled},
        {"MediaExtractorHelper::checkIsMediaserver", [](Trial& r) { r.note(r.helper->checkIsMediaserver()); }, filled},
        {"MediaExtractorHelper::getCodecType", [](Trial& r) { r.note(r.helper->getCodecType(r.format.get()), r.helper->getMaxInputBuffer(r.format.get())); }, filled},
        {"MediaExtractorHelper::setTrackMeta video", setTrack<kTrackTypeVideo, 104>, filled},
        {"MediaExtractorHelper::setTrackMeta audio", setTrack<kTrackTypeAudio, 228>, filled, 1, 1},
        {"MediaExtractorHelper::setTrackMeta text", setTrack<kTrackTypeText, 301>, filled, 1, 1},
        {"MediaExtractorHelper::setTrackMeta other", setTrack<4, 0>, filled},
        {"MediaExtractorHelper::setFileMeta", [](Trial& r) { r.note(r.helper->setFileMeta(303, r.format.get())); }, filled},
        {"MediaExtractorHelper::setDuration", [](Trial& r) { auto* f = r.format.get(); r.note(r.helper->setDuration(1, f), r.helper->setCurrentTime(2, f), r.helper->setEndTime(3, f)); }, filled},
        {"MediaExtractorHelper::getNextNALUnit", [](Trial& r) { const uint8_t *d = r.data(), *unit = nullptr; size_t s = r.size, n = 0; while (r.helper->getNextNALUnit(&d, &s, &unit, &n, true) == OK) r.note(n); }, avcStream},
        {"MediaExtractorHelper::FindNAL", [](Trial& r) { find(r, r.helper->FindNAL(r.data(), r.size, 9, nullptr)); }, avcStream, 1, 1},
        {"MediaExtractorHelper::FindHEVCNAL", [](Trial& r) { find(r, r.helper->FindHEVCNAL(r.data(), r.size, 35, nullptr)); }, hevcStream, 1, 1},
        {"MediaExtractorHelper::parseUE", [](Trial& r) { ABitReader bits(r.data(), r.size); r.note(r.helper->parseUE(&bits)); }, filled},
        {"MediaExtractorHelper::setAVCCSeqHeader stream", [](Trial& r) { r.note(r.helper->setAVCCSeqHeader(r.data(), r.size, nullptr, r.format.get())); }, avcStream, 2, 2},
        {"MediaExtractorHelper::setAVCCSeqHeader lengths", [](Trial& r) { r.note(r.helper->setAVCCSeqHeader(r.data(), r.size, nullptr, r.format.get())); }, avcLengths, 0, 0, 2 * 65547 + 4096},
        {"MediaExtractorHelper::setAVCCSeqHeader record", [](Trial& r) { r.note(r.helper->setAVCCSeqHeader(r.data(), r.size, nullptr, r.format.get())); }, filled, 1, 1},
        {"MediaExtractorHelper::FindAVCDimensions", [](Trial& r) { int32_t w = 0, h = 0; r.helper->FindAVCDimensions(r.helper->FindNAL(r.data(), r.size, 7, nullptr), &w, &h); r.note(w, h); }, avcStream},
        {"MediaExtractorHelper::MakeHEVCCodecSpecificData stream", [](Trial& r) { r.note(r.helper->MakeHEVCCodecSpecificData(r.data(), r.size, r.format.get())); }, hevcStream, 2, 2},
        {"MediaExtractorHelper::MakeHEVCCodecSpecificData record", [](Trial& r) { r.note(r.helper->MakeHEVCCodecSpecificData(r.data(), r.size, r.format.get())); }, filled, 1, 1},
        {"MediaExtractorHelper::FindHEVCDimensions", [](Trial& r) { int32_t w = 0, h = 0; r.helper->FindHEVCDimensions(r.helper->FindHEVCNAL(r.data(), r.size, 33, nullptr), &w, &h); r.note(w, h); }, hevcStream},
        {"MediaExtractorHelper::HEVCProfileToString", [](Trial& r) { r.note(r.helper->HEVCProfileToString(2)); }, filled},
        {"MediaExtractorHelper::setAudioConfig AAC", setAudio<201>, filled, 2, 2},
        {"MediaExtractorHelper::setAudioConfig FLAC", setAudio<207>, flacInfo, 1, 1},
        {"MediaExtractorHelper::setAudioConfig Vorbis", setAudio<208>, vorbisHeaders, 2, 2},
        {"MediaExtractorHelper::setAudioConfig WMA 1", setAudio<210>, filled},
        {"MediaExtractorHelper::setAudioConfig WMA voice", setAudio<214>, filled},
        {"MediaExtractorHelper::setAudioConfig ADPCM", setAudio<218>, filled, 1, 1},
        {"MediaExtractorHelper::setAudioConfig Opus", setAudio<228>, filled, 1, 1},
        {"MediaExtractorHelper::setESDS", [](Trial& r) { r.note(r.helper->setESDS(r.data(), &r.size, r.format.get(), true)); }, filled, 2, 2},
        {"MediaExtractorHelper::makeESDS", [](Trial& r) { r.helper->makeESDS(r.data(), &r.size, r.out()); }, filled, 1, 1},
        {"MediaExtractorHelper::MakeAACCodecSpecificData", [](Trial& r) { size_t n = 0; r.note(r.helper->MakeAACCodecSpecificData(r.data(), &n, r.out()), n); }, filled},
        {"MediaExtractorHelper::setAACCodecSpecificData", [](Trial& r) { size_t n = 0; r.note(r.helper->setAACCodecSpecificData(r.data(), &n, r.format.get()), n); }, filled},
        {"MediaExtractorHelper::storeSize", [](Trial& r) { size_t at = 1; r.helper->storeSize(r.out(), at, 300); r.note(at, r.helper->bytesForSize(300)); }, filled},
        {"MediaExtractorHelper::setVorbisCodecSpecificData", [](Trial& r) { r.note(r.helper->setVorbisCodecSpecificData(r.data(), &r.size, r.format.get())); }, vorbisHeaders, 2, 2},
        {"MediaExtractorHelper::setVideoConfig MPEG-4", setVideo<102>, filled, 2, 2},
        {"MediaExtractorHelper::setVideoConfig AVC", setVideo<104>, avcStream, 2, 2},
        {"MediaExtractorHelper::setVideoConfig HEVC", setVideo<129>, hevcStream, 2, 2},
        {"MediaExtractorHelper::setVideoConfig Theora", setVideo<121>, filled, 1, 1},
        {"MediaExtractorHelper::setVC1SeqHeader", [](Trial& r) { TrackInfo info = track(kTrackTypeVideo, 108); r.note(r.helper->setVC1SeqHeader(r.data(), &r.size, &info, r.format.get())); }, filled, 2, 2},
        {"MediaExtractorHelper::isKeyFrame", [](Trial& r) { for (int code : {102, 103, 104}) r.note(r.helper->isKeyFrame(r.data(), r.size, code)); }, avcStream},
        {"MediaExtractorHelper::parseID3v2MetaData memory", [](Trial& r) { r.note(r.helper->parseID3v2MetaData(r.data(), r.size, false, r.format.get())); }, pictureTag, 2, 2},
        {"MediaExtractorHelper::parseID3v2MetaData source", [](Trial& r) { r.note(r.helper->parseID3v2MetaData(&r.recordSource, false, 0, r.format.get())); }, pictureTag, 2, 2, 4096, "", true},
        {"MediaExtractorHelper::parseID3GaplessInfo", [](Trial& r) { r.note(r.helper->parseID3GaplessInfo(&r.recordSource, false, 0, r.format.get())); }, pictureTag, 1, 1, 4096, "", true},
        {"MediaExtractorHelper::parseVorbisComment text", comment, title, 1, 1},
        {"MediaExtractorHelper::parseVorbisComment picture", comment, picture, 1.5, 1.5},
        {"MediaExtractorHelper::parseVorbisComment haptic", comment, [](size_t) -> std::string { return "ANDROID_HAPTIC=99999999999999999999"; }},
        {"MediaExtractorHelper::convertZRAMediaFormatToMeta", [](Trial& r) {
             { const Unwatched own; AMediaFormat_setBuffer(r.format.get(), AMEDIAFORMAT_KEY_ALBUMART, r.data(), r.size); }
             r.note(r.helper->convertZRAMediaFormatToMeta(r.format.get(), r.metadata), r.helper->convertZRAMediaFormatToMeta(r.format.get(), r.metadata.get())); }, filled, 2, 2},
        {"MediaExtractorHelper::convertZRErrorToAMediaError", [](Trial& r) { r.note(r.helper->convertZRErrorToAMediaError(-1007)); }, filled},
        {"MediaExtractorHelper::ConvertXtoX", [](Trial& r) { for (int to : {8, 16, 24, 32, 7}) for (int from : {32, 24, 16, 8}) onBuffer(r, [&](auto& b) { return r.helper->ConvertXtoX(&b, from, to, false, true); }); }, filled},
        {"MediaExtractorHelper::ConvertXto16", [](Trial& r) { onBuffer(r, [&](auto& b) { return r.helper->ConvertXto16(&b, 8, true); }); r.note(r.helper->ConvertXto16(r.data(), r.out(), 24, r.size / 4, false)); }, filled},
        {"MediaExtractorHelper::ConvertXto24packed", [](Trial& r) { onBuffer(r, [&](auto& b) { return r.helper->ConvertXto24packed(&b, 32, true, true); });
             const int32_t count = static_cast<int32_t>(r.size / 4); const uint32_t* words = reinterpret_cast<const uint32_t*>(r.out());
             r.note(r.helper->ConvertXto24packed(words, r.out(), count, false), r.helper->ConvertXto24packed(reinterpret_cast<const float*>(words), r.out(), count, false)); }, filled},
        {"MediaExtractorHelper::ConvertXtoFloat", [](Trial& r) { onBuffer(r, [&](auto& b) { return r.helper->ConvertXtoFloat(&b, 24, true); }); r.note(r.helper->ConvertXtoFloat(r.data(), r.out(), 24, r.size / 4, false)); }, filled},
        {"MediaExtractorHelper::ConvertXto32", [](Trial& r) { onBuffer(r, [&](auto& b) { return r.helper->ConvertXto32(&b, 24, false, false); }); r.note(r.helper->ConvertXto32(r.data(), r.out(), 24, r.size / 4, true)); }, filled},
        {"MediaExtractorHelper::ConvertEndian", [](Trial& r) { for (int bits : {8, 16, 24, 32, 7}) onBuffer(r, [&](auto& b) { return r.helper->ConvertEndian(&b, bits); }); }, filled},

        {"MediaCodecHelper::getMsgKey", [](Trial& r) { r.note(Codec::getMsgKey(kZreKeyMime), Codec::getMsgKey(0)); int map[8] = {}; r.note(Codec::getOMXChannelMapping(8, map), map[7]); }, filled},
        {"MediaCodecHelper::ZRCodeConvertMetaDataToMessage", [](Trial& r) { { const Unwatched own; convertThere(r); } r.note(Codec::ZRCodeConvertMetaDataToMessage(r.metadata, &r.message)); sp<AMessage> made; r.note(Codec::ZRCodeConvertMetaDataBaseToMessage(r.metadata.get(), &made)); }, filled, 2, 2, 16384},
        {"MediaCodecHelper::ZRCodeConvertMessageToMetaData", [](Trial& r) { const sp<ABuffer> b = new ABuffer(r.size); std::memcpy(b->data(), r.data(), r.size); r.message->setBuffer(Codec::getMsgKey(kZreKeyFLACCodecSpecificData), b); r.note(Codec::ZRCodeConvertMessageToMetaData(r.message, r.metadata)); }, filled, 2, 2, 16384},
        {"MediaCodecHelper::ZRgetCodecSpecificData", [](Trial& r) { { const Unwatched own; convertThere(r); } const void* d = nullptr; size_t n = 0; r.note(Codec::ZRgetCodecSpecificData(r.metadata, d, n), n); find(r, Codec::ZRgetCodecSpecificData(r.message)); }, filled},
        {"MediaCodecHelper::parseHEVCCodecSpecificData", [](Trial& r) { r.note(Codec::parseHEVCCodecSpecificData(r.metadata, r.data(), r.size)); }, hevcRecord},
        {"MediaCodecHelper::setRawAudioFormat message", [](Trial& r) { r.note(Codec::setRawAudioFormat(r.message, 1, r.node, false)); }, filled, 0, 0, 4096, "fffr"},
        {"MediaCodecHelper::setRawAudioFormat metadata", [](Trial& r) { r.note(Codec::setRawAudioFormat(r.metadata, 1, r.node, false)); }, filled, 0, 0, 16384, "fffr"},
        {"MediaCodecHelper::setG711Format message", [](Trial& r) { r.note(Codec::setG711Format(r.message, 0, r.node, false)); }, filled, 0, 0, 4096, "fffr"},
        {"MediaCodecHelper::setG711Format metadata", [](Trial& r) { r.note(Codec::setG711Format(r.metadata, 0, r.node, false)); }, filled, 0, 0, 16384, "fffr"},
        {"MediaCodecHelper::setG726Format message", [](Trial& r) { r.note(Codec::setG726Format(r.message, r.node, false)); }, filled, 0, 0, 4096, "fffr"},
        {"MediaCodecHelper::setG726Format metadata", [](Trial& r) { r.note(Codec::setG726Format(r.metadata, r.node, false)); }, filled, 0, 0, 16384, "fffr"},
        {"MediaCodecHelper::setAACFormat message", [](Trial& r) { r.note(Codec::setAACFormat(r.message, 0, r.node, false)); }, filled, 0, 0, 4096, "fffrrri"},
        {"MediaCodecHelper::setAACFormat metadata", [](Trial& r) { r.note(Codec::setAACFormat(r.metadata, 0, r.node, false)); }, filled, 0, 0, 16384, "fffrrri"},
        {"MediaCodecHelper::setAlacFormat message", [](Trial& r) { r.note(Codec::setAlacFormat(r.message, 0, r.node, false)); }, filled, 0, 0, 4096, "fr"},
        {"MediaCodecHelper::setAlacFormat metadata", [](Trial& r) { r.note(Codec::setAlacFormat(r.metadata, 0, r.node, false)); }, filled, 0, 0, 16384, "fr"},
        {"MediaCodecHelper::setWMAFormat message", [](Trial& r) { r.note(Codec::setWMAFormat(r.message, r.node, false)); }, filled, 0, 0, 4096, "rr"},
        {"MediaCodecHelper::setWMAFormat metadata", [](Trial& r) { r.note(Codec::setWMAFormat(r.metadata, r.node, false)); }, filled, 0, 0, 16384, "rr"},
        {"MediaCodecHelper::setWMAFormat voice", [](Trial& r) { { const Unwatched own; r.message->setInt32("wma-version", 3); } r.note(Codec::setWMAFormat(r.message, r.node, false)); }, filled, 0, 0, 4096, "ir"},
        {"MediaCodecHelper::setRAFormat message", [](Trial& r) { r.note(Codec::setRAFormat(r.message, 0, r.node, false)); }, filled, 0, 0, 4096, "fr"},
        {"MediaCodecHelper::setRAFormat metadata", [](Trial& r) { r.note(Codec::setRAFormat(r.metadata, 0, r.node, false)); }, filled, 0, 0, 16384, "fr"},
        {"MediaCodecHelper::setVOCodecFormat", [](Trial& r) { r.note(Codec::setVOCodecFormat(r.message, "c", r.node, false), Codec::setVOCodecFormat(r.metadata, "c", r.node, false)); }, filled},
        {"MediaCodecHelper::setDolbyFormat", [](Trial& r) { r.note(Codec::setDolbyFormat(r.message, 0, r.node, false)); }, filled, 0, 0, 4096, "rr"},
        {"MediaCodecHelper::setDivxFormat message", [](Trial& r) { r.note(Codec::setDivxFormat(r.message, r.node, false)); }, filled, 0, 0, 4096, "r"},
        {"MediaCodecHelper::setDivxFormat metadata", [](Trial& r) { r.note(Codec::setDivxFormat(r.metadata, r.node, false)); }, filled, 0, 0, 16384, "r"},
        {"MediaCodecHelper::configureFramePackingFormat message", [](Trial& r) { Codec::configureFramePackingFormat(r.message, r.node); }, filled, 0, 0, 4096, "i"},
        {"MediaCodecHelper::configureFramePackingFormat metadata", [](Trial& r) { Codec::configureFramePackingFormat(r.metadata, r.node); }, filled, 0, 0, 16384, "i"},
        {"MediaCodecHelper::configureQCOMVideoDecoder", [](Trial& r) { Codec::configureQCOMVideoDecoder(r.message, r.node, 0x400, "OMX.qcom.video.decoder.vc1"); }, filled, 0, 0, 4096, "iieei"},

        {"ID3::ID3 memory, picture", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, pictureTag, 3, 3},
        {"ID3::ID3 memory, UTF-16", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, wideTextTag, 5, 6.5},
        {"ID3::ID3 memory, narrow UTF-16", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, narrowTextTag, 2.5, 3.5},
        {"ID3::ID3 memory, unsynchronised", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, unsynchronisedTag, 2, 2},
        {"ID3::ID3 memory, plain sizes", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, plainSizesTag, 2, 2},
        {"ID3::ID3 memory, many frames", [](Trial& r) { const ID3 id3(r.data(), r.size, false); int count = 0; if (!id3.isValid()) return; for (Iterator at(id3, "TXXX"); !at.done(); at.next()) ++count; r.note(count); }, framesTag, 1, 1},
        {"ID3::ID3 memory, claim", [](Trial& r) { noteFrames(r, ID3(r.data(), r.size, false)); }, claimingTag, 0, 0, 0x700000 + 4096},
        {"ID3::ID3 source", [](Trial& r) { noteFrames(r, ID3(&r.recordSource, false, 0)); }, pictureTag, 3, 3, 4096, "", true},
        {"ID3::parseV2 source", [](Trial& r) { parse(r, [&](ID3& id3) { return id3.parseV2(&r.recordSource, 0) || id3.parseV1(&r.recordSource); }); }, pictureTag, 1, 1, 4096, "", true},
        {"ID3::parseV2 base source", [](Trial& r) { parse(r, [&](ID3& id3) { return id3.parseV2(&r.source, 0) || id3.parseV1(&r.source); }); }, pictureTag, 1, 1, 4096, "", true},
        {"ID3::ParseSyncsafeInteger", [](Trial& r) { size_t n = 0; r.note(ID3::ParseSyncsafeInteger(r.data(), &n), n); }, filled},
        {"ID3::removeUnsynchronization", [](Trial& r) { ID3 id3(r.data(), r.size, true); r.note(id3.removeUnsynchronizationV2_4(false, true)); id3.removeUnsynchronization(); id3.checkMixedEncodingtype(); r.note(id3.isMixedEncodingtype()); }, unsynchronisedTag, 1, 1},
        {"ID3Wrapper::parseID3", [](Trial& r) { const sp<ID3Wrapper> wrapper = new ID3Wrapper; ID3 id3(r.data(), r.size, true); r.note(wrapper->parseID3(r.format.get(), id3)); }, pictureTag, 2, 2},
        {"ID3Wrapper::parseID3v2MetaData memory", [](Trial& r) { const sp<ID3Wrapper> wrapper = new ID3Wrapper; r.note(wrapper->parseID3v2MetaData(r.data(), r.size, true, r.format.get())); }, wideTextTag, 5, 7},
        {"ID3Wrapper::parseID3v2MetaData source", [](Trial& r) { const sp<ID3Wrapper> wrapper = new ID3Wrapper; r.note(wrapper->parseID3v2MetaData(&r.recordSource, false, 0, r.format.get())); }, pictureTag, 2, 2, 4096, "", true},
        {"ID3Wrapper::parseID3GaplessInfo", [](Trial& r) { const sp<ID3Wrapper> wrapper = new ID3Wrapper; r.note(wrapper->parseID3GaplessInfo(&r.recordSource, false, 0, r.format.get())); }, pictureTag, 1, 1, 4096, "", true},
        {"DataSourceHelper::readAt", [](Trial& r) { off64_t n = 0; r.note(r.recordSource.readAt(1, r.out(), 9), r.recordSource.getSize(&n), r.recordSource.flags()); }, filled},
        {"MemorySource::readAt", [](Trial& r) { MemorySource s(r.data(), r.size); off64_t n = 0; r.note(s.initCheck(), s.readAt(1, r.out(), r.size), s.getSize(&n), s.getUri(nullptr, 0), s.flags(), s.getAvailableSize(0, &n)); s.close(); }, filled},

        {"WavDump::WavDump", [](Trial& r) { WavDump dump; r.note(dump.open(8000, 8, 1), dump.get_count()); }, filled},
        {"WavDump::dump", [](Trial& r) { WavDump dump("x"); r.note(dump.dump(r.data(), 1), dump.open(48000, 16, 2)); for (int i = 0; i < 3; ++i) r.note(dump.dump(r.data(), static_cast<uint32_t>(r.size))); r.note(dump.write_header(), dump.write_u32le(1), dump.write_u16le(2)); }, filled},
});
// clang-format on

}  // namespace

// --- What operations run on ---

ssize_t Source::readAt(off64_t offset, void* data, size_t size) {
    sizes[reads % 8] = size;
    asked += size;
    const auto at = static_cast<size_t>(std::max<off64_t>(offset - origin, 0));
    const size_t count = file.copy(static_cast<char*>(data), size, std::min(at, file.size()));
    return reads++ == spoiltRead ? answer : static_cast<ssize_t>(count);
}

status_t Source::getSize(off64_t* size) {
    *size = sizeAnswer != -1 ? sizeAnswer : static_cast<off64_t>(file.size());
    return sizeStatus;
}

status_t Component::answer(const char* call, uint32_t index, const void* bytes, size_t size) {
    const Unwatched own;
    calls.append(call).append(std::to_string(index)).append(hex(bytes, size)).append("\n");
    return count++ == refusedCall ? refusal : OK;
}

status_t Component::getParameter(OMX_INDEXTYPE index, void* params, size_t size) {
    return answer("get", index, params, size);
}

status_t Component::setParameter(OMX_INDEXTYPE index, const void* params, size_t size) {
    return answer("set", index, params, size);
}

status_t Component::getExtensionIndex(const char* name, OMX_INDEXTYPE* index) {
    *index = static_cast<OMX_INDEXTYPE>(0x7F0000EE);
    return answer(name, 0, nullptr, 0);
}

Trial::Trial(std::string bytes)
    : first(std::move(bytes)), input(first), size(input.size()), output(4 * size + 64) {
    source.file = input;
    record = {[](void* self, off64_t offset, void* data, size_t count) {
                  return static_cast<Source*>(self)->readAt(offset, data, count);
              },
              [](void* self, off64_t* count) { return static_cast<Source*>(self)->getSize(count); },
              [](void*) { return 0u; }, [](void*, char*, size_t) { return false; }, &source};
    for (const auto& [key, value] : kNumbers) message->setInt32(key, value);
    Codec::ZRCodeConvertMessageToMetaData(message, metadata);
}

void Trial::perform(const Operation& operation) {
    performing = this;
    operation.call(*this);
}

Trial::~Trial() {
    performing = nullptr;
}

void Trial::again() {
    input = first;
    std::ranges::fill(output, uint8_t{0});
    notes.clear();
    log.clear();
    node->calls.clear();
    disk = {};
}

std::string Trial::stores() const {
    std::string all;
    for (char c : ' ' + format.text()) all += c == ',' ? '\n' : c;
    for (const MetaKeyRow& row : metaKeyRows()) {
        int32_t number = 0;
        const char* cString = nullptr;
        const void* data = nullptr;
        uint32_t type = 0;
        size_t length = 0;
        sp<ABuffer> buffer;
        const std::string key = std::string("\n") + row.messageKey;
        if (metadata->findInt32(row.metaKey, &number)) all += key + std::to_string(number);
        if (metadata->findCString(row.metaKey, &cString)) all += key + cString;
        if (metadata->findData(row.metaKey, &type, &data, &length)) all += key + hex(data, length);
        if (message->findInt32(row.messageKey, &number)) all += key + '=' + std::to_string(number);
        if (message->findBuffer(row.messageKey, &buffer))
            all += key + '=' + hex(buffer->data(), buffer->size());
    }
    return all + '\n';
}

std::string Trial::outcome() const {
    return notes + node->calls + stores() + hex(input.data(), input.size()) +
           hex(output.data(), output.size()) + hex(disk.file.data(), disk.file.size()) + '\n' + log;
}

std::span<const Operation> operations() {
    return kOperations;
}

}  // namespace sweeps

// Of a WAV dump's files only that which a dump goes to can be opened for writing, and the counter.
extern "C" FILE* __real_fopen(const char* name, const char* mode);
extern "C" FILE* __wrap_fopen(const char* name, const char* mode) {
    using sweeps::Disk;
    if (sweeps::performing == nullptr) return __real_fopen(name, mode);
    Disk& disk = sweeps::performing->disk;
    if (*mode == 'r') return nullptr;
    disk.at = 0;
    cookie_io_functions_t calls{};
    calls.write = [](void* cookie, const char* bytes, size_t size) -> ssize_t {
        const sweeps::Unwatched own;
        Disk& to = *static_cast<Disk*>(cookie);
        if (to.writes++ == to.spoiltWrite) size = std::min(size, static_cast<size_t>(to.written));
        to.file.resize(std::max(to.file.size(), to.at + size));
        to.file.replace(to.at, size, bytes, size);
        to.at += size;
        return static_cast<ssize_t>(size);
    };
    calls.seek = [](void* cookie, off64_t* offset, int) {
        static_cast<Disk*>(cookie)->at = static_cast<size_t>(*offset);
        return 0;
    };
    const sweeps::Unwatched own;
    return fopencookie(&disk, mode, calls);
}
