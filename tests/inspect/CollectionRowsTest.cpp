// What is kept of a collection: stored and read again, summed up, compared with an earlier run.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "inspect/base/InputFile.h"
#include "inspect/collection/Against.h"
#include "inspect/collection/Database.h"
#include "inspect/collection/Summary.h"
#include "inspect/collection/Worker.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

const std::string kLatin1 = "d/\xE4";

FileRow rowAt(const std::string& path, const std::string& verdict, const std::string& reason = "") {
    const bool plays = verdict == "plays";
    FileRow row;
    row.path = path;
    row.sizeBytes = 100;
    row.modifiedNs = 1'700'000'000'123'456'789;
    row.durationUs = 1'500'000;
    row.plays = {{"tv", verdict, plays, reason, ""}, {"box", "plays", true, "", "sw"}};
    TrackRow track;
    track.index = 1;
    track.kind = "video";
    track.codec = "hevc";
    track.frameRate = 23.976;
    track.height = 2160;
    track.plays = {{"tv", plays ? verdict : "no-decoder", plays, reason, ""},
                   {"box", "plays-in-software", true, "", "sw"}};
    row.tracks = {track};
    row.tags = {{"ID3v2.4", "title", ""}};
    return row;
}

std::string dump(const FileRow& row) {
    std::ostringstream out;
    const auto print = [&](const std::vector<PlayRow>& plays) {
        for (const PlayRow& each : plays) {
            out << ' ' << each.device << ':' << each.verdict << each.plays << each.reason << ','
                << each.decoder;
        }
    };
    out << row.path << ' ' << row.sizeBytes.value_or(-1) << ' ' << row.modifiedNs.value_or(-1)
        << row.error << row.format << row.mime << ' ' << row.durationUs.value_or(-1);
    print(row.plays);
    for (const TrackRow& each : row.tracks) {
        out << " #" << each.index << each.kind << each.codec << each.mime << each.profile
            << each.level << ' ' << each.durationUs.value_or(-1) << ' ' << each.width.value_or(-1)
            << 'x' << each.height.value_or(-1) << '@' << each.frameRate.value_or(-1)
            << each.channels.value_or(-1) << each.sampleRate.value_or(-1)
            << each.bitRate.value_or(-1) << each.bitDepth.value_or(-1);
        print(each.plays);
    }
    for (const auto& [kind, name, value] : row.tags) out << ' ' << kind << name << '=' << value;
    return out.str();
}

std::string messageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const FileError& error) {
        return error.what();
    }
    return "";
}

class CollectionRows : public testing::Test {
protected:
    ~CollectionRows() override { fs::remove_all(mFolder); }
    std::string at(const std::string& name) const { return (mFolder / name).string(); }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mFolder / name, std::ios::binary) << bytes;
    }
    std::string paths(Database& database) const {
        std::string text;
        database.forEach([&](const FileRow& row) { text += row.path + ' '; });
        return text;
    }

    const fs::path mFolder = fs::temp_directory_path() / ("zr_rows" + std::to_string(getpid()));
    const bool mIsMade = fs::create_directory(mFolder);
};

TEST_F(CollectionRows, AreReadAsTheyWereStored) {
    FileRow bare;
    bare.path = kLatin1;
    bare.error = "is empty";
    const FileRow changed = rowAt("b\nc", "does-not-play", "too large");
    Database(at("db"), "7", "tv").putOther("lost with the process", 1, 2);
    Database database(at("db"), "7", "tv");
    for (const FileRow& row : {bare, rowAt("b\nc", "plays"), changed}) database.put(row);
    database.commit();
    std::vector<std::string> stored;
    const auto collect = [&](const FileRow& row) { stored.push_back(dump(row)); };
    forEachStored(at("db"), collect);
    database.forEach(collect);
    const std::vector<std::string> once = {dump(changed), dump(bare)};
    EXPECT_EQ(stored, (std::vector{once[0], once[1], once[0], once[1]}));
}

