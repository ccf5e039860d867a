#include "inspect/media/MediaFile.h"

extern "C" {
#include <libavutil/crc.h>
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "inspect/media/CodecMap.h"
#include "inspect/media/ContainerMap.h"
#include "inspect/media/Demuxer.h"
#include "inspect/media/FirstSamples.h"
#include "inspect/media/PrivateData.h"
#include "inspect/media/Protection.h"

namespace inspect {
namespace {

template <typename T>
T atLeastZero(int64_t value) {
    const auto most = static_cast<int64_t>(std::numeric_limits<T>::max());
    return static_cast<T>(std::clamp<int64_t>(value, 0, most));
}

std::optional<int64_t> toMicroseconds(int64_t time, AVRational base) {
    if (time == AV_NOPTS_VALUE || time <= 0) return {};
    return av_rescale_q(time, base, av_get_time_base_q());
}

uint32_t frameRateOf(AVFormatContext& context, AVStream& stream) {
    if (stream.codecpar->width <= 0) return 0;  // nothing is known of its frames
    const AVRational rate = av_guess_frame_rate(&context, &stream, nullptr);
    if (rate.num <= 0 || rate.den <= 0) return 0;
    return atLeastZero<uint32_t>((int64_t{rate.num} + rate.den / 2) / rate.den);
}

double toDouble(AVRational rate) {
    return rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0;
}

uint32_t bitDepthOf(const AVCodecParameters& codec) {
    const AVPixFmtDescriptor* format =
            av_pix_fmt_desc_get(static_cast<AVPixelFormat>(codec.format));
    return atLeastZero<uint32_t>(format != nullptr ? format->comp[0].depth
                                                   : codec.bits_per_raw_sample);
}

int rotationOf(const AVStream& stream) {
    constexpr size_t kMatrixBytes = 9 * sizeof(int32_t);
    size_t size = 0;
    const uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (data == nullptr || size < kMatrixBytes) return 0;
    std::array<int32_t, 9> matrix{};
    std::memcpy(matrix.data(), data, kMatrixBytes);
    const double counterclockwise = av_display_rotation_get(matrix.data());
    if (std::isnan(counterclockwise)) return 0;
    return (720 - static_cast<int>(std::lround(counterclockwise))) % 360;
}

std::string tagOf(AVDictionary* dictionary, const char* key) {
    const AVDictionaryEntry* entry = av_dict_get(dictionary, key, nullptr, 0);
    return entry != nullptr ? entry->value : std::string();
}

std::string boxName(const AVCodecParameters& codec) {
    if (codec.codec_tag == 0) return {};
    std::array<char, AV_FOURCC_MAX_STRING_SIZE> text{};
    return av_fourcc_make_string(text.data(), codec.codec_tag);
}

// libavformat's name for the codec, or the four-character code of one that it does not know.
std::string codecName(const AVCodecParameters& codec) {
    if (codec.codec_id != AV_CODEC_ID_NONE) return avcodec_get_name(codec.codec_id);
    return codec.codec_tag != 0 ? boxName(codec) : "an unknown codec";
}

void readVideo(Stream& out, const Demuxer& demuxer, AVStream& stream) {
    const auto [storedWidth, storedHeight] = demuxer.storedSize(stream.index);
    out.kind = Kind::kVideo;
    out.video = {.width = atLeastZero<uint32_t>(stream.codecpar->width),
                 .height = atLeastZero<uint32_t>(stream.codecpar->height),
                 .frameRate = frameRateOf(demuxer.context(), stream),
                 .storedWidth = atLeastZero<uint32_t>(storedWidth),
                 .storedHeight = atLeastZero<uint32_t>(storedHeight),
                 .bitDepth = bitDepthOf(*stream.codecpar),
                 .averageFrameRate = toDouble(stream.avg_frame_rate),
                 .baseFrameRate = toDouble(stream.r_frame_rate),
                 .rotation = rotationOf(stream)};
}

bool isLossless(AVCodecID codec) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codec);
    return descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_LOSSY) == 0 &&
           (descriptor->props & AV_CODEC_PROP_LOSSLESS) != 0;
}

