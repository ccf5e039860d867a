#include "inspect/media/Id3Header.h"

#include <algorithm>
#include <array>

namespace inspect {
namespace {

std::string number(int64_t value) {
    return std::to_string(value);
}

// ID3v2.4 3.1; v2.2 and v2.3 know fewer flags.
std::string headerFault(Bytes header, int64_t fileSize) {
    constexpr std::array<uint8_t, 3> kUnknownFlags = {0x7F, 0x1F, 0x0F};
    constexpr uint32_t kLargestSize = 0x700000;
    const unsigned major = header[3];
    if (fileSize < kId3HeaderSize) return "the file ends inside its header of 10 bytes";
    if (major < 2 || major > 4) return "version 2." + number(major) + " at offset 3 is unknown";
    if (header[4] == 0xFF) return "revision 0xff at offset 4";
    if ((header[5] & kUnknownFlags[major - 2]) != 0) {
        return "version 2." + number(major) + " does not know the flags 0x" +
               hex(header.subspan(5, 1), "") + " at offset 5";
    }
    const Bytes sizeField = header.subspan(6, 4);
    const auto size = syncsafe(sizeField);
    if (!size) return "its size at offset 6, " + hex(sizeField, " ") + ", has a byte above 7f";
    const std::string claim = "its size at offset 6 is " + number(*size) + " bytes, ";
    if (*size > kLargestSize) return claim + "more than the " + number(kLargestSize) + " allowed";
    if (*size <= fileSize - kId3HeaderSize) return {};
    return claim + "but " + number(fileSize - kId3HeaderSize) + " follow in the file";
}

std::optional<uint32_t> plain(Bytes bytes) {
    return ByteCursor(bytes).be32();
}

// ID3v2.4 4: what is wrong with the first frame from the offset on that cannot be, its size read
// so; a size of nothing is none.
std::string frameFault(const InputFile& file, int64_t offset, int64_t end,
                       std::optional<uint32_t> (*sizeOf)(Bytes)) {
    for (ByteVector frame(kId3HeaderSize); end - offset >= kId3HeaderSize;) {
        file.readAt(offset, frame);
        const std::string id(frame.begin(), frame.begin() + 4);
        if (std::ranges::count(id, '\0') == 4) break;
        const Bytes sizeField = Bytes(frame).subspan(4, 4);
        const auto size = sizeOf(sizeField);
        if (!size || *size > end - offset - kId3HeaderSize) {
            return "frame " + id + " at offset " + number(offset) + " does not fit: its size " +
                   hex(sizeField, " ") + " goes past the end at " + number(end) +
                   " or is not syncsafe, and plain sizes do not fit either";
        }
        if ((frame[9] & 1) != 0 && *size < 4) {
            return "frame " + id + " at offset " + number(offset) + " has no room for its length";
        }
        offset += kId3HeaderSize + *size;
    }
    return {};
}

}  // namespace

std::optional<ByteVector> readId3Header(const InputFile& file, int64_t offset) {
    ByteVector bytes(kId3HeaderSize);
    const int64_t count = file.readAt(offset, bytes);
    if (count < 3 || bytes[0] != 'I' || bytes[1] != 'D' || bytes[2] != '3') return {};
    return bytes;
}

std::optional<uint32_t> syncsafe(Bytes bytes) {
    uint32_t value = 0;
    for (const uint8_t byte : bytes.first(4)) {
        if ((byte & 0x80) != 0) return {};
        value = value << 7 | byte;
    }
    return value;
}

std::string id3Fault(const InputFile& file, Bytes header) {
    if (std::string fault = headerFault(header, file.size()); !fault.empty()) return fault;
    const bool isExtended = (header[5] & 0x40) != 0;
    const int64_t size = syncsafe(header.subspan(6)).value_or(0);
    int64_t extendedSize = 0;
    if (isExtended) {
        ByteVector extended(kId3HeaderSize);
        file.readAt(kId3HeaderSize, extended);
        extendedSize = syncsafe(extended).value_or(0);
        if (header[3] == 3 || extendedSize < 6 || extendedSize > size) {
            return "its extended header at offset 10, " + hex(extended, " ") + ", does not fit";
        }
    }
    if (header[3] != 4) return {};
    const auto faultBy = [&](std::optional<uint32_t> (*sizeOf)(Bytes)) {
        return frameFault(file, kId3HeaderSize + extendedSize, kId3HeaderSize + size, sizeOf);
    };
    return faultBy(plain).empty() ? std::string() : faultBy(syncsafe);
}

}  // namespace inspect
