#include "inspect/verdict/PretendedDevice.h"

#include <algorithm>

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

}  // namespace inspect