TEST_F(CollectionRows, AreCurrentForOneProgramAndItsDevices) {
    const int64_t time = *rowAt("", "").modifiedNs;
    {
        Database database(at("db"), "7", "tv");
        database.put(rowAt(kLatin1, "plays"));
        database.putOther("text", 100, time);
        database.commit();
    }
    const struct {
        const char *program, *devices;
        std::string path;
        int64_t size, time;
        bool isCurrent;
    } cases[] = {
            {"7", "tv", kLatin1, 100, time, true},       {"7", "tv", "text", 100, time, true},
            {"7", "tv", kLatin1, 101, time, false},      {"7", "tv", kLatin1, 100, time + 1, false},
            {"7", "tv", "d/\xC3\xA4", 100, time, false}, {"8", "tv", kLatin1, 100, time, false},
            {"7", "box", kLatin1, 100, time, false},
    };
    for (const auto& each : cases) {
        Database database(at("db"), each.program, each.devices);
        EXPECT_EQ(database.isCurrent(each.path, each.size, each.time), each.isCurrent)
                << each.program << each.devices << each.path << each.size << each.time;
    }
}

TEST_F(CollectionRows, GoWithTheirFilesBelowWhatWasWalked) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
            {{"d//"}, "D/x d-x d0 d/kept "},       {{"d/x", "d0"}, "D/x d-x d/kept d/\xE4 "},
            {{kLatin1}, "D/x d-x d/x d0 d/kept "}, {{"/"}, "D/x d-x d/x d0 d/kept d/\xE4 "},
            {{}, "D/x d-x d/x d0 d/kept d/\xE4 "},
    };
    const std::vector<std::string> all = {"D/x", "d-x", "d/x", "d0", "d/kept", kLatin1};
    for (const auto& [roots, rest] : cases) {
        fs::remove(at("db"));
        {
            Database database(at("db"), "7", "tv");
            for (const std::string& path : all) database.put(rowAt(path, "plays"));
            database.commit();
        }
        Database database(at("db"), "7", "tv");
        database.keep("d/kept");
        const size_t count = database.dropMissing(roots);
        std::vector<std::string> left;
        database.forEach([&](const FileRow& row) { left.push_back(row.path); });
        std::istringstream expected(rest);
        const std::vector<std::string> names{std::istream_iterator<std::string>(expected), {}};
        EXPECT_TRUE(std::ranges::is_permutation(left, names)) << rest;
        EXPECT_EQ(count + names.size(), all.size());
    }
}

TEST_F(CollectionRows, StayOutOfWhatIsNoDatabaseOfTheirs) {
    const auto sql = [&](const char* name, const char* text) {
        sqlite3* database = nullptr;
        sqlite3_open(at(name).c_str(), &database);
        sqlite3_exec(database, text, nullptr, nullptr, nullptr);
        sqlite3_close(database);
    };
    write("text", std::string(5000, 'x'));
    sql("foreign", "CREATE TABLE files (id)");
    Database(at("newer"), "7", "tv").commit();
    sql("newer", "PRAGMA user_version = 99");
    const std::pair<const char*, const char*> cases[] = {
            {"text", "text: is no database"},
            {"foreign", "foreign: is the database of another program"},
            {"newer", "newer: is of version 99, not 2"},
            {"no/db", "no/db: No such file or directory"},
    };
    for (const auto& each : cases) {
        const std::string said = messageOf([&] { Database(at(each.first), "7", "tv"); });
        EXPECT_TRUE(said.ends_with(each.second)) << said;
    }
    EXPECT_EQ(messageOf([&] { Against(at("text")); }),
              at("text") + ": is neither a database nor made by --jsonl");
}

std::string lineOf(const FileRow& row) {
    Json devices = Json::array();
    for (const PlayRow& play : row.plays) {
        devices.push_back({{"name", play.device},
                           {"verdict", play.verdict},
                           {"plays", play.plays},
                           {"reason", play.reason}});
    }
    return Json({{"path", row.path},
                 {"error", nullptr},
                 {"devices", devices},
                 {"container", {{"format", "x"}}},
                 {"tracks", Json::array()}})
                   .dump() +
           '\n';
}

