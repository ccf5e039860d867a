#include "inspect/media/FirstSamples.h"

#include <optional>
#include <set>
#include <utility>

#include "inspect/media/PrivateData.h"
#include "inspect/media/Samples.h"

namespace inspect {
namespace {

// Empty when some sample lies inside the file; of a track with entries in a whole index.
std::string whyOutside(const OpenFile& open, AVStream& stream) {
    std::optional<IndexEntry> first;
    bool isInside = false;
    visitIndex(open, stream, [&](const IndexEntry& entry) {
        isInside = entry.sizeBytes > 0 && entry.missingBytes == 0;
        if (!first && entry.sizeBytes > 0) first = entry;
        return !isInside;
    });
    if (isInside) return {};
    if (!first) return "all samples of the track are empty";
    const bool isCut = first->missingBytes < first->sizeBytes;
    const int64_t place = isCut ? first->offset + first->sizeBytes : first->offset;
    return std::string("no sample of the track lies inside the file: the first ") +
           (isCut ? "ends" : "begins") + " at offset " + std::to_string(place) +
           ", the file ends at " + std::to_string(open.extent().end);
}

// What is found of the tracks from which a sample is sought.
struct Found {
    std::set<int> nothing;      // up to the end
    std::set<int> brokenUnits;  // and no sample whose NAL units fill it
};

Found readUntilFound(const OpenFile& open, const Demuxer& demuxer, std::set<int> sought,
                     std::span<Stream> streams) {
    Found found;
    if (sought.empty()) return found;
    int packetsLeft = 1000;
    int64_t bytesLeft = 8 << 20;
    const int status = walkSamples(open, demuxer, [&](const AVPacket& packet) {
        const int index = packet.stream_index;
        const auto place = static_cast<size_t>(index);
        const bool isWhole = (packet.flags & AV_PKT_FLAG_CORRUPT) == 0;
        if (isWhole && sought.contains(index)) {
            if (hasWholeUnits(packet, *demuxer.streams()[place]->codecpar)) {
                readHeader(packet, streams[place]);
                found.brokenUnits.erase(index);
                sought.erase(index);
            } else {
                found.brokenUnits.insert(index);
            }
        }
        bytesLeft -= packet.size;
        return --packetsLeft > 0 && bytesLeft > 0 && !sought.empty();
    });
    if (status < 0) found.nothing = std::move(sought);
    return found;
}

}  // namespace

void readFirstSamples(const OpenFile& open, const Demuxer& demuxer, std::span<Stream> streams) {
    std::set<int> sought;
    for (Stream& stream : streams) {
        AVStream& source = *demuxer.streams()[static_cast<size_t>(stream.index)];
        const bool isIndexed = hasWholeIndex(open) && avformat_index_get_entries_count(&source) > 0;
        const bool mustHaveSamples = stream.kind == Kind::kVideo || stream.kind == Kind::kAudio;
        if (isIndexed && stream.kind != Kind::kOther) {
            stream.nothingReadable = whyOutside(open, source);
        }
        if (!mustHaveSamples || !stream.nothingReadable.empty()) continue;
        const bool isLookedInto =
                mayHaveAdtsHeaders(stream) || unitLengthBytes(*source.codecpar) > 0;
        if (isLookedInto || !isIndexed) sought.insert(stream.index);
    }
    const Found found = readUntilFound(open, demuxer, std::move(sought), streams);
    for (const int index : found.nothing) {
        streams[static_cast<size_t>(index)].nothingReadable =
                hasWholeIndex(open) ? "the track has no samples"
                                    : "no whole sample of the track comes before the file's end";
    }
    for (const int index : found.brokenUnits) {
        streams[static_cast<size_t>(index)].nothingReadable =
                "no sample of the track is filled by its NAL units: their lengths are wrong";
    }
}

}  // namespace inspect
