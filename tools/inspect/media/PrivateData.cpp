#include "inspect/media/PrivateData.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

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
        if (file.readAt(static_cast<int64_t>(offset), header) < 8) return {};
        ByteCursor cursor(header);
        uint64_t size = cursor.be32();
        const bool isSought = startsWith(cursor.take(4), type);
        const bool isLarge = size == 1;
        if (isLarge) size = cursor.be64();
        const uint64_t headerSize = isLarge ? 16 : 8;
        if (size < headerSize || size > boxes.end - offset) return {};
        if (isSought && nth-- == 0) return Range{offset + headerSize, offset + size};
        offset += size;
    }
    return {};
}

// ISO/IEC 13818-7 6.2.1: a sync word of twelve ones, and no layer.
bool hasAdtsHeader(const AVPacket& packet) {
    return packet.size >= 2 && packet.data[0] == 0xFF && (packet.data[1] & 0xF6) == 0xF0;
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

bool mayHaveAdtsHeaders(const Stream& stream) {
    return stream.codec == "aac" && stream.privateData.empty();
}

void findAdtsHeader(const AVPacket& packet, Stream& stream) {
    if (mayHaveAdtsHeaders(stream) && hasAdtsHeader(packet)) stream.codecType = kCodecTypeAacAdts;
}

void adaptPrivateData(Stream& stream) {
    switch (stream.codecType) {
        case kCodecTypeFlac: adaptFlac(stream.privateData); break;
        case kCodecTypeOpus: adaptOpus(stream); break;
        default: break;
    }
}

}  // namespace inspect