TEST_F(CollectionRows, AreComparedWithAnEarlierRun) {
    const std::vector<FileRow> before = {
            rowAt("a", "plays"),    rowAt("b", "does-not-play", "x"), rowAt("c", "no-parser", "x"),
            rowAt("\x1b", "plays"), rowAt("gone", "no-parser", "x"),  rowAt("same", "plays")};
    FileRow elsewhere = rowAt("same", "plays");
    elsewhere.plays.push_back({"radio", "no-parser", false, "", ""});
    const std::vector<FileRow> after = {elsewhere,
                                        rowAt("c", "no-parser", "y"),
                                        rowAt("b", "plays"),
                                        rowAt("\x1b", "plays"),
                                        rowAt("a", "plays-in-part", "lost"),
                                        rowAt("new\x1b", "plays")};
    const std::string expected =
            "lost    a  tv: plays -> plays-in-part (lost)\n"
            "plays   b  tv: does-not-play (x) -> plays\n"
            "reason  c  tv: no-parser (x) -> no-parser (y)\n"
            "gone    gone  box: plays\n"
            "gone    gone  tv: no-parser (x)\n"
            "new     new\\x1b  box: plays\n"
            "new     new\\x1b  tv: plays\n"
            "box: 0 play now, 0 play no more, 0 other reason, 1 new, 1 gone\n"
            "tv: 1 play now, 1 play no more, 1 other reason, 1 new, 1 gone\n";
    std::string lines = "no line\n";
    Database database(at("db"), "7", "tv");
    for (const FileRow& row : before) database.put(row), lines += lineOf(row);
    database.commit();
    write("jsonl", lines + lineOf(rowAt("a", "no-parser")).substr(0, 30));
    for (const char* name : {"db", "jsonl"}) {
        Against against(at(name));
        for (const FileRow& row : after) against.add(row);
        std::string out;
        const auto say = [&out](const std::string& text) { out += text; };
        EXPECT_EQ(sayChanges(say, against, true)["tv"][0], 1);
        EXPECT_EQ(out, expected) << name;
        const std::vector<std::string> notes = {at("jsonl: line 1 is no line of --jsonl"),
                                                at("jsonl: line 8 is cut off")};
        EXPECT_EQ(against.notes(), name == std::string("db") ? std::vector<std::string>() : notes);
    }
}

TEST_F(CollectionRows, AreNotReadIntoTheGround) {
    const std::string lists(1 << 20, '\x91');  // each holds the next
    EXPECT_EQ(messageOf([&] { decodeFinding("\n" + lists); }),
              "the process looking at it answers nonsense: lists in lists without end");
}

TEST_F(CollectionRows, AreSummedUp) {
    Summary summary;
    FileRow broken;
    for (const FileRow& row : {rowAt("a", "plays"), rowAt("b", "does-not-play", "x")}) {
        summary.add(row);
    }
    for (const char* verdict : {"plays", "does-not-play"}) {
        EXPECT_EQ(summary.fileVerdicts.at(verdict, 0), 1) << verdict;
    }
    EXPECT_EQ(summary.playing.at("hevc", 0), 1);
    EXPECT_EQ(summary.lost.at("hevc", 0), 1);
    EXPECT_EQ(summary.durationUs, 3'000'000);
    for (const char* error : {"ID3v2: lacks 12 of 345 bytes", "ID3v2: lacks 6 of 78 bytes"}) {
        broken.error = error;
        summary.add(broken);
    }
    EXPECT_EQ(summary.errors.at("ID3v2: lacks N of N bytes", 0), 2);
    broken.error = "bad\x1b";
    broken.durationUs = std::numeric_limits<int64_t>::max();
    for (int i = 0; i < 3000; i++) {
        broken.plays = {{"device " + std::to_string(i), "unreadable", false, "", ""}};
        broken.error += static_cast<char>('a' + i % 26);
        summary.add(broken);
    }
    EXPECT_LE(summary.errors.rows().size(), 1001u);
    EXPECT_EQ(summary.devices.size(), 100u);
    std::istringstream text(summaryText(summary));
    for (std::string line; std::getline(text, line);) {
        EXPECT_LE(line.size(), 80u) << line;
        EXPECT_EQ(line.find('\x1b'), std::string::npos) << line;
    }
}

}  // namespace
}  // namespace inspect
