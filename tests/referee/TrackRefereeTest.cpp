// Tracks of real encoders, described to the library as the parser of their container would. FFmpeg
// is the referee: its decoders, set up with nothing but what the format holds, have to find the
// same frames as with what its own demuxers say.

#include "model/CodecDataModel.h"
#include "referee/Media.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/TrackInfo.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace {

using namespace android;
using test::Bytes;
using test::Format;
using test::helper;
using test::media::Stream;

// What becomes of the codec private data.
enum class Form {
    kNothing,     // not stored
    kWhole,       // the buffer under the row's key
    kFront,       // the buffer but for a profile byte at its end
    kBack,        // the buffer but for descriptors at its front
    kWmaOptions,  // a number
    kVorbis,      // two of its three packets
};

struct Row {
    const char* name;
    uint32_t codecType;
    const char* mime;
    std::pair<int, int> size;  // of the picture; 0 for sound
    const char* arguments;     // of ffmpeg
    Form form = Form::kNothing;
    const char* key = nullptr;

    bool isVideo() const { return size.first != 0; }
    bool isHevc() const { return codecType == kCodecTypeHevc; }
    bool isAnnexB() const { return isHevc() || codecType == kCodecTypeAvc; }
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

// clang-format off
#define HEVC "-c:v libx265 -preset ultrafast -x265-params log-level=none -f hevc -pix_fmt "
#define X264 "-c:v libx264 -preset veryfast -qp 36 -sc_threshold 0 -f h264 -pix_fmt "
#define AVC_RECORD Form::kWhole, AMEDIAFORMAT_KEY_CSD_AVC
#define GLOBAL "-flags +global_header "  // headers in the codec private data only
#define ESDS Form::kBack, AMEDIAFORMAT_KEY_ESDS
#define KEY(name) Form::kWhole, ZREAMEDIAFORMAT_KEY_##name
const Row kRows[] = {
    {"Hevc8",       129, "video/hevc",        {1920, 1080}, HEVC "yuv420p",     Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"Hevc8Crop",   129, "video/hevc",        {98, 50},     HEVC "yuv420p",     Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"Hevc8NoCrop", 129, "video/hevc",        {128, 64},    HEVC "yuv420p",     Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"Hevc10",      129, "video/hevc",        {98, 50},     HEVC "yuv420p10le", Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"Hevc422",     129, "video/hevc",        {98, 50},     HEVC "yuv422p10le", Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"Hevc444",     129, "video/hevc",        {99, 51},     HEVC "yuv444p",     Form::kWhole, AMEDIAFORMAT_KEY_CSD_HEVC},
    {"AvcBaseline",         104, "video/avc",  {320, 240},   X264 "yuv420p -profile:v baseline", AVC_RECORD},
    {"AvcHigh",             104, "video/avc",  {1920, 1080}, X264 "yuv420p", AVC_RECORD},
    {"AvcTiny",             104, "video/avc",  {2, 2},       X264 "yuv420p", AVC_RECORD},
    {"AvcHigh10",           104, "video/avc",  {176, 98},    X264 "yuv420p10le", AVC_RECORD},
    {"AvcHigh422Odd",       104, "video/avc",  {34, 17},     X264 "yuv422p10le", AVC_RECORD},
    {"AvcHigh444",          104, "video/avc",  {35, 17},     X264 "yuv444p", AVC_RECORD},
    {"AvcRgb",              104, "video/avc",  {67, 51},     X264 "rgb24 -c:v libx264rgb", AVC_RECORD},
    {"AvcGray",             104, "video/avc",  {101, 51},    X264 "gray", AVC_RECORD},
    {"AvcGrayFields",       104, "video/avc",  {101, 54},    X264 "gray -flags +ildct", AVC_RECORD},
    {"AvcMbaff",            104, "video/avc",  {720, 484},   X264 "yuv420p -flags +ildct", AVC_RECORD},
    {"AvcMbaff422",         104, "video/avc",  {720, 486},   X264 "yuv422p -flags +ildct", AVC_RECORD},
    {"AvcFieldCoding",      104, "video/avc",  {1920, 1080}, X264 "yuv420p -x264-params fake-interlaced=1", AVC_RECORD},
    {"AvcSlices",           104, "video/avc",  {640, 360},   X264 "yuv420p -x264-params slices=4", AVC_RECORD},
    {"AvcAllCropEdges",     104, "video/avc",  {338, 262},   X264 "yuv420p -vf pad=346:274 -x264-params crop-rect=2,4,6,8:sps-id=5:aud=1", AVC_RECORD},
    {"AvcPpsMatrices",      104, "video/avc",  {320, 180},   X264 "yuv420p -x264-params cqm=jvt", AVC_RECORD},
    {"Mpeg4Fields", 102, "video/mp4v-es",     {96, 64},     GLOBAL "-c:v mpeg4 -flags +ildct+ilme -f mp4", ESDS},
    {"Mpeg4InBand", 102, "video/mp4v-es",     {98, 50},     "-c:v mpeg4 -bf 2 -f m4v", ESDS},
    {"Xvid",        120, "video/mp4v-es",     {98, 50},     GLOBAL "-c:v mpeg4 -bf 2 -vtag XVID -f avi", ESDS},
    {"Divx",        124, "video/divx",        {98, 50},     GLOBAL "-c:v mpeg4 -bf 2 -vtag DIVX -f avi", ESDS},
    {"DivxPacked",  125, "video/divx",        {98, 50},     "-c:v libxvid -bf 2 -vtag DX50 -f avi", ESDS},
    {"H263Qcif",    103, "video/3gpp",        {176, 144},   "-c:v h263 -f 3gp"},
    {"H263Cif",     103, "video/3gpp",        {352, 288},   "-c:v h263 -f 3gp"},
    {"H263Plus",    103, "video/3gpp",        {100, 52},    "-c:v h263p -f mov"},
    {"Wmv1",        106, "video/x-ms-wmv7",   {98, 50},     "-c:v wmv1 -f asf", Form::kFront, ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER},
    {"Wmv2",        107, "video/x-ms-wmv7",   {98, 50},     "-c:v wmv2 -f asf", Form::kFront, ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER},
    {"TheoraOgg",   121, "video/theora",      {98, 50},     "-c:v libtheora -f ogg", KEY(THEORASPECIFICDATA)},
    {"Mpeg2",       101, "video/mpeg2",       {98, 50},     "-c:v mpeg2video -bf 2 -f matroska", ESDS},
    {"Mjpeg",       114, "video/mjpg",        {98, 50},     "-c:v mjpeg -pix_fmt yuvj420p -f avi"},
    {"Aac7350",     201, "audio/mp4a-latm",   {},           "-ar 7350 -ac 1 -c:a aac -f mp4", ESDS},
    {"Aac96000",    201, "audio/mp4a-latm",   {},           "-ar 96000 -ac 2 -c:a aac -f matroska", ESDS},
    {"Aac51",       201, "audio/mp4a-latm",   {},           "-af aformat=channel_layouts=5.1 -c:a aac -f mp4", ESDS},
    {"AacQuad",     201, "audio/mp4a-latm",   {},           "-af aformat=channel_layouts=quad -c:a aac -f mp4", ESDS},  // a program config element
    {"VorbisOgg",   208, "audio/vorbis",      {},           "-ar 44100 -ac 2 -c:a libvorbis -f ogg", Form::kVorbis},
    {"VorbisMkv",   208, "audio/vorbis",      {},           "-ar 8000 -ac 1 -c:a libvorbis -f matroska", Form::kVorbis},
    {"Vorbis51",    208, "audio/vorbis",      {},           "-af aformat=channel_layouts=5.1 -c:a libvorbis -f matroska", Form::kVorbis},
    {"Opus51",      228, "audio/opus",        {},           "-af aformat=channel_layouts=5.1 -c:a libopus -f ogg", Form::kWhole, AMEDIAFORMAT_KEY_CSD_0},
    {"Flac",        207, "audio/flac",        {},           "-ar 44100 -ac 2 -c:a flac -f flac", KEY(FLACCOECSPECIFICDATA)},
    {"FlacLarge",   207, "audio/flac",        {},           "-ar 96000 -ac 2 -sample_fmt s32 -frame_size 16384 -c:a flac -f flac", KEY(FLACCOECSPECIFICDATA)},
    {"WmaV1",       210, "audio/x-zr-ms-wma", {},           "-ar 44100 -ac 2 -c:a wmav1 -f asf", Form::kWmaOptions},
    {"WmaV2",       211, "audio/x-zr-ms-wma", {},           "-ar 22050 -ac 1 -b:a 32k -c:a wmav2 -f asf", Form::kWmaOptions},
    {"AdpcmMs",     218, "audio/adpcm",       {},           "-ar 44100 -ac 2 -c:a adpcm_ms -f wav", KEY(ADPCMWAVEFORMAT)},
    {"AdpcmIma",    218, "audio/adpcm",       {},           "-ar 22050 -ac 1 -c:a adpcm_ima_wav -f wav", KEY(ADPCMWAVEFORMAT)},
    {"Mp3",         202, "audio/mpeg",        {},           "-ar 44100 -ac 2 -c:a libmp3lame -f mp3"},
    {"Ac3",         203, "audio/ac3",         {},           "-af aformat=channel_layouts=5.1 -c:a ac3 -f ac3"},
    {"Eac3",        204, "audio/eac3",        {},           "-ar 48000 -ac 2 -c:a eac3 -f eac3"},
    {"Alac",        229, "audio/x-zr-alac",   {},           "-ar 44100 -ac 2 -c:a alac -f ipod"},
};
// clang-format on

// The row's stream, encoded once.
const Stream& encoded(const Row& row) {
    static std::map<std::string, Stream> cache;
    if (const auto found = cache.find(row.name); found != cache.end()) return found->second;
    const std::string size = std::to_string(row.size.first) + 'x' + std::to_string(row.size.second);
    const std::string source = row.isVideo() ? "testsrc=size=" + size + " -frames:v 9 -g 4 "
                                             : "anoisesrc=d=0.4:seed=7 ";
    return cache[row.name] = test::media::demux(
                   test::media::encode("-f lavfi -i " + source + row.arguments, "encoded"));
}

// An access unit without parameter sets, behind the lengths that the record declares: of 4 bytes
// for HEVC, of 2 for AVC.
Bytes lengthPrefixed(const Bytes& packet, bool isHevc) {
    Bytes data;
    for (const Bytes& unit : test::modelUnits(packet)) {
        const unsigned type = isHevc ? unit.at(0) >> 1 : unit.at(0) & 0x1F;
        if (isHevc ? type >= 32 && type <= 34 : type == 7 || type == 8) continue;
        EXPECT_LE(unit.size(), 0xFFFFu) << "raise -qp";
        if (isHevc) test::append(data, {0, 0});
        test::appendWithLength(data, unit);
    }
    return data;
}

class TrackReferee : public testing::TestWithParam<Row> {
protected:
    // Fills the format as the parser of the container does. Parsers of raw streams know no size.
    void SetUp() override {
        TrackInfo info{row.isVideo() ? kTrackTypeVideo : kTrackTypeAudio, row.codecType, {}};
        const auto u32 = [](auto value) { return static_cast<uint32_t>(value); };
        if (!row.isVideo()) {
            info.audio = {};
            info.audio.channelCount = u32(stream.sound.channels);
            info.audio.sampleRate = u32(stream.sound.sampleRate);
            info.audio.bitsPerSample = u32(stream.sound.bitsPerSample);
            info.audio.bitRate = u32(stream.sound.bitRate);
            info.audio.blockAlign = static_cast<uint16_t>(stream.sound.blockAlign);
        } else if (!row.isAnnexB()) {
            info.video = {u32(stream.width), u32(stream.height), 0, 25, 1};
        }
        helper->setTrackMeta(&info, format.get(), false);
        const std::string before = format.text();
        size_t size = config.size();
        ASSERT_EQ(row.isVideo() ? helper->setVideoConfig(&info, config.data(), size, format.get())
                                : helper->setAudioConfig(row.codecType, config.data(), &size,
                                                         format.get()),
                  0);
        EXPECT_EQ(format.text() == before, row.form == Form::kNothing) << format.text();
    }

