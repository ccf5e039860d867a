#include "inspect/page/Views.h"

#include <algorithm>
#include <array>

#include "inspect/base/Utf8.h"
#include "inspect/report/TagRows.h"

namespace inspect {
namespace {

constexpr size_t kMaxEntries = 200;
constexpr size_t kMaxHexDigits = 128;

std::string valueText(const Json& value) {
    const Json& own = value["value"];
    if (!own.is_string()) return own.dump();
    const std::string& text = own.get_ref<const std::string&>();
    if (value["type"] != "buffer") return shortened(text);
    const std::string size = numbered(" ... (", text.size() / 2, " bytes)");
    return text.size() <= kMaxHexDigits ? text : text.substr(0, kMaxHexDigits) + size;
}

bool isForPage(std::string_view picture) {
    constexpr auto kKinds = std::to_array<std::string_view>({"JPEG", "PNG", "GIF", "WebP"});
    return std::ranges::count(kKinds, picture) > 0;
}

std::string mediaType(std::string name) {
    for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    return "image/" + name;
}

Json pictureView(const Tag& tag, Room& room) {
    const ByteVector* data = tag.picture();
    if (data == nullptr) return {};
    const std::string kind(pictureKind(*data).name);
    Json view = {{"kind", kind}, {"bytes", data->size()}, {"source", nullptr}, {"why", nullptr}};
    if (!isForPage(kind)) {
        view["why"] = "of a kind that this page does not show";
    } else if (data->size() > room.pictures) {
        view["why"] = "too large for this page";
    } else {
        room.pictures -= data->size();
        view["source"] = "data:" + mediaType(kind) + ";base64," + base64(*data);
    }
    return view;
}

Json tagRowsView(const Tag& tag) {
    Json rows = Json::array();
    for (const TagRow& row : tagRows()) {
        const auto* text = findValue<std::string>(tag.entries, row.key);
        const auto* number = findValue<int32_t>(tag.entries, row.key);
        if (text != nullptr) {
            rows.push_back({{"name", row.name},
                            {"text", shortened(toUtf8(*text))},
                            {"isLatin", !isUtf8(*text)}});
        }
        if (number != nullptr) {
            rows.push_back({{"name", row.name},
                            {"text", std::to_string(*number) + row.unit},
                            {"isLatin", false}});
        }
    }
    return rows;
}

}  // namespace

Json verdictView(const std::string& code) {
    std::string words = code;
    std::ranges::replace(words, '-', ' ');
    const bool isGood = code == "plays";
    const bool isHalf = code == "plays-in-part" || code == "plays-in-software";
    return {{"verdict", words},
            {"sign", isGood   ? "\u2713"
                     : isHalf ? "\u25d0"
                              : "\u2717"},
            {"tone", isGood   ? "good"
                     : isHalf ? "half"
                              : "bad"}};
}

Json firstOf(const Json& list, size_t count) {
    Json first = Json::array();
    for (size_t i = 0; i < std::min(list.size(), count); i++) first.push_back(list[i]);
    return first;
}

Json moreThan(size_t shown, size_t all, const std::string& what) {
    if (all <= shown) return {};
    return joined({numbered("and ", all - shown, " more "), what, ", which are not shown"});
}

Json presentText(const std::string& text) {
    return text.empty() ? Json() : Json(toUtf8(text));
}

std::string devicesHtml(const Json& devices) {
    Json views = Json::array();
    bool hasReasons = false;
    for (const Json& device : devices) {
        views.push_back(verdictView(device["verdict"].get<std::string>()));
        for (const char* key : {"name", "reason", "decoder"}) views.back()[key] = device[key];
        hasReasons |= !device["reason"].is_null();
    }
    return fillIn("devices", {{"devices", views}, {"hasReasons", hasReasons}});
}

std::string keysHtml(const Json& keys, const std::string& title) {
    Json rows = Json::array();
    for (const auto& [key, value] : keys.items()) {
        if (rows.size() == kMaxEntries) break;
        rows.push_back({{"key", key}, {"type", value["type"]}, {"value", valueText(value)}});
    }
    return fillIn(
            "keys",
            {{"hasKeys", !rows.empty()}, {"title", title}, {"count", keys.size()}, {"keys", rows}});
}

std::string logHtml(const Json& log) {
    constexpr std::string_view kLetters = "??VDIWEF";
    Json lines = Json::array();
    for (const Json& line : firstOf(log, kMaxEntries)) {
        const auto priority = static_cast<size_t>(std::clamp(line["priority"].get<int>(), 0, 7));
        lines.push_back(std::string(1, kLetters[priority]) + "/" + line["tag"].get<std::string>() +
                        ": " + shortened(line["text"].get<std::string>()));
    }
    return fillIn("log", {{"hasLines", !lines.empty()},
                          {"count", log.size()},
                          {"more", moreThan(lines.size(), log.size(), "lines")},
                          {"lines", lines}});
}

Json tagView(const Tag& tag, const Json& json, Room& room) {
    std::string names;
    for (const std::string& name : tag.names) {
        if (names.size() > kMaxEntries) break;
        names.append(names.empty() ? "" : " ").append(toUtf8(name));
    }
    return {{"kind", json["kind"]},
            {"place", json["place"]},
            {"rows", tagRowsView(tag)},
            {"picture", pictureView(tag, room)},
            {"names", presentText(shortened(names))},
            {"count", tag.names.size()},
            {"notes", firstOf(json["notes"], kMaxEntries)},
            {"keysHtml", keysHtml(json["keys"], "Keys stored of it")},
            {"logHtml", logHtml(json["log"])}};
}

}  // namespace inspect
