// Input: a byte that says what it is, then lines of --jsonl; a worker's finding; or a list of
// names.
//
// Aims at tools/inspect/collection/Row, tools/inspect/collection/Against,
// tools/inspect/collection/FileList, tools/inspect/collection/Worker.

#include <algorithm>
#include <filesystem>

#include "Inspect.h"
#include "inspect/collection/Against.h"
#include "inspect/collection/Database.h"
#include "inspect/collection/FileList.h"
#include "inspect/collection/Worker.h"

namespace {

using namespace inspect;

template <typename T>
Json orNothing(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

Json allOf(const std::vector<PlayRow>& plays) {
    Json all = Json::array();
    for (const PlayRow& each : plays) {
        all.push_back({each.device, each.verdict, each.plays, each.reason, each.decoder});
    }
    return all;
}

// Every member of a row, to be compared.
Json allOf(const FileRow& row) {
    Json all = {row.path,
                orNothing(row.sizeBytes),
                orNothing(row.modifiedNs),
                row.error,
                row.format,
                orNothing(row.durationUs),
                row.mime,
                allOf(row.plays)};
    for (const TrackRow& each : row.tracks) {
        all.push_back({each.index, each.kind, each.codec, each.mime, each.profile, each.level,
                       orNothing(each.durationUs), orNothing(each.width), orNothing(each.height),
                       orNothing(each.frameRate), orNothing(each.channels),
                       orNothing(each.sampleRate), orNothing(each.bitRate),
                       orNothing(each.bitDepth), allOf(each.plays)});
    }
    for (const TagValue& each : row.tags) all.push_back({each.kind, each.name, each.value});
    return all;
}

std::optional<FileRow> read(const Json& line) {
    std::optional<FileRow> row;
    if (line.is_object()) fuzz::refuses([&] { row = rowOf(line); });
    return row;
}

// Those that are no pictures and fit into a column.
size_t tagValues(const Json& line) {
    size_t count = 0;
    const auto tags = line.find("tags");
    if (tags == line.end() || !tags->is_array()) return 0;
    for (const Json& tag : *tags) {
        for (const Json& entry : tag["keys"]) {
            if (entry["type"] != "buffer" && !entry["value"].is_structured()) count++;
        }
    }
    return count;
}

int depthOf(const Json& value) {
    int depth = 0;
    if (!value.is_structured()) return depth;
    for (const Json& each : value) depth = std::max(depth, depthOf(each));
    return depth + 1;
}

// A worker sends what tells the same, unless it nests deeper than any report does.
void checkFinding(const Json& line, const FileRow& row) {
    if (!row.error.empty()) return;
    REQUIRE(row.tags.size() == tagValues(line));
    std::string text = "line\n";
    const Json finding = {
            {"media", true}, {"faults", {row.path + ": fault"}}, {"digest", digestOf(line)}};
    Json::to_msgpack(finding, text);
    Finding found;
    REQUIRE(fuzz::refuses([&] { found = decodeFinding(text); }) == (depthOf(finding) > 99));
    if (depthOf(finding) > 99) return;
    REQUIRE(allOf(found.row) == allOf(row) && found.row.fault == "fault");
    REQUIRE(found.isMedia && found.line == "line\n");
}

// A database keeps all of it.
void checkDatabase(const FileRow& row) {
    std::set<int64_t> tracks;
    for (const TrackRow& each : row.tracks) {
        if (!tracks.insert(each.index).second) return;
    }
    Database database(":memory:", "program", "settings");
    database.put(row);
    std::vector<FileRow> rows;
    database.forEach([&](const FileRow& each) { rows.push_back(each); });
    REQUIRE(rows.size() == 1 && allOf(rows[0]) == allOf(row));
    REQUIRE(!row.sizeBytes || !row.modifiedNs ||
            database.isCurrent(row.path, *row.sizeBytes, *row.modifiedNs));
}

std::vector<std::string> partsOf(const std::string& text, char end) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == end) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

// The same run once more changes nothing. What begins like a database is taken for one.
void checkLines(const std::string& text) {
    if (text.starts_with(std::string_view("SQLite format 3", 16))) return;
    std::vector<FileRow> rows;
    for (const std::string& each : partsOf(text, '\n')) {
        if (const auto row = read(Json::parse(each, nullptr, false))) rows.push_back(*row);
    }
    std::optional<Against> against;
    REQUIRE(fuzz::refuses([&] { against.emplace(fuzz::kInputPath); }) == rows.empty());
    if (!against) return;
    REQUIRE(against->notes().size() <= 11);
    for (const FileRow& each : rows) against->add(each);
    against->forEach([](const Change&) { REQUIRE(false); });
}

void checkNames(const std::string& text, bool endsWithNul) {
    const char end = endsWithNul ? '\0' : '\n';
    std::vector<std::string> names = partsOf(text, end);
    std::erase(names, "");
    std::error_code ignored;
    for (const std::string& each : names) {
        if (std::filesystem::is_directory(each, ignored)) return;
    }
    const FileSources sources = {.paths = {}, .list = fuzz::kInputPath, .endsWithNul = endsWithNul};
    const bool isRefused = fuzz::refuses([&] {
        FileList list(sources);
        for (const std::string& each : names) {
            const auto file = list.next();
            REQUIRE(file && file->path == each && !file->isFound && file->error.empty());
        }
        REQUIRE(!list.next());
    });
    REQUIRE(isRefused == (!endsWithNul && text.find('\0') != text.npos));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    fuzz::Bytes data(bytes, size);
    const uint32_t kind = fuzz::take(data, 1);
    if (data.empty()) return 0;
    const std::string text = fuzz::textOf(data);
    fuzz::setInput(data);
    if (kind == 'F') {
        fuzz::refuses([&] { decodeFinding(text); });
    } else if (kind == '0' || kind == 'L') {
        checkNames(text, kind == '0');
    } else if (kind == 'A') {
        checkLines(text);
    } else {
        const Json line = Json::parse(text, nullptr, false);
        const auto row = read(line);
        if (row && kind == 'D') checkDatabase(*row);
        if (row && kind != 'D') checkFinding(line, *row);
    }
    return 0;
}
