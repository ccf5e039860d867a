#include "inspect/media/MediaFile.h"

#include <algorithm>
#include <array>
#include <limits>

#include "inspect/media/CodecMap.h"
#include "inspect/media/ContainerMap.h"
#include "inspect/media/Demuxer.h"
#include "inspect/media/PrivateData.h"

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
    const AVRational rate = av_guess_frame_rate(&context, &stream, nullptr);
    if (rate.num <= 0 || rate.den <= 0) return 0;
    return atLeastZero<uint32_t>((int64_t{rate.num} + rate.den / 2) / rate.den);
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
    const bool isKnown = codec.codec_id != AV_CODEC_ID_NONE || codec.codec_tag == 0;
    return isKnown ? avcodec_get_name(codec.codec_id) : boxName(codec);
}

void readVideo(Stream& out, const Demuxer& demuxer, AVStream& stream) {
    const auto [storedWidth, storedHeight] = demuxer.storedSize(stream.index);
    out.kind = Kind::kVideo;
    out.video = {.width = atLeastZero<uint32_t>(stream.codecpar->width),
                 .height = atLeastZero<uint32_t>(stream.codecpar->height),
                 .frameRate = frameRateOf(demuxer.context(), stream),
                 .storedWidth = atLeastZero<uint32_t>(storedWidth),
                 .storedHeight = atLeastZero<uint32_t>(storedHeight)};
}

void readAudio(Stream& out, const AVCodecParameters& codec) {
    const int bits =
            codec.bits_per_raw_sample > 0 ? codec.bits_per_raw_sample : codec.bits_per_coded_sample;
    out.kind = Kind::kAudio;
    out.audio.channelCount = atLeastZero<uint32_t>(codec.ch_layout.nb_channels);
    out.audio.sampleRate = atLeastZero<uint32_t>(codec.sample_rate);
    out.audio.bitsPerSample = atLeastZero<uint32_t>(bits);
    out.audio.blockAlign = atLeastZero<uint16_t>(codec.block_align);
}

void readText(Stream& out, const AVCodecParameters& codec) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codec.codec_id);
    out.kind = Kind::kText;
    out.text.isBitmap =
            descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_BITMAP_SUB) != 0;
    out.text.isUnsupportedBitmap = codec.codec_id != AV_CODEC_ID_XSUB;
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
    if (codec.extradata_size > 0) {
        out.privateData.assign(codec.extradata, codec.extradata + codec.extradata_size);
    }
    if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
        out.codec = "cover picture, " + out.codec;
        return out;
    }
    switch (codec.codec_type) {
        case AVMEDIA_TYPE_VIDEO: readVideo(out, demuxer, stream); break;
        case AVMEDIA_TYPE_AUDIO: readAudio(out, codec); break;
        case AVMEDIA_TYPE_SUBTITLE: readText(out, codec); break;
        default: break;
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
    file.format = open.format();
    file.formatName = open.formatName();
    file.truncation = open.truncation();
    file.majorBrand = tagOf(context.metadata, "major_brand");
    file.durationUs = toMicroseconds(context.duration, av_get_time_base_q());
    for (AVStream* each : demuxer.streams()) {
        file.streams.push_back(readStream(demuxer, *each));
    }
    completeFromPackets(context, file.streams);
    for (Stream& each : file.streams) {
        if (each.boxName == "vp09") each.privateData = readVp9Record(open.input(), each.index);
        adaptPrivateData(each);
        if (!each.durationUs) each.durationUs = file.durationUs;
    }
    file.container = containerOf(file);
    return file;
}

}  // namespace inspect
