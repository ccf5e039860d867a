#include "inspect/media/PrivateData.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "inspect/media/Boxes.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

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

// ISO/IEC 13818-7 6.2.1: a sync word of twelve ones, and no layer.
bool hasAdtsHeader(const AVPacket& packet) {
    return packet.size >= 2 && packet.data[0] == 0xFF && (packet.data[1] & 0xF6) == 0xF0;
}

// VP9 6.2: no uncompressed header has more bytes, of which the last must not look like the end of a
// superframe (Annex B).
ByteVector vp9Header(const AVPacket& packet) {
    constexpr int kMostBytes = 80;
    ByteVector header(packet.data, packet.data + std::min(packet.size, kMostBytes));
    while (!header.empty() && (header.back() & 0xE0) == 0xC0) header.pop_back();
    return header;
}

}  // namespace

ByteVector readVp9Record(const InputFile& file, int track) {
    constexpr uint64_t kVisualFields = 78;
    const auto entries = findSampleEntries(file, track);
    const auto entry = entries ? findBox(file, *entries, "vp09") : std::nullopt;
    const auto record = entry ? findBox(file, entry->behind(kVisualFields), "vpcC")
                              : findCodecPrivate(file, track);
    return record ? readContent(file, *record) : ByteVector();
}

bool mayHaveAdtsHeaders(const Stream& stream) {
    return stream.codec == "aac" && stream.privateData.empty();
}

void readHeader(const AVPacket& packet, Stream& stream) {
    if (mayHaveAdtsHeaders(stream) && hasAdtsHeader(packet)) stream.codecType = kCodecTypeAacAdts;
    const bool isKey = (packet.flags & AV_PKT_FLAG_KEY) != 0;
    if (isKey && stream.codecType == kCodecTypeVp9 && stream.privateData.empty()) {
        stream.firstHeader = vp9Header(packet);
    }
}

void adaptPrivateData(Stream& stream) {
    if (stream.codecType == kCodecTypeFlac) adaptFlac(stream.privateData);
    if (stream.codecType == kCodecTypeOpus) adaptOpus(stream);
}

}  // namespace inspect
