#include "Helper/csd/FlacStreamInfo.h"

#include <strings.h>

namespace android::csd {
namespace {

constexpr size_t kMinSize = 26;
constexpr char kMarker[] = "fLaC";
constexpr size_t kMarkerSize = sizeof(kMarker) - 1;

}  // namespace

std::optional<FlacStreamInfo> parseFlacStreamInfo(base::Bytes data) {
    if (data.size() < kMinSize) return std::nullopt;
    if (strncasecmp(reinterpret_cast<const char*>(data.data()), kMarker, kMarkerSize) != 0) {
        return std::nullopt;
    }
    return FlacStreamInfo{
            .minBlockSize = base::bigEndianAt(data, 8, 2),
            .maxBlockSize = base::bigEndianAt(data, 10, 2),
            .minFrameSize = base::bigEndianAt(data, 12, 3),
            .maxFrameSize = base::bigEndianAt(data, 15, 3),
    };
}

}  // namespace android::csd
