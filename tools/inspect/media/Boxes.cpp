#include "inspect/media/Boxes.h"

#include <array>
#include <utility>

#include "inspect/media/Extent.h"

namespace inspect {

using namespace std::string_view_literals;

std::optional<BoxContent> findBox(const InputFile& file, BoxContent boxes, std::string_view type,
                                  int nth, bool isEbml) {
    constexpr int kMaxBoxes = 1 << 12;
    uint64_t offset = boxes.begin;
    for (int count = 0; count < kMaxBoxes && offset < boxes.end; count++) {
        std::array<uint8_t, 16> header{};
        file.readAt(static_cast<int64_t>(offset), header);
        ByteCursor cursor(header);
        const uint64_t size = isEbml ? ebmlSize(cursor) : boxSize(cursor);
        if (size == 0) return {};
        const uint64_t end = offset + std::min(size, boxes.end - offset);
        const bool isSought = startsWith(Bytes(header).subspan(isEbml ? 0 : 4), type);
        const uint64_t headerSize = header.size() - cursor.remaining();
        if (isSought && nth-- == 0) return BoxContent{std::min(offset + headerSize, end), end};
        offset = end;
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

std::optional<BoxContent> findCodecPrivate(const InputFile& file, int track) {
    constexpr std::string_view kTrackEntry = "\xAE";
    std::optional<BoxContent> found = BoxContent{0, static_cast<uint64_t>(file.size())};
    for (const std::string_view id :
         {"\x18\x53\x80\x67"sv, "\x16\x54\xAE\x6B"sv, kTrackEntry, "\x63\xA2"sv}) {
        found = findBox(file, *found, id, id == kTrackEntry ? track : 0, true);
        if (!found) return {};
    }
    return found;
}

ByteVector readContent(const InputFile& file, BoxContent content) {
    constexpr uint64_t kMostBytes = 1 << 16;
    ByteVector bytes(std::min(content.end - content.begin, kMostBytes));
    const int64_t count = file.readAt(static_cast<int64_t>(content.begin), bytes);
    bytes.resize(static_cast<size_t>(std::max<int64_t>(count, 0)));
    return bytes;
}

}  // namespace inspect
