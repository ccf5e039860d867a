// The tags that are read, and the implementations that our reading is measured beside.

#pragma once

#include <functional>
#include <string_view>

#include "Stream.h"

namespace bench {

// ---- The tags

constexpr const char* kTitle = "Gr\u00F6\u00DFe \u2013 Live";

// ID3v2.3 or v2.4, as TagLib writes it: ten text frames, the picture if there is one, a KiB of
// padding. Behind the tag stand empty MPEG frames, without which libavformat opens no file.
std::vector<uint8_t> id3File(unsigned version, Bytes jpeg, bool isUnsynchronised);
constexpr size_t kMpegFramesSize = size_t{4} * 417;

// ID3v2.4, that many bytes of unsynchronised frames of 16 bytes with one to remove in each.
std::vector<uint8_t> tagOfSmallFrames(size_t size);

// The value of METADATA_BLOCK_PICTURE.
std::string pictureBase64(Bytes jpeg);

// A FLAC file of STREAMINFO and two comments: the title and such a picture.
std::vector<uint8_t> flacFile(const std::string& picture);
constexpr size_t kCommentOffset = 46;  // of the comments in it, behind the block's header

// ---- The implementations

// Gets the title in UTF-8 and the picture; both last for the time of the call.
using Visit = std::function<void(std::string_view title, Bytes picture)>;

// Reads the tag at the head of a file in memory, reports it and frees all that it made.
struct Reader {
    const char* name;
    void (*read)(Bytes file, const Visit& visit);
};

// libid3tag, TagLib, GStreamer, and libavformat's demuxers for MP3 and FLAC.
extern const std::vector<Reader> kId3Peers;
extern const std::vector<Reader> kCommentPeers;

}  // namespace bench
