#include "ParserLibrary/id3/Picture.h"

#include <array>
#include <cstring>

namespace android::id3 {
namespace {

struct ImageFormat {
    char format[4];
    const char* mimeType;
};

constexpr auto kImageFormats = std::to_array<ImageFormat>({
        {"PNG", "image/png"},
        {"JPG", "image/jpeg"},
        {"-->", "text/plain"},  // a link to the picture
});

const char* mimeTypeOf(Bytes format) {
    for (const ImageFormat& row : kImageFormats) {
        if (std::memcmp(format.data(), row.format, 3) == 0) return row.mimeType;
    }
    return nullptr;
}

// The bytes of a description with its terminator, of two bytes but for ISO-8859-1 and UTF-8; more
// than there are when it has none.
size_t descriptionSize(Bytes rest, uint8_t encoding) {
    const size_t unterminated = rest.size() + 1;
    if (encoding == 0 || encoding == 3) {
        const void* nul = rest.empty() ? nullptr : std::memchr(rest.data(), 0, rest.size());
        if (nul == nullptr) return unterminated;
        return static_cast<size_t>(static_cast<const uint8_t*>(nul) - rest.data()) + 1;
    }
    for (size_t i = 0; rest.size() - i >= 2; i += 2) {
        if (rest[i] == 0 && rest[i + 1] == 0) return i + 2;
    }
    return unterminated;
}

}  // namespace

Picture readApic(Bytes frameData) {
    // Text encoding (1 byte), MIME type with a NUL.
    const Bytes rest = frameData.empty() ? Bytes() : frameData.subspan(1);
    const void* nul = rest.empty() ? nullptr : std::memchr(rest.data(), 0, rest.size());
    if (nul == nullptr) return {PictureFault::kMime, nullptr};
    const auto* mimeType = reinterpret_cast<const char*>(rest.data());

    // Picture type (1 byte), description with its terminator, picture data.
    const size_t descriptionOffset =
            static_cast<size_t>(static_cast<const uint8_t*>(nul) - frameData.data()) + 2;
    if (frameData.size() <= descriptionOffset) return {PictureFault::kPictureType, mimeType};
    const Bytes description = frameData.subspan(descriptionOffset);
    const size_t size = descriptionSize(description, frameData[0]);
    if (description.size() <= size) return {PictureFault::kDescription, mimeType};
    return {PictureFault::kNone, mimeType, description.subspan(size)};
}

Picture readPic(Bytes frameData) {
    // Text encoding (1 byte), image format (3), picture type (1), description with its terminator,
    // picture data.
    if (frameData.size() < 6) return {PictureFault::kUnnamed, nullptr};
    const char* mimeType = mimeTypeOf(frameData.subspan(1, 3));
    if (mimeType == nullptr) return {PictureFault::kUnnamed, nullptr};
    const Bytes description = frameData.subspan(5);
    const size_t size = descriptionSize(description, frameData[0]);
    if (size > description.size()) return {PictureFault::kUnnamed, mimeType};
    return {PictureFault::kNone, mimeType, description.subspan(size)};
}

}  // namespace android::id3