void readAudio(Stream& out, const AVCodecParameters& codec) {
    const int bits =
            codec.bits_per_raw_sample > 0 ? codec.bits_per_raw_sample : codec.bits_per_coded_sample;
    out.kind = Kind::kAudio;
    out.audio.channelCount = atLeastZero<uint32_t>(codec.ch_layout.nb_channels);
    out.audio.sampleRate = atLeastZero<uint32_t>(codec.sample_rate);
    out.audio.bitsPerSample = atLeastZero<uint32_t>(bits);
    if (isLossless(codec.codec_id)) out.audio.bitDepth = out.audio.bitsPerSample;
    out.audio.blockAlign = atLeastZero<uint16_t>(codec.block_align);
}

void readText(Stream& out, const AVCodecParameters& codec) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codec.codec_id);
    out.kind = Kind::kText;
    out.text.isBitmap =
            descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_BITMAP_SUB) != 0;
    out.text.isUnsupportedBitmap = codec.codec_id != AV_CODEC_ID_XSUB;
}

bool canDecode(const AVCodecParameters& parameters, Bytes data) {
    const LibAvPtr<AVCodecContext> decoder(
            avcodec_alloc_context3(avcodec_find_decoder(parameters.codec_id)));
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    const auto size = static_cast<int>(data.size());
    if (decoder == nullptr || packet == nullptr || av_new_packet(packet.get(), size) < 0) {
        return false;
    }
    std::ranges::copy(data, packet->data);
    decoder->err_recognition = AV_EF_CRCCHECK | AV_EF_EXPLODE;
    return avcodec_parameters_to_context(decoder.get(), &parameters) >= 0 &&
           avcodec_open2(decoder.get(), nullptr, nullptr) >= 0 &&
           avcodec_send_packet(decoder.get(), packet.get()) >= 0;
}

// Whether a whole frame begins so, whatever follows it: its checksum fits where the decoder ends.
// Stops when it has tried as many bytes as are left: behind a checksum that fits, zeros fit as
// well.
bool beginsWithWholeFrame(const AVCodecParameters& codec, Bytes data, int64_t& bytesLeft) {
    constexpr size_t kLeastFrameBytes = 11;
    constexpr int64_t kBytesOfTry = 64 << 10;  // what it costs to make a decoder
    const AVCRC* table = av_crc_get_table(AV_CRC_16_ANSI);
    uint32_t checksum = 0;
    for (size_t size = 1; size <= data.size() && bytesLeft > 0; size++) {
        checksum = av_crc(table, checksum, &data[size - 1], 1);
        if (checksum != 0 || size < kLeastFrameBytes) continue;
        if (canDecode(codec, data.first(size))) return true;
        bytesLeft -= static_cast<int64_t>(size) + kBytesOfTry;
    }
    return false;
}

// RFC 9639 8.2: STREAMINFO tells the total of samples; the last frame tells its place among them.
// What follows it that is larger than a frame is none that is cut. Leaves the demuxer anywhere.
std::optional<std::string> lackingSamples(AVFormatContext& context) {
    constexpr int kMaxFrameBytes = (1 << 24) - 1;
    const AVStream& stream = *context.streams[0];
    const int64_t total = stream.duration;
    if (total == AV_NOPTS_VALUE || total <= 0) return {};
    if (av_seek_frame(&context, stream.index, total, AVSEEK_FLAG_BACKWARD) < 0) return {};
    int64_t end = 0;
    int64_t bytesLeft = int64_t{1} << 30;
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    while (end < total && av_read_frame(&context, packet.get()) >= 0) {
        const Bytes data(packet->data, static_cast<size_t>(packet->size));
        const bool isFrame = packet->stream_index == stream.index && packet->size <= kMaxFrameBytes;
        if (!isFrame) return {};
        if (beginsWithWholeFrame(*stream.codecpar, data, bytesLeft))
            end = packet->pts + packet->duration;
        av_packet_unref(packet.get());
    }
    const auto samples = [&](int64_t time) {
        const AVRational perSample = {1, stream.codecpar->sample_rate};
        return av_rescale_q(time, stream.time_base, perSample);
    };
    if (end == 0 || bytesLeft <= 0 || samples(end) >= samples(total)) return {};
    return "its last whole frame ends at sample " + std::to_string(samples(end)) + " of " +
           std::to_string(samples(total));
}

