#include "inspect/media/PrivateData.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

constexpr int kMaxPackets = 1000;

// A filter that finds the private data in packets; null where there is nothing to look for.
const char* filterName(const Stream& stream) {
    if (!stream.privateData.empty()) return nullptr;
    switch (stream.codecType) {
        case kCodecTypeAvc:
        case kCodecTypeHevc: return "extract_extradata";
        case kCodecTypeAac: return stream.codec == "aac" ? "aac_adtstoasc" : nullptr;
        default: return nullptr;
    }
}

// The private data that comes with the packet, or nothing. Takes the packet over.
ByteVector filterPacket(AVBSFContext& filter, AVPacket& packet) {
    if (av_bsf_send_packet(&filter, &packet) < 0) return {};
    ByteVector found;
    while (av_bsf_receive_packet(&filter, &packet) == 0) {
        size_t size = 0;
        const uint8_t* data = av_packet_get_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, &size);
        if (data != nullptr && found.empty()) found.assign(data, data + size);
        av_packet_unref(&packet);
    }
    return found;
}

bool startsWith(Bytes data, std::string_view text) {
    return data.size() >= text.size() &&
           std::ranges::equal(data.first(text.size()), text, {},
                              [](uint8_t byte) { return static_cast<char>(byte); });
}

// RFC 9639 8: the marker, then a metadata block header: last block, type 0, 24-bit size.
void adaptFlac(ByteVector& data) {
    if (data.empty() || startsWith(data, "fLaC")) return;
    const auto size = data.size();
    const ByteVector head = {'f',
                             'L',
                             'a',
                             'C',
                             0x80,
                             static_cast<uint8_t>(size >> 16),
                             static_cast<uint8_t>(size >> 8),
                             static_cast<uint8_t>(size)};
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

}  // namespace

void completeFromPackets(AVFormatContext& file, std::span<Stream> streams) {
    std::map<int, LibAvPtr<AVBSFContext>> filters;
    for (const Stream& stream : streams) {
        const char* name = filterName(stream);
        if (name == nullptr) continue;
        if (auto filter = openFilter(name, *file.streams[stream.index])) {
            filters.emplace(stream.index, std::move(filter));
        }
    }
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    for (int count = 0; !filters.empty() && count < kMaxPackets; count++) {
        if (av_read_frame(&file, packet.get()) < 0) return;
        const auto index = packet->stream_index;
        if (const auto entry = filters.find(index); entry != filters.end()) {
            Stream& stream = streams[static_cast<size_t>(index)];
            stream.privateData = filterPacket(*entry->second, *packet);
            stream.hasAdtsHeaders =
                    stream.codecType == kCodecTypeAac && !stream.privateData.empty();
            if (!stream.privateData.empty()) filters.erase(entry);
        }
        av_packet_unref(packet.get());
    }
}

void adaptPrivateData(Stream& stream) {
    switch (stream.codecType) {
        case kCodecTypeFlac: adaptFlac(stream.privateData); break;
        case kCodecTypeOpus: adaptOpus(stream); break;
        default: break;
    }
}

}  // namespace inspect
