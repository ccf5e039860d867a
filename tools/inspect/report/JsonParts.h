// The values that all parts of the JSON document are made of, and the part about a track.

#pragma once

#include <optional>
#include <span>
#include <string>

#include "inspect/callers/Format.h"
#include "inspect/report/JsonReport.h"

namespace inspect {

Json toText(const std::string& text);  // as it is; what is no UTF-8 as if it were ISO-8859-1
Json textOrNull(const std::string& text);

// The path, and in hex beside it the bytes of one that is no UTF-8.
void addPath(Json& json, const char* key, const std::string& path);

Json keysToJson(const Entries& entries);
Json mimeToJson(const Entries& entries);
Json lineToJson(const host::LogLine& line);

template <typename List, typename ToJson>
Json arrayOf(const List& list, ToJson toJson) {
    Json array = Json::array();
    for (const auto& each : list) array.push_back(toJson(each));
    return array;
}

template <typename T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

Json verdictToJson(const Verdict& verdict);
Json verdictToJson(const FileVerdict& verdict);
Json stepToJson(const Step& step);

// By the device's name.
template <typename Verdicts>
Json verdictsToJson(std::span<const PretendedDevice> devices, const Verdicts& verdicts) {
    Json array = Json::array();
    for (size_t i = 0; i < verdicts.size(); i++) {
        Json json = {{"name", toText(devices[i].description.name)}};
        json.update(verdictToJson(verdicts[i]));
        array.push_back(std::move(json));
    }
    return array;
}

Json trackToJson(const TrackReport& track, std::span<const PretendedDevice> devices);

}  // namespace inspect
