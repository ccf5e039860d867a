#include "inspect/report/JsonReport.h"

#include <nlohmann/json.hpp>

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/report/TagRows.h"
#include "inspect/report/VerifyText.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using Json = nlohmann::ordered_json;

// Grows when a key goes or changes its meaning, not when one comes.
constexpr int kSchemaVersion = 1;

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

Json datumToJson(const CodecDatum& datum) {
    return {{"key", datum.key}, {"bytes", orNull(datum.sizeBytes)}, {"text", toText(datum.words)}};
}

Json lineToJson(const host::LogLine& line) {
    return {{"priority", line.priority}, {"tag", line.tag}, {"text", toText(line.text)}};
}

Json rowToJson(const Row& row) {
    Json json = {{"offset", row.offset},
                 {"bytes", hex(row.bytes, "")},
                 {"depth", row.depth},
                 {"name", toText(row.name)},
                 {"value", textOrNull(row.value)}};
    if (row.number) json["number"] = *row.number;
    if (row.bits > 0) json["bits"] = row.bits;
    return json;
}

Json recordToJson(const Record& record) {
    return {{"key", record.key},
            {"bytes", record.sizeBytes},
            {"rows", arrayOf(record.rows, rowToJson)}};
}

Json callToJson(const Call& call) {
    return {{"operation", call.operation},
            {"result", textOrNull(call.result)},
            {"parameters", arrayOf(call.parameters, recordToJson)},
            {"metadata", keysToJson(call.entries)}};
}

Json keyFramesToJson(const KeyFrames& frames) {
    const auto disputeToJson = [](const auto& dispute) -> Json {
        const auto& [sample, timeUs, libraryCallsKey] = dispute;
        return {{"sample", sample},
                {"timeUs", orNull(timeUs)},
                {"library", libraryCallsKey},
                {"marked", !libraryCallsKey}};
    };
    return {{"examined", frames.isExamined},
            {"markedBy", frames.isMarkedByContainer ? "container" : "demuxer"},
            {"samples", frames.samples},
            {"unreadable", frames.unreadable},
            {"library", frames.library},
            {"marked", frames.marked},
            {"disputed", frames.disputed},
            {"firstOfLibrary", frames.firstOfLibrary},
            {"firstDisputed", arrayOf(frames.firstDisputed, disputeToJson)}};
}

Json verdictToJson(const Verdict& verdict) {
    return {{"verdict", toString(verdict.play)},
            {"plays", plays(verdict.play)},
            {"reason", textOrNull(verdict.reason)},
            {"decoder", textOrNull(verdict.decoder)},
            {"notKnown", arrayOf(verdict.notKnown, toText)}};
}

Json verdictToJson(const FileVerdict& verdict) {
    return {{"verdict", toString(verdict.play)},
            {"plays", verdict.play == FilePlay::kPlays},
            {"reason", textOrNull(verdict.reason)}};
}

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

Json fixToJson(const std::optional<Fix>& fix) {
    if (!fix) return {};
    Json commands = Json::array();
    if (!fix->command.empty()) commands.push_back(toText(fix->command));
    return {{"sentence", toText(fix->sentence)},
            {"commands", commands},
            {"device", textOrNull(fix->device)}};
}

Json stepToJson(const Step& step) {
    return {{"what", toText(step.what)}, {"answer", toText(step.answer)}};
}

Json faultyToJson(const FaultySamples& samples) {
    if (samples.count == 0) return {{"count", 0}, {"first", nullptr}};
    const auto& [sample, timeUs, offset] = samples.first;
    return {{"count", samples.count},
            {"first",
             {{"sample", sample}, {"timeUs", orNull(timeUs)}, {"offset", orNull(offset)}}}};
}

Json verificationToJson(const Verification& found) {
    Json json = {{"fault", textOrNull(faultText(found))},
                 {"samples", found.samples},
                 {"readable", found.readable},
                 {"outside", faultyToJson(found.outside)},
                 {"missingBytes", found.missingBytes},
                 {"cut", faultyToJson(found.cut)},
                 {"unitLengths", found.hasUnitLengths},
                 {"brokenUnits", faultyToJson(found.brokenUnits)},
                 {"backward", faultyToJson(found.backward)},
                 {"gapAtUs", orNull(found.gapAtUs)},
                 {"gapUs", found.gapUs},
                 {"endUs", orNull(found.endUs)},
                 {"readToEnd", found.isReadToEnd}};
    if (!found.isVideo) return json;
    json["keyFrames"] = found.keyFrames;
    json["keyDistance"] = found.keyDistance;
    json["keyDistanceUs"] = found.keyDistanceUs;
    return json;
}

