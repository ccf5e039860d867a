#include "inspect/report/JsonReport.h"

#include "inspect/base/Utf8.h"
#include "inspect/report/JsonParts.h"
#include "inspect/report/TagRows.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

// Grows when a key goes or changes its meaning, not when one comes.
constexpr int kSchemaVersion = 1;

Json fixToJson(const std::optional<Fix>& fix) {
    if (!fix) return {};
    Json commands = Json::array();
    if (!fix->command.empty()) commands.push_back(toText(fix->command));
    return {{"sentence", toText(fix->sentence)},
            {"commands", commands},
            {"device", textOrNull(fix->device)}};
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

}  // namespace

Json fileToJson(const FileReport& report, std::span<const PretendedDevice> devices) {
    Json json;
    addPath(json, "path", report.path);
    json["sizeBytes"] = orNull(report.sizeBytes);
    json["modifiedNs"] = orNull(report.modifiedNs);
    json.update(verdictToJson(report.verdicts.front()));
    json["chain"] = arrayOf(report.verdicts.front().chain, stepToJson);
    json["devices"] = verdictsToJson(devices, report.verdicts);
    if (!report.fixes.empty()) json["fix"] = fixToJson(report.fixes.front());
    for (size_t i = 0; i < report.fixes.size(); i++) {
        json["devices"][i]["fix"] = fixToJson(report.fixes[i]);
    }
    json["error"] = textOrNull(report.error);
    if (!report.error.empty()) return json;
    json["durationUs"] = orNull(report.durationUs);
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

std::string jsonText(const Json& json, int indent) {
    return escapedJson(json.dump(indent, ' ', false, Json::error_handler_t::replace)) + '\n';
}

std::string jsonLine(const Json& file) {
    Json line = {{"schemaVersion", kSchemaVersion}};
    line.update(file);
    return jsonText(line);
}

std::string jsonReport(std::span<const PretendedDevice> devices,
                       const std::vector<FileReport>& reports) {
    constexpr int kSpaces = 2;
    const Json document = {{"schemaVersion", kSchemaVersion},
                           {"version", android::ZRCODECPARSER_VERSION},
                           {"devices", arrayOf(devices, deviceToJson)},
                           {"files", arrayOf(reports, [&](const auto& file) {
                                return fileToJson(file, devices);
                            })}};
    return jsonText(document, kSpaces);
}

}  // namespace inspect
