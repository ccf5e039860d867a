#include "inspect/media/Extent.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <span>

#include "inspect/media/FramesEnd.h"

namespace inspect {
namespace {

using namespace std::string_view_literals;

constexpr int kMaxFileElements = 1 << 16;  // of a file that is made of tiny ones

// All ones: what writes on and on leaves it so.
uint64_t orUnknown(uint64_t size, size_t sizeBytes) {
    return size == kUnknownSize >> (64 - 8 * sizeBytes) ? kUnknownSize : size;
}
template <size_t kBytes>
uint64_t big(ByteCursor& cursor) {
    return orUnknown(cursor.big(kBytes), kBytes);
}
template <size_t kBytes>
uint64_t little(ByteCursor& cursor) {
    return orUnknown(cursor.little(kBytes), kBytes);
}

// RFC 8794 5: the count of leading zeros tells how many bytes follow; all ones means unknown.
uint64_t vint(ByteCursor& cursor) {
    const uint8_t first = cursor.u8();
    const auto extra = static_cast<size_t>(std::countl_zero(first));
    if (extra > 7) return kUnknownSize;
    const uint64_t most = (uint64_t{1} << 7 * (extra + 1)) - 1;
    const uint64_t size = (uint64_t{first} << 8 * extra | cursor.big(extra)) & most;
    return size == most ? kUnknownSize : 1 + extra + size;
}

// RFC 3533 6
uint64_t lacing(ByteCursor& cursor) {
    const Bytes values = cursor.take(cursor.u8());
    return std::accumulate(values.begin(), values.end(), uint64_t{values.size()});
}

// What an element begins with.
struct Id {
    std::string_view bytes;
    std::string_view name{};  // empty: the bytes are one
};
constexpr Id kRiff[] = {{"RIFF"}};
constexpr Id kForm[] = {{"FORM"}};
constexpr Id kRealMedia[] = {{".RMF"}, {"PROP"}, {"MDPR"}, {"CONT"},
                             {"DATA"}, {"INDX"}, {"RMMD"}, {"RJMD"}};
// RFC 9559 5.1: the segment holds everything else.
constexpr Id kEbml[] = {{"\x1A\x45\xDF\xA3", "EBML header"}, {"\x18\x53\x80\x67", "segment"}};
// Adobe FLV 10.1, E.4.1: sound, pictures and data, and the same encrypted.
constexpr Id kFlvTags[] = {{"\x08", "last tag"}, {"\x09", "last tag"}, {"\x12", "last tag"},
                           {"\x28", "last tag"}, {"\x29", "last tag"}, {"\x32", "last tag"}};
constexpr Id kOggPage[] = {{"OggS", "last page"}};
// ASF 3 to 6: the first part of the objects' GUIDs.
constexpr Id kAsf[] = {
        {"\x30\x26\xB2\x75", "header object"},         {"\x36\x26\xB2\x75", "data object"},
        {"\x90\x08\x00\x33"sv, "simple index object"}, {"\xD3\x29\xE2\xD6", "index object"},
        {"\xF8\x03\xB1\xFE", "media index object"},    {"\xD0\x3F\xB7\x3C", "time code object"}};

// What files of a format are made of at the outermost.
struct Layout {
    std::string_view format;
    std::string_view element;
    uint64_t (*size)(ByteCursor&);  // kUnknownSize: up to the end; null: only a decoder knows
    size_t sizeOffset = 0;
    uint64_t uncounted = 0;     // bytes of an element that its size leaves out
    std::span<const Id> ids{};  // empty: any four letters
    size_t idOffset = 0;
    uint64_t begin = 0;          // of the first
    bool isZeroUnknown = false;  // as a size
    bool isPadded = false;       // to an even size
    uint64_t slackBytes = 0;     // what may be missing of a whole one
};

// clang-format off
constexpr auto kLayouts = std::to_array<Layout>({
    // format     element       size       at  more  ids         at  begin  0 = ?  padded  slack
    {"mov",       "box",        boxSize,   0,  0,    {},         4},
    {"avi",       "RIFF chunk", little<4>, 4,  8,    kRiff,      0,  0,     true,  true},
    {"wav",       "RIFF chunk", little<4>, 4,  8,    kRiff,      0,  0,     true,  true},
    {"qcp",       "RIFF chunk", little<4>, 4,  8,    kRiff,      0,  0,     true,  true},
    {"aiff",      "FORM chunk", big<4>,    4,  8,    kForm,      0,  0,     true,  true},
    {"caf",       "chunk",      big<8>,    4,  12,   {},         0,  8},
    {"matroska",  "segment",    vint,      4,  4,    kEbml},
    {"flv",       "tag",        big<3>,    1,  15,   kFlvTags,   0,  13},
    {"ogg",       "page",       lacing,    26, 27,   kOggPage},
    {"asf",       "object",     little<8>, 16, 0,    kAsf,       0,  0,     true},
    // FFmpeg writes a DATA that is too large.
    {"rm",        "chunk",      big<4>,    4,  0,    kRealMedia, 0,  0,     true,  false,  10},
    {"mpegts",    "packet",     nullptr},
    {"mpeg",      "packet",     nullptr},
});
// clang-format on
constexpr Layout kFrames = {"", "frame", nullptr};
constexpr auto kOfFrames = std::to_array<std::string_view>(
        {"mp3", "aac", "ac3", "eac3", "dts", "flac", "amr", "h264", "hevc", "m4v", "mpegvideo"});

const Layout* layoutOf(std::string_view format) {
    const auto row = std::ranges::find(kLayouts, format, &Layout::format);
    if (row != kLayouts.end()) return &*row;
    return std::ranges::count(kOfFrames, format) > 0 ? &kFrames : nullptr;
}

// Empty when no element begins so.
std::string nameOf(const Layout& row, const std::string& id) {
    if (row.ids.empty()) {
        const bool isText = std::ranges::all_of(id, [](char c) { return c >= ' ' && c < 127; });
        return isText ? "the '" + id + "' " + std::string(row.element) : std::string();
    }
    const auto known = std::ranges::find_if(
            row.ids, [&](const Id& each) { return id.starts_with(each.bytes); });
    if (known == row.ids.end()) return {};
    return "the " + (known->name.empty() ? id + " chunk" : std::string(known->name));
}

struct Element {
    std::string name{};
    uint64_t sizeBytes = 0;  // 0 = none begins here
    bool isCut = false;      // inside its header
};

Element readElement(const Layout& row, Bytes bytes) {
    ByteCursor atId(bytes);
    atId.skip(row.idOffset);
    const Bytes id = atId.take(4);
    const std::string name = nameOf(row, {id.begin(), id.end()});
    if (!atId.ok() || name.empty()) return {.isCut = !atId.ok()};
    ByteCursor atSize(bytes);
    atSize.skip(row.sizeOffset);
    const uint64_t size = row.size(atSize);
    const bool isUnknown = size >= kUnknownSize - row.uncounted || (size == 0 && row.isZeroUnknown);
    return {name, isUnknown ? kUnknownSize : size + row.uncounted, !atSize.ok()};
}

std::string lack(const std::string& name, uint64_t missing, uint64_t sizeBytes) {
    return name + " lacks " + std::to_string(missing) + " of its " + std::to_string(sizeBytes) +
           " bytes";
}

// Goes over the elements. What it leaves behind its end begins with none.
Extent walk(const Layout& row, const InputFile& file) {
    constexpr uint64_t kLeastJunk = 128;  // of the size of an old tag; less is of no interest
    Extent whole = {.end = file.size()};
    const auto fileSize = static_cast<uint64_t>(file.size());
    std::array<uint8_t, 282> bytes;  // enough for an Ogg page's lacing
    uint64_t offset = row.begin;
    for (int count = 0; count < kMaxFileElements && (count == 0 || offset < fileSize); count++) {
        const int64_t got = file.readAt(static_cast<int64_t>(offset), bytes);
        const auto [name, sizeBytes, isCut] = readElement(
                row, Bytes(bytes).first(static_cast<size_t>(std::max<int64_t>(got, 0))));
        if (isCut) {
            const std::string article = row.element.starts_with('o') ? "an " : "a ";
            return {.end = file.size(),
                    .truncation = "the file ends inside " + article + std::string(row.element) +
                                  " header"};
        }
        const uint64_t left = fileSize - offset;
        const bool isJunk = offset > row.begin && left > kLeastJunk;
        if (sizeBytes == 0 && isJunk) return {.end = static_cast<int64_t>(offset)};
        if (sizeBytes == 0 || sizeBytes == kUnknownSize) return whole;
        if (sizeBytes > left && sizeBytes - left > row.slackBytes) {
            return {.end = file.size(), .truncation = lack(name, sizeBytes - left, sizeBytes)};
        }
        offset += sizeBytes;
        if (row.isPadded) offset += offset & 1;
    }
    return whole;
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
        if (!isSync(0) || !isSync(sizeBytes) || !isSync(int64_t{2} * sizeBytes)) continue;
        if (rest == 0 || !isSync(file.size() - rest)) return {};
        return lack("the last packet", static_cast<uint64_t>(sizeBytes - rest),
                    static_cast<uint64_t>(sizeBytes));
    }
    return {};
}

}  // namespace

