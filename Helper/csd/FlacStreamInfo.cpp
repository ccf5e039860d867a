#include "Helper/csd/FlacStreamInfo.h"

#include <strings.h>

namespace android::csd {
namespace {

constexpr size_t kMinSize = 26;  // STREAMINFO ends at 42, what is read of it at 18
constexpr char kMarker[] = "fLaC";
constexpr size_t kMarkerSize = sizeof(kMarker) - 1;
constexpr size_t kBlockHeaderSize = 4;  // RFC 9639 8.1

}  // namespace

std::optional<FlacStreamInfo> parseFlacStreamInfo(base::Bytes data) {
    if (data.size() < kMinSize) return std::nullopt;
    if (strncasecmp(reinterpret_cast<const char*>(data.data()), kMarker, kMarkerSize) != 0) {
        return std::nullopt;
    }
    const base::Bytes streamInfo = data.subspan(kMarkerSize + kBlockHeaderSize);
    return FlacStreamInfo{
            .minBlockSize = base::bigEndianAt(streamInfo, 0, 2),
            .maxBlockSize = base::bigEndianAt(streamInfo, 2, 2),
            .minFrameSize = base::bigEndianAt(streamInfo, 4, 3),
            .maxFrameSize = base::bigEndianAt(streamInfo, 7, 3),
    };
}

}  // namespace android::csd
