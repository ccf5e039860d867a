// Input: a byte that picks the version and the id of a frame, then the frame's data.
//
// Aims at ParserLibrary/id3/FrameString, ParserLibrary/id3/FrameText.

#include <array>

#include "Fuzz.h"

using android::ID3;
using android::String8;
using fuzz::Bytes;

namespace {

constexpr auto kIds = std::to_array<const char*>(
        {"TT2", "COM", "ULT", "TIT2", "COMM", "USLT", "TIT2", "COMM", "USLT"});

std::vector<uint8_t> tagOf(unsigned major, const std::string& id, Bytes data) {
    std::vector<uint8_t> tag = {'I', 'D', '3', static_cast<uint8_t>(major), 0, 0};
    const auto append = [&tag](size_t number, unsigned bytes, unsigned bitsPerByte) {
        const size_t mask = (size_t{1} << bitsPerByte) - 1;
        while (bytes-- > 0)
            tag.push_back(static_cast<uint8_t>(number >> bytes * bitsPerByte & mask));
    };
    append(id.size() + (major == 2 ? 3 : 6) + data.size(), 4, 7);
    tag.insert(tag.end(), id.begin(), id.end());
    append(data.size(), major == 2 ? 3 : 4, major == 4 ? 7 : 8);
    append(0, major == 2 ? 0 : 2, 8);
    tag.insert(tag.end(), data.begin(), data.end());
    return tag;
}

String8 eightBit(Bytes text) {
    String8 string;
    string.setTo(reinterpret_cast<const char*>(text.data()), text.size());
    return string;
}

String8 utf16(Bytes text, bool marked) {
    std::u16string units;
    while (text.size() >= 2) units += static_cast<char16_t>(fuzz::take(text, 2));
    if (units.empty()) return {};
    const auto swap = [](char16_t unit) { return static_cast<char16_t>(unit << 8 | unit >> 8); };
    if (marked && !units.starts_with(0xFEFF)) {  // little-endian, with or without saying so
        std::ranges::transform(units, units.begin(), swap);
    }
    if (marked && units.starts_with(0xFEFF)) units.erase(0, 1);
    const bool narrow = std::ranges::all_of(units, [](char16_t unit) { return unit < 0x100; });
    if (marked && narrow) {
        const std::vector<uint8_t> bytes(units.begin(), units.end());
        return eightBit(bytes);
    }
    String8 string;
    string.setTo(units.data(), units.size());
    return string;
}

// ID3v2.4 4, 4.2, 4.8 and 4.10, with the departures that ID3.h names.
String8 textOf(Bytes data, bool secondHalf, bool lyrics) {
    const uint32_t encoding = data.empty() ? 0xFF : data[0];
    const bool wide = encoding == 1 || encoding == 2;
    size_t at = 1;
    if (secondHalf) {
        at = 5;  // behind the language and one character
        while (at < data.size() && data[at] != 0) ++at;
        ++at;
    }
    if (lyrics) at += wide ? 5 : 4;
    if (at >= data.size() || encoding > 3) return {};
    const Bytes text = data.subspan(at);
    return wide ? utf16(text, encoding == 1) : eightBit(text);
}

bool equal(const String8& left, const String8& right) {
    return left.size() == right.size() &&
           std::memcmp(left.c_str(), right.c_str(), left.size()) == 0;
}

void check(const ID3::Iterator& frame, Bytes data, bool lyrics) {
    REQUIRE(!frame.done() && frame.getEncodingType() == (data.empty() ? 0 : data[0]));
    String8 first, second, only;
    frame.getString(&first, &second);
    frame.getString(&only);
    REQUIRE(equal(first, textOf(data, false, lyrics)) && equal(first, only));
    REQUIRE(equal(second, textOf(data, true, lyrics)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    Bytes data(bytes, size);
    const unsigned pick = fuzz::take(data, 1) % unsigned{kIds.size()};
    const unsigned major = 2 + pick / 3;
    const char* const id = kIds[pick];
    const auto tag = tagOf(major, id, data);
    const ID3 id3(tag.data(), tag.size(), true);
    REQUIRE(id3.isValid());
    if (major == 2 && data.empty()) {
        REQUIRE(ID3::Iterator(id3, id).done());
        return 0;
    }
    check(ID3::Iterator(id3, id), data, pick % 3 == 2);
    check(ID3::Iterator(id3, nullptr), data, false);
    return 0;
}