Stream readStream(const Demuxer& demuxer, AVStream& stream) {
    const AVCodecParameters& codec = *stream.codecpar;
    Stream out;
    out.index = stream.index;
    out.codec = codecName(codec);
    out.boxName = boxName(codec);
    out.codecType = codecTypeOf(stream);
    out.bitRate = atLeastZero<uint32_t>(codec.bit_rate);
    out.language = tagOf(stream.metadata, "language");
    out.durationUs = toMicroseconds(stream.duration, stream.time_base);
    out.isDefault = (stream.disposition & AV_DISPOSITION_DEFAULT) != 0;
    if (codec.profile >= 0) out.profile = codec.profile;
    if (codec.level >= 0) out.level = codec.level;
    if (codec.extradata_size > 0) {
        out.privateData.assign(codec.extradata, codec.extradata + codec.extradata_size);
    }
    if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
        out.codec = "cover picture, " + out.codec;
        return out;
    }
    const bool isUnnamed = codec.codec_id == AV_CODEC_ID_NONE && codec.codec_tag == 0;
    switch (codec.codec_type) {
        case AVMEDIA_TYPE_VIDEO: readVideo(out, demuxer, stream); break;
        case AVMEDIA_TYPE_AUDIO: readAudio(out, codec); break;
        case AVMEDIA_TYPE_SUBTITLE: readText(out, codec); break;
        default:
            if (isUnnamed) out.nothingReadable = "the file says nothing of its codec";
            break;
    }
    return out;
}

}  // namespace

const char* toString(Kind kind) {
    switch (kind) {
        case Kind::kVideo: return "video";
        case Kind::kAudio: return "audio";
        case Kind::kText: return "text";
        case Kind::kOther: break;
    }
    return "other";
}

MediaFile readMediaFile(const OpenFile& open) {
    const Demuxer demuxer(open, Samples::kWhole);
    AVFormatContext& context = demuxer.context();
    MediaFile file;
    file.path = open.input().path();
    file.hasName = open.input().hasName();
    file.isFolderWritable = open.input().isFolderWritable();
    file.format = open.format();
    file.formatName = open.formatName();
    file.truncation = open.extent().truncation;
    file.junk = open.extent().junk;
    file.majorBrand = tagOf(context.metadata, "major_brand");
    // By the bit rate, the demuxer takes for media all that lies before the end.
    const bool isMisled = !open.extent().isEndKnown &&
                          context.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    if (!isMisled) file.durationUs = toMicroseconds(context.duration, av_get_time_base_q());
    for (AVStream* each : demuxer.streams()) {
        file.streams.push_back(readStream(demuxer, *each));
        if (isMisled) file.streams.back().durationUs.reset();
    }
    findProtection(open, context, file.streams);
    readFirstSamples(open, demuxer, file.streams);
    for (Stream& each : file.streams) {
        if (each.codec == "vp9") each.privateData = readVp9Record(open.input(), each.index);
        adaptPrivateData(each);
        if (!each.durationUs) each.durationUs = file.durationUs;
    }
    file.container = containerOf(file);
    if (file.format == "flac" && !file.truncation) file.truncation = lackingSamples(context);
    return file;
}

}  // namespace inspect
