#include "inspect/media/Samples.h"

#include <algorithm>

#include "inspect/base/Progress.h"

namespace inspect {
namespace {

// How many samples the index holds of the streams that are read.
int64_t indexedSamples(const Demuxer& demuxer) {
    int64_t count = 0;
    for (const AVStream* stream : demuxer.streams()) {
        if (stream->discard < AVDISCARD_ALL) count += avformat_index_get_entries_count(stream);
    }
    return count;
}

bool unitsFill(Bytes sample, size_t lengthBytes) {
    ByteCursor cursor(sample);
    bool hasUnit = false;
    while (cursor.ok() && cursor.remaining() > 0) {
        uint64_t length = 0;
        for (const uint8_t byte : cursor.take(lengthBytes)) length = length << 8 | byte;
        cursor.skip(length);
        hasUnit = hasUnit || length > 0;
    }
    return cursor.ok() && hasUnit;
}

// Whoever decrypts the sample finds its lengths.
bool isEncrypted(const AVPacket& packet) {
    return av_packet_get_side_data(&packet, AV_PKT_DATA_ENCRYPTION_INFO, nullptr) != nullptr;
}

}  // namespace

size_t unitLengthBytes(const AVCodecParameters& codec) {
    const Bytes record(codec.extradata, static_cast<size_t>(std::max(codec.extradata_size, 0)));
    if (codec.codec_id == AV_CODEC_ID_H264 && record.size() >= 7 && record[0] == 1) {
        return (record[4] & 3u) + 1;
    }
    if (codec.codec_id == AV_CODEC_ID_HEVC && record.size() >= 23 && record[0] == 1) {
        return (record[21] & 3u) + 1;
    }
    return 0;
}

bool hasWholeUnits(const AVPacket& packet, const AVCodecParameters& codec) {
    const size_t lengthBytes = unitLengthBytes(codec);
    if (lengthBytes == 0 || isEncrypted(packet)) return true;
    return unitsFill({packet.data, static_cast<size_t>(packet.size)}, lengthBytes);
}

bool hasWholeIndex(const OpenFile& open) {
    return open.format() == "mov";
}

void visitIndex(const OpenFile& open, AVStream& stream,
                const std::function<bool(const IndexEntry&)>& visit) {
    const int count = avformat_index_get_entries_count(&stream);
    for (int i = 0; i < count; i++) {
        const AVIndexEntry& entry = *avformat_index_get_entry(&stream, i);
        const int64_t size = entry.size;
        const int64_t end = open.extent().end;
        const int64_t there = entry.pos < 0 || entry.pos > end ? 0 : end - entry.pos;
        const int64_t missing = std::max<int64_t>(0, size - there);
        if (!visit({entry.pos, size, entry.timestamp, missing})) return;
    }
}

int walkSamples(const OpenFile& open, const Demuxer& demuxer,
                const std::function<bool(AVPacket&)>& visit) {
    constexpr int64_t kMostSamples = 1 << 24;
    // Samples may lie one upon the other, but not all of them.
    int64_t bytesLeft = 4 * std::min(open.input().size(), int64_t{1} << 60) + (64 << 20);
    Progress progress(open.input().path(), open.input().size());
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    for (int64_t count = 1; count <= kMostSamples && bytesLeft >= 0; count++) {
        const int status = demuxer.read(*packet);
        progress.show(avio_tell(demuxer.context().pb));
        const bool isBehindEnd = status == AVERROR_EOF || status == AVERROR_INVALIDDATA;
        if (isBehindEnd && hasWholeIndex(open)) {
            if (count < indexedSamples(demuxer)) continue;
            return AVERROR_EOF;
        }
        if (status < 0) return status;
        bytesLeft -= packet->size;
        const bool goesOn = visit(*packet);
        av_packet_unref(packet.get());
        if (!goesOn) return 0;
    }
    return AVERROR_EXIT;
}

}  // namespace inspect
