// Vorbis and FLAC codec data of real encoders, against what FFmpeg makes of the same streams.

#include <gtest/gtest.h>

#include <algorithm>

#include "referee/Media.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::Bytes;
using test::Format;
using test::media::Packet;
using test::media::Stream;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

const std::string kNoise = "-f lavfi -i anoisesrc=d=0.6:seed=7 ";

struct VorbisRow {
    const char* name;
    const char* arguments;   // of ffmpeg
    size_t commentSize = 0;  // bytes; 0 = as it is
};

class VorbisReferee : public testing::TestWithParam<VorbisRow> {};

// The block with a comment header of another size; all headers are shorter than 255 bytes before.
Bytes withCommentSize(Bytes block, size_t size) {
    const auto comment = block.begin() + 3 + block[1];
    block.insert(comment + block[2], size - block[2], 'x');
    block[2] = static_cast<uint8_t>(size % 255);
    block.insert(block.begin() + 2, size / 255, 255);
    return block;
}

// The headers as libavcodec also takes them: each behind a 16-bit length.
Bytes withLengths(const std::vector<Bytes>& headers) {
    Bytes bytes;
    for (const Bytes& header : headers) {
        bytes.push_back(static_cast<uint8_t>(header.size() >> 8));
        bytes.push_back(static_cast<uint8_t>(header.size()));
        bytes.insert(bytes.end(), header.begin(), header.end());
    }
    return bytes;
}

TEST_P(VorbisReferee, HeadersAreAllThatTheDecoderNeeds) {
    // Vorbis I 5.2.1: no vendor, no comments, framing bit
    const Bytes comment{3, 'v', 'o', 'r', 'b', 'i', 's', 0, 0, 0, 0, 0, 0, 0, 0, 1};
    const auto& [name, arguments, commentSize] = GetParam();
    const Stream stream = test::media::demux(
            test::media::encode(kNoise + "-c:a libvorbis " + arguments, "encoded"));
    Bytes block = stream.extradata;
    if (commentSize != 0) block = withCommentSize(block, commentSize);
    const Format format;
    size_t size = block.size();
    ASSERT_EQ(helper->setVorbisCodecSpecificData(block.data(), &size, format.get()), 0);

    const auto direct = test::media::decode(stream.codec, stream.extradata, stream.packets);
    ASSERT_GE(direct.size(), 3u);
    const Bytes headers = withLengths({format.buffer(AMEDIAFORMAT_KEY_CSD_0).value(), comment,
                                       format.buffer(AMEDIAFORMAT_KEY_CSD_1).value()});
    EXPECT_EQ(test::media::decode(AV_CODEC_ID_VORBIS, headers, stream.packets), direct);
}

constexpr VorbisRow kVorbisRows[] = {
        {"OggStereo", "-ar 44100 -ac 2 -f ogg"},
        {"OggLongComment", "-ar 22050 -ac 1 -f ogg", 700},
        {"MatroskaMono", "-ar 8000 -ac 1 -f matroska"},
        {"Matroska51", "-ar 48000 -af aformat=channel_layouts=5.1 -f matroska", 4 * 255},
};
INSTANTIATE_TEST_SUITE_P(Libvorbis, VorbisReferee, testing::ValuesIn(kVorbisRows),
                         [](const auto& test) { return std::string(test.param.name); });

class FlacReferee : public testing::TestWithParam<const char*> {};

// RFC 9639 8.2: frame sizes are those of the whole stream, block sizes leave out the last block.
TEST_P(FlacReferee, StreamInfoIsThatOfThePackets) {
    const std::string path =
            test::media::encode(kNoise + "-c:a flac " + GetParam() + " -f flac", "encoded.flac");
    const Stream stream = test::media::demux(path);
    ASSERT_GE(stream.packets.size(), 3u);
    const auto [minFrame, maxFrame] = std::ranges::minmax(
            stream.packets, {}, [](const Packet& packet) { return packet.data.size(); });
    const auto [minBlock, maxBlock] = std::minmax_element(
            stream.packets.begin(), stream.packets.end() - 1,
            [](const Packet& left, const Packet& right) { return left.duration < right.duration; });

    Bytes data = test::media::readFile(path);
    data.resize(4 + 4 + 34);  // marker, block header, STREAMINFO
    const Format format;
    size_t size = data.size();
    ASSERT_EQ(helper->setAudioConfig(android::kCodecTypeFlac, data.data(), &size, format.get()), 0);
    const auto value = [&format](const char* key) { return size_t(format.int32(key).value()); };
    EXPECT_EQ(value(android::ZREAMEDIAFORMAT_KEY_MINBLOCKSIZE), minBlock->duration);
    EXPECT_EQ(value(android::ZREAMEDIAFORMAT_KEY_MAXBLOCKSIZE), maxBlock->duration);
    EXPECT_EQ(value(android::ZREAMEDIAFORMAT_KEY_MINFRAMESIZE), minFrame.data.size());
    EXPECT_EQ(value(android::ZREAMEDIAFORMAT_KEY_MAXFRAMESIZE), maxFrame.data.size());
}

INSTANTIATE_TEST_SUITE_P(Ffmpeg, FlacReferee,
                         testing::Values("-ar 44100 -ac 2 -frame_size 1152",
                                         "-ar 8000 -ac 1 -frame_size 576",
                                         "-ar 96000 -ac 2 -sample_fmt s32 -frame_size 16384"));

}  // namespace