    Bytes privateData() const {
        if (row.isAnnexB()) return stream.packets.at(0).data;
        Bytes data = stream.extradata;
        const Bytes head{'f', 'L', 'a', 'C', 0x80, 0, 0, 34};  // RFC 9639 6, 8.1: the only block
        if (stream.codec == AV_CODEC_ID_FLAC) data.insert(data.begin(), head.begin(), head.end());
        return data;
    }

    // The codec private data out of the format, in a form that libavcodec takes.
    Bytes stored() const {
        if (row.form == Form::kNothing) return stream.extradata;
        const auto size = std::ssize(config);
        if (row.form == Form::kWmaOptions) {  // 4 bytes of version 1, 10 bytes of version 2
            const int options = number(ZREAMEDIAFORMAT_KEY_WMAENCODEOPT);
            Bytes data(config.size());
            const size_t at = size == 4 ? 2 : 4;
            data.at(at) = static_cast<uint8_t>(options);
            data.at(at + 1) = static_cast<uint8_t>(options >> 8);
            return data;
        }
        if (row.form == Form::kVorbis) {  // libavcodec takes the packets behind 16-bit lengths, too
            const Bytes comment{3, 'v', 'o', 'r', 'b', 'i', 's', 0, 0, 0, 0, 0, 0, 0, 0, 1};
            Bytes data;
            test::appendWithLength(data, format.buffer(AMEDIAFORMAT_KEY_CSD_0).value());
            test::appendWithLength(data, comment);
            test::appendWithLength(data, format.buffer(AMEDIAFORMAT_KEY_CSD_1).value());
            return data;
        }
        Bytes data = format.buffer(row.key).value();
        if (row.form == Form::kFront) data.resize(config.size());
        if (row.form == Form::kBack) data.erase(data.begin(), data.end() - size);
        EXPECT_TRUE(row.isAnnexB() || data == config);
        return data;
    }

