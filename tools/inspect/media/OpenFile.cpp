#include "inspect/media/OpenFile.h"

#include <algorithm>
#include <array>
#include <new>
#include <span>
#include <string_view>

#include "inspect/media/Truncation.h"

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

std::string whyUnreadable(int status, const std::optional<std::string>& truncation,
                          const LibAvSilence& silence) {
    const std::string truncated = "is truncated: ";
    if (status == AVERROR_EOF && !truncation) return truncated + "it ends inside its headers";
    const std::string why = status < 0 ? silence.complaint(status) : "no track can be read";
    return truncation ? truncated + *truncation + "; " + why : why;
}

}  // namespace

OpenFile::OpenFile(const std::string& path, Samples samples) : mInput(path), mStream(mInput) {
    const Guess guess = probe(mStream, path);
    mFormat = firstName(*guess.format);
    mFormatName = guess.format->long_name != nullptr ? guess.format->long_name : mFormat;
    mTruncation = findTruncation(mFormat, mInput);

    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) throw std::bad_alloc();
    context->pb = mStream.get();
    context->io_open = refuseOtherFiles;
    if (samples == Samples::kAsStored) context->flags |= AVFMT_FLAG_NOPARSE;
    int status = avformat_open_input(&context, path.c_str(), guess.format, nullptr);
    mContext.reset(status < 0 ? nullptr : context);
    if (status >= 0) status = avformat_find_stream_info(context, nullptr);
    if (status >= 0 && hasKnownStream(*context)) return;

    if (!guess.isSure) throw FileError(kNotMedia);
    throw FileError(whyUnreadable(status, mTruncation, mSilence));
}

}  // namespace inspect
