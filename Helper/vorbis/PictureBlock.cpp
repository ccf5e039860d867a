#include "Helper/vorbis/PictureBlock.h"

#include <algorithm>
#include <string_view>

namespace android::vorbis {
namespace {

constexpr uint32_t kFrontCover = 3;
constexpr size_t kMaxMimeTypeSize = 127;
constexpr std::string_view kLink = "-->";

// Every field but the texts and the picture data, 32 bits each: type, MIME type length, description
// length, width, height, colour depth, number of colours, picture data length.
constexpr size_t kFixedSize = 32;

// As C strings.
bool isLink(Bytes mimeType) {
    const auto end = std::ranges::find(mimeType, 0);
    return std::equal(mimeType.begin(), end, kLink.begin(), kLink.end());
}

}  // namespace

std::optional<Bytes> frontCover(Bytes block) {
    if (block.size() < kFixedSize || base::bigEndianAt(block, 0, 4) != kFrontCover) {
        return std::nullopt;
    }
    size_t left = block.size() - kFixedSize;
    const size_t mimeTypeSize = base::bigEndianAt(block, 4, 4);
    if (mimeTypeSize > kMaxMimeTypeSize || mimeTypeSize > left) return std::nullopt;
    if (isLink(block.subspan(8, mimeTypeSize))) return std::nullopt;
    left -= mimeTypeSize;
    const size_t descriptionSize = base::bigEndianAt(block, 8 + mimeTypeSize, 4);
    if (descriptionSize > left) return std::nullopt;
    left -= descriptionSize;
    const size_t textSize = mimeTypeSize + descriptionSize;
    const size_t pictureSize = base::bigEndianAt(block, 28 + textSize, 4);
    if (pictureSize > left) return std::nullopt;
    return block.subspan(kFixedSize + textSize, pictureSize);
}

}  // namespace android::vorbis
