#include "inspect/media/Scrambling.h"

#include <algorithm>
#include <array>
#include <memory>

#include "inspect/base/Bytes.h"

namespace inspect {
namespace {

class Counts {
public:
    void add(int id, bool isScrambled) {
        mScrambledLessClear[static_cast<size_t>(id)] += isScrambled ? 1 : -1;
    }

    std::set<int> mostlyScrambled() const {
        std::set<int> ids;
        for (size_t id = 0; id < mScrambledLessClear.size(); id++) {
            if (mScrambledLessClear[id] > 0) ids.insert(static_cast<int>(id));
        }
        return ids;
    }

private:
    std::array<int, 0x2000> mScrambledLessClear{};  // a PID has 13 bits, other ids fewer
};

constexpr uint8_t kSync = 0x47;

// Bytes from one sync byte to the next; 0 = none follow.
size_t packetDistance(Bytes data) {
    constexpr size_t kSyncs = 4;
    for (const size_t distance : {188u, 192u, 204u}) {
        size_t count = 0;
        while (count < kSyncs && count * distance < data.size() &&
               data[count * distance] == kSync) {
            count++;
        }
        if (count == kSyncs) return distance;
    }
    return 0;
}

// ISO/IEC 13818-1 2.4.3.2
void countTransportPackets(Bytes data, Counts& counts) {
    constexpr size_t kHeader = 4;
    while (data.size() >= kHeader) {
        const size_t distance = packetDistance(data);
        const bool hasPayload = (data[3] & 0x10) != 0;
        if (distance != 0 && hasPayload) {
            counts.add((data[1] & 0x1F) << 8 | data[2], (data[3] & 0xC0) != 0);
        }
        const auto next = [&] { return std::ranges::find(data.subspan(1), kSync) - data.begin(); };
        data = data.subspan(distance != 0 ? distance : static_cast<size_t>(next()));
    }
}

// ISO/IEC 13818-1 2.4.3.6: a packet behind its length. Private streams have their number in front
// of their payload.
void countPes(uint8_t streamId, Bytes packet, Counts& counts) {
    constexpr uint8_t kPrivate = 0xBD;
    const bool isMedia = streamId == kPrivate || (streamId >= 0xC0 && streamId <= 0xEF);
    const bool isMpeg2 = packet.size() > 3 && (packet[0] & 0xC0) == 0x80;
    if (!isMedia || !isMpeg2) return;
    int id = 0x100 | streamId;
    const size_t payload = size_t{3} + packet[2];
    if (streamId == kPrivate) id = payload < packet.size() ? packet[payload] : 0;
    counts.add(id, (packet[0] & 0x30) != 0);
}

// ISO/IEC 13818-1 2.5.3.3
void countProgramPackets(Bytes data, Counts& counts) {
    constexpr uint32_t kPack = 0x1BA;
    constexpr uint32_t kFirstWithLength = 0x1BB;
    for (ByteCursor cursor(data); cursor.ok();) {
        const uint32_t code = cursor.be32();
        if (code == kPack) {
            const bool isMpeg2 = (cursor.u8() & 0xC0) == 0x40;
            cursor.skip(isMpeg2 ? 8 : 7);
            if (isMpeg2) cursor.skip(cursor.u8() & 7);
        } else if (code >= kFirstWithLength && code <= 0x1FF) {
            countPes(static_cast<uint8_t>(code), cursor.take(cursor.be16()), counts);
        } else {
            return;
        }
    }
}

}  // namespace

std::set<int> scrambledStreams(const OpenFile& open) {
    const bool isTransport = open.format() == "mpegts";
    if (!isTransport && open.format() != "mpeg") return {};
    constexpr int64_t kMostRead = 2 << 20;
    const auto size = static_cast<size_t>(std::min(open.input().size(), kMostRead));
    const auto bytes = std::make_unique_for_overwrite<uint8_t[]>(size);
    const int64_t got = open.input().readAt(0, {bytes.get(), size});
    const Bytes head(bytes.get(), static_cast<size_t>(std::max<int64_t>(got, 0)));
    Counts counts;
    isTransport ? countTransportPackets(head, counts) : countProgramPackets(head, counts);
    return counts.mostlyScrambled();
}

}  // namespace inspect
