#include "PcmPeers.h"

#include <SDL.h>
#include <gst/audio/audio.h>
#include <sndfile.h>
#include <volk/volk.h>

#include <algorithm>
#include <cstring>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswresample/swresample.h>
}

namespace bench {
namespace {

constexpr int kRate = 48000;
constexpr AVSampleFormat kNoSample = AV_SAMPLE_FMT_NONE;
constexpr AVCodecID kNoCodec = AV_CODEC_ID_NONE;

// What the peers call a Format.
constexpr struct {
    AVSampleFormat sample;
    AVCodecID codec;
    int file;
    GstAudioFormat gst;
    SDL_AudioFormat sdl;
} kNames[] = {
        {AV_SAMPLE_FMT_U8, kNoCodec, SF_FORMAT_PCM_U8, GST_AUDIO_FORMAT_U8, AUDIO_U8},
        {kNoSample, kNoCodec, SF_FORMAT_PCM_S8, GST_AUDIO_FORMAT_S8, AUDIO_S8},
        {AV_SAMPLE_FMT_S16, kNoCodec, SF_FORMAT_PCM_16, GST_AUDIO_FORMAT_S16LE, AUDIO_S16LSB},
        {kNoSample, AV_CODEC_ID_PCM_S16BE, SF_FORMAT_PCM_16, GST_AUDIO_FORMAT_S16BE, AUDIO_S16MSB},
        {kNoSample, AV_CODEC_ID_PCM_S24LE, SF_FORMAT_PCM_24, GST_AUDIO_FORMAT_S24LE, 0},
        {kNoSample, AV_CODEC_ID_PCM_S24BE, SF_FORMAT_PCM_24, GST_AUDIO_FORMAT_S24BE, 0},
        {kNoSample, kNoCodec, 0, GST_AUDIO_FORMAT_S24_32LE, 0},
        {AV_SAMPLE_FMT_S32, kNoCodec, SF_FORMAT_PCM_32, GST_AUDIO_FORMAT_S32LE, AUDIO_S32LSB},
        {kNoSample, AV_CODEC_ID_PCM_S32BE, SF_FORMAT_PCM_32, GST_AUDIO_FORMAT_S32BE, AUDIO_S32MSB},
        {AV_SAMPLE_FMT_FLT, kNoCodec, SF_FORMAT_FLOAT, GST_AUDIO_FORMAT_F32LE, AUDIO_F32LSB},
};

// ---- FFmpeg: decoders and encoders for what is no sample format of its own, else swresample

AVBufferRef* refer(uint8_t* source) {
    return av_buffer_create(
            source, kMostBytes, [](void*, uint8_t*) {}, nullptr, 0);
}

AVCodecContext* openCodec(const AVCodec* codec) {
    AVCodecContext* context = avcodec_alloc_context3(codec);
    av_channel_layout_default(&context->ch_layout, 2);
    context->sample_rate = kRate;
    context->sample_fmt = AV_SAMPLE_FMT_S32;  // decoders set another if need be
    if (avcodec_open2(context, codec, nullptr) != 0) fail("FFmpeg cannot open a codec");
    return context;
}

Convert decode(const Work& work) {
    AVCodecContext* context = openCodec(avcodec_find_decoder(kNames[work.from].codec));
    if (context->sample_fmt != kNames[work.to].sample) return {};
    AVPacket* packet = av_packet_alloc();
    packet->buf = refer(work.source());
    packet->data = packet->buf->data;
    packet->size = static_cast<int>(work.bytes());
    return [=, frame = av_frame_alloc()] {
        avcodec_send_packet(context, packet);
        if (avcodec_receive_frame(context, frame) != 0) fail("FFmpeg cannot decode");
        return frame->data[0];
    };
}

// Takes the upper 24 bits, also where we take the lower ones.
Convert encode(const Work& work) {
    AVCodecContext* context = openCodec(avcodec_find_encoder(kNames[work.to].codec));
    AVFrame* frame = av_frame_alloc();
    frame->buf[0] = refer(signal(kS32));
    frame->data[0] = frame->buf[0]->data;
    frame->nb_samples = static_cast<int>(work.samples / 2);
    frame->format = context->sample_fmt;
    av_channel_layout_default(&frame->ch_layout, 2);
    return [=, packet = av_packet_alloc()] {
        avcodec_send_frame(context, frame);
        if (avcodec_receive_packet(context, packet) != 0) fail("FFmpeg cannot encode");
        return packet->data;
    };
}

Convert ffmpeg(const Work& work) {
    const auto &from = kNames[work.from], &to = kNames[work.to];
    if (from.codec != kNoCodec && to.sample != kNoSample) return decode(work);
    if (to.codec != kNoCodec && (work.from == kS32 || work.from == kLow24)) return encode(work);
    if (from.sample == kNoSample || to.sample == kNoSample) return {};
    AVChannelLayout stereo;
    av_channel_layout_default(&stereo, 2);
    SwrContext* context = nullptr;
    swr_alloc_set_opts2(&context, &stereo, to.sample, kRate, &stereo, from.sample, kRate, 0,
                        nullptr);
    swr_init(context);
    return [=, frames = static_cast<int>(work.samples / 2)] {
        uint8_t* out = work.destination;
        const uint8_t* in = work.source();
        swr_convert(context, &out, frames, &in, frames);
        return out;
    };
}

// ---- libsndfile: raw files in memory, to and from arrays of short, int and float

struct MemoryFile {
    uint8_t* data;
    sf_count_t size, at;

