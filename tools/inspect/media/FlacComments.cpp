// RFC 9639 6 and 8: "fLaC", and metadata blocks behind headers of 4 bytes.

#include <array>

#include "inspect/media/Comments.h"
#include "inspect/media/Id3Header.h"

namespace inspect {
namespace {

constexpr int64_t kBlockHeaderSize = 4;
constexpr uint8_t kVorbisComment = 4;
constexpr uint8_t kPicture = 6;
constexpr int kMaxSteps = 1 << 12;  // of a file that is made of tiny blocks

std::string sizeAt(int64_t sizeBytes, int64_t offset) {
    return std::to_string(sizeBytes) + " bytes at offset " + std::to_string(offset);
}

// Behind ID3v2 tags, which do not belong there but are met.
int64_t streamStart(const InputFile& file) {
    int64_t offset = 0;
    for (int step = 0; step < kMaxSteps; step++) {
        const auto header = readId3Header(file, offset);
        if (!header) break;
        const bool hasFooter = ((*header)[5] & 0x10) != 0;
        offset += kId3HeaderSize * (hasFooter ? 2 : 1) +
                  syncsafe(Bytes(*header).subspan(6)).value_or(0);
    }
    return offset;
}

void takeBlock(CommentHeaders& headers, const InputFile& file, uint8_t type, int64_t sizeBytes,
               int64_t offset) {
    const std::string place = sizeAt(sizeBytes, offset);
    if (type == kPicture) headers.picture = "a picture block of " + place;
    if (type != kVorbisComment) return;
    if (!headers.list.empty()) {
        headers.notes.push_back("a second Vorbis comment of " + place + " is not looked at");
        return;
    }
    ByteVector bytes(static_cast<size_t>(sizeBytes));
    file.readAt(offset + kBlockHeaderSize, bytes);
    headers.list.push_back({"FLAC", place, {}, {}});
    headers.list.back().split(bytes, offset + kBlockHeaderSize);
}

void readBlocks(CommentHeaders& headers, const InputFile& file, int64_t offset) {
    for (int step = 0; step < kMaxSteps; step++) {
        std::array<uint8_t, kBlockHeaderSize> header{};
        const int64_t count = file.readAt(offset, header);
        const int64_t sizeBytes = header[1] << 16 | header[2] << 8 | header[3];
        const int64_t left = file.size() - offset - kBlockHeaderSize;
        if (count != kBlockHeaderSize || sizeBytes > left) {
            headers.notes.push_back("the file ends inside the metadata block of " +
                                    sizeAt(sizeBytes, offset));
            return;
        }
        takeBlock(headers, file, header[0] & 0x7F, sizeBytes, offset);
        if ((header[0] & 0x80) != 0) return;
        offset += kBlockHeaderSize + sizeBytes;
    }
    headers.notes.push_back("metadata blocks from offset " + std::to_string(offset) +
                            " on are not looked at");
}

}  // namespace

CommentHeaders findFlacComments(const InputFile& file) {
    CommentHeaders headers;
    const int64_t offset = streamStart(file);
    std::array<uint8_t, 4> magic{};
    file.readAt(offset, magic);
    if (std::string(magic.begin(), magic.end()) == "fLaC") {
        readBlocks(headers, file, offset + static_cast<int64_t>(magic.size()));
    } else {
        headers.notes.push_back("no \"fLaC\" at offset " + std::to_string(offset));
    }
    return headers;
}

}  // namespace inspect
