// Input: flags, some of which make the source lie, the largest read of a source in steps of 16
// bytes (0 for no limit), the offset of the tag, what the source's size is too small by; then the
// file.
//
// Aims at ParserLibrary/id3wrapper/*, ParserLibrary/id3/Tag, ParserLibrary/id3/TagHeader,
// ParserLibrary/id3/ID3, ParserLibrary/id3/ByteSource, Helper/MediaExtractorHelper/Tags.

#include <sstream>

#include "Fuzz.h"

using android::ID3;
using android::String8;
using fuzz::Bytes;
using fuzz::Format;
using fuzz::helper;

namespace {

constexpr uint32_t kIgnoreV1 = 1, kNoSize = 2, kStreamed = 4;
constexpr uint32_t kReadsFail = 8, kReadsTooMuch = 16, kHugeSize = 32;

struct Source {
    Bytes file;
    uint32_t flags;
    size_t largestRead;
    off64_t size;
};

CDataSource recordOf(Source* source) {
    CDataSource record{};
    record.handle = source;
    record.readAt = [](void* handle, off64_t offset, void* data, size_t size) {
        const auto& [file, flags, largestRead, unused] = *static_cast<Source*>(handle);
        const auto start = static_cast<size_t>(std::max<off64_t>(offset, 0));
        const Bytes rest = file.subspan(std::min(start, file.size()));
        const size_t count = std::min({size, rest.size(), largestRead});
        std::copy_n(rest.begin(), count, static_cast<uint8_t*>(data));
        if ((flags & kReadsFail) != 0) return ssize_t{-1004};
        const bool boasts = (flags & kReadsTooMuch) != 0 && count == size;
        return static_cast<ssize_t>(count + boasts);
    };
    record.getSize = [](void* handle, off64_t* size) {
        *size = static_cast<Source*>(handle)->size;
        return (static_cast<Source*>(handle)->flags & kNoSize) != 0 ? -1 : 0;
    };
    record.flags = [](void* handle) {
        return (static_cast<Source*>(handle)->flags & kStreamed) * 0x10;
    };
    record.getUri = [](void*, char* uri, size_t capacity) {
        return std::memcpy(uri, "Https://host/", std::min<size_t>(capacity, 13)) != nullptr;
    };
    return record;
}

struct Frame {
    std::string id;
    Bytes data;
    uint8_t encoding;
    String8 text;
};
using Frames = std::vector<Frame>;

// Compression and encryption, by the version of the tag.
constexpr uint8_t kUnreadableFlags[] = {0, 0, 0, 0, 0xC0, 0x0C};

// All frames; each must lie in the tag, behind the former.
Frames framesOf(const ID3& id3, size_t tagSize) {
    Frames frames;
    if (!id3.isValid()) return frames;
    const uint8_t *begin = nullptr, *end = nullptr;
    for (ID3::Iterator at(id3, nullptr); !at.done(); at.next()) {
        size_t size;
        const uint8_t* data = at.getData(&size);
        const uint8_t* header = data - at.getHeaderLength();
        const uint8_t encoding = header == data ? 0 : size > 0 ? *data : at.getEncodingType();
        if (begin == nullptr) begin = end = header;
        REQUIRE(header >= end && data + size > end && data + size <= begin + tagSize);
        end = data + size;
        REQUIRE((data[-1] & kUnreadableFlags[id3.version()]) == 0);
        String8 id;
        at.getID(&id);
        frames.push_back({id.c_str(), {data, size}, encoding, {}});
        at.getString(&frames.back().text);
    }
    return frames;
}

const Frame* find(const Frames& frames, const std::string& id) {
    const auto at = std::ranges::find(frames, id, &Frame::id);
    return at == frames.end() ? nullptr : &*at;
}

// The picture is what follows the description, ID3v2.4 4.14 and ID3v2.2 4.15.
void checkPicture(Bytes picture, Bytes frame, bool isPic) {
    const auto* mimeType = reinterpret_cast<const char*>(frame.data() + 1);
    size_t at = isPic ? 5 : 3 + std::strlen(mimeType);
    const size_t nulSize = frame[0] == 0 || frame[0] == 3 ? 1 : 2;
    while (frame[at] != 0 || frame[at + nulSize - 1] != 0) at += nulSize;
    REQUIRE(fuzz::same(picture, frame.subspan(at + nulSize)));
    REQUIRE(isPic || !picture.empty());
}

// What a call makes of a tag.
template <typename Call>
void checkFormat(const ID3& id3, const Frames& frames, bool readable, Call call) {
    const Format format;
    REQUIRE(call(format.get()) == (readable ? 0 : -10001));
    REQUIRE(readable || format.keys().empty());
    if (!readable) return;
    std::istringstream rows(
            "album TALB TAL artist TPE1 TP1 albumartist TPE2 TP2 composer TCOM TCM genre TCON TCO "
            "title TIT2 TT2 year TYE TYER author TXT TEXT cdtracknum TRK TRCK discnum TPA TPOS "
            "compilation TCP TCMP");
    std::string keys = "mixed-encoding-type ", key, first, second;
    int32_t mixed = 0;
    for (int32_t bit = 1; rows >> key >> first >> second; bit *= 2) {
        const Frame* frame = find(frames, first);
        if (frame == nullptr) frame = find(frames, second);
        if (frame == nullptr) continue;
        keys += key + ' ';
        REQUIRE(format.string(key.c_str()) == frame->text.c_str());
        if (frame->encoding == 0 && bit < 0x40) mixed |= bit;
    }
    REQUIRE(format.int32("mixed-encoding-type") == mixed);
    if (format.keys() == keys) return;
    REQUIRE(format.keys() == keys + "albumart ");
    const bool isPic = id3.version() == ID3::ID3_V2_2;
    checkPicture(format.buffer("albumart"), find(frames, isPic ? "PIC" : "APIC")->data, isPic);
}

// The v1 tag that the source reads; empty for none.
Bytes trailerOf(const Source& source) {
    constexpr uint32_t kNone = kIgnoreV1 | kNoSize | kReadsFail | kHugeSize;
    if ((source.flags & kNone) != 0 || source.largestRead < 128) return {};
    const auto size = static_cast<size_t>(source.size);
    if (source.size < 128 || size > source.file.size()) return {};
    const Bytes trailer = source.file.subspan(size - 128, 128);
    return std::memcmp(trailer.data(), "TAG", 3) == 0 ? trailer : Bytes();
}

// Whether the source reads all of a v2 tag.
bool readsV2(const Source& source, Bytes tag) {
    size_t size;
    REQUIRE(ID3::ParseSyncsafeInteger(&tag[6], &size));
    return (source.flags & kReadsFail) == 0 && source.largestRead >= std::max<size_t>(10, size);
}

std::string line(const std::string& id, Bytes data) {
    return id + '=' + std::string(data.begin(), data.end()) + '\n';
}

std::string linesV1(Bytes tag) {
    const bool hasTrack = tag[125] == 0;
    return line("TT2", tag.subspan(3, 30)) + line("TP1", tag.subspan(33, 30)) +
           line("TAL", tag.subspan(63, 30)) + line("TYE", tag.subspan(93, 4)) +
           line("COM", tag.subspan(97, hasTrack ? 29 : 30)) +
           (hasTrack ? line("TRK", tag.subspan(126, 1)) : "") + line("TCO", tag.last(1));
}

std::string linesOf(const Frames& frames) {
    std::string all;
    for (const Frame& frame : frames) all += line(frame.id, frame.data);
    return all;
}

// Delay and padding in the first comment of the name that encoders give it, read plainly; nothing
// where a hexadecimal prefix leaves room for opinions.
void checkGapless(const ID3& id3, const Format& format) {
    std::vector<unsigned long> numbers;
    bool isPlain = true;
    ID3::Iterator comment(id3, ID3::Iterator(id3, "COM").done() ? "COMM" : "COM");
    for (; !comment.done(); comment.next()) {
        String8 name, text;
        comment.getString(&name, &text);
        if (name.size() < 4 || std::strcmp(name.c_str() + 3, "iTunSMPB") != 0) continue;
        isPlain = std::strpbrk(text.c_str(), "xX") == nullptr;
        const char* at = text.c_str();
        char* end = nullptr;
        for (; numbers.size() < 3; at = end) {
            const unsigned long number = std::strtoul(at, &end, 16);
            if (end == at) break;
            numbers.push_back(number);
        }
        break;
    }
    if (!isPlain) return;
    REQUIRE(format.keys() == (numbers.size() < 3 ? "" : "encoder-delay encoder-padding "));
    if (numbers.size() < 3) return;
    REQUIRE(format.int32("encoder-delay") == static_cast<int32_t>(numbers[1]));
    REQUIRE(format.int32("encoder-padding") == static_cast<int32_t>(numbers[2]));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t byteCount) {
    Bytes file(bytes, byteCount);
    const uint32_t flags = fuzz::take(file, 1), largestRead = fuzz::take(file, 1) * 16;
    const off64_t offset = fuzz::take(file, 1);
    const auto missing = static_cast<int8_t>(fuzz::take(file, 1));
    Source state{file, flags, largestRead == 0 ? SIZE_MAX : largestRead,
                 static_cast<off64_t>(file.size()) - missing};
    if ((flags & kHugeSize) != 0) state.size = INT64_MAX;
    CDataSource record = recordOf(&state);
    android::DataSourceHelper source(&record);
    const bool ignoreV1 = (flags & kIgnoreV1) != 0, streamed = (flags & kStreamed) != 0;

    const Bytes tag = file.subspan(std::min(static_cast<size_t>(offset), file.size()));
    const ID3 inMemory(tag.data(), tag.size(), ignoreV1);
    const Frames inMemoryFrames = framesOf(inMemory, tag.size());
    checkFormat(inMemory, inMemoryFrames, inMemory.isValid(), [&](AMediaFormat* format) {
        return helper->parseID3v2MetaData(tag.data(), tag.size(), ignoreV1, format);
    });

    android::MemorySource memory(file.data(), file.size());
    ID3 again(tag.data(), tag.size(), true);
    REQUIRE(again.parseV2(&memory, offset) == inMemory.isValid());
    REQUIRE(linesOf(framesOf(again, tag.size())) == linesOf(inMemoryFrames));

    const ID3 id3(&source, ignoreV1, offset);
    const Frames frames = framesOf(id3, file.size());
    const bool v2 = inMemory.isValid() && readsV2(state, tag);
    const Bytes trailer = v2 ? Bytes() : trailerOf(state);
    REQUIRE(id3.isValid() == (v2 || !trailer.empty()));
    if (id3.isValid())
        REQUIRE(linesOf(frames) == (v2 ? linesOf(inMemoryFrames) : linesV1(trailer)));
    checkFormat(id3, frames, id3.isValid() && !streamed, [&](AMediaFormat* format) {
        return helper->parseID3v2MetaData(&source, ignoreV1, offset, format);
    });

    const Format gapless;
    const ID3 atStart(&source, ignoreV1, 0);
    const bool readable = atStart.isValid() && !streamed;
    const int32_t status = helper->parseID3GaplessInfo(&source, ignoreV1, offset, gapless.get());
    REQUIRE(status == (readable ? 0 : -10001));
    REQUIRE(readable || gapless.keys().empty());
    if (readable) checkGapless(atStart, gapless);
    return 0;
}
