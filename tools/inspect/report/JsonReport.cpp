#include "inspect/report/JsonReport.h"

#include <nlohmann/json.hpp>

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/report/TagText.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using Json = nlohmann::ordered_json;

struct ValueToJson {
    Json operator()(int32_t value) const { return {{"type", "int32"}, {"value", value}}; }
    Json operator()(int64_t value) const { return {{"type", "int64"}, {"value", value}}; }
    Json operator()(const std::string& value) const {
        Json json = {{"type", "string"}, {"value", toUtf8(value)}};
        if (!isUtf8(value)) json["bytes"] = hex(ByteVector(value.begin(), value.end()), "");
        return json;
    }
    Json operator()(const ByteVector& value) const {
        return {{"type", "buffer"}, {"value", hex(value, "")}};
    }
};

Json keysToJson(const Entries& entries) {
    Json keys = Json::object();
    for (const auto& [key, value] : entries) keys[key] = std::visit(ValueToJson{}, value);
    return keys;
}

Json mimeToJson(const Entries& entries) {
    const auto* mime = findValue<std::string>(entries, AMEDIAFORMAT_KEY_MIME);
    return mime != nullptr ? Json(*mime) : Json();
}

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json codecDataToJson(const std::vector<CodecDatum>& data) {
    Json array = Json::array();
    for (const CodecDatum& datum : data) {
        array.push_back({{"key", datum.key},
                         {"bytes", datum.sizeBytes ? Json(*datum.sizeBytes) : Json()},
                         {"text", datum.words}});
    }
    return array;
}

Json logToJson(const std::vector<host::LogLine>& log) {
    Json array = Json::array();
    for (const auto& [priority, tag, text] : log) {
        array.push_back({{"priority", priority}, {"tag", tag}, {"text", text}});
    }
    return array;
}

Json rowToJson(const Row& row) {
    Json json = {{"offset", row.offset},
                 {"bytes", hex(row.bytes, "")},
                 {"depth", row.depth},
                 {"name", row.name},
                 {"value", textOrNull(row.value)}};
    if (row.bits > 0) json["bits"] = row.bits;
    return json;
}

Json explanationsToJson(const std::vector<Record>& explanations) {
    Json array = Json::array();
    for (const Record& each : explanations) {
        Json rows = Json::array();
        for (const Row& row : each.rows) rows.push_back(rowToJson(row));
        array.push_back({{"key", each.key}, {"bytes", each.sizeBytes}, {"rows", rows}});
    }
    return array;
}

Json callsToJson(const std::vector<Call>& calls) {
    Json array = Json::array();
    for (const auto& [operation, result, parameters, entries] : calls) {
        array.push_back({{"operation", operation},
                         {"result", textOrNull(result)},
                         {"parameters", explanationsToJson(parameters)},
                         {"metadata", keysToJson(entries)}});
    }
    return array;
}

Json keyFramesToJson(const KeyFrames& frames) {
    Json disputes = Json::array();
    for (const auto& [sample, timeUs, libraryCallsKey] : frames.firstDisputed) {
        disputes.push_back({{"sample", sample},
                            {"timeUs", timeUs ? Json(*timeUs) : Json()},
                            {"library", libraryCallsKey},
                            {"marked", !libraryCallsKey}});
    }
    return {{"markedBy", frames.isMarkedByContainer ? "container" : "demuxer"},
            {"samples", frames.samples},
            {"unreadable", frames.unreadable},
            {"library", frames.library},
            {"marked", frames.marked},
            {"disputed", frames.disputed},
            {"firstOfLibrary", frames.firstOfLibrary},
            {"firstDisputed", disputes}};
}

const char* kindName(Kind kind) {
    switch (kind) {
        case Kind::kVideo: return "video";
        case Kind::kAudio: return "audio";
        case Kind::kText: return "text";
        case Kind::kOther: break;
    }
    return "other";
}

Json trackToJson(const TrackReport& track) {
    Json json = {{"index", track.stream.index},
                 {"kind", kindName(track.stream.kind)},
                 {"codec", track.stream.codec}};
    if (track.stream.kind == Kind::kOther) return json;
    json["codecType"] = track.stream.codecType;
    json["mime"] = mimeToJson(track.found.entries);
    json["verdict"] = toString(track.found.verdict.play);
    json["reason"] = textOrNull(track.found.verdict.reason);
    json["notes"] = track.found.notes;
    const PcmFormat* pcm = findPcmFormat(track.stream);
    if (isPcm(track.stream))
        json["conversionTo16"] = pcm != nullptr ? Json(pcm->conversion) : Json();
    if (track.dump) json["dump"] = {{"path", track.dump->path}, {"frames", track.dump->frames}};
    json["codecData"] = codecDataToJson(track.found.codecData);
    json["keys"] = keysToJson(track.found.entries);
    json["log"] = logToJson(track.found.log);
    if (!track.explanations.empty()) json["explanations"] = explanationsToJson(track.explanations);
    if (track.keyFrames) json["keyFrames"] = keyFramesToJson(*track.keyFrames);
    if (!track.component.empty()) json["component"] = callsToJson(track.component);
    if (!track.legacy.empty()) json["legacy"] = callsToJson(track.legacy);
    return json;
}

Json tagsToJson(const Tags& tags) {
    Json array = Json::array();
    for (const Tag& tag : tags.list) {
        Json json = tagToJson(tag);
        json["keys"] = keysToJson(tag.entries);
        json["log"] = logToJson(tag.log);
        array.push_back(json);
    }
    return array;
}

Json fileToJson(const FileReport& report) {
    Json json = {{"path", report.path}, {"error", textOrNull(report.error)}};
    if (!report.error.empty()) return json;
    json["truncated"] = textOrNull(report.truncation.value_or(""));
    json["container"] = {{"format", report.format},
                         {"name", report.formatName},
                         {"mime", mimeToJson(report.entries)},
                         {"keys", keysToJson(report.entries)}};
    json["tracks"] = Json::array();
    for (const TrackReport& track : report.tracks) json["tracks"].push_back(trackToJson(track));
    if (report.tags.areLookedFor) json["tags"] = tagsToJson(report.tags);
    return json;
}

}  // namespace

void printJson(std::ostream& out, const std::vector<FileReport>& reports) {
    constexpr int kSpaces = 2;
    Json files = Json::array();
    for (const FileReport& report : reports) files.push_back(fileToJson(report));
    const Json document = {{"version", android::ZRCODECPARSER_VERSION}, {"files", files}};
    out << document.dump(kSpaces, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace inspect
