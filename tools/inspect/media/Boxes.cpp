#include "inspect/media/Boxes.h"

#include <array>
#include <utility>

namespace inspect {

std::optional<BoxContent> findBox(const InputFile& file, BoxContent boxes, std::string_view type,
                                  int nth) {
    constexpr int kMaxBoxes = 1 << 12;
    uint64_t offset = boxes.begin;
    for (int count = 0; count < kMaxBoxes && offset < boxes.end; count++) {
        std::array<uint8_t, 16> header{};
        if (file.readAt(static_cast<int64_t>(offset), header) < 8) return {};
        ByteCursor cursor(header);
        uint64_t size = cursor.be32();
        const bool isSought = startsWith(cursor.take(4), type);
        const bool isLarge = size == 1;
        if (isLarge) size = cursor.be64();
        const uint64_t headerSize = isLarge ? 16 : 8;
        if (size < headerSize || size > boxes.end - offset) return {};
        if (isSought && nth-- == 0) return BoxContent{offset + headerSize, offset + size};
        offset += size;
    }
    return {};
}

std::optional<BoxContent> findSampleEntries(const InputFile& file, int track) {
    constexpr uint64_t kFields = 8;  // of a full box with a count
    std::optional<BoxContent> found = BoxContent{0, static_cast<uint64_t>(file.size())};
    for (const char* type : {"moov", "trak", "mdia", "minf", "stbl", "stsd"}) {
        const bool isTrack = std::string_view(type) == "trak";
        found = findBox(file, *found, type, isTrack ? track : 0);
        if (!found) return {};
    }
    return found->behind(kFields);
}

ByteVector readContent(const InputFile& file, BoxContent content) {
    constexpr uint64_t kMostBytes = 1 << 16;
    ByteVector bytes(std::min(content.end - content.begin, kMostBytes));
    const int64_t count = file.readAt(static_cast<int64_t>(content.begin), bytes);
    bytes.resize(static_cast<size_t>(std::max<int64_t>(count, 0)));
    return bytes;
}

}  // namespace inspect
