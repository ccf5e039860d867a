// What must hold of any device description.

#pragma once

#include "Fuzz.h"
#include "inspect/base/InputFile.h"
#include "inspect/devices/Draft.h"

namespace fuzz {

inline void checkRange(const std::optional<inspect::Range>& range) {
    REQUIRE(!range || (0 <= range->from && range->from <= range->to));
}

inline void checkLimits(const inspect::Limits& limits) {
    for (const auto& range :
         {limits.width, limits.height, limits.blockCount, limits.blocksPerSecond, limits.frameRate,
          limits.bitRate, limits.channelCount}) {
        checkRange(range);
    }
    for (const auto& range : limits.sampleRates) checkRange(range);
    const inspect::Size block = limits.blockSize.value_or(inspect::Size{1, 1});
    REQUIRE(limits.width.has_value() == limits.height.has_value());
    REQUIRE(limits.alignment.width > 0 && limits.alignment.height > 0);
    REQUIRE(block.width > 0 && block.height > 0);
}

// The call reads a description; it may refuse to.
template <typename Call>
void checkDevice(Call call) {
    try {
        const inspect::DeviceDescription device = call();
        REQUIRE(device.decoders.size() <= inspect::kMaxDecoders);
        for (const auto& decoder : device.decoders) {
            REQUIRE(!decoder.type.empty());
            checkLimits(decoder.limits);
        }
        REQUIRE(device.warnings.size() <= 52);  // one on those left out, one on no decoder
        REQUIRE(!device.decoders.empty() || !device.warnings.empty());
    } catch (const inspect::FileError& error) {
        REQUIRE(std::strstr(error.what(), ": ") != nullptr);
    }
}

}  // namespace fuzz