uint64_t boxSize(ByteCursor& cursor) {
    uint64_t size = cursor.be32();
    cursor.skip(4);
    const bool isLarge = size == 1;
    if (isLarge) size = cursor.big(8);
    if (size == 0) return kUnknownSize;
    return size < (isLarge ? 16 : 8) ? 0 : size;
}

uint64_t ebmlSize(ByteCursor& cursor) {
    const auto extra = static_cast<size_t>(std::countl_zero(cursor.u8()));
    if (extra > 3) return 0;
    cursor.skip(extra);
    const uint64_t size = vint(cursor);
    return size == kUnknownSize ? size : 1 + extra + size;
}

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
    const Layout* row = layoutOf(format);
    if (row == nullptr) return {.end = file.size()};
    const bool hasElements = row->size != nullptr;
    const bool isFilled = file.size() - fill.begin >= kLeastFill;
    const int64_t fillBegin = isFilled ? fill.begin : file.size();
    Extent extent =
            hasElements ? walk(*row, file) : Extent{.end = framesEnd(format, file, fillBegin)};
    const int64_t begin = extent.end;
    if (begin == file.size()) {
        if (format == "mpegts") extent.truncation = cutPacket(file);
        return extent;
    }
    if (hasElements) extent.end = std::max(begin, fillBegin);
    extent.isEndKnown = hasElements ? extent.end == begin : begin < fillBegin || fill.isBeginKnown;
    extent.junk = (hasElements || extent.isEndKnown ? "" : "at least ") +
                  std::to_string(file.size() - begin) + " bytes behind offset " +
                  std::to_string(begin) +
                  (fill.begin <= begin ? ", all of them the same, belong" : " belong") + " to no " +
                  std::string(row->element);
    return extent;
}

}  // namespace inspect
