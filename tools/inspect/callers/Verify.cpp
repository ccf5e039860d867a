#include "inspect/callers/Verify.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "inspect/media/Samples.h"

namespace inspect {
namespace {

// Those that store when a sample is decoded, or as here the order of decoding. Elsewhere the
// demuxer makes that up from the times of presentation.
constexpr auto kWithDecodingTimes =
        std::to_array<std::string_view>({"mov", "mpegts", "mpeg", "flv", "avi"});

constexpr int64_t kNoTime = AV_NOPTS_VALUE;

int64_t timeOf(const AVPacket& packet, bool ofDecoding) {
    const auto [wanted, other] =
            ofDecoding ? std::pair(packet.dts, packet.pts) : std::pair(packet.pts, packet.dts);
    return wanted != kNoTime ? wanted : other;
}

// The times of a track's samples, in its time base.
class Times {
public:
    Times(bool areOfDecoding, bool mayBeReordered)
        : mIsReordered(mayBeReordered && !areOfDecoding), mMayRepeat(!areOfDecoding) {
        mLatest.fill(kNoTime);
    }

    // Returns whether the time goes on.
    bool add(int64_t time) {
        if (time == kNoTime) return true;
        const bool isFirst = mCount == 0;
        const bool isAgain = std::ranges::count(mLatest, time) > 0;
        const bool isBack = time < mLast;
        mLatest[mCount++ % mLatest.size()] = time;
        const int64_t last = std::exchange(mLast, mIsReordered ? std::max(mLast, time) : time);
        if (isFirst) return true;
        addStep(last, mLast);
        if (mIsReordered) return !isAgain;
        return !isBack && (mMayRepeat || time > last);
    }

    // Where the longest of the steps from one sample to the next is, when it is longer than a
    // second and far longer than others.
    std::optional<std::pair<int64_t, int64_t>> gap(int64_t second) const {
        const bool isLong =
                mLongest > second && mLongest / 10 > mTotal / static_cast<int64_t>(mCount);
        if (!isLong) return {};
        return std::pair(mBeforeLongest, mLongest);
    }

private:
    void addStep(int64_t from, int64_t to) {
        // Made up by a hostile file.
        constexpr int64_t kMost = std::numeric_limits<int64_t>::max() / 4;
        if (to <= from || from < -kMost || to > kMost) return;
        mTotal += std::min(to - from, kMost - mTotal);
        if (to - from <= mLongest) return;
        mLongest = to - from;
        mBeforeLongest = from;
    }

    bool mIsReordered;  // by time, not by their order in the file
    bool mMayRepeat;    // times are rounded
    std::array<int64_t, 16> mLatest;
    uint64_t mCount = 0;
    int64_t mLast = kNoTime;  // the least number
    int64_t mTotal = 0;
    int64_t mLongest = 0;
    int64_t mBeforeLongest = 0;
};

class VerifiedTrack {
public:
    VerifiedTrack(AVStream& stream, Kind kind, bool hasDecodingTimes, bool isIndexed)
        : mStream(stream),
          mHasDecodingTimes(hasDecodingTimes),
          mTimes(hasDecodingTimes, kind == Kind::kVideo) {
        mResult.isVideo = kind == Kind::kVideo;
        mResult.mayBeEmpty = kind == Kind::kText;
        mResult.hasIndex = isIndexed;
        mResult.hasUnitLengths = unitLengthBytes(*stream.codecpar) > 0;
    }

    void add(const AVPacket& packet) {
        mResult.samples++;
        const SamplePlace place = {
                .sample = mResult.samples,
                .timeUs = toUs(timeOf(packet, mHasDecodingTimes)),
                .offset = packet.pos >= 0 ? std::optional(packet.pos) : std::nullopt};
        if ((packet.flags & AV_PKT_FLAG_CORRUPT) != 0) {
            if (!mResult.hasIndex) count(mResult.cut, place);
        } else {
            mResult.readable++;
            if (!hasWholeUnits(packet, *mStream.codecpar)) count(mResult.brokenUnits, place);
        }
        if (!mResult.mayBeEmpty && !mTimes.add(timeOf(packet, mHasDecodingTimes))) {
            count(mResult.backward, place);
        }
        addEnd(packet);
        const bool isKey = (packet.flags & AV_PKT_FLAG_KEY) != 0;
        if (mResult.isVideo && isKey) addKeyFrame(place);
        if (place.timeUs) mLastTimeUs = *place.timeUs;
    }

