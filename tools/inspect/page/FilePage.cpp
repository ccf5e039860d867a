#include "inspect/page/FilePage.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "inspect/base/Utf8.h"
#include "inspect/page/Views.h"
#include "inspect/report/TextLayout.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

constexpr size_t kMaxTracks = 100;
constexpr size_t kMaxTags = 10;

std::string sizeText(int64_t bytes) {
    constexpr const char* kUnits[] = {"kB", "MB", "GB", "TB"};
    std::string exact = numbered("", static_cast<uint64_t>(bytes), " bytes");
    if (bytes < 1000) return exact;
    double value = static_cast<double>(bytes) / 1000;
    size_t unit = 0;
    for (; value >= 999.5 && unit + 1 < std::size(kUnits); unit++) value /= 1000;
    const auto tenths = std::to_string(static_cast<int64_t>(value * 10 + 0.5));
    const std::string_view digits = tenths;
    return joined({digits.substr(0, digits.size() - 1), ".", digits.substr(digits.size() - 1), " ",
                   kUnits[unit], " (", exact, ")"});
}

std::string nameOf(const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    return path == "-" ? "standard input" : toUtf8(name.empty() ? path : name);
}

// Lines end between words, not at a hyphen.
Json wordsOf(const std::string& text) {
    Json words = Json::array();
    std::istringstream in(text);
    for (std::string word; std::getline(in, word, ' ');) {
        words.push_back({{"text", word}, {"gap", in.eof() ? "" : " "}});
    }
    return words;
}

// Each proposal once, with the devices that it is for.
Json fixesView(const FileReport& report, std::span<const PretendedDevice> devices) {
    Json views = Json::array();
    std::vector<const Fix*> seen;
    for (size_t i = 0; i < report.fixes.size(); i++) {
        if (!report.fixes[i]) continue;
        const Fix& fix = *report.fixes[i];
        const std::string& name = devices[i].description.name;
        const auto same = std::ranges::find_if(seen, [&](const Fix* each) { return *each == fix; });
        if (same != seen.end()) {
            auto& names = views[static_cast<size_t>(same - seen.begin())]["names"];
            names = joined({names.get<std::string>(), ", ", toUtf8(name)});
            continue;
        }
        seen.push_back(&fix);
        views.push_back({{"names", toUtf8(name)},
                         {"sentence", toUtf8(fix.sentence)},
                         {"command", !fix.command.empty()},
                         {"words", wordsOf(toUtf8(fix.command))},
                         {"lacks", presentText(fix.device)}});
    }
    return views;
}

Json tracksView(const FileReport& report, const Json& json, const std::string& id, size_t level,
                Room& room) {
    Json views = Json::array();
    for (size_t i = 0; i < std::min(report.tracks.size(), kMaxTracks); i++) {
        const Json& track = json["tracks"][i];
        const bool isTrack = track.contains("verdict");
        const std::string own = joined({id, numbered("-track", i)});
        Json view = isTrack ? verdictView(track["verdict"].get<std::string>())
                            : Json{{"verdict", nullptr}};
        view["id"] = own;
        view["index"] = track["index"];
        view["kind"] = track["kind"];
        view["type"] = track.value("mime", track["codec"]);
        view["decoder"] = track.value("decoder", Json());
        view["html"] = trackHtml(report.tracks[i], track, own, level, room);
        views.push_back(std::move(view));
    }
    return views;
}

Json tagsView(const FileReport& report, const Json& json, Room& room) {
    Json views = Json::array();
    for (size_t i = 0; i < std::min(report.tags.list.size(), kMaxTags); i++) {
        views.push_back(tagView(report.tags.list[i], json["tags"][i], room));
    }
    return views;
}

}  // namespace

void FilePage::add(const FileReport& report) {
    const Json json = fileToJson(report, mDevices);
    const std::string id = numbered("file", mFiles.size());
    Json view = verdictView(json["verdict"].get<std::string>());
    view["id"] = id;
    view["path"] = json["path"];
    view["name"] = nameOf(report.path);
    mFiles.push_back(view);  // for the list
    const size_t level = mIsOne ? 1 : 2;
    view["headFile"] = numbered("h", level);
    view["headPart"] = numbered("h", level + 1);
    view["headTrack"] = numbered("h", level + 2);
    for (const char* key : {"reason", "decoder"}) view[key] = json[key];
    view["device"] = toUtf8(mDevices.front().description.name);
    view["size"] = report.sizeBytes ? Json(sizeText(*report.sizeBytes)) : Json();
    view["duration"] = report.durationUs ? Json(durationText(*report.durationUs)) : Json();
    view["hasDevices"] = mDevices.size() > 1;
    view["devicesHtml"] = devicesHtml(json["devices"]);
    view["fixes"] = fixesView(report, mDevices);
    view["hasFixes"] = !view["fixes"].empty();
    if (report.error.empty()) addParts(view, report, json, level);
    mFilesHtml += fillIn("file", view);
}

void FilePage::addParts(Json& view, const FileReport& report, const Json& json,
                        size_t level) const {
    Room room;
    view["container"] = json["container"]["name"];
    view["mime"] = json["container"]["mime"];
    view["truncated"] = json["truncated"];
    view["junk"] = json.value("junk", Json());
    view["keysHtml"] = keysHtml(json["container"]["keys"], "Keys stored for the file");
    view["tracks"] = tracksView(report, json, view["id"].get<std::string>(), level + 2, room);
    view["hasTracks"] = !view["tracks"].empty();
    view["moreTracks"] = moreThan(view["tracks"].size(), report.tracks.size(), "tracks");
    view["hasTags"] = report.tags.areLookedFor;
    if (report.tags.areLookedFor) view["tags"] = tagsView(report, json, room);
    view["hasNoTags"] = report.tags.areLookedFor && report.tags.list.empty();
}

std::string FilePage::html() const {
    const std::string title = mIsOne ? mFiles.front()["name"].get<std::string>()
                                     : numbered("", mFiles.size(), " files");
    return wholePage(title, fillIn("files", {{"title", title},
                                             {"isMany", !mIsOne},
                                             {"list", mFiles},
                                             {"filesHtml", mFilesHtml},
                                             {"version", android::ZRCODECPARSER_VERSION}}));
}

}  // namespace inspect
