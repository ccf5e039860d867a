// Reads AVI files (Microsoft, AVI RIFF File Reference): their tracks, and where the samples stand.
// Nothing here knows the library but by its source of bytes and its statuses.

#pragma once

#include <cstdint>
#include <vector>

#include "zrcodecparser/DataSource.h"

namespace avi {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t fourCC(const char (&text)[5]) {
    uint32_t code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<uint8_t>(text[i]);
    return code;
}

// Little-endian numbers; what is missing at the end reads as zero.
uint16_t read16(const Bytes& bytes, size_t offset);
uint32_t read32(const Bytes& bytes, size_t offset);

struct Sample {
    off64_t offset;
    uint32_t size;
    bool isMarked;  // as a key frame, by the index
};

struct Track {
    uint32_t kind = 0;   // of the stream: "vids", "auds" or another
    uint32_t scale = 0;  // rate / scale: units per second
    uint32_t rate = 0;
    uint32_t length = 0;  // in units
    Bytes format;         // BITMAPINFOHEADER or WAVEFORMATEX, and what stands behind it
    std::vector<Sample> samples;
};

class Reader {
public:
    // The source must outlive the reader.
    explicit Reader(android::DataSourceHelper* source) : mSource(source) {}

    // Returns 0; ERROR_IO when the source has no size; ERROR_MALFORMED when the bytes are no AVI
    // file or describe no track.
    android::status_t open();

    const std::vector<Track>& tracks() const { return mTracks; }
    bool hasIndex() const { return mHasIndex; }
    // Whether something that the file promises is not in it.
    bool isDamaged() const { return mIsDamaged; }

    // Returns 0, or ERROR_IO.
    android::status_t read(const Sample& sample, Bytes* bytes) const;

private:
    struct Chunk {
        uint32_t id = 0;
        uint32_t list = 0;  // kind of a LIST
        off64_t begin = 0;  // of the content
        off64_t end = 0;
        bool isCut = false;
    };

    Bytes bytesAt(off64_t offset, size_t size) const;
    bool readChunk(off64_t at, off64_t end, Chunk* chunk);
    void readHeader(const Chunk& header);
    void readTrack(const Chunk& list);
    void readIndex(const Chunk& index);
    void walkSamples();
    void addSample(uint32_t id, const Sample& sample);

    android::DataSourceHelper* mSource;
    off64_t mSize = 0;
    off64_t mSampleBytes = 0;
    Chunk mMovie;
    std::vector<Track> mTracks;
    bool mHasIndex = false;
    bool mIsDamaged = false;
};

}  // namespace avi
