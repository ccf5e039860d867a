#include "inspect/Demuxer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <span>
#include <string_view>

#include "inspect/CodecMap.h"
#include "inspect/InputFile.h"
#include "inspect/LibAv.h"
#include "inspect/PrivateData.h"
#include "inspect/Truncation.h"

namespace inspect {
namespace {

constexpr const char* kNotMedia = "is not a media file";

// What libavformat takes for media although nobody would: text drawn on a screen, pictures, lists
// of other files.
constexpr auto kNotMediaFormats = std::to_array<std::string_view>(
        {"tty", "xbin", "bin", "idf", "adf", "image2", "image2pipe", "ico", "ffmetadata", "concat",
         "hls", "dash", "imf", "sdp"});

std::string firstName(const AVInputFormat& format) {
    const std::string_view names = format.name;
    return std::string(names.substr(0, names.find(',')));
}

struct Guess {
    const AVInputFormat* format;
    bool isSure;  // from the content alone, not with the help of the file's name
};

Guess probe(const FileStream& stream, const std::string& path) {
    const AVInputFormat* format = nullptr;
    const int score = av_probe_input_buffer2(stream.get(), &format, path.c_str(), nullptr, 0, 0);
    if (score <= 0 || format == nullptr) throw FileError(kNotMedia);

    const std::string name = firstName(*format);
    const bool isPicture = name.ends_with("_pipe");
    if (isPicture || std::ranges::count(kNotMediaFormats, name) > 0) throw FileError(kNotMedia);
    const bool isSure = score > AVPROBE_SCORE_RETRY;
    const bool hasName =
            format->extensions != nullptr && av_match_ext(path.c_str(), format->extensions) != 0;
    if (!isSure && !hasName) throw FileError(kNotMedia);
    return {format, isSure};
}

// Playlists and the like: only the file that was named is read.
int refuseOtherFiles(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EPERM);
}

bool isKnown(const AVCodecParameters& codec) {
    switch (codec.codec_type) {
        case AVMEDIA_TYPE_VIDEO: return codec.width > 0;
        case AVMEDIA_TYPE_AUDIO: return codec.sample_rate > 0;
        default: return true;
    }
}

bool hasKnownStream(const AVFormatContext& context) {
    const std::span streams(context.streams, context.nb_streams);
    return std::ranges::any_of(streams, [](const AVStream* s) { return isKnown(*s->codecpar); });
}

std::string whyUnreadable(int status, const MediaFile& file, const LibAvSilence& silence) {
    const std::string truncated = "is truncated: ";
    if (status == AVERROR_EOF && !file.truncation) return truncated + "it ends inside its headers";
    const std::string why = status < 0 ? silence.complaint(status) : "no track can be read";
    return file.truncation ? truncated + *file.truncation + "; " + why : why;
}

LibAvPtr<AVFormatContext> openFormat(const FileStream& stream, const Guess& guess,
                                     const MediaFile& file, const LibAvSilence& silence) {
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) throw std::bad_alloc();
    context->pb = stream.get();
    context->io_open = refuseOtherFiles;
    int status = avformat_open_input(&context, file.path.c_str(), guess.format, nullptr);
    LibAvPtr<AVFormatContext> owner(status < 0 ? nullptr : context);
    if (status >= 0) status = avformat_find_stream_info(context, nullptr);
    if (status >= 0 && hasKnownStream(*context)) return owner;

    if (!guess.isSure) throw FileError(kNotMedia);
    throw FileError(whyUnreadable(status, file, silence));
}

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

// libavformat's name for the codec, or the four-character code of one that it does not know.
std::string codecName(const AVCodecParameters& codec) {
    if (codec.codec_id != AV_CODEC_ID_NONE || codec.codec_tag == 0) {
        return avcodec_get_name(codec.codec_id);
    }
    std::array<char, AV_FOURCC_MAX_STRING_SIZE> text{};
    return av_fourcc_make_string(text.data(), codec.codec_tag);
}

void readVideo(Stream& out, AVFormatContext& context, AVStream& stream) {
    out.kind = Kind::kVideo;
    out.video = {.width = atLeastZero<uint32_t>(stream.codecpar->width),
                 .height = atLeastZero<uint32_t>(stream.codecpar->height),
                 .frameRate = frameRateOf(context, stream)};
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

Stream readStream(AVFormatContext& context, AVStream& stream) {
    const AVCodecParameters& codec = *stream.codecpar;
    Stream out;
    out.index = stream.index;
    out.codec = codecName(codec);
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
        case AVMEDIA_TYPE_VIDEO: readVideo(out, context, stream); break;
        case AVMEDIA_TYPE_AUDIO: readAudio(out, codec); break;
        case AVMEDIA_TYPE_SUBTITLE: readText(out, codec); break;
        default: break;
    }
    return out;
}

}  // namespace

MediaFile readMediaFile(const std::string& path) {
    const LibAvSilence silence;
    const InputFile input(path);
    const FileStream stream(input);
    const Guess guess = probe(stream, path);
    const AVInputFormat& format = *guess.format;

    MediaFile file;
    file.path = path;
    file.format = firstName(format);
    file.formatName = format.long_name != nullptr ? format.long_name : file.format;
    file.truncation = findTruncation(file.format, input);

    const LibAvPtr<AVFormatContext> context = openFormat(stream, guess, file, silence);
    file.majorBrand = tagOf(context->metadata, "major_brand");
    file.durationUs = toMicroseconds(context->duration, av_get_time_base_q());
    for (AVStream* each : std::span(context->streams, context->nb_streams)) {
        file.streams.push_back(readStream(*context, *each));
    }
    completeFromPackets(*context, file.streams);
    for (Stream& each : file.streams) {
        adaptPrivateData(each);
        if (!each.durationUs) each.durationUs = file.durationUs;
    }
    return file;
}

}  // namespace inspect
