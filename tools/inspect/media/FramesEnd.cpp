#include "inspect/media/FramesEnd.h"

extern "C" {
#include <libavcodec/ac3_parser.h>
}

#include <algorithm>
#include <array>
#include <optional>

#include "inspect/media/Id3Header.h"

namespace inspect {
namespace {

constexpr size_t kHeaderBytes = 16;  // of a frame or a tag, as much as tells the size
constexpr int kWindow = 64 << 10;

// ISO/IEC 11172-3 2.4.2.3, ISO/IEC 13818-3 2.4.2.3. A free bit rate tells no size.
uint64_t mpegFrame(Bytes header) {
    constexpr std::array<uint16_t, 14> kKbps[] = {
            {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
            {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
            {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
            {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
            {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};
    constexpr unsigned kRates[] = {44100, 48000, 32000};
    const unsigned version = header[1] >> 3 & 3;  // 3 = MPEG-1, 2 = MPEG-2, 0 = 2.5
    const unsigned layer = 4 - (header[1] >> 1 & 3);
    const unsigned bitRate = header[2] >> 4;
    const unsigned rate = header[2] >> 2 & 3;
    const bool isSync = header[0] == 0xFF && header[1] >= 0xE0;
    if (!isSync || version == 1 || layer == 4 || bitRate == 0 || bitRate == 15 || rate == 3) {
        return 0;
    }
    const bool isLow = version != 3;
    const auto& kbps = kKbps[isLow ? (layer == 1 ? 3 : 4) : layer - 1];
    const unsigned hertz = kRates[rate] >> (3 - std::max(version, 1u));
    const unsigned padding = header[2] >> 1 & 1;
    if (layer == 1) return uint64_t{4} * (12000u * kbps[bitRate - 1] / hertz + padding);
    const unsigned perKilobit = layer == 3 && isLow ? 72000 : 144000;
    return perKilobit * kbps[bitRate - 1] / hertz + padding;
}

// ISO/IEC 13818-7 6.2
uint64_t adtsFrame(Bytes header) {
    const bool isSync = header[0] == 0xFF && (header[1] & 0xF6) == 0xF0;
    return isSync ? (header[3] & 3u) << 11 | uint32_t{header[4]} << 3 | header[5] >> 5 : 0;
}

// ETSI TS 102 366 4.3, E.1.2
uint64_t ac3Frame(Bytes header) {
    uint8_t id = 0;
    uint16_t size = 0;
    const bool isSync = header[0] == 0x0B && header[1] == 0x77;
    return isSync && av_ac3_parse_header(header.data(), header.size(), &id, &size) >= 0 ? size : 0;
}

// ETSI TS 102 114 5.3, without substreams of extensions.
uint64_t dtsFrame(Bytes header) {
    const bool isSync = startsWith(header, "\x7F\xFE\x80\x01");
    return isSync ? ((header[5] & 3u) << 12 | uint32_t{header[6]} << 4 | header[7] >> 4) + 1 : 0;
}

struct FrameKind {
    std::string_view format;
    uint64_t (*sizeOf)(Bytes header);  // 0 = none begins so
    uint32_t constantBits;             // of the first four bytes, from frame to frame
};
constexpr auto kKinds = std::to_array<FrameKind>({{"mp3", mpegFrame, 0xFFFE0C00},
                                                  {"aac", adtsFrame, 0xFFFEFDC0},
                                                  {"dts", dtsFrame, 0xFFFFFFFF},
                                                  {"ac3", ac3Frame, 0xFFFF0000},
                                                  {"eac3", ac3Frame, 0xFFFF0000}});

// ID3v2.4 3.1 and 3.4, ID3v1, APEv2; 0 = none begins so.
uint64_t tagBytes(Bytes header) {
    if (startsWith(header, "TAG")) return 128;
    if (startsWith(header, "APETAGEX")) return 32 + ByteCursor(header.subspan(12)).little(4);
    if (!startsWith(header, "ID3")) return 0;
    const uint64_t withFooter = (header[5] & 0x10) != 0 ? 20 : 10;
    return withFooter + syncsafe(header.subspan(6)).value_or(0);
}

class Frames {
public:
    Frames(const FrameKind& kind, const InputFile& file, int64_t end)
        : mKind(kind), mFile(file), mEnd(end) {}

    // The first frame in the window at the offset that others follow.
    std::optional<int64_t> find(int64_t offset) const {
        const auto size = static_cast<size_t>(std::clamp<int64_t>(mEnd - offset, 0, kWindow));
        const ByteVector window = read(offset, size);
        for (size_t i = 0; i < size; i++) {
            if (isChain(window, i)) return offset + static_cast<int64_t>(i);
        }
        return {};
    }

    // Behind this frame and what follows it: frames, tags, and a little that is neither between
    // them.
    int64_t walk(int64_t offset) const {
        constexpr int kMostElements = 1 << 14;
        int64_t bits = -1;  // of the frame before; -1 = none
        for (int count = 0; count < kMostElements && offset < mEnd; count++) {
            const ByteVector header = read(offset, 0);
            const int64_t own = constantBits(header);
            const uint64_t frame = bits < 0 || bits == own ? mKind.sizeOf(header) : 0;
            if (frame > 0) bits = own;
            const uint64_t size = std::max(frame, tagBytes(header));
            offset += static_cast<int64_t>(size);
            if (size > 0) continue;
            const auto next = find(offset);
            if (!next) return offset;
            offset = *next;
            bits = -1;
        }
        return mEnd;
    }

private:
    // With the header of what follows; zeros from the end on.
    ByteVector read(int64_t offset, size_t sizeBytes) const {
        ByteVector bytes(sizeBytes + kHeaderBytes);
        const auto there = static_cast<size_t>(std::max<int64_t>(mEnd - offset, 0));
        mFile.readAt(offset, std::span(bytes).first(std::min(bytes.size(), there)));
        return bytes;
    }

    uint32_t constantBits(Bytes header) const {
        return ByteCursor(header).be32() & mKind.constantBits;
    }

    bool isChain(Bytes window, size_t offset) const {
        constexpr int kEnough = 4;  // by chance once in 10^16 bytes
        const uint32_t bits = constantBits(window.subspan(offset));
        for (int count = 0; count < kEnough; count++) {
            if (offset + kHeaderBytes > window.size()) return false;
            const Bytes header = window.subspan(offset, kHeaderBytes);
            const uint64_t size = mKind.sizeOf(header);
            if (size == 0 || constantBits(header) != bits) return false;
            offset += size;
        }
        return true;
    }

    const FrameKind& mKind;
    const InputFile& mFile;
    int64_t mEnd;
};

}  // namespace

int64_t framesEnd(std::string_view format, const InputFile& file, int64_t end) {
    constexpr int64_t kLeastJunk = 16 << 10;  // more than what is left of a broken frame
    const auto* kind = std::ranges::find(kKinds, format, &FrameKind::format);
    if (kind == kKinds.end()) return end;
    const Frames frames(*kind, file, end);
    // Looks ever further back, then halves what is left in between.
    int64_t behind = end;
    int64_t begin = std::max<int64_t>(0, end - kWindow);
    auto frame = frames.find(begin);
    while (!frame && begin > 0) {
        behind = begin;
        begin = std::max<int64_t>(0, end - 2 * (end - begin));
        frame = frames.find(begin);
    }
    while (frame && behind - begin > kWindow) {
        const int64_t middle = begin + (behind - begin) / 2;
        const auto found = frames.find(middle);
        (found ? begin : behind) = middle;
        if (found) frame = found;
    }
    const int64_t walked = frame ? frames.walk(*frame) : end;
    return end - walked < kLeastJunk ? end : walked;
}

}  // namespace inspect
