#include "inspect/collection/Row.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>

#include "inspect/base/Bytes.h"

namespace inspect {
namespace {

// Reads values by key, none where a key is absent or null.
template <typename T>
std::optional<T> find(const Json& json, const char* key) {
    const auto value = json.find(key);
    if (value == json.end() || value->is_null()) return {};
    return value->get<T>();
}

// Programs that keep every number as double write large ones with an exponent.
int64_t integerOf(const Json& value) {
    if (value.is_number_float() && !(std::abs(value.get<double>()) < 0x1p63)) {
        throw FileError("is no line of --jsonl: " + value.dump() + " is out of range");
    }
    return value.get<int64_t>();
}

std::optional<int64_t> findInteger(const Json& json, const char* key) {
    const auto value = json.find(key);
    if (value == json.end() || value->is_null()) return {};
    return integerOf(*value);
}

std::string textOf(const Json& json, const char* key) {
    return find<std::string>(json, key).value_or("");
}

const Json& listOf(const Json& json, const char* key) {
    static const Json kNone = Json::array();
    const auto list = json.find(key);
    return list != json.end() && list->is_array() ? *list : kNone;
}

std::string pathOf(const Json& json) {
    const ByteVector bytes = fromHex(textOf(json, "pathBytes"));
    return bytes.empty() ? json.at("path").get<std::string>()
                         : std::string(bytes.begin(), bytes.end());
}

PlayRow playOf(const Json& json) {
    PlayRow play = {.device = textOf(json, "name"),
                    .verdict = json.at("verdict").get<std::string>(),
                    .plays = json.at("plays").get<bool>(),
                    .reason = textOf(json, "reason"),
                    .decoder = textOf(json, "decoder")};
    const auto fix = json.find("fix");
    if (fix == json.end() || fix->is_null()) return play;
    play.fix = textOf(*fix, "sentence");
    const Json& commands = listOf(*fix, "commands");
    if (!commands.empty()) play.command = commands.front().get<std::string>();
    return play;
}

std::vector<PlayRow> playsOf(const Json& json) {
    std::vector<PlayRow> plays;
    for (const Json& each : listOf(json, "devices")) plays.push_back(playOf(each));
    return plays;
}

TrackRow trackOf(const Json& json) {
    return {.index = integerOf(json.at("index")),
            .kind = textOf(json, "kind"),
            .codec = textOf(json, "codec"),
            .mime = textOf(json, "mime"),
            .profile = textOf(json, "profile"),
            .level = textOf(json, "level"),
            .durationUs = findInteger(json, "durationUs"),
            .width = findInteger(json, "width"),
            .height = findInteger(json, "height"),
            .frameRate = find<double>(json, "frameRate"),
            .channels = findInteger(json, "channels"),
            .sampleRate = findInteger(json, "sampleRate"),
            .bitRate = findInteger(json, "bitRate"),
            .bitDepth = findInteger(json, "bitDepth"),
            .plays = playsOf(json)};
}

// Pictures stay out.
void addTagValues(const Json& tag, std::vector<TagValue>& values) {
    const std::string kind = textOf(tag, "kind");
    for (const auto& [name, entry] : tag.at("keys").items()) {
        const Json& value = entry.at("value");
        if (entry.at("type") == "buffer" || value.is_structured()) continue;
        values.push_back({kind, name, value.is_string() ? value.get<std::string>() : value.dump()});
    }
}

void keepOnly(Json& json, std::initializer_list<std::string_view> keys) {
    Json kept = Json::object();
    for (auto& [key, value] : json.items()) {
        if (std::ranges::count(keys, key) > 0) kept[key] = std::move(value);
    }
    json = std::move(kept);
}

FileRow readRow(const Json& line) {
    FileRow row;
    row.path = pathOf(line);
    row.sizeBytes = findInteger(line, "sizeBytes");
    row.modifiedNs = findInteger(line, "modifiedNs");
    row.error = textOf(line, "error");
    row.plays = playsOf(line);
    if (!row.error.empty()) return row;
    row.format = textOf(line.at("container"), "format");
    row.mime = textOf(line.at("container"), "mime");
    row.durationUs = findInteger(line, "durationUs");
    for (const Json& track : line.at("tracks")) row.tracks.push_back(trackOf(track));
    for (const Json& tag : listOf(line, "tags")) addTagValues(tag, row.tags);
    return row;
}

}  // namespace

bool meets(const std::string& check, const FileRow& row) {
    const auto playsAll = [](const std::vector<PlayRow>& plays) {
        return std::ranges::all_of(plays, &PlayRow::plays);
    };
    if (check.empty()) return true;
    if (check == "all") return playsAll(row.plays);
    const bool isRead =
            !row.plays.empty() && row.plays.front().verdict != toString(FilePlay::kNoParser);
    return std::ranges::all_of(row.tracks, [&](const TrackRow& track) {
        return track.kind != check || (isRead && playsAll(track.plays));
    });
}

FileRow rowOf(const Json& line) {
    try {
        return readRow(line);
    } catch (const Json::exception& error) {
        throw FileError(std::string("is no line of --jsonl: ") + error.what());
    }
}

Json digestOf(Json line) {
    keepOnly(line, {"path", "pathBytes", "sizeBytes", "modifiedNs", "error", "durationUs",
                    "devices", "container", "tracks", "tags"});
    if (!line.contains("tracks")) return line;
    line["container"].erase("keys");
    for (Json& track : line["tracks"]) {
        keepOnly(track, {"index", "kind", "codec", "mime", "profile", "level", "durationUs",
                         "width", "height", "frameRate", "channels", "sampleRate", "bitRate",
                         "bitDepth", "devices"});
    }
    return line;
}

}  // namespace inspect
