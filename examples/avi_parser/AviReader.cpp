#include "AviReader.h"

#include <algorithm>

namespace avi {
namespace {

using namespace android;

constexpr size_t kMaxTracks = 100;  // a chunk of samples names its track by two digits
constexpr size_t kChunkHeaderBytes = 8;
constexpr size_t kIndexEntryBytes = 16;
constexpr off64_t kMaxHeaderBytes = 1 << 20;  // of a strh or strf
constexpr uint32_t kKeyFrameFlag = 0x10;

// The two characters behind the digits.
constexpr uint32_t kPaletteSuffix = 'p' | 'c' << 8;

// kMaxTracks for a chunk that holds no samples.
size_t trackOf(uint32_t id) {
    const uint32_t tens = (id & 0xFF) - '0';
    const uint32_t ones = (id >> 8 & 0xFF) - '0';
    if (tens > 9 || ones > 9 || id >> 16 == kPaletteSuffix) return kMaxTracks;
    return tens * 10 + ones;
}

}  // namespace

uint16_t read16(const Bytes& bytes, size_t offset) {
    return static_cast<uint16_t>(read32(bytes, offset));
}

uint32_t read32(const Bytes& bytes, size_t offset) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4 && offset + i < bytes.size(); ++i) {
        value |= uint32_t{bytes[offset + i]} << (8 * i);
    }
    return value;
}

Bytes Reader::bytesAt(off64_t offset, size_t size) const {
    // The size is compared before memory is asked for: both numbers may come from the file.
    if (offset < 0 || offset > mSize || size > static_cast<uint64_t>(mSize - offset)) return {};
    Bytes bytes(size);
    const ssize_t count = mSource->readAt(offset, bytes.data(), size);
    bytes.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return bytes;
}

status_t Reader::read(const Sample& sample, Bytes* bytes) const {
    *bytes = bytesAt(sample.offset, sample.size);
    return bytes->size() == sample.size ? OK : ERROR_IO;
}

// A chunk that reaches past the end of what holds it is cut.
bool Reader::readChunk(off64_t at, off64_t end, Chunk* chunk) {
    constexpr auto kHeader = static_cast<off64_t>(kChunkHeaderBytes);
    if (end - at < kHeader) return false;
    const Bytes header = bytesAt(at, kChunkHeaderBytes);
    chunk->id = read32(header, 0);
    chunk->begin = at + kHeader;
    chunk->end = chunk->begin + read32(header, 4);
    chunk->isCut = chunk->end > end;
    if (chunk->isCut) {
        chunk->end = end;
        mIsDamaged = true;
    }
    chunk->list = chunk->id == fourCC("LIST") ? read32(bytesAt(chunk->begin, 4), 0) : 0;
    return true;
}

status_t Reader::open() {
    if (mSource->getSize(&mSize) != OK) return ERROR_IO;
    const Bytes riff = bytesAt(0, 12);
    if (read32(riff, 0) != fourCC("RIFF") || read32(riff, 8) != fourCC("AVI ")) {
        return ERROR_MALFORMED;
    }
    Chunk index;
    Chunk chunk;
    // Chunks begin at even offsets.
    for (off64_t at = 12; readChunk(at, mSize, &chunk); at = chunk.end + (chunk.end & 1)) {
        if (chunk.list == fourCC("hdrl") && mTracks.empty()) readHeader(chunk);
        if (chunk.list == fourCC("movi") && mMovie.begin == 0) mMovie = chunk;
        if (chunk.id == fourCC("idx1")) index = chunk;
    }
    if (mTracks.empty() || mMovie.begin == 0) return ERROR_MALFORMED;
    mHasIndex = index.end - index.begin >= static_cast<off64_t>(kIndexEntryBytes);
    if (mHasIndex) {
        readIndex(index);
    } else {
        walkSamples();
    }
    return OK;
}

void Reader::readHeader(const Chunk& header) {
    Chunk chunk;
    for (off64_t at = header.begin + 4; readChunk(at, header.end, &chunk);
         at = chunk.end + (chunk.end & 1)) {
        if (chunk.list == fourCC("strl") && mTracks.size() < kMaxTracks) readTrack(chunk);
    }
}

void Reader::readTrack(const Chunk& list) {
    Track track;
    Chunk chunk;
    for (off64_t at = list.begin + 4; readChunk(at, list.end, &chunk);
         at = chunk.end + (chunk.end & 1)) {
        Bytes content;
        if (chunk.id == fourCC("strh") || chunk.id == fourCC("strf")) {
            const off64_t size = std::min(chunk.end - chunk.begin, kMaxHeaderBytes);
            content = bytesAt(chunk.begin, static_cast<size_t>(size));
        }
        if (chunk.id == fourCC("strh")) {
            track.kind = read32(content, 0);
            track.scale = read32(content, 20);
            track.rate = read32(content, 24);
            track.length = read32(content, 32);
        } else if (chunk.id == fourCC("strf")) {
            track.format = std::move(content);
        }
    }
    mTracks.push_back(std::move(track));
}

void Reader::readIndex(const Chunk& index) {
    const Bytes bytes = bytesAt(index.begin, static_cast<size_t>(index.end - index.begin));
    // Offsets count from the kind of the movi list, or, by some writers, from the file's begin.
    const bool isRelative =
            read32(bytesAt(mMovie.begin + read32(bytes, 8), 4), 0) == read32(bytes, 0);
    const off64_t base = isRelative ? mMovie.begin : 0;
    for (size_t at = 0; at + kIndexEntryBytes <= bytes.size(); at += kIndexEntryBytes) {
        const off64_t chunk = base + read32(bytes, at + 8);
        addSample(read32(bytes, at),
                  {chunk + static_cast<off64_t>(kChunkHeaderBytes), read32(bytes, at + 12),
                   (read32(bytes, at + 4) & kKeyFrameFlag) != 0});
    }
}

void Reader::walkSamples() {
    Chunk chunk;
    for (off64_t at = mMovie.begin + 4; readChunk(at, mMovie.end, &chunk);) {
        // Lists of samples are walked into, which takes no recursion.
        const bool isList = chunk.id == fourCC("LIST");
        at = isList ? chunk.begin + 4 : chunk.end + (chunk.end & 1);
        if (isList || chunk.isCut) continue;
        addSample(chunk.id, {chunk.begin, static_cast<uint32_t>(chunk.end - chunk.begin), false});
    }
}

// Samples do not overlap, so all of them together are no larger than the file: an index that says
// otherwise would have the same bytes read over and over. Empty chunks repeat the frame before.
void Reader::addSample(uint32_t id, const Sample& sample) {
    const size_t number = trackOf(id);
    if (number >= mTracks.size() || sample.size == 0) return;
    mSampleBytes += sample.size;
    if (sample.offset + sample.size > mSize || mSampleBytes > mSize) {
        mSampleBytes -= sample.size;
        mIsDamaged = true;
        return;
    }
    mTracks[number].samples.push_back(sample);
}

}  // namespace avi
