#include "inspect/callers/PretendedDevice.h"

#include <strings.h>
#include <algorithm>

#include "inspect/callers/Offer.h"

namespace inspect {

bool isSameType(const std::string& one, const std::string& other) {
    return strcasecmp(one.c_str(), other.c_str()) == 0;
}

void nameDecoders(PretendedDevice& device) {
    const std::set<std::string> known = knownDecoders();
    device.host.decoders.clear();
    for (const Decoder& decoder : device.description.decoders) {
        if (!decoder.whyIgnored.empty()) continue;
        const auto isIt = [&](const std::string& mime) { return isSameType(mime, decoder.type); };
        const auto found = std::ranges::find_if(known, isIt);
        device.host.decoders.push_back(found != known.end() ? *found : decoder.type);
    }
}

}  // namespace inspect