Json trackToJson(const TrackReport& track, std::span<const PretendedDevice> devices) {
    Json json = {{"index", track.stream.index},
                 {"kind", toString(track.stream.kind)},
                 {"codec", toText(track.stream.codec)}};
    if (track.stream.kind == Kind::kOther) return json;
    json["codecType"] = track.stream.codecType;
    json["mime"] = mimeToJson(track.found.entries);
    json.update(verdictToJson(track.verdicts.front()));
    json["chain"] = arrayOf(track.verdicts.front().chain, stepToJson);
    json["devices"] = verdictsToJson(devices, track.verdicts);
    json["notes"] = arrayOf(track.found.notes, toText);
    const PcmFormat* pcm = findPcmFormat(track.stream);
    if (isPcm(track.stream))
        json["conversionTo16"] = pcm != nullptr ? Json(pcm->conversion) : Json();
    if (track.dump) {
        addPath(json["dump"], "path", track.dump->path);
        json["dump"]["frames"] = track.dump->frames;
    }
    json["codecData"] = arrayOf(track.found.codecData, datumToJson);
    json["keys"] = keysToJson(track.found.entries);
    json["log"] = arrayOf(track.found.log, lineToJson);
    if (!track.explanations.empty())
        json["explanations"] = arrayOf(track.explanations, recordToJson);
    if (track.keyFrames) json["keyFrames"] = keyFramesToJson(*track.keyFrames);
    if (track.verification) json["verify"] = verificationToJson(*track.verification);
    if (!track.component.empty()) json["component"] = arrayOf(track.component, callToJson);
    if (!track.legacy.empty()) json["legacy"] = arrayOf(track.legacy, callToJson);
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
    const auto keyOf = [](const TagRow* row) { return row->key; };
    return {{"kind", tag.kind},
            {"place", toText(tag.place)},
            {"names", arrayOf(tag.names, toText)},
            {"picture", pictureToJson(tag)},
            {"eightBit", arrayOf(eightBitRows(tag.entries), keyOf)},
            {"notes", arrayOf(tag.notes, toText)},
            {"keys", keysToJson(tag.entries)},
            {"log", arrayOf(tag.log, lineToJson)}};
}

Json deviceToJson(const PretendedDevice& device) {
    const DeviceDescription& description = device.description;
    return {{"name", toText(description.name)},
            {"decoders", description.decoders.size()},
            {"missingFiles", arrayOf(description.missingFiles, toText)},
            {"warnings", arrayOf(description.warnings, toText)}};
}

Json fileToJson(const FileReport& report, std::span<const PretendedDevice> devices) {
    Json json;
    addPath(json, "path", report.path);
    json.update(verdictToJson(report.verdicts.front()));
    json["devices"] = verdictsToJson(devices, report.verdicts);
    if (!report.fixes.empty()) json["fix"] = fixToJson(report.fixes.front());
    for (size_t i = 0; i < report.fixes.size(); i++) {
        json["devices"][i]["fix"] = fixToJson(report.fixes[i]);
    }
    json["error"] = textOrNull(report.error);
    if (!report.error.empty()) return json;
    json["truncated"] = textOrNull(report.truncation.value_or(""));
    if (report.junk) json["junk"] = *report.junk;
    json["container"] = {{"format", report.format},
                         {"name", report.formatName},
                         {"mime", mimeToJson(report.entries)},
                         {"keys", keysToJson(report.entries)}};
    json["tracks"] = arrayOf(report.tracks,
                             [&](const TrackReport& track) { return trackToJson(track, devices); });
    if (report.tags.areLookedFor) json["tags"] = arrayOf(report.tags.list, tagToJson);
    return json;
}

}  // namespace

std::string jsonReport(std::span<const PretendedDevice> devices,
                       const std::vector<FileReport>& reports) {
    constexpr int kSpaces = 2;
    const Json document = {{"schemaVersion", kSchemaVersion},
                           {"version", android::ZRCODECPARSER_VERSION},
                           {"devices", arrayOf(devices, deviceToJson)},
                           {"files", arrayOf(reports, [&](const auto& file) {
                                return fileToJson(file, devices);
                            })}};
    return escapedJson(document.dump(kSpaces, ' ', false, Json::error_handler_t::replace)) + '\n';
}

}  // namespace inspect
