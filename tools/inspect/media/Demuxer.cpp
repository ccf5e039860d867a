#include "inspect/media/Demuxer.h"

#include <algorithm>
#include <new>

namespace inspect {
namespace {

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

std::string whyUnreadable(int status, const std::optional<std::string>& truncation,
                          const LibAvSilence& silence) {
    const std::string truncated = "is truncated: ";
    if (status == AVERROR_EOF && !truncation) return truncated + "it ends inside its headers";
    const std::string why = status < 0 ? silence.complaint(status) : "no track can be read";
    return truncation ? truncated + *truncation + "; " + why : why;
}

}  // namespace

Demuxer::Demuxer(const OpenFile& file, Samples samples) : mStream(file.input()) {
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) throw std::bad_alloc();
    context->pb = mStream.get();
    context->io_open = refuseOtherFiles;
    if (samples == Samples::kAsStored) context->flags |= AVFMT_FLAG_NOPARSE;
    const char* path = file.input().path().c_str();
    int status = avformat_open_input(&context, path, &file.demuxer(), nullptr);
    mContext.reset(status < 0 ? nullptr : context);
    if (status >= 0) status = avformat_find_stream_info(context, nullptr);
    const auto isStreamKnown = [](const AVStream* each) { return isKnown(*each->codecpar); };
    if (status >= 0 && std::ranges::any_of(streams(), isStreamKnown)) return;

    if (!file.isSure()) failAsNotMedia(file.input());
    throw FileError(whyUnreadable(status, file.truncation(), mSilence));
}

}  // namespace inspect
