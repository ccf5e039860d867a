// Samples converted, and written to WAV files, against what FFmpeg and libsndfile make of the same
// bytes.

#include <gtest/gtest.h>
#include <sndfile.h>

#include <random>

#include "model/PcmModel.h"
#include "referee/Media.h"
#include "zrcodecparser/WavDump.h"

namespace {

using namespace test::pcm;
using test::Bytes;
using test::media::temporaryPath;

constexpr size_t kSamples = 20000;

struct Row {
    const char *from, *to;  // as FFmpeg calls them
    int subtype;            // the first, as libsndfile calls it
    Call call;
};
constexpr int kBig = SF_ENDIAN_BIG;

// All cut low bits off, but for floats, where only the library rounds: these lie on the steps of 24
// bits, and libsndfile, which takes them for integers, is not asked. Integers to big-endian 24 bits
// have no row: only the library keeps the lower bits there.
constexpr Row kRows[] = {
        {"s8", "s16le", SF_FORMAT_PCM_S8, {kTo16, 8, 0, false, true}},
        {"u8", "s16le", SF_FORMAT_PCM_U8, {kTo16, 8, 0, false, false}},
        {"s24le", "s16le", SF_FORMAT_PCM_24, {kTo16, 24, 0, false, false}},
        {"s24be", "s16le", SF_FORMAT_PCM_24 | kBig, {kTo16, 24, 0, false, true}},
        {"s32le", "s16le", SF_FORMAT_PCM_32, {kTo16, 32, 0, false, false}},
        {"s32le", "s24le", SF_FORMAT_PCM_32, {kTo24, 32, 0, false, false}},
        {"f32le", "s24le", 0, {kTo24, 32, 0, true, false}},
        {"s24le", "f32le", SF_FORMAT_PCM_24, {kToFloat, 24, 0, false, false}},
        {"s24be", "f32le", SF_FORMAT_PCM_24 | kBig, {kToFloat, 24, 0, false, true}},
        {"s32le", "f32le", SF_FORMAT_PCM_32, {kToFloat, 32, 0, false, false}},
        {"s32be", "f32le", SF_FORMAT_PCM_32 | kBig, {kToFloat, 32, 0, false, true}},
        {"s24le", "s32le", SF_FORMAT_PCM_24, {kTo32, 24, 0, false, false}},
        {"s24be", "s32le", SF_FORMAT_PCM_24 | kBig, {kTo32, 24, 0, false, true}},
        {"s16be", "s16le", SF_FORMAT_PCM_16 | kBig, {kEndian, 16, 0, false, false}},
        {"s24be", "s24le", SF_FORMAT_PCM_24 | kBig, {kEndian, 24, 0, false, false}},
        {"s32be", "s32le", SF_FORMAT_PCM_32 | kBig, {kEndian, 32, 0, false, false}},
};

Bytes converted(Bytes bytes, const Call& call) {
    const size_t size = bytes.size();
    Bytes out(4 * kSamples);
    bytes.resize(out.size());
    if (call.operation == kTo32) {  // which makes no sense in place
        kLibrary->ConvertXto32(bytes.data(), out.data(), call.source, kSamples, call.bigEndian);
        return out;
    }
    host::SampleBuffer buffer(bytes.data(), bytes.size(), 0, size);
    EXPECT_EQ(run(call, &buffer), 0);
    bytes.resize(buffer.range_length());
    return bytes;
}

struct SoundFile {
    SF_INFO info;
    SNDFILE* file;

    explicit SoundFile(const std::string& path, int format = 0)
        : info{0, 8000, 1, format, 0, 0}, file(sf_open(path.c_str(), SFM_READ, &info)) {}
    ~SoundFile() { sf_close(file); }

    // All samples as T; of each the last bytes.
    template <typename T>
    Bytes read(sf_count_t (*readSamples)(SNDFILE*, T*, sf_count_t),
               ptrdiff_t size = sizeof(T)) const {
        Bytes bytes;
        for (T sample; readSamples(file, &sample, 1) == 1;) {
            const auto* end = reinterpret_cast<const uint8_t*>(&sample + 1);
            bytes.insert(bytes.end(), end - size, end);
        }
        return bytes;
    }
};

Bytes randomSamples(ptrdiff_t size, bool isFloat) {
    std::mt19937 random(1);
    Bytes bytes;
    for (size_t i = 0; i < kSamples; ++i) {
        Quad sample = quad(static_cast<uint32_t>(random()));
        if (isFloat) sample = toFraction({0, sample[1], sample[2], sample[3]});
        bytes.insert(bytes.end(), sample.begin(), sample.begin() + size);
    }
    return bytes;
}

TEST(PcmReferee, ConvertsAlike) {
    const std::string path = temporaryPath("samples");
    for (const auto& [from, to, subtype, call] : kRows) {
        SCOPED_TRACE(std::string(from) + " to " + to);
        const Bytes bytes = randomSamples(call.source / 8, call.isFloat);
        const Bytes actual = converted(bytes, call);
        test::media::writeFile(path, bytes);
        const std::string arguments = std::string("-f ") + from + " -ac 1 -i " + path + " -f " + to;
        EXPECT_TRUE(actual == test::media::readFile(test::media::encode(arguments, "converted")));
        if (call.isFloat) continue;
        const SoundFile sound(path, SF_FORMAT_RAW | subtype);
        EXPECT_TRUE(actual == (*to == 'f'     ? sound.read(sf_read_float)
                               : to[1] == '1' ? sound.read(sf_read_short)
                                              : sound.read(sf_read_int, to[1] == '2' ? 3 : 4)));
    }
}

using WavFormat = std::array<int, 4>;
constexpr WavFormat kWavFormats[] = {{8000, 8, 1, SF_FORMAT_PCM_U8},
                                     {44100, 16, 2, SF_FORMAT_PCM_16},
                                     {96000, 24, 5, SF_FORMAT_PCM_24},
                                     {48000, 32, 1, SF_FORMAT_PCM_32}};

void expectWav(const std::string& path, const WavFormat& format, const Bytes& samples) {
    const auto& [rate, bits, channels, subtype] = format;
    const SoundFile sound(path);
    EXPECT_EQ(sound.info.format, SF_FORMAT_WAV | subtype);
    EXPECT_EQ(std::pair(sound.info.samplerate, sound.info.channels), std::pair(rate, channels));
    EXPECT_EQ(sound.info.frames * channels * bits / 8, samples.size());
    const auto [codec, width, height, extradata, packets, unused, ffmpeg] =
            test::media::demux(path);
    EXPECT_EQ(std::tuple(ffmpeg.sampleRate, ffmpeg.channels, ffmpeg.bitsPerSample),
              std::tuple(rate, channels, bits));
    Bytes demuxed;
    for (const auto& packet : packets)
        demuxed.insert(demuxed.end(), packet.data.begin(), packet.data.end());
    EXPECT_TRUE(demuxed == samples);
}

// After opening, and after each dump.
TEST(WavReferee, OpensAtAnyTime) {
    const std::string path = temporaryPath("dump.wav");
    for (const auto& format : kWavFormats) {
        android::WavDump dump(path.c_str());
        dump.open(static_cast<uint32_t>(format[0]), static_cast<uint16_t>(format[1]),
                  static_cast<uint16_t>(format[2]));
        Bytes samples;
        for (uint32_t size : {0u, 1200u, 60000u, 120u}) {
            const Bytes more(size, static_cast<uint8_t>(size / 100));
            if (size != 0) dump.dump(more.data(), size);
            samples.insert(samples.end(), more.begin(), more.end());
            expectWav(path, format, samples);
        }
    }
}

}  // namespace
