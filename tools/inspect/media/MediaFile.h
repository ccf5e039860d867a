// What a container parser finds out about a file, free of the demuxer's own types.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/base/Bytes.h"

namespace inspect {

enum class Kind { kVideo, kAudio, kText, kOther };

const char* toString(Kind kind);  // "video"

// Of an encrypted track.
struct Protection {
    std::string scheme;  // "cenc"; from the file, where it names one
    std::string keyId;   // in hexadecimal digits; empty = unknown
};

struct Stream {
    int index = 0;
    Kind kind = Kind::kOther;
    std::string codec;       // the demuxer's name for it
    std::string boxName;     // the container's four-character code; empty = none
    uint32_t codecType = 0;  // android::CodecType
    ByteVector privateData;  // in the form in which a container parser passes it on
    ByteVector firstHeader;  // of VP9 without private data: what the first key frame begins with
    uint32_t bitRate = 0;
    std::string language;  // empty = unknown
    std::optional<int64_t> durationUs;
    bool isDefault = false;      // among the tracks of its kind, as the container has it
    std::optional<int> profile;  // libavcodec's numbers
    std::optional<int> level;
    std::optional<Protection> protection;
    std::string nothingReadable;  // why no sample of it can be read; empty = some can

    struct Video {
        uint32_t width = 0;
        uint32_t height = 0;
        uint32_t frameRate = 0;
        uint32_t storedWidth = 0;  // by the container alone; 0 = it tells none
        uint32_t storedHeight = 0;
        uint32_t bitDepth = 0;        // of a sample; 0 = unknown
        double averageFrameRate = 0;  // 0 = unknown
        double baseFrameRate = 0;     // the least that holds every timestamp; 0 = unknown
        int rotation = 0;             // by the container, in degrees clockwise: 0 to 359
    } video;

    struct Audio {
        uint32_t channelCount = 0;
        uint32_t sampleRate = 0;
        uint32_t bitsPerSample = 0;
        uint32_t bitDepth = 0;  // of a sample, where nothing is lost; 0 = unknown, or some is
        uint16_t blockAlign = 0;
        uint64_t codecDelayNs = 0;
        uint64_t seekPreRollNs = 0;
    } audio;

    struct Text {
        bool isBitmap = false;
        bool isUnsupportedBitmap = false;
    } text;
};

// How a container parser names the kind of a file.
struct Container {
    int fileKind = 0;             // an android::FileKind for setFileMeta; 0 = it has none
    const char* mime = nullptr;   // what the parser then stores itself; null = there is none
    bool hasWholeFrames = false;  // one video frame a sample, and key frames are marked
};

struct MediaFile {
    std::string path;
    bool hasName = true;           // by which another program can open it
    bool isFolderWritable = true;  // in which it stands
    std::string format;            // the demuxer's name, the first where it has several
    std::string formatName;        // the same in words
    std::string majorBrand;        // of the ISO base media family
    Container container;
    std::optional<int64_t> durationUs;
    std::optional<std::string> truncation;  // what is missing at the end
    std::optional<std::string> junk;        // what stands behind the end
    std::vector<Stream> streams;
};

class OpenFile;

// Throws a FileError for a file whose tracks cannot be read. One that ends too early is described
// as far as it goes, with what is missing in truncation.
MediaFile readMediaFile(const OpenFile& open);

}  // namespace inspect
