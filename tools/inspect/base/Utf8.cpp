#include "inspect/base/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>

namespace inspect {
namespace {

struct CodePoint {
    char32_t value = 0;
    size_t sizeBytes = 0;  // 0 = this is not UTF-8
};

// The first character of a text that is not empty.
CodePoint decode(std::string_view text) {
    constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return {first, 1};
    const size_t sizeBytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < sizeBytes) return {};
    char32_t value = first & (0x7Fu >> sizeBytes);
    for (const char next : text.substr(1, sizeBytes - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0) != 0x80) return {};
        value = value << 6 | (byte & 0x3F);
    }
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < kLeast[sizeBytes] || value > 0x10FFFF || isSurrogate) return {};
    return {value, sizeBytes};
}

struct Range {
    char32_t first;
    char32_t last;
};

// Unicode's categories Cc, Cf, Zl and Zp, but for those that only a script of its own uses.
constexpr auto kUnseen = std::to_array<Range>({
        {0x00, 0x1F},
        {0x7F, 0x9F},
        {0xAD, 0xAD},        // soft hyphen
        {0x61C, 0x61C},      // Arabic letter mark
        {0x180E, 0x180E},    // Mongolian vowel separator
        {0x200B, 0x200F},    // zero width, and marks of direction
        {0x2028, 0x202E},    // line and paragraph separator, embeddings and overrides
        {0x2060, 0x206F},    // zero width, isolates
        {0xFEFF, 0xFEFF},    // byte order mark
        {0xFFF9, 0xFFFB},    // interlinear annotation
        {0xE0000, 0xE007F},  // tags
});

// Unicode's East Asian Width W and F, roughly: two columns of a terminal.
constexpr auto kWide = std::to_array<Range>({
        {0x1100, 0x115F},
        {0x2E80, 0xA4CF},
        {0xAC00, 0xD7A3},
        {0xF900, 0xFAFF},
        {0xFE30, 0xFE6F},
        {0xFF00, 0xFF60},
        {0xFFE0, 0xFFE6},
        {0x1F300, 0x1FAFF},
        {0x20000, 0x3FFFD},
});

bool isIn(std::span<const Range> ranges, char32_t c) {
    return std::ranges::any_of(
            ranges, [c](const Range& each) { return each.first <= c && c <= each.last; });
}

size_t columnsOf(char32_t c) {
    return isIn(kWide, c) ? 2u : 1u;
}

std::string print(const char* form, char32_t c) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), form, static_cast<unsigned>(c));
    return text.data();
}

// They return nothing for a character that stays as it is.
std::string escape(char32_t c) {
    if (c == '\\') return "\\\\";
    if (!isIn(kUnseen, c)) return {};
    if (c == '\n') return "\\n";
    if (c == '\r') return "\\r";
    if (c == '\t') return "\\t";
    return print(c < 0x100 ? "\\x%02x" : c < 0x10000 ? "\\u%04x" : "\\U%08x", c);
}

std::string escapeInPage(char32_t c) {
    return c == '\n' || c == '\\' ? std::string() : escape(c);
}

// RFC 8259 7; what has to be escaped in JSON is so already.
std::string escapeInJson(char32_t c) {
    if (c < 0x7F || !isIn(kUnseen, c)) return {};
    if (c < 0x10000) return print("\\u%04x", c);
    return print("\\u%04x", 0xD800 + ((c - 0x10000) >> 10)) +
           print("\\u%04x", 0xDC00 + (c & 0x3FF));
}

std::string replaced(std::string_view utf8, std::string (*form)(char32_t)) {
    std::string safe;
    while (!utf8.empty()) {
        const auto [value, sizeBytes] = decode(utf8);
        const std::string other = form(value);
        safe += other.empty() ? utf8.substr(0, sizeBytes) : other;
        utf8.remove_prefix(sizeBytes);
    }
    return safe;
}

}  // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const size_t sizeBytes = decode(text).sizeBytes;
        if (sizeBytes == 0) return false;
        text.remove_prefix(sizeBytes);
    }
    return true;
}

std::string toUtf8(std::string_view text) {
    if (isUtf8(text)) return std::string(text);
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) utf8 += static_cast<char>(0xC0 | byte >> 6);
        utf8 += byte >= 0x80 ? static_cast<char>(0x80 | (byte & 0x3F)) : c;
    }
    return utf8;
}

std::string escaped(std::string_view text) {
    return replaced(toUtf8(text), escape);
}

std::string visible(std::string_view text) {
    return replaced(toUtf8(text), escapeInPage);
}

std::string escapedJson(std::string_view document) {
    return replaced(document, escapeInJson);
}

std::string firstColumns(std::string_view utf8, size_t columns) {
    std::string_view rest = utf8;
    for (size_t used = 0; !rest.empty();) {
        const auto [value, sizeBytes] = decode(rest);
        used += columnsOf(value);
        if (used > columns) break;
        rest.remove_prefix(sizeBytes);
    }
    return std::string(utf8.substr(0, utf8.size() - rest.size()));
}

size_t columnsOf(std::string_view utf8) {
    size_t columns = 0;
    while (!utf8.empty()) {
        const bool isColour = utf8.starts_with("\x1b[");
        const auto [value, sizeBytes] = decode(utf8);
        if (!isColour) columns += columnsOf(value);
        const size_t step = isColour ? utf8.find('m') + 1 : sizeBytes;
        utf8.remove_prefix(std::clamp<size_t>(step, 1, utf8.size()));
    }
    return columns;
}

std::string shortened(std::string_view text) {
    constexpr size_t kShown = 200;
    if (text.size() <= kShown) return std::string(text);
    size_t end = kShown;
    while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) end--;
    return std::string(text.substr(0, end)) + " ... (" + std::to_string(text.size()) + " bytes)";
}

}  // namespace inspect
