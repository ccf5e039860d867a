// Input: a byte for the format, a byte that says how many further bytes there are and whether they
// are a hole, the byte that fills them, then the file.
//
// Aims at tools/inspect/media/Extent, tools/inspect/media/Boxes, tools/inspect/media/FramesEnd,
// tools/inspect/media/Scrambling.

#include <array>
#include <charconv>

#include "Inspect.h"
#include "inspect/media/Boxes.h"
#include "inspect/media/Extent.h"
#include "inspect/media/PrivateData.h"
#include "inspect/media/Scrambling.h"

namespace {

using namespace inspect;

constexpr auto kFormats = std::to_array<std::string_view>(
        {"mov", "avi",    "wav",  "qcp", "aiff", "caf", "matroska", "flv", "ogg",  "asf",
         "rm",  "mpegts", "mpeg", "mp3", "aac",  "ac3", "eac3",     "dts", "flac", "none"});

// Around the sizes that Extent.cpp and FramesEnd.cpp take for a matter of no interest.
constexpr size_t kFills[] = {0, 0, 0, 0, 0, 200, 17'000, 66'000};

// ISO/IEC 14496-12 4.2, of a file with nothing but boxes.
struct Boxes {
    size_t end = 0;
    bool isCut = false;
    bool isOdd = false;  // something else comes

    explicit Boxes(fuzz::Bytes file) {
        while (end < file.size() && !isCut && !isOdd) {
            fuzz::Bytes rest = file.subspan(end);
            uint64_t size = fuzz::take(rest, 4);
            const uint32_t type = fuzz::take(rest, 4);
            for (int shift = 0; shift < 32; shift += 8) {
                const uint32_t c = type >> shift & 0xFF;
                isOdd = isOdd || c < ' ' || c > '~';
            }
            const bool isLarge = size == 1;
            const size_t left = file.size() - end;
            isCut = left < 8 || (isLarge && !isOdd && left < 16);
            if (isCut) break;
            if (isLarge) size = uint64_t{fuzz::take(rest, 4)} << 32 | fuzz::take(rest, 4);
            isOdd = isOdd || (size < (isLarge ? 16 : 8) && size != 0);
            isCut = !isOdd && size > left && size != kUnknownSize;
            if (isOdd || isCut) break;
            end = size == 0 || size == kUnknownSize ? file.size() : end + size;
        }
    }
};

// Of "the 'mdat' box lacks 3 of its 16 bytes".
std::optional<size_t> lackOf(const Extent& extent) {
    const std::string text = extent.truncation.value_or("");
    const size_t at = text.find(" lacks ");
    size_t number = 0;
    if (at == text.npos) return {};
    REQUIRE(std::from_chars(&text[at + 7], text.data() + text.size(), number).ec == std::errc());
    REQUIRE(number > 0 && text.ends_with(" bytes"));
    return number;
}

Extent checkExtent(std::string_view format, fuzz::Bytes bytes, size_t holeBytes) {
    fuzz::setInput(bytes, holeBytes);
    const InputFile file(fuzz::kInputPath);
    const Fill fill = findFill(file);
    ByteVector whole(bytes.size() + holeBytes);
    std::ranges::copy(bytes, whole.begin());
    const auto begin = static_cast<size_t>(fill.begin);
    REQUIRE(begin < whole.size());
    REQUIRE(std::memcmp(&whole[begin], &whole[begin + 1], whole.size() - begin - 1) == 0);
    REQUIRE(fill.isBeginKnown && (begin == 0 || whole[begin - 1] != whole.back()));
    Extent extent = measure(format, file, fill);
    REQUIRE(extent.end >= 0 && extent.end <= file.size());
    REQUIRE(extent.junk.has_value() || extent.end == file.size());
    REQUIRE(!extent.junk || (!extent.junk->empty() && !extent.truncation));
    if (format == "mov") {
        const Boxes boxes(whole);
        REQUIRE(extent.truncation.has_value() == boxes.isCut);
        REQUIRE(!extent.junk || (boxes.isOdd && extent.end >= static_cast<int64_t>(boxes.end)));
    }
    return extent;
}

void checkBoxes(fuzz::Bytes bytes) {
    const InputFile file(fuzz::kInputPath);
    for (const int track : {0, 1}) {
        for (const auto& content :
             {findSampleEntries(file, track), findCodecPrivate(file, track)}) {
            if (!content) continue;
            REQUIRE(content->begin <= content->end &&
                    content->end <= static_cast<uint64_t>(file.size()));
            REQUIRE(fuzz::contains(bytes, readContent(file, *content)) ||
                    content->end > bytes.size());
        }
        REQUIRE(readVp9Record(file, track).size() <= size_t{1} << 16);
    }
}

void checkScrambling() {
    const InputFile file(fuzz::kInputPath);
    fuzz::refuses([&] {
        for (const int id : scrambledStreams(OpenFile(file))) REQUIRE(id >= 0 && id < 0x2000);
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    fuzz::Bytes data(bytes, size);
    const std::string_view format = kFormats[fuzz::take(data, 1) % kFormats.size()];
    const uint32_t shape = fuzz::take(data, 1);
    const auto fill = static_cast<uint8_t>(fuzz::take(data, 1));
    if (data.empty()) return 0;
    const size_t fillBytes = kFills[shape % std::size(kFills)];
    const bool isHole = (shape & 0x80) != 0;
    ByteVector file(data.size() + (isHole ? 0 : fillBytes), fill);
    std::ranges::copy(data, file.begin());
    const size_t holeBytes = isHole ? fillBytes : 0;
    const auto lack = lackOf(checkExtent(format, file, holeBytes));
    checkBoxes(file);
    if (format == "mpegts" || format == "mpeg") checkScrambling();
    if (lack && *lack < size_t{1} << 20) {
        const auto last = lackOf(checkExtent(format, file, holeBytes + *lack - 1));
        REQUIRE(last == size_t{1} || format == "rm");
        REQUIRE(!checkExtent(format, file, holeBytes + *lack).truncation);
    }
    return 0;
}
