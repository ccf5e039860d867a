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

}  // namespace inspect
