#include "inspect/callers/KeyFrames.h"

#include <algorithm>
#include <array>

#include "inspect/callers/Hooks.h"
#include "inspect/media/Samples.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

// Of others the library calls nothing a key frame.
constexpr auto kExamined =
        std::to_array<int>({kCodecTypeMpeg4, kCodecTypeH263, kCodecTypeAvc, kCodecTypeXvid,
                            kCodecTypeDivx4, kCodecTypeDivx5, kCodecTypeDivx6, kCodecTypeMpeg4Asp});

std::optional<int64_t> timeOf(const AVPacket& packet, AVRational base) {
    const int64_t time = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if (time == AV_NOPTS_VALUE) return {};
    return av_rescale_q(time, base, av_get_time_base_q());
}

class Track {
public:
    Track(const AVStream& stream, uint32_t codecType, bool isMarkedByContainer)
        : mTimeBase(stream.time_base), mCodecType(static_cast<int>(codecType)) {
        mResult.isExamined = std::ranges::count(kExamined, mCodecType) > 0;
        mResult.isMarkedByContainer = isMarkedByContainer;
        // As a parser of a container with length-prefixed samples does; others pass unchanged.
        if (mCodecType == kCodecTypeAvc) mFilter = openFilter("h264_mp4toannexb", *stream.codecpar);
    }

    // May change the packet.
    void add(MediaExtractorHelper& helper, AVPacket& packet) {
        const bool isMarked = (packet.flags & AV_PKT_FLAG_KEY) != 0;
        const auto time = timeOf(packet, mTimeBase);
        const bool isReadable = mFilter == nullptr || toStartCodes(packet);
        const bool isKey =
                isReadable &&
                helper.isKeyFrame(packet.data, static_cast<size_t>(packet.size), mCodecType);
        mResult.samples++;
        mResult.unreadable += isReadable ? 0 : 1;
        mResult.library += isKey ? 1 : 0;
        mResult.marked += isMarked ? 1 : 0;
        mResult.strip.add({isKey, isMarked, isKey != isMarked});
        if (isKey && mResult.firstOfLibrary.size() < kKeyFramesListed) {
            mResult.firstOfLibrary.push_back(mResult.samples);
        }
        if (isKey == isMarked) return;
        mResult.disputed++;
        if (mResult.firstDisputed.size() < kKeyFramesListed) {
            mResult.firstDisputed.push_back({mResult.samples, time, isKey});
        }
    }

    const KeyFrames& result() const { return mResult; }

private:
    bool toStartCodes(AVPacket& packet) {
        return av_bsf_send_packet(mFilter.get(), &packet) == 0 &&
               av_bsf_receive_packet(mFilter.get(), &packet) == 0;
    }

    AVRational mTimeBase;
    int mCodecType;
    LibAvPtr<AVBSFContext> mFilter;
    KeyFrames mResult;
};

std::map<int, Track> openTracks(const MediaFile& file, const Demuxer& demuxer) {
    std::map<int, Track> tracks;
    for (AVStream* stream : demuxer.streams()) {
        const auto index = static_cast<size_t>(stream->index);
        const bool isVideo =
                index < file.streams.size() && file.streams[index].kind == Kind::kVideo;
        if (!isVideo) continue;
        tracks.emplace(stream->index, Track(*stream, file.streams[index].codecType,
                                            file.container.hasWholeFrames));
    }
    return tracks;
}

}  // namespace

std::map<int, KeyFrames> compareKeyFrames(const OpenFile& open, const MediaFile& file) {
    const bool hasMarks = file.container.hasWholeFrames;
    const Demuxer demuxer(open, hasMarks ? Samples::kAsStored : Samples::kWhole);
    const LogSink silence(LogSink::drop);  // each H.263 picture is logged
    auto tracks = openTracks(file, demuxer);
    std::map<int, KeyFrames> results;
    if (tracks.empty()) return results;
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    walkTracks(open, demuxer, tracks,
               [&](Track& track, AVPacket& packet) { track.add(*helper, packet); });
    for (const auto& [index, track] : tracks) results.emplace(index, track.result());
    return results;
}

}  // namespace inspect
