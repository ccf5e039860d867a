#include "inspect/report/TagText.h"

#include <algorithm>
#include <array>

#include "inspect/base/Utf8.h"
#include "inspect/callers/Pictures.h"
#include "inspect/report/TextEntries.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;
using Json = nlohmann::ordered_json;

// What a person knows a key by.
struct Row {
    const char* name;
    const char* key;
    uint32_t mixedEncodingBit = 0;
    const char* unit = "";
};

// The platform's keys are no constants at compile time.
const auto& rows() {
    // clang-format off
    static const auto kRows = std::to_array<Row>({
        {"title",           AMEDIAFORMAT_KEY_TITLE,                0x20},
        {"artist",          AMEDIAFORMAT_KEY_ARTIST,               0x02},
        {"album",           AMEDIAFORMAT_KEY_ALBUM,                0x01},
        {"album artist",    AMEDIAFORMAT_KEY_ALBUMARTIST,          0x04},
        {"composer",        AMEDIAFORMAT_KEY_COMPOSER,             0x08},
        {"lyricist",        AMEDIAFORMAT_KEY_LYRICIST},
        {"author",          AMEDIAFORMAT_KEY_AUTHOR},
        {"genre",           AMEDIAFORMAT_KEY_GENRE,                0x10},
        {"year",            AMEDIAFORMAT_KEY_YEAR},
        {"date",            AMEDIAFORMAT_KEY_DATE},
        {"track",           AMEDIAFORMAT_KEY_CDTRACKNUMBER},
        {"disc",            AMEDIAFORMAT_KEY_DISCNUMBER},
        {"compilation",     AMEDIAFORMAT_KEY_COMPILATION},
        {"description",     ZREAMEDIAFORMAT_KEY_USERMESSAGE},
        {"lyrics",          ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS},
        {"recording mode",  ZREAMEDIAFORMAT_KEY_RECMODE},
        {"loop",            AMEDIAFORMAT_KEY_LOOP},
        {"haptic channels", AMEDIAFORMAT_KEY_HAPTIC_CHANNEL_COUNT},
        {"encoder delay",   AMEDIAFORMAT_KEY_ENCODER_DELAY,        0, " samples"},
        {"encoder padding", AMEDIAFORMAT_KEY_ENCODER_PADDING,      0, " samples"},
    });
    // clang-format on
    return kRows;
}

bool isAscii(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The texts that are marked as 8-bit, whose real encoding nobody knows.
std::vector<const Row*> eightBitRows(const Entries& entries) {
    std::vector<const Row*> found;
    const auto* mask = findValue<int32_t>(entries, ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE);
    for (const Row& row : rows()) {
        if (mask != nullptr && (static_cast<uint32_t>(*mask) & row.mixedEncodingBit) != 0) {
            found.push_back(&row);
        }
    }
    return found;
}

void printRow(std::ostream& out, const std::string& name, const std::string& text) {
    constexpr size_t kNameWidth = 15;
    out << kIndent << padded(name, kNameWidth) << "  " << text << '\n';
}

void printText(std::ostream& out, const Row& row, const std::string& text, const TextStyle& style) {
    std::string shown = text.empty() ? "(empty)" : escaped(shortened(toUtf8(text)));
    if (!isUtf8(text)) shown += paint(style, kDim, "  (not UTF-8, shown as Latin-1)");
    printRow(out, row.name, shown);
}

void printFacts(std::ostream& out, const Tag& tag, const TextStyle& style) {
    for (const Row& row : rows()) {
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
    for (const Row* row : eightBitRows(tag.entries)) {
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

Json tagToJson(const Tag& tag) {
    Json eightBit = Json::array();
    for (const Row* row : eightBitRows(tag.entries)) eightBit.push_back(row->key);
    Json names = Json::array();
    for (const std::string& name : tag.names) names.push_back(toUtf8(name));
    Json picture;
    if (const ByteVector* data = tag.picture()) {
        picture = {{"bytes", data->size()}, {"kind", pictureKind(*data).name}};
        if (!tag.pictureFile.empty()) picture["file"] = tag.pictureFile;
    }
    return {{"kind", tag.kind},   {"place", tag.place},   {"names", names},
            {"picture", picture}, {"eightBit", eightBit}, {"notes", tag.notes}};
}

}  // namespace inspect
