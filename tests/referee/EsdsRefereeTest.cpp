// Elementary stream descriptors, read back by the MP4 demuxer of FFmpeg: ours take the place of the
// muxer's in files that it wrote.

#include <gtest/gtest.h>

#include "referee/Media.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::Bytes;
using test::Format;
using test::media::Stream;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

Bytes ourDescriptor(AVCodecID codec, const Bytes& config) {
    const Format format;
    size_t size = config.size();
    const auto status = codec == AV_CODEC_ID_AAC
                                ? helper->setAudioConfig(android::kCodecTypeAac, config.data(),
                                                         &size, format.get())
                                : helper->setESDS(config.data(), &size, format.get(), false);
    EXPECT_EQ(status, 0);
    return format.buffer(AMEDIAFORMAT_KEY_ESDS).value();
}

// FFmpeg looks at the innermost length only. With nothing behind the decoder-specific data, the
// other two (ISO/IEC 14496-1 8.3.3) have to end where the descriptor ends as well.
void expectLengthsReachTheEnd(const Bytes& descriptor) {
    size_t at = 0;
    for (const size_t fieldBytes : {3u, 13u, 0u}) {  // ES_ID and flags; decoder configuration; none
        ++at;                                        // tag
        size_t length = 0;
        for (bool more = true; more; ++at) {
            length = length << 7 | (descriptor.at(at) & 0x7Fu);
            more = (descriptor[at] & 0x80) != 0;
        }
        EXPECT_EQ(length, descriptor.size() - at);
        at += fieldBytes;
    }
}

// Replaces what the esds box of the file's only track holds, and mends the sizes of the boxes
// around it (ISO/IEC 14496-12 8.1 to 8.5, ISO/IEC 14496-14 5.6). The media data come first in the
// file, so they stay where they are.
Bytes withDescriptor(const Bytes& mp4, AVCodecID codec, const Bytes& descriptor) {
    std::string file(mp4.begin(), mp4.end());
    const auto sizeOf = [&file](size_t type) {
        uint32_t size = 0;
        for (size_t i = type - 4; i < type; ++i) size = size << 8 | static_cast<uint8_t>(file[i]);
        return size;
    };
    std::vector<size_t> types;
    size_t at = 0;
    for (const char* type : {"moov", "trak", "mdia", "minf", "stbl", "stsd",
                             codec == AV_CODEC_ID_AAC ? "mp4a" : "mp4v", "esds"}) {
        at = file.find(type, at);
        if (at == std::string::npos) throw std::runtime_error(std::string("no box ") + type);
        types.push_back(at);
    }
    const size_t oldSize = sizeOf(at) - 12;  // behind size, type, version and flags
    file.replace(at + 8, oldSize, std::string(descriptor.begin(), descriptor.end()));
    for (const size_t type : types) {
        const size_t size = sizeOf(type) + descriptor.size() - oldSize;
        for (size_t i = 1; i <= 4; ++i) file[type - i] = static_cast<char>(size >> (8 * (i - 1)));
    }
    return Bytes(file.begin(), file.end());
}

struct Row {
    const char* name;
    const char* arguments;  // of ffmpeg
};

#define NOISE "-f lavfi -i anoisesrc=d=0.3:seed=7 -c:a aac "
// clang-format off
const Row kRows[] = {
    {"AacMono7350",    NOISE "-ar 7350 -ac 1"},
    {"AacMono8000",    NOISE "-ar 8000 -ac 1"},
    {"AacStereo44100", NOISE "-ar 44100 -ac 2"},
    {"AacStereo96000", NOISE "-ar 96000 -ac 2"},
    {"Aac51",          NOISE "-ar 48000 -af aformat=channel_layouts=5.1"},
    {"AacQuad",        NOISE "-ar 32000 -af aformat=channel_layouts=quad"},  // a program config element
    {"Visual",         "-f lavfi -i testsrc=size=98x50:rate=25 -frames:v 3 -c:v mpeg4"},
    {"VisualFields",   "-f lavfi -i testsrc=size=96x64:rate=25 -frames:v 3 -c:v mpeg4 -flags +ildct+ilme"},
};
// clang-format on

class EsdsReferee : public testing::TestWithParam<Row> {
protected:
    // The file again, with our descriptor of the config in it.
    Stream throughOurDescriptor(const Bytes& config) const {
        const Bytes descriptor = ourDescriptor(original.codec, config);
        expectLengthsReachTheEnd(descriptor);
        const std::string ours = test::media::temporaryPath("ours.mp4");
        test::media::writeFile(
                ours, withDescriptor(test::media::readFile(path), original.codec, descriptor));
        return test::media::demux(ours);
    }

    const std::string path =
            test::media::encode(std::string(GetParam().arguments) + " -f mp4", "encoded.mp4");
    const Stream original = test::media::demux(path);
};

TEST_P(EsdsReferee, StreamDecodesAsBefore) {
    ASSERT_FALSE(original.extradata.empty());
    const Stream ours = throughOurDescriptor(original.extradata);
    EXPECT_EQ(ours.codec, original.codec);
    EXPECT_EQ(ours.extradata, original.extradata);

    const auto direct = test::media::decode(original.codec, original.extradata, original.packets);
    ASSERT_GE(direct.size(), 3u);
    EXPECT_EQ(test::media::decode(ours.codec, ours.extradata, ours.packets), direct);
}

// The sizes are those around which one of the three length fields gets a byte more.
TEST_P(EsdsReferee, ConfigComesBackWhateverItsSize) {
    for (const size_t size : {2u, 5u, 107u, 108u, 112u, 113u, 127u, 128u, 200u, 16361u, 16362u,
                              16367u, 16368u, 16383u, 16384u, 20000u}) {
        SCOPED_TRACE(size);
        Bytes config(original.extradata.begin(), original.extradata.begin() + 2);
        while (config.size() < size) config.push_back(static_cast<uint8_t>(config.size() * 37));
        const Stream ours = throughOurDescriptor(config);
        EXPECT_EQ(ours.codec, original.codec);
        EXPECT_EQ(ours.extradata, config);
    }
}

INSTANTIATE_TEST_SUITE_P(Ffmpeg, EsdsReferee, testing::ValuesIn(kRows),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