    int number(const char* key) const { return format.int32(key).value_or(0); }

    const Row row = GetParam();
    const Stream& stream = encoded(row);
    const Bytes config = privateData();
    const test::DeviceScope device{{.decoders = {row.mime, "video/x-ms-wmv8"}}};
    const test::LogCapture quiet;
    Format format;
};

TEST_P(TrackReferee, MimeAndSizeAreRight) {
    EXPECT_EQ(format.mime(), row.mime);
    auto [width, height] = row.size;
    ASSERT_EQ(std::pair(stream.width, stream.height), row.size) << "FFmpeg sees another size";
    if (row.isHevc()) {  // cropping, in units of chroma samples, is meant to count as luma samples
        std::pair<int, int> coded;
        test::media::decode(stream, &coded);
        const auto& layout = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(stream.format));
        width = coded.first - ((coded.first - width) >> layout.log2_chroma_w);
        height = coded.second - ((coded.second - height) >> layout.log2_chroma_h);
    }
    EXPECT_EQ(number(AMEDIAFORMAT_KEY_WIDTH), width);
    EXPECT_EQ(number(AMEDIAFORMAT_KEY_HEIGHT), height);
}

TEST_P(TrackReferee, FormatIsAllThatTheDecoderNeeds) {
    Stream ours = stream;
    ours.width = number(AMEDIAFORMAT_KEY_WIDTH);
    ours.height = number(AMEDIAFORMAT_KEY_HEIGHT);
    ours.sound = {number(AMEDIAFORMAT_KEY_SAMPLE_RATE), number(AMEDIAFORMAT_KEY_CHANNEL_COUNT),
                  number(ZREAMEDIAFORMAT_KEY_WMABLOCKALIGN),
                  number(ZREAMEDIAFORMAT_KEY_REALSAMPLEBITS), number(AMEDIAFORMAT_KEY_BIT_RATE)};
    ours.extradata = stored();
    for (auto& packet : ours.packets) {
        if (row.isAnnexB()) packet.data = lengthPrefixed(packet.data, row.isHevc());
    }
    const auto direct = test::media::decode(stream);
    ASSERT_GE(direct.size(), 3u);
    EXPECT_EQ(test::media::decode(ours), direct);
}

TEST_P(TrackReferee, KeyFramesAreThoseOfFfmpeg) {
    const auto codecs = {AV_CODEC_ID_H264, AV_CODEC_ID_MPEG4, AV_CODEC_ID_H263};
    const bool looks = std::ranges::find(codecs, stream.codec) != codecs.end();
    const auto keys = std::ranges::count(stream.packets, true, &test::media::Packet::key);
    ASSERT_TRUE(!looks || (keys >= 2 && keys < std::ssize(stream.packets))) << keys;
    for (const auto& [data, duration, key] : stream.packets) {
        EXPECT_EQ(helper->isKeyFrame(data.data(), data.size(), static_cast<int>(row.codecType)),
                  looks && key);
    }
}

INSTANTIATE_TEST_SUITE_P(Ffmpeg, TrackReferee, testing::ValuesIn(kRows),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
