#include "inspect/report/TextParts.h"

#include <algorithm>

#include "inspect/base/Utf8.h"
#include "inspect/callers/Pictures.h"
#include "inspect/report/TagRows.h"

namespace inspect {
namespace {

bool isAscii(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void printRow(std::ostream& out, const std::string& name, const std::string& text) {
    constexpr size_t kNameWidth = 15;
    out << kIndent << padded(name, kNameWidth) << "  " << text << '\n';
}

void printText(std::ostream& out, const TagRow& row, const std::string& text,
               const TextStyle& style) {
    std::string shown = text.empty() ? "(empty)" : escaped(shortened(toUtf8(text)));
    if (!isUtf8(text)) shown += paint(style, kDim, "  (not UTF-8, shown as Latin-1)");
    printRow(out, row.name, shown);
}

void printFacts(std::ostream& out, const Tag& tag, const TextStyle& style) {
    for (const TagRow& row : tagRows()) {
        const auto* text = findValue<std::string>(tag.entries, row.key);
        if (text != nullptr) printText(out, row, *text, style);
        const auto* number = findValue<int32_t>(tag.entries, row.key);
        if (number != nullptr) printRow(out, row.name, std::to_string(*number) + row.unit);
    }
    if (const ByteVector* picture = tag.picture()) {
        std::string text = std::to_string(picture->size()) + " bytes, ";
        text += pictureKind(*picture).name;
        if (!tag.pictureFile.empty()) text.append(" -> ").append(escaped(tag.pictureFile));
        printRow(out, "picture", text);
    }
}

void printEightBit(std::ostream& out, const Tag& tag, const TextStyle& style) {
    std::string names;
    bool areAscii = true;
    for (const TagRow* row : eightBitRows(tag.entries)) {
        const auto* text = findValue<std::string>(tag.entries, row->key);
        const bool isHarmless = text == nullptr || isAscii(*text);
        names.append(names.empty() ? "" : ", ").append(row->name);
        if (isHarmless) names += " (ASCII)";
        areAscii = areAscii && isHarmless;
    }
    constexpr const char* kHint = "encoding unknown, which is the usual cause of garbled titles";
    if (!areAscii) names += ": " + paint(style, kYellow, kHint);
    if (!names.empty()) printRow(out, "8-bit text", names);
}

void printTag(std::ostream& out, const Tag& tag, const TextStyle& style) {
    out << "      tags   " << paint(style, kBold, tag.kind) << ", " << tag.place << '\n';
    printFacts(out, tag, style);
    printEightBit(out, tag, style);
    const bool isId3 = tag.kind.starts_with("ID3");
    std::string names;
    for (const std::string& name : tag.names) {
        names.append(names.empty() ? "" : " ").append(toUtf8(name));
    }
    if (!names.empty()) printRow(out, isId3 ? "frames" : "comments", escaped(shortened(names)));
    for (const std::string& note : tag.notes) {
        out << kIndent << paint(style, kYellow, escaped(note)) << '\n';
    }
    if (style.keys) printKeys(out, tag.entries, kIndent);
    if (style.log) printLog(out, tag.log, style);
}

}  // namespace

void printTags(std::ostream& out, const Tags& tags, const TextStyle& style) {
    if (tags.areLookedFor && tags.list.empty()) out << "      tags   none\n";
    for (const Tag& tag : tags.list) printTag(out, tag, style);
}

}  // namespace inspect
