#include "inspect/verdict/PretendedDevice.h"

#include <algorithm>
#include <sstream>

#include "inspect/callers/Offer.h"
#include "inspect/devices/Profiles.h"

namespace inspect {

void nameDecoders(PretendedDevice& device) {
    const std::set<std::string> known = knownDecoders();
    device.host.decoders.clear();
    for (const Decoder& decoder : device.description.decoders) {
        if (!decoder.whyIgnored.empty()) continue;
        const auto isIt = [&](const std::string& mime) { return isSameMime(mime, decoder.type); };
        const auto found = std::ranges::find_if(known, isIt);
        device.host.decoders.push_back(found != known.end() ? *found : decoder.type);
    }
}

std::string describe(const PretendedDevice& device) {
    std::ostringstream out;
    const auto add = [&](const auto&... values) { ((out << values << ' '), ...); };
    const auto addRange = [&](const std::optional<Range>& range) {
        add(range.has_value(), range.value_or(Range{}).from, range.value_or(Range{}).to);
    };
    add(device.description.name, '\n');
    for (const Decoder& decoder : device.description.decoders) {
        const Limits& limits = decoder.limits;
        add(decoder.name, decoder.type, decoder.whyIgnored, decoder.remark, decoder.isSoftware);
        for (const auto& range :
             {limits.width, limits.height, limits.blockCount, limits.blocksPerSecond,
              limits.frameRate, limits.bitRate, limits.channelCount}) {
            addRange(range);
        }
        const Size blockSize = limits.blockSize.value_or(Size{});
        add(limits.canSwapSides, limits.alignment.width, limits.alignment.height, blockSize.width,
            blockSize.height);
        for (const Range& rate : limits.sampleRates) addRange(rate);
        for (const auto& [profile, level] : limits.profileLevels) add(profile, level);
        out << '\n';
    }
    const host::Device& host = device.host;
    for (const std::string& type : host.decoders) add(type);
    add(host.mediaServerAlive, host.serverHasCodecList, host.codecListAvailable,
        host.codecInfoAvailable, host.divxAlternative.has_value(),
        host.divxAlternative.value_or(false), '\n');
    return out.str();
}

}  // namespace inspect
