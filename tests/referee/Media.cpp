#include "referee/Media.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
}

namespace test::media {
namespace {

struct Release {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;

struct Folder {
    std::filesystem::path path;
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "refereeXXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path = name;
    }
    ~Folder() { std::filesystem::remove_all(path); }
};

void check(int result, const std::string& what) {
    if (result < 0) throw std::runtime_error(what + " failed: " + std::to_string(result));
}

void append(Bytes& bytes, const uint8_t* data, int size) {
    bytes.insert(bytes.end(), data, data + size);
}

Bytes picture(const AVFrame& frame) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const int size = av_image_get_buffer_size(format, frame.width, frame.height, 1);
    Bytes bytes(static_cast<size_t>(size));
    check(av_image_copy_to_buffer(bytes.data(), size, frame.data, frame.linesize, format,
                                  frame.width, frame.height, 1),
          "copying a picture");
    return bytes;
}

Bytes sound(const AVFrame& frame) {
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const int channels = frame.ch_layout.nb_channels;
    const int planes = av_sample_fmt_is_planar(format) != 0 ? channels : 1;
    const int size = frame.nb_samples * av_get_bytes_per_sample(format) * channels / planes;
    Bytes bytes;
    for (int i = 0; i < planes; ++i) append(bytes, frame.extended_data[i], size);
    return bytes;
}

std::string describe(const AVFrame& frame) {
    const Bytes samples = frame.width > 0 ? picture(frame) : sound(frame);
    const std::string text(samples.begin(), samples.end());
    std::ostringstream out;
    out << frame.width << 'x' << frame.height << ", " << frame.sample_rate << " Hz, "
        << frame.ch_layout.nb_channels << " channels, format " << frame.format << ", hash "
        << std::hash<std::string>{}(text);
    return out.str();
}

}  // namespace

std::string temporaryPath(const std::string& name) {
    static const Folder folder;
    return (folder.path / name).string();
}

Bytes readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void writeFile(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    std::ranges::copy(bytes, std::ostreambuf_iterator<char>(file));
}

std::string encode(const std::string& arguments, const std::string& name) {
    const std::string path = temporaryPath(name);
    const std::string log = temporaryPath("ffmpeg.log");
    const std::string command = "ffmpeg -v error -nostdin -y " + arguments + " '" + path + "'";
    if (std::system((command + " >'" + log + "' 2>&1").c_str()) != 0) {
        const Bytes messages = readFile(log);
        throw std::runtime_error("this test needs the ffmpeg program with its encoders; failed:\n" +
                                 command + '\n' + std::string(messages.begin(), messages.end()));
    }
    return path;
}

Stream demux(const std::string& path) {
    av_log_set_level(AV_LOG_QUIET);
    AVFormatContext* opened = nullptr;
    check(avformat_open_input(&opened, path.c_str(), nullptr, nullptr), "opening " + path);
    const Owned<AVFormatContext> demuxer(opened);
    check(avformat_find_stream_info(opened, nullptr), "streams of " + path);
    if (opened->nb_streams != 1) throw std::runtime_error("not one stream in " + path);

    const AVCodecParameters& parameters = *opened->streams[0]->codecpar;
    Stream stream{parameters.codec_id, parameters.width, parameters.height, {}, {}};
    stream.format = parameters.format;
    stream.sound = {parameters.sample_rate, parameters.ch_layout.nb_channels,
                    parameters.block_align, parameters.bits_per_coded_sample, parameters.bit_rate};
    append(stream.extradata, parameters.extradata, parameters.extradata_size);
    const Owned<AVPacket> packet(av_packet_alloc());
    while (av_read_frame(opened, packet.get()) == 0) {
        stream.packets.push_back({{}, packet->duration, (packet->flags & AV_PKT_FLAG_KEY) != 0});
        append(stream.packets.back().data, packet->data, packet->size);
        av_packet_unref(packet.get());
    }
    return stream;
}

std::vector<std::string> decode(const Stream& stream, std::pair<int, int>* codedSize) {
    const AVCodec* implementation = avcodec_find_decoder(stream.codec);
    const Owned<AVCodecContext> decoder(avcodec_alloc_context3(implementation));
    const size_t size = stream.extradata.size();
    decoder->extradata_size = static_cast<int>(size);
    decoder->extradata = static_cast<uint8_t*>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
    std::ranges::copy(stream.extradata, decoder->extradata);
    decoder->width = stream.width;
    decoder->height = stream.height;
    decoder->sample_rate = stream.sound.sampleRate;
    av_channel_layout_default(&decoder->ch_layout, stream.sound.channels);
    decoder->block_align = stream.sound.blockAlign;
    decoder->bits_per_coded_sample = stream.sound.bitsPerSample;
    decoder->bit_rate = stream.sound.bitRate;
    check(avcodec_open2(decoder.get(), implementation, nullptr), "opening the decoder");

    std::vector<std::string> frames;
    const Owned<AVFrame> frame(av_frame_alloc());
    const auto decodePacket = [&](const AVPacket* packet) {
        check(avcodec_send_packet(decoder.get(), packet), "decoding a packet");
        while (avcodec_receive_frame(decoder.get(), frame.get()) == 0) {
            frames.push_back(describe(*frame));
        }
    };
    for (const auto& [data, duration, key] : stream.packets) {
        const Owned<AVPacket> packet(av_packet_alloc());
        check(av_new_packet(packet.get(), static_cast<int>(data.size())), "allocating a packet");
        std::ranges::copy(data, packet->data);
        decodePacket(packet.get());
    }
    decodePacket(nullptr);  // what is still inside
    if (codedSize != nullptr) *codedSize = {decoder->coded_width, decoder->coded_height};
    return frames;
}

}  // namespace test::media