    Verification finish(const OpenFile& open) {
        if (mResult.keyFrames > 0) measureFromKey(mResult.samples, mLastTimeUs);
        if (const auto gap = mTimes.gap(av_rescale_q(1, {1, 1}, mStream.time_base))) {
            mResult.gapAtUs = toUs(gap->first);
            mResult.gapUs = *toUs(gap->second);
        }
        if (mResult.hasIndex) readIndex(open);
        return mResult;
    }

private:
    static void count(FaultySamples& samples, const SamplePlace& place) {
        if (samples.count++ == 0) samples.first = place;
    }

    std::optional<int64_t> toUs(int64_t time) const {
        if (time == kNoTime) return {};
        return av_rescale_q(time, mStream.time_base, av_get_time_base_q());
    }

    void addEnd(const AVPacket& packet) {
        const auto begin = toUs(timeOf(packet, false));
        const auto duration = toUs(packet.duration);
        if (!begin || !duration) return;
        mResult.endUs = std::max(mResult.endUs.value_or(0), av_sat_add64(*begin, *duration));
    }

    void addKeyFrame(const SamplePlace& place) {
        if (mResult.keyFrames++ > 0) measureFromKey(place.sample, place.timeUs.value_or(mKeyUs));
        mKey = place.sample;
        mKeyUs = place.timeUs.value_or(mKeyUs);
    }

    void measureFromKey(uint64_t sample, int64_t timeUs) {
        mResult.keyDistance = std::max(mResult.keyDistance, sample - mKey);
        mResult.keyDistanceUs = std::max(mResult.keyDistanceUs, av_sat_sub64(timeUs, mKeyUs));
    }

    void readIndex(const OpenFile& open) {
        mResult.samples = 0;
        visitIndex(open, mStream, [this](const IndexEntry& entry) {
            mResult.samples++;
            mResult.missingBytes += static_cast<uint64_t>(entry.missingBytes);
            if (entry.missingBytes > 0) {
                count(mResult.outside, {mResult.samples, toUs(entry.time), entry.offset});
            }
            return true;
        });
    }

    AVStream& mStream;
    bool mHasDecodingTimes;
    Times mTimes;
    uint64_t mKey = 0;  // the latest key frame
    int64_t mKeyUs = 0;
    int64_t mLastTimeUs = 0;
    Verification mResult;
};

std::map<int, VerifiedTrack> openTracks(const OpenFile& open, const MediaFile& file,
                                        const Demuxer& demuxer) {
    const bool hasDecodingTimes = std::ranges::count(kWithDecodingTimes, file.format) > 0;
    std::map<int, VerifiedTrack> tracks;
    for (AVStream* stream : demuxer.streams()) {
        const auto index = static_cast<size_t>(stream->index);
        const Kind kind = index < file.streams.size() ? file.streams[index].kind : Kind::kOther;
        if (kind == Kind::kOther) continue;
        tracks.emplace(stream->index,
                       VerifiedTrack(*stream, kind, hasDecodingTimes, hasWholeIndex(open)));
    }
    return tracks;
}

}  // namespace

std::map<int, Verification> verifySamples(const OpenFile& open, const MediaFile& file) {
    const Demuxer demuxer(open,
                          file.container.hasWholeFrames ? Samples::kAsStored : Samples::kWhole);
    auto tracks = openTracks(open, file, demuxer);
    const int status =
            walkTracks(open, demuxer, tracks,
                       [](VerifiedTrack& track, const AVPacket& packet) { track.add(packet); });
    std::map<int, Verification> results;
    for (auto& [index, track] : tracks) {
        const auto result = results.emplace(index, track.finish(open)).first;
        result->second.isReadToEnd = status == AVERROR_EOF || file.truncation.has_value();
    }
    return results;
}

}  // namespace inspect
