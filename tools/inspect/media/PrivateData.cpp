#include "inspect/media/PrivateData.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>

#include "inspect/media/Extent.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

constexpr int kMaxPackets = 1000;

bool startsWith(Bytes data, std::string_view text) {
    return data.size() >= text.size() &&
           std::ranges::equal(data.first(text.size()), text, {},
                              [](uint8_t byte) { return static_cast<char>(byte); });
}

// RFC 9639 8: the marker, then a metadata block header: last block, type 0, 24-bit size.
void adaptFlac(ByteVector& data) {
    if (data.empty() || startsWith(data, "fLaC")) return;
    const auto sizeByte = [size = data.size()](int shift) {
        return static_cast<uint8_t>(size >> shift);
    };
    const ByteVector head = {'f', 'L', 'a', 'C', 0x80, sizeByte(16), sizeByte(8), sizeByte(0)};
    data.insert(data.begin(), head.begin(), head.end());
}

// RFC 7845 5.1: pre-skip counts samples of 48 kHz; 4.6: 80 ms lead to a steady decoder.
void adaptOpus(Stream& stream) {
    constexpr uint64_t kNsPerSecond = 1'000'000'000;
    constexpr size_t kPreSkipOffset = 10;
    ByteCursor cursor(stream.privateData);
    if (!startsWith(stream.privateData, "OpusHead")) return;
    cursor.skip(kPreSkipOffset);
    stream.audio.codecDelayNs = cursor.le16() * kNsPerSecond / 48000;
    stream.audio.seekPreRollNs = 80'000'000;
}

struct Range {
    uint64_t begin;
    uint64_t end;
};

// ISO/IEC 14496-12 4.2: the content of the nth box of this type among these, the first being 0.
std::optional<Range> findBox(const InputFile& file, Range boxes, std::string_view type, int nth) {
    constexpr int kMaxBoxes = 1 << 12;
    uint64_t offset = boxes.begin;
    for (int count = 0; count < kMaxBoxes && offset < boxes.end; count++) {
        std::array<uint8_t, 16> header{};
        file.readAt(static_cast<int64_t>(offset), header);
        ByteCursor cursor(header);
        const uint64_t size = boxSize(cursor);
        if (size == 0) return {};
        const uint64_t end = offset + std::min(size, boxes.end - offset);
        const bool isSought = startsWith(Bytes(header).subspan(4), type);
        const uint64_t headerSize = header.size() - cursor.remaining();
        if (isSought && nth-- == 0) return Range{std::min(offset + headerSize, end), end};
        offset = end;
    }
    return {};
}

// ISO/IEC 13818-7 6.2.1: a sync word of twelve ones, and no layer.
bool hasAdtsHeader(const AVPacket& packet) {
    return packet.size >= 2 && packet.data[0] == 0xFF && (packet.data[1] & 0xF6) == 0xF0;
}

// AAC without an AudioSpecificConfig of its own.
bool mayHaveAdtsHeaders(const Stream& stream) {
    return stream.codec == "aac" && stream.privateData.empty();
}

}  // namespace

ByteVector readVp9Record(const InputFile& file, int track) {
    struct Step {
        std::string_view type;
        int nth;
        uint64_t fields;  // bytes before the boxes inside
    };
    const Step steps[] = {{"moov", 0, 0}, {"trak", track, 0}, {"mdia", 0, 0},  {"minf", 0, 0},
                          {"stbl", 0, 0}, {"stsd", 0, 8},     {"vp09", 0, 78}, {"vpcC", 0, 0}};
    Range range = {0, static_cast<uint64_t>(file.size())};
    for (const Step& step : steps) {
        const auto found = findBox(file, range, step.type, step.nth);
        if (!found || found->end - found->begin < step.fields) return {};
        range = {found->begin + step.fields, found->end};
    }
    constexpr uint64_t kMostBytes = 1 << 16;
    ByteVector record(std::min(range.end - range.begin, kMostBytes));
    const int64_t count = file.readAt(static_cast<int64_t>(range.begin), record);
    record.resize(static_cast<size_t>(std::max<int64_t>(count, 0)));
    return record;
}

void findAdtsHeaders(AVFormatContext& file, std::span<Stream> streams) {
    std::set<int> open;
    for (const Stream& stream : streams) {
        if (mayHaveAdtsHeaders(stream)) open.insert(stream.index);
    }
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    for (int count = 0; !open.empty() && count < kMaxPackets; count++) {
        if (av_read_frame(&file, packet.get()) < 0) return;
        if (open.erase(packet->stream_index) > 0 && hasAdtsHeader(*packet)) {
            streams[static_cast<size_t>(packet->stream_index)].codecType = kCodecTypeAacAdts;
        }
        av_packet_unref(packet.get());
    }
}

void adaptPrivateData(Stream& stream) {
    if (stream.codecType == kCodecTypeFlac) adaptFlac(stream.privateData);
    if (stream.codecType == kCodecTypeOpus) adaptOpus(stream);
}

}  // namespace inspect
