// Input: text of any encoding, which is bytes, digits, words and a file's beginning as well.

#include <array>
#include <nlohmann/json.hpp>

#include "Inspect.h"
#include "inspect/base/Bytes.h"
#include "inspect/base/Distance.h"
#include "inspect/base/FileKinds.h"

namespace {

using namespace inspect;

// Unicode, Table 3-7: how many bytes the first character has; 0 = it is none.
size_t characterBytes(std::string_view text) {
    struct Row {
        uint8_t first, last;
        size_t size;
        uint8_t least = 0x80, most = 0xBF;  // of the second byte
    };
    constexpr auto kRows = std::to_array<Row>({{0x00, 0x7F, 1},
                                               {0xC2, 0xDF, 2},
                                               {0xE0, 0xE0, 3, 0xA0},
                                               {0xE1, 0xEC, 3},
                                               {0xED, 0xED, 3, 0x80, 0x9F},
                                               {0xEE, 0xEF, 3},
                                               {0xF0, 0xF0, 4, 0x90},
                                               {0xF1, 0xF3, 4},
                                               {0xF4, 0xF4, 4, 0x80, 0x8F}});
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
    for (const Row& row : kRows) {
        if (byte(0) < row.first || byte(0) > row.last || text.size() < row.size) continue;
        bool isOne = row.size == 1 || (byte(1) >= row.least && byte(1) <= row.most);
        for (size_t i = 2; i < row.size; i++) isOne = isOne && byte(i) >= 0x80 && byte(i) <= 0xBF;
        return isOne ? row.size : 0;
    }
    return 0;
}

bool isText(std::string_view text) {
    while (!text.empty()) {
        const size_t size = characterBytes(text);
        if (size == 0) return false;
        text.remove_prefix(size);
    }
    return true;
}

std::string utf8Of(unsigned long c) {
    const auto byte = [](unsigned long value) { return static_cast<char>(value); };
    const auto rest = [&](int shift) { return byte(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) return {byte(c)};
    if (c < 0x800) return {byte(0xC0 | c >> 6), rest(0)};
    if (c < 0x10000) return {byte(0xE0 | c >> 12), rest(6), rest(0)};
    return {byte(0xF0 | c >> 18), rest(12), rest(6), rest(0)};
}

// What escaped() has made of.
std::string unescaped(const std::string& text) {
    constexpr std::string_view kShort = "\\\\n\nr\rt\t";
    constexpr std::string_view kNumbers = "x2u4U8";
    std::string plain;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\') {
            plain += text[i];
            continue;
        }
        const char kind = text.at(++i);
        const size_t number = kNumbers.find(kind);
        if (number == kNumbers.npos) {
            plain += kShort.at(kShort.find(kind) + 1);
        } else {
            const auto digits = static_cast<size_t>(kNumbers[number + 1] - '0');
            REQUIRE(i + digits < text.size());
            plain += utf8Of(std::stoul(text.substr(i + 1, digits), nullptr, 16));
            i += digits;
        }
    }
    return plain;
}

// Whether a terminal would obey, or show nothing for, one of the characters.
bool steers(std::string_view utf8) {
    constexpr std::string_view kSome[] = {"\x7F",         "\xC2\xAD",        "\xE2\x80\x8B",
                                          "\xE2\x80\x8E", "\xE2\x80\xA8",    "\xE2\x80\xAA",
                                          "\xE2\x80\xAE", "\xE2\x81\xA6",    "\xE2\x81\xA9",
                                          "\xEF\xBB\xBF", "\xF3\xA0\x80\xA0"};
    for (size_t i = 0; i < utf8.size(); i++) {
        const auto byte = static_cast<uint8_t>(utf8[i]);
        if (byte < 0x20) return true;
        if (byte == 0xC2 && static_cast<uint8_t>(utf8[i + 1]) < 0xA0) return true;
    }
    return std::ranges::any_of(kSome, [&](auto each) { return utf8.find(each) != utf8.npos; });
}

void checkText(const std::string& text) {
    const std::string utf8 = toUtf8(text);
    REQUIRE(isUtf8(text) == isText(text));
    REQUIRE(isText(utf8) && (!isText(text) || utf8 == text));
    const std::string safe = escaped(text);
    REQUIRE(isText(safe) && !steers(safe) && unescaped(safe) == utf8);
    const nlohmann::json document = {{utf8, utf8}};
    const std::string safeDocument = escapedJson(document.dump());
    REQUIRE(!steers(safeDocument) && nlohmann::json::parse(safeDocument) == document);
    for (const size_t columns : {size_t{0}, size_t{1}, text.size() / 2, 2 * text.size()}) {
        const std::string first = firstColumns(safe, columns);
        REQUIRE(safe.starts_with(first) && isText(first) && columnsOf(first) <= columns);
        const std::string_view rest = std::string_view(safe).substr(first.size());
        REQUIRE(rest.empty() ||
                columnsOf(first) + columnsOf(rest.substr(0, characterBytes(rest))) > columns);
    }
    REQUIRE(columnsOf(utf8) <= 2 * utf8.size() && isText(shortened(utf8)));
}

void checkBytes(fuzz::Bytes bytes) {
    const std::string digits = hex(bytes, "");
    REQUIRE(digits.size() == 2 * bytes.size() && fuzz::same(fromHex(digits), bytes));
    const ByteVector read = fromHex(fuzz::textOf(bytes));
    REQUIRE(read.empty() || hex(read, "") == fuzz::textOf(bytes));
    ByteCursor cursor(bytes);
    for (size_t size = 1, at = 0; cursor.ok(); at += size, size = size % 8 + 1) {
        uint64_t bigEndian = 0;
        uint64_t littleEndian = 0;
        const bool isThere = at + size <= bytes.size();
        for (size_t i = 0; isThere && i < size; i++) {
            bigEndian = bigEndian * 256 + bytes[at + i];
            littleEndian = littleEndian * 256 + bytes[at + size - 1 - i];
        }
        ByteCursor turned = cursor;
        REQUIRE(cursor.big(size) == bigEndian && turned.little(size) == littleEndian);
        REQUIRE(cursor.ok() == isThere && turned.ok() == isThere);
    }
    REQUIRE(cursor.remaining() == 0);
    const FileKind* kind = findFileKind(bytes);
    REQUIRE(kind == nullptr || !kind->name.empty());
}

// By the definition, which takes long.
size_t distanceOf(std::string_view from, std::string_view to) {
    if (from.empty() || to.empty()) return from.size() + to.size();
    const std::string_view fromRest = from.substr(1);
    const std::string_view toRest = to.substr(1);
    if (from[0] == to[0]) return distanceOf(fromRest, toRest);
    return 1 + std::min({distanceOf(fromRest, to), distanceOf(from, toRest),
                         distanceOf(fromRest, toRest)});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(data, data + size);
    checkText(text);
    checkBytes({data, size});
    if (size < 8) {
        const std::string_view from = std::string_view(text).substr(0, size / 2);
        const std::string_view to = std::string_view(text).substr(size / 2);
        REQUIRE(distance(from, to) == distanceOf(from, to));
    }
    return 0;
}