    static MemoryFile& of(void* opaque) { return *static_cast<MemoryFile*>(opaque); }
    uint8_t* advance(sf_count_t count) { return data + std::exchange(at, at + count); }
};

sf_count_t seekTo(sf_count_t offset, int whence, void* opaque) {
    MemoryFile& file = MemoryFile::of(opaque);
    const sf_count_t base = whence == SEEK_CUR ? file.at : whence == SEEK_END ? file.size : 0;
    return file.at = base + offset;
}

sf_count_t readSome(void* out, sf_count_t count, void* opaque) {
    MemoryFile& file = MemoryFile::of(opaque);
    count = std::min(count, file.size - file.at);
    std::memcpy(out, file.advance(count), static_cast<size_t>(count));
    return count;
}

sf_count_t writeSome(const void* bytes, sf_count_t count, void* opaque) {
    std::memcpy(MemoryFile::of(opaque).advance(count), bytes, static_cast<size_t>(count));
    return count;
}

// Run from the start of the file each time.
template <typename T>
Convert transfer(int mode, Format format, MemoryFile memory, uint8_t* array,
                 sf_count_t (*call)(SNDFILE*, T*, sf_count_t), const Work& work) {
    SF_VIRTUAL_IO io{[](void* opaque) { return MemoryFile::of(opaque).size; }, seekTo, readSome,
                     writeSome, [](void* opaque) { return MemoryFile::of(opaque).at; }};
    const int order = kLayouts[format].isBig ? SF_ENDIAN_BIG : SF_ENDIAN_LITTLE;
    SF_INFO info{0, kRate, 2, SF_FORMAT_RAW | kNames[format].file | order, 0, 0};
    SNDFILE* file = sf_open_virtual(&io, mode, &info, new MemoryFile(memory));
    if (file == nullptr) fail(std::string("libsndfile: ") + sf_strerror(nullptr));
    return [=] {
        sf_seek(file, 0, SEEK_SET);
        call(file, reinterpret_cast<T*>(array), static_cast<sf_count_t>(work.samples));
        return work.destination;
    };
}

Convert sndfile(const Work& work) {
    const auto write = [&](auto call, Format from) {
        return transfer(SFM_WRITE, work.to, {work.destination, 0, 0}, signal(from), call, work);
    };
    const auto read = [&](auto call) {
        const auto size = static_cast<sf_count_t>(work.bytes());
        return transfer(SFM_READ, work.from, {work.source(), size, 0}, work.destination, call,
                        work);
    };
    if (kLayouts[work.to].bytes == 3) {
        if (work.from == kBig24) return {};
        if (work.from == kFloat) return write(sf_write_float, kFloat);
        return write(sf_write_int, kS32);  // the upper bits, as encode() above
    }
    if (work.to == kS16) return read(sf_read_short);
    return work.to == kS32 ? read(sf_read_int) : read(sf_read_float);
}

// ---- GStreamer: without dither, in buffers such as a pipeline has

Convert gstreamer(const Work& work) {
    constexpr size_t kPiece = 16384;
    gst_init(nullptr, nullptr);
    GstAudioInfo in, out;
    gst_audio_info_set_format(&in, kNames[work.from].gst, kRate, 2, nullptr);
    gst_audio_info_set_format(&out, kNames[work.to].gst, kRate, 2, nullptr);
    GstStructure* options =
            gst_structure_new("options", GST_AUDIO_CONVERTER_OPT_DITHER_METHOD,
                              GST_TYPE_AUDIO_DITHER_METHOD, GST_AUDIO_DITHER_NONE, nullptr);
    auto* converter = gst_audio_converter_new(GST_AUDIO_CONVERTER_FLAG_NONE, &in, &out, options);
    return [=] {
        for (size_t done = 0; done < work.samples; done += kPiece) {
            gpointer from = work.source() + done * kLayouts[work.from].bytes;
            gpointer to = work.destination + done * kLayouts[work.to].bytes;
            const size_t frames = std::min(kPiece, work.samples - done) / 2;
            gst_audio_converter_samples(converter, GST_AUDIO_CONVERTER_FLAG_NONE, &from, frames,
                                        &to, frames);
        }
        return work.destination;
    };
}

// ---- SDL, always in place: what comes out is what goes in the next time

Convert sdl(const Work& work) {
    const SDL_AudioFormat from = kNames[work.from].sdl, to = kNames[work.to].sdl;
    if (from == 0 || to == 0) return {};
    SDL_AudioCVT conversion;
    SDL_BuildAudioCVT(&conversion, from, 2, kRate, to, 2, kRate);
    conversion.buf = work.destination;
    conversion.len = static_cast<int>(work.bytes());
    return [=]() mutable {
        SDL_ConvertAudio(&conversion);
        return work.destination;
    };
}

// ---- VOLK

template <typename To, typename From = To>
Convert run(const Work& work, auto kernel) {
    return [=] {
        kernel(reinterpret_cast<To*>(work.destination), reinterpret_cast<From*>(work.source()),
               static_cast<unsigned>(work.samples));
        return work.destination;
    };
}

Convert volk(const Work& work) {
    if (work.from == kS8) return run<int16_t, int8_t>(work, volk_8i_convert_16i);
    if (work.from == kS32 && work.to == kFloat) {
        return run<float, int32_t>(work, [](float* to, int32_t* from, unsigned samples) {
            volk_32i_s32f_convert_32f(to, from, 0x1p31f, samples);
        });
    }
    if (work.from == kBig16) {  // this and the next in place
        return run<uint16_t>(work, [](auto* to, auto*, auto n) { volk_16u_byteswap(to, n); });
    }
    if (work.from != kBig32 || work.to != kS32) return {};
    return run<uint32_t>(work, [](auto* to, auto*, auto n) { volk_32u_byteswap(to, n); });
}

}  // namespace

// libsndfile scales floats by 2^23 - 1 and rounds twice, GStreamer rounds what we cut off. SDL goes
// by way of floats scaled by 2^23 - 1 or 2^7 - 1, cuts these off, and scales by 2^15 - 1 back.
const std::vector<PcmPeer> kPcmPeers{{"ffmpeg", ffmpeg, 0, 0},
                                     {"sndfile", sndfile, 2, 0},
                                     {"gstreamer", gstreamer, 1, 0},
                                     {"sdl", sdl, 2, 2},
                                     {"volk", volk, 0, 0}};

}  // namespace bench
