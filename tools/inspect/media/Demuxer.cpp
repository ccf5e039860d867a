#include "inspect/media/Demuxer.h"

extern "C" {
#include <libavutil/mem.h>
}

#include <algorithm>
#include <array>
#include <memory>
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

// The beginning of a frame of DTS (ETSI TS 102 114 5.3, also in words of 14 bits) or of AC-3 (ETSI
// TS 102 366 4.4.1, E.1.2.2), in either order of bytes.
bool isSyncWord(const uint8_t* bytes) {
    const auto isAc3 = [](uint8_t rate, uint8_t bsid) {
        return rate >> 6 != 3 && (bsid >> 3 == 8 || bsid >> 3 == 16);
    };
    switch (bytes[0] << 8 | bytes[1]) {
        case 0x7FFE: return bytes[2] == 0x80 && bytes[3] == 0x01;
        case 0xFE7F: return bytes[2] == 0x01 && bytes[3] == 0x80;
        case 0x1FFF: return bytes[2] == 0xE8 && bytes[3] == 0x00;
        case 0xFF1F: return bytes[2] == 0x00 && bytes[3] == 0xE8;
        case 0x0B77: return isAc3(bytes[4], bytes[5]);
        case 0x770B: return isAc3(bytes[5], bytes[4]);
        default: return false;
    }
}

// Whether samples may be frames of a codec that only pretend to be samples.
bool mayBeFrames(const InputFile& file) {
    constexpr size_t kLookedInto = 128 << 10;  // as libavformat does
    constexpr size_t kSyncBytes = 6;
    constexpr auto kFirst = [] {
        std::array<bool, 256> isFirst{};
        for (const uint8_t each : std::to_array<uint8_t>({0x7F, 0xFE, 0x1F, 0xFF, 0x0B, 0x77}))
            isFirst[each] = true;
        return isFirst;
    }();
    std::array<uint8_t, (8 << 10) + kSyncBytes> block;
    for (size_t offset = 0; offset < kLookedInto; offset += block.size() - kSyncBytes) {
        const int64_t got = file.readAt(static_cast<int64_t>(offset), block);
        for (size_t i = 0; static_cast<int64_t>(i + kSyncBytes) <= got; i++) {
            if (kFirst[block[i]] && isSyncWord(&block[i])) return true;
        }
        if (got < static_cast<int64_t>(block.size())) break;
    }
    return false;
}

// No decoder gets the memory for a picture of more than 8 million samples, or of half as many of
// more than 8 bits: it fails behind the picture's headers, which tell all that is asked.
class PictureLimit {
public:
    explicit PictureLimit(bool isLimited) {
        av_max_alloc(isLimited ? kMostBytes : kMaxAllocatedBytes);
    }
    PictureLimit(const PictureLimit&) = delete;
    PictureLimit& operator=(const PictureLimit&) = delete;
    ~PictureLimit() { av_max_alloc(kMaxAllocatedBytes); }

private:
    static constexpr size_t kMostBytes = 8 << 20;
};

// The packets of such codecs may be as large as their pictures.
bool hasLargePackets(const AVStream* stream) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(stream->codecpar->codec_id);
    return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           (descriptor == nullptr || (descriptor->props & AV_CODEC_PROP_INTRA_ONLY) != 0);
}

std::string whyUnreadable(int status, const std::optional<std::string>& truncation) {
    const std::string truncated = "is truncated: ";
    const std::string why = status < 0 ? readingError(status) : "no track can be read";
    if (status == AVERROR_EOF && !truncation) return truncated + why;
    return truncation ? truncated + *truncation + "; " + why : why;
}

}  // namespace

Demuxer::Demuxer(const OpenFile& file, Samples samples) {
    const bool isWhole = samples == Samples::kWhole;
    int status = start(file, samples, isWhole ? Effort::kLeast : Effort::kDecode);
    if (!readFirstPackets()) status = start(file, samples, Effort::kDecode);
    // A packet may be beyond the limit of pictures too.
    if (lacksPicture()) status = start(file, samples, Effort::kDecodeAll);
    mStream->limit(FileStream::kNoLimit);
    // Codec data that are missing fail the second step, though the headers tell of the tracks.
    // Nobody can see into packets that are scrambled.
    if (mContext != nullptr && (hasKnownStream() || hasScrambledStream(file))) return;

    if (!file.isSure()) failAsNotMedia(file.input());
    throw FileError(whyUnreadable(status, file.extent().truncation));
}

int Demuxer::start(const OpenFile& file, Samples samples, Effort effort) {
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
    if (file.format() == "wav" && !mayBeFrames(file.input())) context->max_probe_packets = 1;
    // For demuxers that open other files by themselves.
    context->protocol_whitelist = av_strdup("none");
    if (context->protocol_whitelist == nullptr) throw std::bad_alloc();
    const char* path = file.input().path().c_str();
    int status = avformat_open_input(&context, path, &file.demuxer(), nullptr);
    mContext.reset(status < 0 ? nullptr : context);
    if (status < 0 && file.format() == "vobsub") return AVERROR(EPERM);  // an index
    // Some demuxers say so of a file that ends too early.
    if (status == AVERROR(EIO) && !stream.hasFailed()) return AVERROR_EOF;
    if (status < 0) return status;
    for (const AVStream* each : streams()) {
        mStoredSizes.emplace_back(each->codecpar->width, each->codecpar->height);
    }
    // Behind the headers: enough for any frames that come, and an end to what is none.
    constexpr int64_t kMostRead = 48 << 20;
    stream.limit(kMostRead);
    return findStreamInfo(effort);
}

int Demuxer::findStreamInfo(Effort effort) {
    std::vector<AVDictionary*> options(streams().size());
    for (AVStream* each : streams()) {
        const bool isReadInTime = findsParametersInPacket(*each);
        if (effort != Effort::kLeast || (!isReadInTime && !canBeReadFromPacket(*each))) continue;
        if (!isReadInTime) each->codecpar->format = AV_PIX_FMT_YUV420P;  // nobody looks for it
        // Prevents the first attempt to open one.
        av_dict_set(&options[static_cast<size_t>(each->index)], "codec_whitelist", "none", 0);
        mSpared.insert(each->index);
    }
    const PictureLimit limit(effort != Effort::kDecodeAll &&
                             std::ranges::none_of(streams(), hasLargePackets));
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
                isRead && (!mSpared.contains(index) ||
                           readFromPacket(*packet, *streams()[static_cast<size_t>(index)]));
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

bool Demuxer::lacksPicture() const {
    return mContext != nullptr && std::ranges::any_of(streams(), [](const AVStream* each) {
               const AVCodecParameters& codec = *each->codecpar;
               return codec.codec_type == AVMEDIA_TYPE_VIDEO &&
                      (codec.width <= 0 || codec.format < 0);
           });
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
