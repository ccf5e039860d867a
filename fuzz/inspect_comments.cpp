// Input: a byte that says what it is, then a file: of Ogg, whose pages get the right checksums when
// the byte is odd; of FLAC; a comment header; a tag.

#include <ogg/ogg.h>

#include "Inspect.h"
#include "inspect/media/Comments.h"
#include "inspect/media/Id3Header.h"

namespace {

using namespace inspect;

// RFC 3533 6, of each page that is whole.
void setChecksums(ByteVector& file) {
    constexpr size_t kHeader = 27;
    for (size_t at = 0; at + kHeader <= file.size(); at++) {
        if (std::memcmp(&file[at], "OggS", 4) != 0) continue;
        const size_t headerBytes = kHeader + file[at + 26];
        if (at + headerBytes > file.size()) return;
        size_t bodyBytes = 0;
        for (size_t i = kHeader; i < headerBytes; i++) bodyBytes += file[at + i];
        if (at + headerBytes + bodyBytes > file.size()) return;
        ogg_page page{&file[at], static_cast<long>(headerBytes), file.data() + at + headerBytes,
                      static_cast<long>(bodyBytes)};
        ogg_page_checksum_set(&page);
        at += headerBytes + bodyBytes - 1;
    }
}

void put32(std::string& out, size_t number) {
    for (int shift = 0; shift < 32; shift += 8) out += static_cast<char>(number >> shift & 0xFF);
}

// Vorbis I, 5.2: behind the vendor's name, which is not kept, the comments are the beginning of
// what is there; all of them when nothing is wrong.
void checkSplit(const CommentHeader& header, fuzz::Bytes bytes) {
    const size_t vendorBytes = bytes.size() < 4 ? 0 : ByteCursor(bytes).le32();
    if (bytes.size() < 8 || vendorBytes > bytes.size() - 8) {
        REQUIRE(header.list.empty() && !header.notes.empty());
        return;
    }
    ByteCursor cursor(bytes.subspan(4 + vendorBytes));
    const uint32_t count = cursor.le32();
    std::string text;
    for (const std::string& each : header.list) {
        put32(text, each.size());
        text += each;
    }
    const fuzz::Bytes comments = bytes.subspan(8 + vendorBytes);
    REQUIRE(text.size() <= comments.size());
    REQUIRE(fuzz::same(fuzz::bytesOf(text), comments.first(text.size())));
    REQUIRE(header.list.size() <= count && header.notes.size() <= 1);
    REQUIRE((header.list.size() == count) == header.notes.empty());
}

void checkHeaders(const CommentHeaders& headers) {
    REQUIRE(headers.notes.size() <= (size_t{1} << 12) + 1);
    for (const CommentHeader& each : headers.list) {
        REQUIRE(!each.codec.empty() && !each.place.empty() && each.notes.size() <= 1);
    }
}

// RFC 9639 6: of a file that begins with the marker, the first block of comments.
void checkFlac(const CommentHeaders& headers, fuzz::Bytes file) {
    if (!fuzz::textOf(file).starts_with("fLaC")) return;
    for (fuzz::Bytes rest = file.subspan(4); rest.size() >= 4;) {
        const uint32_t type = fuzz::take(rest, 1);
        const uint32_t size = fuzz::take(rest, 3);
        if (size > rest.size()) break;
        if ((type & 0x7F) == 4) {
            REQUIRE(!headers.list.empty());
            return checkSplit(headers.list[0], rest.first(size));
        }
        if (type >= 0x80) break;
        rest = rest.subspan(size);
    }
    REQUIRE(headers.list.empty());
}

void checkTag(fuzz::Bytes bytes) {
    const InputFile file(fuzz::kInputPath);
    const auto header = readId3Header(file, 0);
    REQUIRE(header.has_value() == fuzz::textOf(bytes).starts_with("ID3"));
    if (!header) return;
    REQUIRE(header->size() == size_t{kId3HeaderSize});
    const std::string fault = id3Fault(file, *header);
    const auto size = syncsafe(fuzz::Bytes(*header).subspan(6));
    const bool fits = bytes.size() >= 10 && size && *size <= bytes.size() - 10;
    REQUIRE(fits || !fault.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    fuzz::Bytes data(bytes, size);
    const uint32_t kind = fuzz::take(data, 1);
    if (data.empty()) return 0;
    if (kind % 4 == 0) {
        CommentHeader header;
        header.split(data, {});
        return checkSplit(header, data), 0;
    }
    ByteVector content(data.begin(), data.end());
    if (kind % 4 == 1) setChecksums(content);
    fuzz::setInput(content);
    const InputFile file(fuzz::kInputPath);
    if (kind % 2 != 0) {
        checkHeaders(findOggComments(file));
    } else {
        const CommentHeaders headers = findFlacComments(file);
        checkHeaders(headers);
        checkFlac(headers, content);
        checkTag(content);
    }
    return 0;
}
