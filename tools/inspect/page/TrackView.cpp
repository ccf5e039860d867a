#include <algorithm>

#include "inspect/base/Utf8.h"
#include "inspect/page/Views.h"
#include "inspect/report/TextLayout.h"
#include "inspect/report/VerifyText.h"

namespace inspect {
namespace {

constexpr size_t kMaxRecords = 30;
constexpr size_t kMaxSteps = 100;

struct FactRow {
    const char* key;
    const char* name;
    const char* unit = "";
};
constexpr FactRow kFactRows[] = {
        {"codec", "codec"},
        {"profile", "profile"},
        {"level", "level"},
        {"width", "width", " pixels"},
        {"height", "height", " pixels"},
        {"rotation", "rotation", "\u00b0 clockwise"},
        {"frameRate", "frame rate", " pictures a second"},
        {"channels", "channels"},
        {"sampleRate", "sample rate", " Hz"},
        {"bitDepth", "bit depth", " bits"},
        {"bitRate", "bit rate", " bits a second"},
        {"language", "language"},
        {"default", "default among its kind"},
        {"conversionTo16", "conversion to 16 bits"},
};

std::string plainText(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    return value.dump();
}

// What nobody knows is left out.
Json factsView(const Json& track, const Stream& stream) {
    Json rows = Json::array();
    for (const FactRow& row : kFactRows) {
        const Json value = track.value(row.key, Json());
        if (value.is_null()) continue;
        rows.push_back({{"name", row.name}, {"text", shortened(plainText(value)) + row.unit}});
    }
    if (stream.durationUs)
        rows.push_back({{"name", "duration"}, {"text", durationText(*stream.durationUs)}});
    if (stream.protection)
        rows.push_back({{"name", "encryption"}, {"text", toUtf8(stream.protection->scheme)}});
    return rows;
}

Json recordsView(const std::vector<Record>& records, const std::string& id, Room& room) {
    Json views = Json::array();
    for (const Record& record : records) {
        if (views.size() == kMaxRecords) break;
        views.push_back(recordHtml(record, joined({id, numbered("-", views.size())}), room));
    }
    return views;
}

Json callsView(const std::vector<Call>& calls, const Json& json, const std::string& id,
               Room& room) {
    Json views = Json::array();
    for (size_t i = 0; i < calls.size(); i++) {
        views.push_back({{"operation", json[i]["operation"]},
                         {"result", json[i]["result"]},
                         {"recordsHtml",
                          recordsView(calls[i].parameters, joined({id, std::to_string(i)}), room)},
                         {"keysHtml", keysHtml(json[i]["metadata"], "Metadata")}});
    }
    return views;
}

std::string verificationText(const Verification& found) {
    const std::string fault = faultText(found);
    return fault.empty() ? numbered("all ", found.samples, " are there, whole and in order")
                         : fault;
}

}  // namespace

std::string trackHtml(const TrackReport& track, const Json& json, const std::string& id,
                      size_t level, Room& room) {
    Json view = {{"id", id},
                 {"heading", numbered("h", level)},
                 {"level", level + 1},
                 {"index", json["index"]},
                 {"kind", json["kind"]},
                 {"codec", json["codec"]},
                 {"mime", json.value("mime", Json())},
                 {"isLeftOut", false},
                 {"isTrack", track.stream.kind != Kind::kOther}};
    if (track.stream.kind == Kind::kOther) return fillIn("track", view);
    view.update(verdictView(json["verdict"].get<std::string>()));
    for (const char* key : {"reason", "decoder", "codecData"}) view[key] = json[key];
    for (const char* key : {"notKnown", "chain", "notes"})
        view[key] = firstOf(json[key], kMaxSteps);
    view["devicesHtml"] = json["devices"].size() > 1 ? devicesHtml(json["devices"]) : "";
    view["facts"] = factsView(json, track.stream);
    view["verify"] = track.verification ? Json(verificationText(*track.verification)) : Json();
    view["keyFrames"] = track.keyFrames ? stripView(*track.keyFrames) : Json();
    const bool hasWave = track.waveform && track.waveform->frames > 0;
    view["waveform"] = hasWave ? waveView(*track.waveform, track.stream.audio.sampleRate) : Json();
    view["recordsHtml"] = recordsView(track.explanations, id + "-record", room);
    view["calls"] = callsView(track.component, json.value("component", Json::array()),
                              id + "-component", room);
    view["olderCalls"] =
            callsView(track.legacy, json.value("legacy", Json::array()), id + "-older", room);
    view["hasNotKnown"] = !view["notKnown"].empty();
    view["hasCodecData"] = !view["codecData"].empty();
    view["hasCalls"] = !view["calls"].empty();
    view["hasOlderCalls"] = !view["olderCalls"].empty();
    view["keysHtml"] = keysHtml(json["keys"], "Keys stored for the track");
    view["logHtml"] = logHtml(json["log"]);
    std::string html = fillIn("track", view);
    if (html.size() > room.tracks) {
        html = fillIn("track", {{"id", id},
                                {"heading", view["heading"]},
                                {"index", view["index"]},
                                {"kind", view["kind"]},
                                {"mime", view["mime"]},
                                {"isTrack", false},
                                {"codec", view["codec"]},
                                {"isLeftOut", true}});
    }
    room.tracks -= std::min(room.tracks, html.size());
    return html;
}

}  // namespace inspect
