// What must hold of any device description.

#pragma once

#include <utility>

#include "Fuzz.h"
#include "inspect/base/InputFile.h"
#include "inspect/devices/Draft.h"
#include "inspect/devices/MimeList.h"
#include "inspect/verdict/PretendedDevice.h"

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

inline std::string sizeText(const inspect::Size& size) {
    return std::to_string(size.width) + 'x' + std::to_string(size.height);
}

inline std::string rangeText(const inspect::Range& range) {
    return std::to_string(range.from) + '-' +
           (range.to == inspect::Range{}.to ? "" : std::to_string(range.to));
}

// A line of a list of MIME types, which can say all that counts of a decoder.
inline std::string listLine(const inspect::Decoder& decoder) {
    const inspect::Limits& limits = decoder.limits;
    std::string line = decoder.type + (decoder.name == decoder.type ? "" : ' ' + decoder.name);
    const auto add = [&](const char* name, const std::optional<inspect::Range>& range) {
        if (range) line += name + rangeText(*range);
    };
    if (limits.width) {
        const inspect::Size from = {limits.width->from, limits.height->from};
        const inspect::Size to = {limits.width->to, limits.height->to};
        line += " size=" + (from.width > 0 ? sizeText(from) : "") + '-' +
                (to.width < inspect::Range{}.to ? sizeText(to) : "");
    }
    line += " alignment=" + sizeText(limits.alignment);
    if (limits.blockSize) line += " block-size=" + sizeText(*limits.blockSize);
    add(" block-count=", limits.blockCount);
    add(" blocks-per-second=", limits.blocksPerSecond);
    add(" frame-rate=", limits.frameRate);
    add(" bitrate=", limits.bitRate);
    add(" channel-count=", limits.channelCount);
    const char* before = " sample-rate=";
    for (const auto& range : limits.sampleRates) {
        line += std::exchange(before, ",") + rangeText(range);
    }
    before = " profile/levels=";
    for (const auto& [profile, level] : limits.profileLevels) {
        line += std::exchange(before, ",") + std::to_string(profile) + '/' + std::to_string(level);
    }
    return line + (limits.canSwapSides ? " can-swap-width-height=1" : "") +
           (decoder.isSoftware ? " software=1" : "") + '\n';
}

// A decoder whose names the list can hold is the same when it is read from there.
inline void checkList(inspect::Decoder decoder) {
    const auto isPlain = [](const std::string& text, ptrdiff_t slashes) {
        return !text.empty() && text.size() < 100 && std::ranges::count(text, '/') == slashes &&
               text.front() != '/' && text.back() != '/' && std::ranges::all_of(text, [](char c) {
                   return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '/';
               });
    };
    const bool isNamed = isPlain(decoder.name, 0) || decoder.name == decoder.type;
    if (!isPlain(decoder.type, 1) || !isNamed || !decoder.whyIgnored.empty()) return;
    decoder.remark = "";
    const inspect::DeviceDescription read = inspect::readMimeList(listLine(decoder), "list");
    REQUIRE(read.warnings.empty() && read.decoders.size() == 1);
    inspect::DeviceDescription written;
    written.decoders = {decoder};
    REQUIRE(inspect::describe({.description = read, .host = {}}) ==
            inspect::describe({.description = written, .host = {}}));
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
            if (device.decoders.size() <= 16) checkList(decoder);
        }
        REQUIRE(device.warnings.size() <= 52);  // one on those left out, one on no decoder
        REQUIRE(!device.decoders.empty() || !device.warnings.empty());
    } catch (const inspect::FileError& error) {
        REQUIRE(std::strstr(error.what(), ": ") != nullptr);
    }
}

}  // namespace fuzz
