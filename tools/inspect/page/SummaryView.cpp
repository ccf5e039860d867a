#include <algorithm>
#include <numeric>

#include "inspect/base/Utf8.h"
#include "inspect/page/CollectionPage.h"
#include "inspect/page/Views.h"
#include "inspect/report/TextLayout.h"

namespace inspect {
namespace {

constexpr size_t kMaxNames = 100;
constexpr FilePlay kFilePlays[] = {FilePlay::kPlays, FilePlay::kPlaysInPart, FilePlay::kDoesNotPlay,
                                   FilePlay::kNoParser, FilePlay::kUnreadable};
// From these shares on a number and a word have room in a bar.
constexpr int64_t kNumberPerMille = 110;
constexpr int64_t kWordPerMille = 300;

std::string percent(int64_t perMille) {
    return joined({std::to_string(perMille / 10), ".", std::to_string(perMille % 10), "%"});
}

int64_t perMilleOf(int64_t part, int64_t all) {
    return all == 0 ? 0
                    : static_cast<int64_t>(
                              1000. * static_cast<double>(part) / static_cast<double>(all) + 0.5);
}

std::string countText(int64_t count) {
    return grouped(static_cast<uint64_t>(count));
}

// A part of a bar that begins where so many before it end.
Json partView(const std::string& code, int64_t before, int64_t count, int64_t all) {
    Json view = verdictView(code);
    const int64_t share = perMilleOf(count, all);
    view["code"] = code;
    view["count"] = countText(count);
    view["share"] = percent(share);
    view["x"] = percent(perMilleOf(before, all));
    view["hasNumber"] = share >= kNumberPerMille;
    view["hasWord"] = share >= kWordPerMille;
    return view;
}

Json deviceView(const Summary& summary, size_t device) {
    int64_t all = 0;
    for (const FilePlay play : kFilePlays) {
        all += summary.fileVerdicts.at(std::string(toString(play)), device);
    }
    Json parts = Json::array();
    int64_t before = 0;
    for (const FilePlay play : kFilePlays) {
        const std::string code(toString(play));
        const int64_t count = summary.fileVerdicts.at(code, device);
        if (count > 0) parts.push_back(partView(code, before, count, all));
        before += count;
    }
    return {{"name", toUtf8(summary.devices[device])}, {"parts", parts}};
}

// Of a device: the tracks that play, and those that do not.
Json splitView(int64_t good, int64_t bad, int64_t most) {
    return {{"good", countText(good)},
            {"bad", countText(bad)},
            {"goodShare", percent(perMilleOf(good, most))},
            {"badShare", percent(perMilleOf(bad, most))}};
}

// The keys that count most, each with a cell a device.
Json rowsView(const Summary& summary, const std::vector<std::string>& keys, const auto& cell) {
    Json rows = Json::array();
    for (size_t i = 0; i < std::min(keys.size(), kMaxNames); i++) {
        Json cells = Json::array();
        for (size_t device = 0; device < summary.devices.size(); device++) {
            cells.push_back(cell(keys[i], device));
        }
        rows.push_back({{"key", toUtf8(keys[i])},
                        {"words", verdictView(keys[i])["verdict"]},
                        {"cells", cells}});
    }
    return rows;
}

Json codecsView(const Summary& summary, const std::vector<std::string>& codecs) {
    int64_t most = 0;
    const auto eachCell = [&](const auto& use) {
        return rowsView(summary, codecs, [&](const std::string& codec, size_t device) {
            return use(summary.playing.at(codec, device), summary.lost.at(codec, device));
        });
    };
    eachCell([&](int64_t good, int64_t bad) {
        most = std::max(most, good + bad);
        return Json();
    });
    return eachCell([&](int64_t good, int64_t bad) { return splitView(good, bad, most); });
}

Json verdictsView(const Summary& summary, const std::vector<std::string>& codes) {
    std::vector<int64_t> all(summary.devices.size());
    for (const std::string& code : codes) {
        for (size_t i = 0; i < all.size(); i++) all[i] += summary.trackVerdicts.at(code, i);
    }
    return rowsView(summary, codes, [&](const std::string& code, size_t device) {
        const int64_t count = summary.trackVerdicts.at(code, device);
        return partView(code, 0, count, all[device]);
    });
}

Json factsView(const Summary& summary) {
    std::string text;
    for (const std::string& kind : summary.kinds.keys()) {
        text.append(text.empty() ? "tracks: " : ", ").append(countText(summary.kinds.at(kind, 0)));
        text.append(" ").append(kind);
    }
    Json facts = Json::array();
    if (!text.empty()) facts.push_back(text);
    if (summary.unreadable > 0) facts.push_back(countText(summary.unreadable) + " unreadable");
    return facts;
}

}  // namespace

std::string grouped(uint64_t number) {
    std::string text = std::to_string(number);
    for (size_t end = text.size(); end > 3; end -= 3) text.insert(end - 3, 1, ',');
    return text;
}

Json summaryView(const Summary& summary) {
    Json devices = Json::array();
    Json names = Json::array();
    for (size_t i = 0; i < summary.devices.size(); i++) {
        devices.push_back(deviceView(summary, i));
        names.push_back(devices.back()["name"]);
    }
    const std::vector<std::string> codecs = codecsOf(summary);
    const std::vector<std::string> errors = summary.errors.keys();
    Json errorRows = Json::array();
    for (size_t i = 0; i < std::min(errors.size(), kMaxNames); i++) {
        errorRows.push_back(
                {{"text", errors[i]}, {"count", countText(summary.errors.at(errors[i], 0))}});
    }
    return {{"duration", durationText(summary.durationUs)},
            {"facts", factsView(summary)},
            {"unreadable", countText(summary.unreadable)},
            {"devices", devices},
            {"hasDevices", !devices.empty()},
            {"names", names},
            {"verdicts", verdictsView(summary, summary.trackVerdicts.keys())},
            {"hasTracks", !summary.trackVerdicts.rows().empty()},
            {"codecs", codecsView(summary, codecs)},
            {"moreCodecs", moreThan(kMaxNames, codecs.size(), "codecs")},
            {"errors", errorRows},
            {"hasErrors", !errors.empty()},
            {"moreErrors", moreThan(kMaxNames, errors.size(), "of them")}};
}

}  // namespace inspect
