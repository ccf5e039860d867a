#include "inspect/page/CollectionPage.h"

#include <algorithm>
#include <utility>

#include "inspect/base/Utf8.h"
#include "inspect/page/Views.h"
#include "inspect/report/TextLayout.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

constexpr size_t kMaxFileRows = 100'000;
constexpr size_t kGroup = 50;  // rows that are drawn only when one is in sight
constexpr size_t kMaxSources = 20;
constexpr std::string_view kRowsMark = "<!--rows-->";  // which no escaped text holds

// Texts, each once, with the names of the devices that it is about.
class Remarks {
public:
    void add(const std::string& html, const std::string& device) {
        if (html.empty()) return;
        const auto same = std::ranges::find(mAll, html, &Remark::first);
        if (same == mAll.end()) {
            mAll.emplace_back(html, device);
        } else {
            same->second.append(", ").append(device);
        }
    }

    std::string html() const {
        if (mAll.size() == 1) return mAll.front().first;
        std::string all;
        for (const auto& [html, devices] : mAll) {
            const std::string about =
                    devices.empty() ? "" : joined({"<i>", escapedHtml(devices), ":</i> "});
            all.append(joined({"<div>", about, html, "</div>"}));
        }
        return all;
    }

private:
    using Remark = std::pair<std::string, std::string>;
    std::vector<Remark> mAll;
};

std::string cellHtml(std::string_view html, std::string_view name = "td") {
    return joined({"<", name, ">", html, "</", name, ">"});
}

// What its tracks add to a file's verdict.
std::string detailsOf(const FileRow& row, const std::string& device) {
    std::vector<std::string> codes;
    for (const TrackRow& track : row.tracks) {
        const auto play = std::ranges::find(track.plays, device, &PlayRow::device);
        if (play == track.plays.end() || play->verdict == toString(Play::kPlays)) continue;
        if (std::ranges::count(codes, play->verdict) == 0) codes.push_back(play->verdict);
    }
    std::string text;
    for (const std::string& code : codes) {
        text.append(text.empty() ? "" : ", ");
        text += verdictView(code)["verdict"].get_ref<const std::string&>();
    }
    return text;
}

std::string verdictHtml(const FileRow& row, const std::string& device) {
    const auto play = std::ranges::find(row.plays, device, &PlayRow::device);
    if (play == row.plays.end()) return "<td>not asked</td>";
    const Json view = verdictView(play->verdict);
    const auto text = [&](const char* key) { return view[key].get<std::string>(); };
    const std::string details = escapedHtml(detailsOf(row, device));
    return joined({"<td class=\"", text("tone").substr(0, 1), "\">", escapedHtml(text("verdict")),
                   details.empty() ? "" : "<i>", details, details.empty() ? "</td>" : "</i></td>"});
}

std::string reasonHtml(const FileRow& row) {
    Remarks remarks;
    for (const PlayRow& play : row.plays) remarks.add(escapedHtml(play.reason), play.device);
    remarks.add(escapedHtml(row.fault), "");
    return remarks.html();
}

std::string fixHtml(const FileRow& row) {
    Remarks remarks;
    for (const PlayRow& play : row.plays) {
        const std::string command = escapedHtml(play.command);
        const std::string words = escapedHtml(play.fix);
        remarks.add(command.empty() ? words
                                    : joined({"<details><summary>", words, "</summary><code>",
                                              command, "</code></details>"}),
                    play.device);
    }
    return remarks.html();
}

std::string codecsHtml(const FileRow& row) {
    std::string text;
    for (const TrackRow& track : row.tracks) {
        text.append(text.empty() ? "" : " + ").append(track.codec);
    }
    return escapedHtml(text);
}

// Which files these are, in the words of the command line.
Json sourcesView(const FileSources& sources) {
    Json views = Json::array();
    for (size_t i = 0; i < std::min(sources.paths.size(), kMaxSources); i++) {
        views.push_back(toUtf8(sources.paths[i]));
    }
    if (!sources.list.empty()) views.push_back("the files named in " + toUtf8(sources.list));
    return views;
}

void addFact(Json& facts, uint64_t count, std::string_view what) {
    if (count > 0) facts.push_back(joined({grouped(count), " ", what}));
}

}  // namespace

CollectionPage::CollectionPage(const CollectionOptions& options, const Scope& scope)
    : mOptions(options), mHasFixes(scope.fix && options.database.empty()) {
    for (const PretendedDevice& device : scope.devices) {
        const std::string& name = device.description.name;
        if (std::ranges::count(mDevices, name) == 0) mDevices.push_back(name);
    }
}

void CollectionPage::add(const FileRow& row) {
    if (mShownRows == kMaxFileRows) return;
    if (mShownRows > 0 && mShownRows % kGroup == 0) mRowsHtml += "</tbody>\n<tbody>\n";
    mShownRows++;
    mRowsHtml.append("<tr>").append(cellHtml(escapedHtml(row.path), "th"));
    for (const std::string& device : mDevices) mRowsHtml += verdictHtml(row, device);
    mRowsHtml += cellHtml(reasonHtml(row));
    if (mHasFixes) mRowsHtml += cellHtml(fixHtml(row));
    mRowsHtml += cellHtml(codecsHtml(row));
    mRowsHtml += cellHtml(row.durationUs ? durationText(*row.durationUs) : "");
    mRowsHtml += cellHtml(row.sizeBytes ? grouped(static_cast<uint64_t>(*row.sizeBytes)) : "");
    mRowsHtml += "</tr>\n";
}

void CollectionPage::write(const Ending& ending,
                           const std::function<void(std::string_view)>& writer) const {
    const auto files = static_cast<uint64_t>(ending.summary.files);
    const std::string title = joined({grouped(files), files == 1 ? " file" : " files"});
    Json view = summaryView(ending.summary);
    view["title"] = title;
    view["sources"] = sourcesView(mOptions.sources);
    view["moreSources"] = moreThan(kMaxSources, mOptions.sources.paths.size(), "files and folders");
    Json& facts = view["facts"];
    addFact(facts, ending.otherFiles,
            ending.otherFiles == 1 ? "other file, which is no media"
                                   : "other files, which are no media");
    addFact(facts, ending.unchangedFiles, "not changed since an earlier run");
    addFact(facts, mOptions.skip, "of the list left out");
    view["columns"] = Json::array();
    for (const std::string& device : mDevices) view["columns"].push_back(toUtf8(device));
    view["count"] = mDevices.size();
    view["isWide"] = mDevices.size() > 3;
    view["hasFixes"] = mHasFixes;
    view["more"] = moreThan(mShownRows, files, "files");
    view["rowsHtml"] = kRowsMark;
    view["version"] = android::ZRCODECPARSER_VERSION;
    const std::string page = wholePage(title, fillIn("collection", view), "collection");
    const std::string_view around = page;
    const size_t mark = around.find(kRowsMark);
    writer(around.substr(0, mark));
    writer(mRowsHtml);
    writer(around.substr(mark + kRowsMark.size()));
}

}  // namespace inspect
