// What is another than in an earlier run.

#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "inspect/base/InputFile.h"
#include "inspect/collection/Row.h"
#include "inspect/collection/Sqlite.h"

namespace inspect {

enum class ChangeKind : uint8_t { kPlays, kPlaysNoMore, kOtherReason, kNewFile, kGoneFile };
inline constexpr size_t kChangeKinds = 5;

// Of a file on a device.
struct Change {
    ChangeKind kind;
    std::string path;
    std::string device;
    std::string before;  // verdict and reason; empty = the file was not there
    std::string after;   // empty = it is gone
};

class Against {
public:
    // Reads the earlier run: a database, or the lines of --jsonl. Throws a FileError, as all of it
    // does, for what is neither.
    explicit Against(const std::string& path);

    // The files of this run, in any order.
    void add(const FileRow& row) { put(mAfter, row); }

    // In the order of the paths. A device that one of the runs did not ask for changes nothing.
    void forEach(const std::function<void(const Change&)>& reader);

    // Which lines of the earlier run could not be read.
    const std::vector<std::string>& notes() const { return mNotes; }

private:
    void readLines(const InputFile& file);
    bool readLine(const std::string& line);
    static void put(Statement& statement, const FileRow& row);

    Connection mConnection;
    Statement mBefore;
    Statement mAfter;
    std::vector<std::string> mNotes;
};

using ChangeCounts = std::map<std::string, std::array<int64_t, kChangeKinds>>;  // by device

// A line each, then the counts. Returns these. areAllKnown: what this run
// has not looked at is gone.
ChangeCounts sayChanges(const std::function<void(const std::string&)>& say, Against& against,
                        bool areAllKnown);

}  // namespace inspect
