#include "Helper/csd/VorbisHeaders.h"

#include "Helper/base/Checked.h"

namespace android::csd {
namespace {

constexpr uint8_t kPacketCountLessOne = 2;

// packet_type, Vorbis I 4.2.1
constexpr uint8_t kIdentificationHeader = 1;
constexpr uint8_t kCommentHeader = 3;
constexpr uint8_t kSetupHeader = 5;

// Takes a run of FF bytes and the byte that ends it off the front of the data.
std::optional<size_t> takeLacedSize(Bytes& data) {
    size_t size = 0;
    for (size_t i = 0; i < data.size(); ++i) {
        size = base::checkedAdd(size, data[i]);
        if (data[i] < 0xFF) {
            data = data.subspan(i + 1);
            return size;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<VorbisHeaders> splitVorbisHeaders(Bytes block) {
    if (block.empty() || block[0] != kPacketCountLessOne) return std::nullopt;
    Bytes rest = block.subspan(1);
    const auto identificationSize = takeLacedSize(rest);
    if (!identificationSize) return std::nullopt;
    const auto commentSize = takeLacedSize(rest);
    if (!commentSize) return std::nullopt;
    if (*identificationSize > rest.size()) return std::nullopt;
    if (*commentSize > rest.size() - *identificationSize) return std::nullopt;
    if (base::byteAt(rest, 0) != kIdentificationHeader) return std::nullopt;

    return VorbisHeaders{
            .identification = rest.first(*identificationSize),
            .comment = rest.subspan(*identificationSize, *commentSize),
            .setup = rest.subspan(*identificationSize + *commentSize),
    };
}

bool hasVorbisHeaderTypes(const VorbisHeaders& headers) {
    return base::byteAt(headers.comment, 0) == kCommentHeader &&
           base::byteAt(headers.setup, 0) == kSetupHeader;
}

}  // namespace android::csd
