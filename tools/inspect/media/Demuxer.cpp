#include "inspect/media/Demuxer.h"

#include <algorithm>
#include <new>
#include <utility>

#include "inspect/media/FirstPacket.h"
#include "inspect/media/Scrambling.h"

namespace inspect {
namespace {

// Playlists and the like: only the file that was named is read.
int refuseOtherFiles(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EPERM);
}

// Codec data tell of a track even when they are broken.
bool isKnown(const AVCodecParameters& codec) {
    if (codec.extradata_size > 0) return true;
    switch (codec.codec_type) {
        case AVMEDIA_TYPE_VIDEO: return codec.width > 0;
        case AVMEDIA_TYPE_AUDIO: return codec.sample_rate > 0;
        default: return true;
    }
}

std::string whyUnreadable(int status, const std::optional<std::string>& truncation) {
    const std::string truncated = "is truncated: ";
    const std::string why = status < 0 ? readingError(status) : "no track can be read";
    if (status == AVERROR_EOF && !truncation) return truncated + why;
    return truncation ? truncated + *truncation + "; " + why : why;
}

}  // namespace

Demuxer::Demuxer(const OpenFile& file, Samples samples) {
    int status = start(file, samples, true);
    if (!readFirstPackets()) status = start(file, samples, false);
    // Codec data that are missing fail the second step, though the headers tell of the tracks.
    // Nobody can see into packets that are scrambled.
    if (mContext != nullptr && (hasKnownStream() || hasScrambledStream(file))) return;

    if (!file.isSure()) failAsNotMedia(file.input());
    throw FileError(whyUnreadable(status, file.extent().truncation));
}

int Demuxer::start(const OpenFile& file, Samples samples, bool sparesDecoders) {
    mContext.reset();
    mSpared.clear();
    mRead.clear();
    mStoredSizes.clear();
    FileStream& stream = mStream.emplace(file.input(), file.extent().end);
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) throw std::bad_alloc();
    context->pb = stream.get();
    context->io_open = refuseOtherFiles;
    if (samples == Samples::kAsStored) context->flags |= AVFMT_FLAG_NOPARSE;
    const char* path = file.input().path().c_str();
    int status = avformat_open_input(&context, path, &file.demuxer(), nullptr);
    mContext.reset(status < 0 ? nullptr : context);
    if (status < 0) return status;
    for (const AVStream* each : streams()) {
        mStoredSizes.emplace_back(each->codecpar->width, each->codecpar->height);
    }
    // Behind the headers: enough for any frames that come, and an end to what is none.
    constexpr int64_t kMostRead = 48 << 20;
    stream.limit(kMostRead);
    status = findStreamInfo(sparesDecoders && samples == Samples::kWhole);
    stream.limit(FileStream::kNoLimit);
    return status;
}

int Demuxer::findStreamInfo(bool sparesDecoders) {
    std::vector<AVDictionary*> options(streams().size());
    for (AVStream* each : streams()) {
        if (!sparesDecoders || !canBeReadFromPacket(*each)) continue;
        each->codecpar->format = AV_PIX_FMT_YUV420P;  // so that nobody looks for it
        av_dict_set(&options[static_cast<size_t>(each->index)], "codec_whitelist", "none", 0);
        mSpared.insert(each->index);
    }
    const int status = avformat_find_stream_info(mContext.get(), options.data());
    for (AVDictionary*& each : options) av_dict_free(&each);
    return status;
}

bool Demuxer::readFirstPackets() {
    constexpr size_t kMostPackets = 64;
    while (!mSpared.empty()) {
        LibAvPtr<AVPacket> packet(av_packet_alloc());
        const bool isRead = packet != nullptr && mRead.size() < kMostPackets &&
                            av_read_frame(mContext.get(), packet.get()) >= 0;
        const int index = isRead ? packet->stream_index : -1;
        const bool isKnown =
                isRead &&
                (!mSpared.contains(index) ||
                 readFromPacket(*packet, *streams()[static_cast<size_t>(index)]->codecpar));
        if (!isKnown) return false;
        mSpared.erase(index);
        mRead.push_back(std::move(packet));
    }
    return true;
}

int Demuxer::read(AVPacket& packet) const {
    if (mRead.empty()) return av_read_frame(mContext.get(), &packet);
    av_packet_move_ref(&packet, mRead.front().get());
    mRead.pop_front();
    return 0;
}

bool Demuxer::hasKnownStream() const {
    return std::ranges::any_of(streams(),
                               [](const AVStream* each) { return isKnown(*each->codecpar); });
}

bool Demuxer::hasScrambledStream(const OpenFile& file) const {
    const std::set<int> scrambled = scrambledStreams(file);
    return std::ranges::any_of(streams(),
                               [&](const AVStream* each) { return scrambled.contains(each->id); });
}

std::pair<int, int> Demuxer::storedSize(int stream) const {
    const auto index = static_cast<size_t>(stream);
    return index < mStoredSizes.size() ? mStoredSizes[index] : std::pair(0, 0);
}

}  // namespace inspect
