#include "inspect/media/Extent.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

namespace inspect {
namespace {

constexpr int kMaxElements = 1 << 16;  // of a file that is made of tiny ones
constexpr uint64_t kUnknownSize = std::numeric_limits<uint64_t>::max();

// An outermost part of a file.
struct Element {
    std::string name;
    uint64_t sizeBytes = kUnknownSize;  // with its header
    uint64_t slackBytes = 0;            // what may be missing of a whole one
};

// From an element's first bytes; empty when none begins with them.
using Reader = std::optional<Element> (*)(ByteCursor& cursor);

constexpr uint32_t fourcc(std::string_view name) {
    uint32_t value = 0;
    for (const char letter : name) value = value << 8 | static_cast<unsigned char>(letter);
    return value;
}

// Empty when one of the four is no letter of ASCII.
std::string nameOf(uint32_t code) {
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) name += static_cast<char>(code >> shift & 0xFF);
    const bool isText =
            std::ranges::all_of(name, [](char each) { return each >= ' ' && each < 127; });
    return isText ? name : std::string();
}

// ISO/IEC 14496-12 4.2: size, type, and the large size where size is 1.
std::optional<Element> readBox(ByteCursor& cursor) {
    uint64_t size = cursor.be32();
    const std::string type = nameOf(cursor.be32());
    if (size == 1) size = cursor.be64();
    if (type.empty() || (size != 0 && size < 8)) return {};
    return Element{"the '" + type + "' box", size != 0 ? size : kUnknownSize};
}

// Large AVI files have several. What writes on and on leaves the size at 0 or at its largest.
std::optional<Element> readRiff(ByteCursor& cursor) {
    if (cursor.be32() != fourcc("RIFF")) return {};
    const uint32_t size = cursor.le32();
    if (size == 0 || size == std::numeric_limits<uint32_t>::max()) return Element{};
    return Element{"the RIFF chunk", uint64_t{size} + 8};
}

std::optional<Element> readAiff(ByteCursor& cursor) {
    if (cursor.be32() != fourcc("FORM")) return {};
    return Element{"the FORM chunk", uint64_t{cursor.be32()} + 8};
}

// A header of 8 bytes; then chunks of a type, a size of 8 bytes, or all ones up to the end, and
// data.
std::optional<Element> readCaf(ByteCursor& cursor) {
    const std::string type = nameOf(cursor.be32());
    const uint64_t size = cursor.be64();
    if (type.empty()) return {};
    if (type == "caff") return Element{"the header", 8};
    if (size == kUnknownSize) return Element{};
    return Element{"the '" + type + "' chunk", size + 12};
}

std::optional<Element> readRealMedia(ByteCursor& cursor) {
    static constexpr auto kNames = std::to_array<std::string_view>(
            {".RMF", "PROP", "MDPR", "CONT", "DATA", "INDX", "RMMD", "RJMD"});
    const std::string name = nameOf(cursor.be32());
    const uint32_t size = cursor.be32();
    if (std::ranges::count(kNames, name) == 0) return {};
    // The size of DATA in the files of FFmpeg is too large.
    return Element{"the " + name + " chunk", size != 0 ? size : kUnknownSize, 10};
}

// RFC 8794 5: the count of leading zeros tells how many bytes follow; all ones means unknown.
uint64_t vint(ByteCursor& cursor) {
    const uint8_t first = cursor.u8();
    const int extra = std::countl_zero(first);
    if (extra > 7) return kUnknownSize;
    uint64_t value = first & (0x7Fu >> extra);
    bool allOnes = value == (0x7Fu >> extra);
    for (const uint8_t byte : cursor.take(static_cast<size_t>(extra))) {
        value = value << 8 | byte;
        allOnes = allOnes && byte == 0xFF;
    }
    return allOnes ? kUnknownSize : value;
}

// RFC 9559 5.1: the EBML header, then the segment that holds everything else.
std::optional<Element> readMatroska(ByteCursor& cursor) {
    constexpr uint32_t kHeader = 0x1A45DFA3;
    constexpr uint32_t kSegment = 0x18538067;
    const size_t before = cursor.remaining();
    const uint32_t id = cursor.be32();
    const uint64_t size = vint(cursor);
    if (id != kHeader && id != kSegment) return {};
    if (size == kUnknownSize) return Element{};
    return Element{id == kSegment ? "the segment" : "the EBML header",
                   before - cursor.remaining() + size};
}

// Adobe FLV 10.1, annex E: a header; tag headers of 11 bytes, the data, and the tag's size again.
std::optional<Element> readFlv(ByteCursor& cursor) {
    constexpr auto kTypes = std::to_array<uint8_t>({8, 9, 18});
    constexpr uint64_t kHeaderAndTrailer = 11 + 4;
    const uint8_t type = cursor.u8();
    const uint32_t size = cursor.be24();
    if (type == 'F') {
        cursor.skip(1);
        return Element{"the header", uint64_t{cursor.be32()} + 4};
    }
    if (std::ranges::count(kTypes, type & 0x1F) == 0) return {};
    return Element{"the last tag", size + kHeaderAndTrailer};
}

// RFC 3533 6: 27 bytes, of which the last counts the lacing values that follow.
std::optional<Element> readOgg(ByteCursor& cursor) {
    if (cursor.be32() != fourcc("OggS")) return {};
    cursor.skip(22);
    const uint8_t segments = cursor.u8();
    uint64_t size = uint64_t{27} + segments;
    for (const uint8_t lacing : cursor.take(segments)) size += lacing;
    return Element{"the last page", size};
}

// ASF 3 to 6: the first part of the objects' GUIDs; the size with the header.
std::optional<Element> readAsf(ByteCursor& cursor) {
    struct Name {
        uint32_t guid;
        const char* name;
    };
    static constexpr auto kNames = std::to_array<Name>({{0x75B22630, "the header object"},
                                                        {0x75B22636, "the data object"},
                                                        {0x33000890, "the simple index object"},
                                                        {0xD6E229D3, "the index object"},
                                                        {0xFEB103F8, "the media index object"},
                                                        {0x3CB73FD0, "the time code object"}});
    const auto found = std::ranges::find(kNames, cursor.le32(), &Name::guid);
    cursor.skip(12);
    const uint64_t size = cursor.le64();
    if (found == kNames.end()) return {};
    return Element{found->name, size != 0 ? size : kUnknownSize};
}

struct Row {
    std::string_view format;
    Reader read;  // null: it is made of frames, whose sizes only a decoder's parser knows
    const char* element;
};

// clang-format off
constexpr auto kRows = std::to_array<Row>({
    {"mov",       readBox,       "box"},
    {"avi",       readRiff,      "RIFF chunk"},
    {"wav",       readRiff,      "RIFF chunk"},
    {"qcp",       readRiff,      "RIFF chunk"},
    {"aiff",      readAiff,      "FORM chunk"},
    {"caf",       readCaf,       "chunk"},
    {"matroska",  readMatroska,  "segment"},
    {"flv",       readFlv,       "tag"},
    {"ogg",       readOgg,       "page"},
    {"asf",       readAsf,       "object"},
    {"rm",        readRealMedia, "chunk"},
    {"mpegts",    nullptr,       "packet"},
    {"mpeg",      nullptr,       "packet"},
    {"mp3",       nullptr,       "frame"},
    {"aac",       nullptr,       "frame"},
    {"ac3",       nullptr,       "frame"},
    {"eac3",      nullptr,       "frame"},
    {"dts",       nullptr,       "frame"},
    {"flac",      nullptr,       "frame"},
    {"amr",       nullptr,       "frame"},
    {"h264",      nullptr,       "frame"},
    {"hevc",      nullptr,       "frame"},
    {"m4v",       nullptr,       "frame"},
    {"mpegvideo", nullptr,       "frame"},
});
// clang-format on

std::string lack(const std::string& name, uint64_t missing, uint64_t sizeBytes) {
    return name + " lacks " + std::to_string(missing) + " of its " + std::to_string(sizeBytes) +
           " bytes";
}

// Goes over the elements. What it leaves behind its end is no element, whatever else it may be.
Extent walk(const Row& row, const InputFile& file) {
    const auto fileSize = static_cast<uint64_t>(file.size());
    std::array<uint8_t, 282> bytes;  // enough for an Ogg page's lacing
    uint64_t offset = 0;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const int64_t got = file.readAt(static_cast<int64_t>(offset), bytes);
        ByteCursor cursor(Bytes(bytes).first(static_cast<size_t>(std::max<int64_t>(got, 0))));
        const auto element = row.read(cursor);
        if (!element && cursor.ok()) return {.end = static_cast<int64_t>(offset)};
        if (!cursor.ok()) {
            return {.end = file.size(),
                    .truncation = std::string("the file ends inside a ") + row.element + " header"};
        }
        if (element->sizeBytes == kUnknownSize) break;
        const uint64_t left = fileSize - offset;
        if (element->sizeBytes > left && element->sizeBytes - left > element->slackBytes) {
            return {.end = file.size(),
                    .truncation =
                            lack(element->name, element->sizeBytes - left, element->sizeBytes)};
        }
        offset += element->sizeBytes;
        // RIFF, AIFF: chunks of an odd size are filled up with a zero.
        if (row.read == readRiff || row.read == readAiff) offset += offset & 1;
    }
    return {.end = file.size()};
}

