#include "inspect/report/JsonReport.h"

#include <nlohmann/json.hpp>

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/report/TagRows.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using Json = nlohmann::ordered_json;

// As it is; what is no UTF-8 as if it were ISO-8859-1.
Json toText(const std::string& text) {
    return toUtf8(text);
}

// The path, and in hex beside it the bytes of one that is no UTF-8.
void addPath(Json& json, const char* key, const std::string& path) {
    json[key] = toText(path);
    if (!isUtf8(path))
        json[key + std::string("Bytes")] = hex(ByteVector(path.begin(), path.end()), "");
}

struct ValueToJson {
    Json operator()(int32_t value) const { return {{"type", "int32"}, {"value", value}}; }
    Json operator()(int64_t value) const { return {{"type", "int64"}, {"value", value}}; }
    Json operator()(const std::string& value) const {
        Json json = {{"type", "string"}, {"value", toText(value)}};
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
    return mime != nullptr ? toText(*mime) : Json();
}

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : toText(text);
}

Json textsToJson(const std::vector<std::string>& texts) {
    Json array = Json::array();
    for (const std::string& text : texts) array.push_back(toText(text));
    return array;
}

Json codecDataToJson(const std::vector<CodecDatum>& data) {
    Json array = Json::array();
    for (const CodecDatum& datum : data) {
        array.push_back({{"key", datum.key},
                         {"bytes", datum.sizeBytes ? Json(*datum.sizeBytes) : Json()},
                         {"text", toText(datum.words)}});
    }
    return array;
}

Json logToJson(const std::vector<host::LogLine>& log) {
    Json array = Json::array();
    for (const auto& [priority, tag, text] : log) {
        array.push_back({{"priority", priority}, {"tag", tag}, {"text", toText(text)}});
    }
    return array;
}

Json rowToJson(const Row& row) {
    Json json = {{"offset", row.offset},
                 {"bytes", hex(row.bytes, "")},
                 {"depth", row.depth},
                 {"name", toText(row.name)},
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
    return {{"examined", frames.isExamined},
            {"markedBy", frames.isMarkedByContainer ? "container" : "demuxer"},
            {"samples", frames.samples},
            {"unreadable", frames.unreadable},
            {"library", frames.library},
            {"marked", frames.marked},
            {"disputed", frames.disputed},
            {"firstOfLibrary", frames.firstOfLibrary},
            {"firstDisputed", disputes}};
}

Json trackToJson(const TrackReport& track) {
    Json json = {{"index", track.stream.index},
                 {"kind", toString(track.stream.kind)},
                 {"codec", toText(track.stream.codec)}};
    if (track.stream.kind == Kind::kOther) return json;
    json["codecType"] = track.stream.codecType;
    json["mime"] = mimeToJson(track.found.entries);
    json["verdict"] = toString(track.found.verdict.play);
    json["reason"] = textOrNull(track.found.verdict.reason);
    json["notes"] = textsToJson(track.found.notes);
    const PcmFormat* pcm = findPcmFormat(track.stream);
    if (isPcm(track.stream))
        json["conversionTo16"] = pcm != nullptr ? Json(pcm->conversion) : Json();
    if (track.dump) {
        addPath(json["dump"], "path", track.dump->path);
        json["dump"]["frames"] = track.dump->frames;
    }
    json["codecData"] = codecDataToJson(track.found.codecData);
    json["keys"] = keysToJson(track.found.entries);
    json["log"] = logToJson(track.found.log);
    if (!track.explanations.empty()) json["explanations"] = explanationsToJson(track.explanations);
    if (track.keyFrames) json["keyFrames"] = keyFramesToJson(*track.keyFrames);
    if (!track.component.empty()) json["component"] = callsToJson(track.component);
    if (!track.legacy.empty()) json["legacy"] = callsToJson(track.legacy);
    return json;
}

Json pictureToJson(const Tag& tag) {
    const ByteVector* data = tag.picture();
    if (data == nullptr) return {};
    Json picture = {{"bytes", data->size()}, {"kind", pictureKind(*data).name}};
    if (!tag.pictureFile.empty()) addPath(picture, "file", tag.pictureFile);
    return picture;
}

Json tagToJson(const Tag& tag) {
    Json eightBit = Json::array();
    for (const TagRow* row : eightBitRows(tag.entries)) eightBit.push_back(row->key);
    return {{"kind", tag.kind},
            {"place", toText(tag.place)},
            {"names", textsToJson(tag.names)},
            {"picture", pictureToJson(tag)},
            {"eightBit", eightBit},
            {"notes", textsToJson(tag.notes)},
            {"keys", keysToJson(tag.entries)},
            {"log", logToJson(tag.log)}};
}

Json tagsToJson(const Tags& tags) {
    Json array = Json::array();
    for (const Tag& tag : tags.list) array.push_back(tagToJson(tag));
    return array;
}

Json fileToJson(const FileReport& report) {
    Json json;
    addPath(json, "path", report.path);
    json["error"] = textOrNull(report.error);
    if (!report.error.empty()) return json;
    json["truncated"] = textOrNull(report.truncation.value_or(""));
    if (report.junk) json["junk"] = *report.junk;
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
    const std::string text = document.dump(kSpaces, ' ', false, Json::error_handler_t::replace);
    out << escapedJson(text) << '\n';
}

}  // namespace inspect
