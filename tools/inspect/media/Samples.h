// The samples of a file, one after the other, and what the container's index tells of them.

#pragma once

#include <functional>
#include <map>

#include "inspect/media/Demuxer.h"

namespace inspect {

// Whether the demuxer's index holds every sample of every track, also those behind the file's end.
bool hasWholeIndex(const OpenFile& open);

// Of a whole index.
struct IndexEntry {
    int64_t offset;
    int64_t sizeBytes;
    int64_t time;          // of decoding, in the stream's time base
    int64_t missingBytes;  // of the sample, behind the end of the media
};

// Up to the first entry for which the visit returns false.
void visitIndex(const OpenFile& open, AVStream& stream,
                const std::function<bool(const IndexEntry&)>& visit);

// Reads the samples of the streams that are not discarded, and shows on a terminal how far it is.
// Goes past samples that a whole index places behind the end. The visit may change the packet, and
// returns whether to go on. Returns libav's status: AVERROR_EOF at the end, AVERROR_EXIT when the
// file has samples without an end; 0 when the visit wants no more.
int walkSamples(const OpenFile& open, const Demuxer& demuxer,
                const std::function<bool(AVPacket&)>& visit);

// The same for some tracks, by the index of their streams; all others are discarded.
template <typename Track>
int walkTracks(const OpenFile& open, const Demuxer& demuxer, std::map<int, Track>& tracks,
               const auto& visit) {
    for (AVStream* stream : demuxer.streams()) {
        if (!tracks.contains(stream->index)) stream->discard = AVDISCARD_ALL;
    }
    return walkSamples(open, demuxer, [&](AVPacket& packet) {
        const auto track = tracks.find(packet.stream_index);
        if (track != tracks.end()) visit(track->second, packet);
        return true;
    });
}

// ISO/IEC 14496-15 5.3.3.1.2 and 8.3.3.1.2: of the lengths before NAL units; 0 = there are none.
size_t unitLengthBytes(const AVCodecParameters& codec);

// Whether the sample is filled by its NAL units, one at least; true for one without lengths.
bool hasWholeUnits(const AVPacket& packet, const AVCodecParameters& codec);

}  // namespace inspect