// ISO/IEC 13818-1 2.4.3.2: packets of 188 bytes; with a time before or a checksum behind each.
std::optional<std::string> cutPacket(const InputFile& file) {
    for (const auto& [sizeBytes, offset] : {std::pair{188, 0}, {192, 4}, {204, 0}}) {
        const auto isSync = [&, from = offset](int64_t packet) {
            std::array<uint8_t, 1> byte{};
            file.readAt(packet + from, byte);
            return byte[0] == 0x47;
        };
        const int64_t rest = file.size() % sizeBytes;
        if (!isSync(0) || !isSync(sizeBytes) || !isSync(2 * sizeBytes)) continue;
        if (rest == 0 || !isSync(file.size() - rest)) return {};
        return lack("the last packet", static_cast<uint64_t>(sizeBytes - rest),
                    static_cast<uint64_t>(sizeBytes));
    }
    return {};
}

}  // namespace

Fill findFill(const InputFile& file) {
    constexpr int64_t kMostRead = 256 << 20;
    const int64_t stored = file.storedSize();
    ByteVector chunk(64 << 10);
    file.readAt(file.size() - 1, std::span(chunk).first(1));
    const uint8_t last = chunk[0];
    if (stored < file.size() && last != 0) return {.begin = file.size()};
    int64_t end = stored;
    while (end > 0 && stored - end < kMostRead) {
        const int64_t begin = std::max<int64_t>(0, end - static_cast<int64_t>(chunk.size()));
        const auto part = std::span(chunk).first(static_cast<size_t>(end - begin));
        if (file.readAt(begin, part) != end - begin) break;
        const auto other = std::find_if_not(part.rbegin(), part.rend(),
                                            [=](uint8_t byte) { return byte == last; });
        end = begin + (part.rend() - other);
        if (other != part.rend()) break;
    }
    return {.begin = end, .isBeginKnown = stored - end < kMostRead};
}

