// What is known of the files of a collection, in an SQLite database. docs/collections.md explains
// its tables.

#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "inspect/base/InputFile.h"
#include "inspect/collection/Row.h"
#include "inspect/collection/Sqlite.h"

namespace inspect {

// All of it throws a FileError that names the database. Several processes may write to one.
class Database {
public:
    // Makes it where there is none. Files are judged by this version of the program with these
    // settings, any text that tells the devices and what else decides apart.
    Database(const std::string& path, const std::string& program, const std::string& settings);

    // Whether it holds what this version and these settings make of the file.
    bool isCurrent(const std::string& path, int64_t sizeBytes, int64_t modifiedNs);

    // Take the place of what is stored for the path. They are written with a later one, or with
    // commit(): at most 256 files or one second of them are lost with the process.
    void put(const FileRow& row) { putRow(row, true); }
    // For a file that is no media, so that it is current the next time.
    void putOther(const std::string& path, int64_t sizeBytes, int64_t modifiedNs);
    // The file is still there. So is every one that is put.
    void keep(const std::string& path);
    void commit();

    // Removes the files that are gone: at these paths or below, and neither put nor kept since the
    // database was opened. Returns how many there were.
    size_t dropMissing(const std::vector<std::string>& roots);

    // Every media file, in the order of the paths; those that are no UTF-8 come last.
    void forEach(const RowReader& reader);

private:
    struct Pending {
        FileRow row;
        bool isMedia;
    };
    using Clock = std::chrono::steady_clock;

    void putRow(const FileRow& row, bool isMedia);
    void write(const Pending& pending);

    Connection mConnection;
    int64_t mSettings;  // the row's id
    Statement mFind;
    Statement mFile;
    Statement mClearTracks;
    Statement mClearVerdicts;
    Statement mClearTags;
    Statement mTrack;
    Statement mVerdict;
    Statement mTag;
    Statement mKeep;
    std::vector<Pending> mPending;
    Clock::time_point mPendingSince;
};

// The same of a database that is only read; and whether a file is a database at all.
void forEachStored(const std::string& path, const RowReader& reader);
bool isDatabase(const InputFile& file);

}  // namespace inspect
