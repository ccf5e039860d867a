#include "ParserLibrary/id3/Unsynchronization.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "ParserLibrary/id3/TagHeader.h"

namespace android::id3 {
namespace {

constexpr size_t kFrameHeaderSize = 10;
constexpr size_t kDataLengthSize = 4;

// Format flags of a v2.4 frame header.
constexpr uint16_t kFrameUnsynchronised = 0x0002;
constexpr uint16_t kFrameHasDataLength = 0x0001;

// Moves bytes down to where the tag has been written up to. Returns behind them.
uint8_t* move(uint8_t* to, const uint8_t* from, size_t size) {
    if (to != from && size != 0) std::memmove(to, from, size);
    return to + size;
}

// The same without the 00 after each FF.
uint8_t* moveUndone(uint8_t* to, const uint8_t* from, size_t size) {
    const uint8_t* const end = from + size;
    while (from < end) {
        const void* found = std::memchr(from, 0xFF, static_cast<size_t>(end - from));
        const auto* next = found != nullptr ? static_cast<const uint8_t*>(found) + 1 : end;
        to = move(to, from, static_cast<size_t>(next - from));
        from = next;
        if (from < end && *from == 0) ++from;
    }
    return to;
}

struct V2_4Header {
    size_t dataSize;
    uint16_t flags;
};

// Whether the frames go on in what is left of the tag, and not padding.
bool hasFrame(Bytes rest) {
    return rest.size() >= kFrameHeaderSize && base::bigEndian32(rest.data()) != 0;
}

// The header at the start of what is left of the tag, which is enough for one, or nothing when the
// frame is larger than that.
std::optional<V2_4Header> readFrameHeader(Bytes rest, FrameSizes sizes) {
    const auto size = sizes == FrameSizes::kPlain ? base::bigEndian32(rest.data() + 4)
                                                  : readSyncsafe(rest.data() + 4);
    if (!size || *size > rest.size() - kFrameHeaderSize) return std::nullopt;
    const auto flags = base::bigEndian16(rest.data() + 8);
    if ((flags & kFrameHasDataLength) != 0 && *size < kDataLengthSize) return std::nullopt;
    return V2_4Header{*size, flags};
}

void writeFrameHeader(uint8_t* header, size_t dataSize, uint16_t flags) {
    for (unsigned i = 0; i < 4; ++i) {
        header[4 + i] = static_cast<uint8_t>(dataSize >> (7 * (3 - i)) & 0x7F);
    }
    header[9] = static_cast<uint8_t>(flags);  // those that change
}

// Reads the frames at one cursor and writes them, simpler, at another that is never ahead.
class FrameSimplifier {
public:
    FrameSimplifier(std::span<uint8_t> tag, size_t firstFrameOffset, FrameSizes sizes,
                    bool allUnsynchronised)
        : mTag(tag),
          mFrom(tag.data() + firstFrameOffset),
          mTo(tag.data() + firstFrameOffset),
          mSizes(sizes),
          mAllUnsynchronised(allUnsynchronised) {}

    SimplifiedFrames run() {
        bool ok = true;
        while (ok && hasFrame({mFrom, left()})) {
            const auto header = readFrameHeader({mFrom, left()}, mSizes);
            ok = header.has_value();
            if (ok) simplify(*header);
        }
        return finish(ok);
    }

private:
    size_t left() const { return static_cast<size_t>(mTag.data() + mTag.size() - mFrom); }

    void simplify(V2_4Header frame) {
        uint16_t flags = frame.flags;
        const bool unsynchronised = mAllUnsynchronised || (flags & kFrameUnsynchronised) != 0;
        flags &= static_cast<uint16_t>(~(kFrameUnsynchronised | kFrameHasDataLength));
        // The header of a frame that is only known to be unsynchronised from the tag's flag keeps
        // the size from before.
        const bool rewritten = flags != frame.flags || mSizes == FrameSizes::kPlain;

        uint8_t* const header = mTo;
        mTo = move(mTo, mFrom, kFrameHeaderSize);
        mFrom += kFrameHeaderSize;
        if ((frame.flags & kFrameHasDataLength) != 0) {
            mFrom += kDataLengthSize;
            frame.dataSize -= kDataLengthSize;
        }
        const uint8_t* const data = mTo;
        mTo = unsynchronised ? moveUndone(mTo, mFrom, frame.dataSize)
                             : move(mTo, mFrom, frame.dataSize);
        mFrom += frame.dataSize;
        if (rewritten) writeFrameHeader(header, static_cast<size_t>(mTo - data), flags);
    }

    // Moves what the walk did not come to behind what it did.
    SimplifiedFrames finish(bool ok) {
        uint8_t* const end = mTag.data() + mTag.size();
        uint8_t* const newEnd = move(mTo, mFrom, left());
        if (ok) std::fill(newEnd, end, uint8_t{0});
        return {ok, static_cast<size_t>(newEnd - mTag.data())};
    }

    std::span<uint8_t> mTag;
    const uint8_t* mFrom;  // up to here the tag has been read
    uint8_t* mTo;          // and up to here written
    FrameSizes mSizes;
    bool mAllUnsynchronised;
};

}  // namespace

size_t removeUnsynchronization(std::span<uint8_t> bytes) {
    return static_cast<size_t>(moveUndone(bytes.data(), bytes.data(), bytes.size()) - bytes.data());
}

bool framesFit(Bytes tag, size_t firstFrameOffset) {
    Bytes rest = tag.subspan(firstFrameOffset);
    while (hasFrame(rest)) {
        const auto header = readFrameHeader(rest, FrameSizes::kSyncsafe);
        if (!header) return false;
        rest = rest.subspan(kFrameHeaderSize + header->dataSize);
    }
    return true;
}

SimplifiedFrames simplifyFrames(std::span<uint8_t> tag, size_t firstFrameOffset, FrameSizes sizes,
                                bool allUnsynchronised) {
    if (firstFrameOffset > tag.size()) return {true, tag.size()};
    return FrameSimplifier(tag, firstFrameOffset, sizes, allUnsynchronised).run();
}

}  // namespace android::id3