Extent measure(std::string_view format, const InputFile& file, const Fill& fill) {
    constexpr int64_t kLeastFill = 64 << 10;  // more than a frame of silence ends in
    constexpr int64_t kLeastJunk = 128;       // of the size of an old tag; less is of no interest
    const auto row = std::ranges::find(kRows, format, &Row::format);
    const Extent whole = {.end = file.size()};
    if (row == kRows.end()) return whole;
    Extent extent = row->read != nullptr ? walk(*row, file) : Extent{};
    const bool isUnlike = row->read != nullptr && extent.end == 0;
    if (isUnlike || extent.truncation) return {.end = file.size(), .truncation = extent.truncation};
    const int64_t elementsEnd = extent.end;
    const int64_t rest = file.size() - elementsEnd;
    if (row->read != nullptr && rest <= kLeastJunk) return whole;

    extent.isEndKnown = fill.isBeginKnown || fill.begin <= elementsEnd;
    const bool isFilled = file.size() - fill.begin >= kLeastFill;
    extent.end = isFilled ? std::max(fill.begin, elementsEnd) : file.size();
    if (row->read == nullptr && !isFilled) {
        if (format == "mpegts") extent.truncation = cutPacket(file);
        return extent;
    }
    if (fill.begin <= elementsEnd || row->read == nullptr) {
        extent.junk = (extent.isEndKnown ? "" : "at least ") +
                      std::to_string(file.size() - extent.end) + " bytes behind offset " +
                      std::to_string(extent.end) + ", all of them the same, belong to no " +
                      row->element;
    } else {
        extent.junk = "no " + std::string(row->element) + " begins at offset " +
                      std::to_string(elementsEnd) + ", and " + std::to_string(rest) +
                      " bytes are left";
    }
    return extent;
}

}  // namespace inspect
