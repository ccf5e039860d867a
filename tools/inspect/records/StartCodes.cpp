#include "inspect/records/StartCodes.h"

#include <algorithm>
#include <array>

namespace inspect {

std::optional<size_t> findStartCode(Bytes data, size_t from) {
    constexpr std::array<uint8_t, 3> kPrefix = {0, 0, 1};
    const auto tail = data.subspan(std::min(from, data.size()));
    const auto found = std::search(tail.begin(), tail.end(), kPrefix.begin(), kPrefix.end());
    const auto offset = static_cast<size_t>(found - tail.begin());
    if (tail.size() - offset <= kPrefix.size()) return {};
    return from + offset;
}

Payload payloadOf(Bytes unit, size_t sizeBytes) {
    constexpr uint8_t kPrevention = 3;
    Payload payload;
    unsigned zeros = 0;
    for (const uint8_t byte : unit) {
        if (payload.bytes.size() == sizeBytes) break;
        payload.rawSize++;
        if (zeros < 2 || byte != kPrevention) payload.bytes.push_back(byte);
        zeros = byte == 0 ? zeros + 1 : 0;
    }
    return payload;
}

}  // namespace inspect
