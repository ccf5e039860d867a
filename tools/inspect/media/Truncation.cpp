#include "inspect/media/Truncation.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

using Finding = std::optional<std::string>;

constexpr int kMaxElements = 1 << 16;  // of a file that is made of tiny ones
constexpr uint64_t kUnknownSize = std::numeric_limits<uint64_t>::max();

// The first bytes of an element; fewer at the end of the file. Enough for an Ogg page's lacing.
class Header {
public:
    Header(const InputFile& file, uint64_t offset) {
        const int64_t count = file.readAt(static_cast<int64_t>(offset), mBytes);
        mSize = count > 0 ? static_cast<size_t>(count) : 0;
    }
    Bytes bytes() const { return Bytes(mBytes).first(mSize); }

private:
    std::array<uint8_t, 282> mBytes;
    size_t mSize = 0;
};

Finding lacking(const std::string& what, uint64_t offset, uint64_t size, uint64_t fileSize) {
    if (size == kUnknownSize || size <= fileSize - offset) return {};
    return what + " lacks " + std::to_string(size - (fileSize - offset)) + " of its " +
           std::to_string(size) + " bytes";
}

std::string fourcc(Bytes name) {
    return escaped(std::string(name.begin(), name.end()));
}

// ISO/IEC 14496-12 4.2: size, type, and the large size where size is 1.
Finding checkBoxes(const InputFile& file) {
    const auto fileSize = static_cast<uint64_t>(file.size());
    uint64_t offset = 0;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        ByteCursor cursor(header.bytes());
        uint64_t size = cursor.be32();
        const std::string type = fourcc(cursor.take(4));
        if (size == 0) return {};  // to the end of the file
        if (size == 1) size = cursor.be64();
        if (!cursor.ok()) return "the file ends inside a box header";
        if (size < 8) return {};
        if (auto finding = lacking("the '" + type + "' box", offset, size, fileSize))
            return finding;
        offset += size;
    }
    return {};
}

// RIFF chunks one after another; large AVI files have several.
Finding checkRiff(const InputFile& file) {
    const auto fileSize = static_cast<uint64_t>(file.size());
    uint64_t offset = 0;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        ByteCursor cursor(header.bytes());
        if (fourcc(cursor.take(4)) != "RIFF") return {};
        const uint32_t size = cursor.le32();
        if (!cursor.ok() || size == 0 || size == std::numeric_limits<uint32_t>::max()) return {};
        if (auto finding = lacking("the RIFF chunk", offset, uint64_t{size} + 8, fileSize)) {
            return finding;
        }
        offset += uint64_t{size} + 8 + (size & 1);
    }
    return {};
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
Finding checkMatroska(const InputFile& file) {
    constexpr uint32_t kSegment = 0x18538067;
    const auto fileSize = static_cast<uint64_t>(file.size());
    uint64_t offset = 0;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        ByteCursor cursor(header.bytes());
        const uint32_t id = cursor.be32();
        const uint64_t size = vint(cursor);
        if (!cursor.ok() || size == kUnknownSize) return {};
        offset += header.bytes().size() - cursor.remaining();
        const std::string what = id == kSegment ? "the segment" : "the EBML header";
        if (auto finding = lacking(what, offset, size, fileSize)) return finding;
        if (id == kSegment) return {};
        offset += size;
    }
    return "the file ends before its segment";
}

// Adobe FLV 10.1, annex E: a tag header of 11 bytes, the data, and the tag's size again.
Finding checkFlv(const InputFile& file) {
    constexpr uint64_t kHeaderAndTrailer = 11 + 4;
    const auto fileSize = static_cast<uint64_t>(file.size());
    const Header first(file, 0);
    ByteCursor start(first.bytes());
    start.skip(5);
    uint64_t offset = uint64_t{start.be32()} + 4;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        ByteCursor cursor(header.bytes());
        cursor.u8();  // type
        const uint64_t size = cursor.be24() + kHeaderAndTrailer;
        if (!cursor.ok()) return "the file ends inside a tag header";
        if (auto finding = lacking("the last tag", offset, size, fileSize)) return finding;
        offset += size;
    }
    return {};
}

// RFC 3533 6: 27 bytes, of which the last counts the lacing values that follow.
Finding checkOgg(const InputFile& file) {
    constexpr size_t kUpToSegmentCount = 26;
    const auto fileSize = static_cast<uint64_t>(file.size());
    uint64_t offset = 0;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        if (header.bytes().size() >= 4 && fourcc(header.bytes().first(4)) != "OggS") return {};
        ByteCursor cursor(header.bytes());
        cursor.skip(kUpToSegmentCount);
        const uint8_t segments = cursor.u8();
        uint64_t size = kUpToSegmentCount + 1 + segments;
        for (const uint8_t lacing : cursor.take(segments)) size += lacing;
        if (!cursor.ok()) return "the file ends inside a page header";
        if (auto finding = lacking("the last page", offset, size, fileSize)) return finding;
        offset += size;
    }
    return {};
}

// ASF 3.2: the file properties object, among those in the header, holds the file's size.
Finding checkAsf(const InputFile& file) {
    constexpr uint64_t kHeaderObject = 30;
    constexpr size_t kObjectHeader = 24;
    constexpr auto kFileProperties =
            std::to_array<uint8_t>({0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11, 0x8E, 0xE4,
                                    0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65});
    const auto fileSize = static_cast<uint64_t>(file.size());
    uint64_t offset = kHeaderObject;
    for (int count = 0; offset < fileSize && count < kMaxElements; count++) {
        const Header header(file, offset);
        ByteCursor cursor(header.bytes());
        const bool isFound =
                std::ranges::equal(cursor.take(kFileProperties.size()), kFileProperties);
        const uint64_t objectSize = cursor.le64();
        if (isFound) {
            cursor.skip(16);  // file id
            return lacking("the file", 0, cursor.le64(), fileSize);
        }
        if (objectSize < kObjectHeader || objectSize > fileSize) return {};
        offset += objectSize;
    }
    return {};
}

struct Row {
    std::string_view format;
    Finding (*check)(const InputFile&);
};

// clang-format off
constexpr auto kRows = std::to_array<Row>({
    {"mov",      checkBoxes},
    {"avi",      checkRiff},
    {"wav",      checkRiff},
    {"qcp",      checkRiff},
    {"matroska", checkMatroska},
    {"flv",      checkFlv},
    {"ogg",      checkOgg},
    {"asf",      checkAsf},
});
// clang-format on

}  // namespace

std::optional<std::string> findTruncation(std::string_view format, const InputFile& file) {
    for (const Row& row : kRows) {
        if (row.format == format) return row.check(file);
    }
    return {};
}

}  // namespace inspect
