#include "inspect/collection/Database.h"

#include <array>
#include <thread>

#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"
#include "inspect/collection/Schema.h"

namespace inspect {
namespace {

using Access = Connection::Access;

constexpr size_t kBatch = 256;
constexpr std::chrono::seconds kBatchTime(1);

std::optional<std::string> orNull(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

// Of a new database both are 0, and there is nothing in it.
bool isNew(Connection& connection) {
    const int64_t id = connection.number("PRAGMA application_id");
    const int64_t version = connection.number("PRAGMA user_version");
    if (id == 0 && version == 0 && connection.number("SELECT count(*) FROM sqlite_schema") == 0) {
        return true;
    }
    if (id != kApplicationId) connection.fail("is the database of another program");
    if (version != kSchemaVersion) {
        connection.fail("is of version " + std::to_string(version) + ", not " +
                        std::to_string(kSchemaVersion));
    }
    return false;
}

// SQLite does not wait for others when it changes the mode.
void setWal(Connection& connection) {
    constexpr int kTries = 1000;
    for (int i = 1;; i++) {
        try {
            connection.run("PRAGMA journal_mode = WAL");
            return;
        } catch (const FileError&) {
            if (!connection.isBusy() || i == kTries) throw;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

// Returns the id of the settings.
int64_t prepare(Connection& connection, const std::string& program, const std::string& settings) {
    const bool hasNothing = isNew(connection);
    setWal(connection);
    connection.run("PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;");
    Transaction transaction(connection);
    if (hasNothing) {
        const std::string marks = "PRAGMA user_version = " + std::to_string(kSchemaVersion) +
                                  "; PRAGMA application_id = " + std::to_string(kApplicationId);
        connection.run(kSchema);
        connection.run(marks.c_str());
    }
    Statement(connection, "INSERT OR IGNORE INTO settings (program, settings) VALUES (?, ?)")
            .run(program, settings);
    Statement find(connection, "SELECT id FROM settings WHERE program = ? AND settings = ?");
    find.bind(program, settings).step();
    const int64_t id = find.number(0);
    transaction.commit();
    connection.run("CREATE TEMP TABLE seen (file_id INTEGER PRIMARY KEY)");
    return id;
}

class Reader {
public:
    explicit Reader(Connection& connection)
        : mFiles(connection,
                 "SELECT id, path, size_bytes, modified_ns, error, fault, format, mime, "
                 "duration_us "
                 "FROM files WHERE is_media ORDER BY path"),
          mTracks(connection,
                  "SELECT track, kind, codec, mime, profile, level, duration_us, width, height, "
                  "frame_rate, channels, sample_rate, bit_rate, bit_depth "
                  "FROM tracks WHERE file_id = ? ORDER BY rowid"),
          mVerdicts(connection,
                    "SELECT device, verdict, plays, reason, decoder, track "
                    "FROM verdicts WHERE file_id = ? ORDER BY rowid"),
          mTags(connection, "SELECT kind, name, value FROM tags WHERE file_id = ? ORDER BY rowid") {
    }

    void forEach(const RowReader& reader) {
        while (mFiles.step()) reader(read());
    }

private:
    FileRow read() {
        FileRow row = {.path = mFiles.text(1),
                       .sizeBytes = mFiles.optionalNumber(2),
                       .modifiedNs = mFiles.optionalNumber(3),
                       .error = mFiles.text(4),
                       .fault = mFiles.text(5),
                       .format = mFiles.text(6),
                       .mime = mFiles.text(7),
                       .durationUs = mFiles.optionalNumber(8),
                       .plays = {},
                       .tracks = {},
                       .tags = {}};
        const int64_t id = mFiles.number(0);
        for (mTracks.bind(id); mTracks.step();) row.tracks.push_back(readTrack());
        for (mVerdicts.bind(id); mVerdicts.step();) addVerdict(row);
        for (mTags.bind(id); mTags.step();) {
            row.tags.push_back({mTags.text(0), mTags.text(1), mTags.text(2)});
        }
        return row;
    }

    TrackRow readTrack() const {
        return {.index = mTracks.number(0),
                .kind = mTracks.text(1),
                .codec = mTracks.text(2),
                .mime = mTracks.text(3),
                .profile = mTracks.text(4),
                .level = mTracks.text(5),
                .durationUs = mTracks.optionalNumber(6),
                .width = mTracks.optionalNumber(7),
                .height = mTracks.optionalNumber(8),
                .frameRate = mTracks.optionalReal(9),
                .channels = mTracks.optionalNumber(10),
                .sampleRate = mTracks.optionalNumber(11),
                .bitRate = mTracks.optionalNumber(12),
                .bitDepth = mTracks.optionalNumber(13),
                .plays = {}};
    }

    // A track's verdicts come in the order of the tracks.
    void addVerdict(FileRow& row) const {
        PlayRow play = {.device = mVerdicts.text(0),
                        .verdict = mVerdicts.text(1),
                        .plays = mVerdicts.number(2) != 0,
                        .reason = mVerdicts.text(3),
                        .decoder = mVerdicts.text(4)};
        if (mVerdicts.isNull(5)) {
            row.plays.push_back(std::move(play));
            return;
        }
        for (TrackRow& track : row.tracks) {
            if (track.index == mVerdicts.number(5)) return track.plays.push_back(std::move(play));
        }
    }

    Statement mFiles;
    Statement mTracks;
    Statement mVerdicts;
    Statement mTags;
};

void readAll(Connection& connection, const RowReader& reader) {
    const Transaction oneState(connection, "BEGIN");
    Reader(connection).forEach(reader);
}

}  // namespace

Database::Database(const std::string& path, const std::string& program, const std::string& settings)
    : mConnection(path, Access::kWrite),
      mSettings(prepare(mConnection, program, settings)),
      mFind(mConnection,
            "SELECT 1 FROM files "
            "WHERE path = ? AND size_bytes = ? AND modified_ns = ? AND settings_id = ?"),
      mFile(mConnection,
            "INSERT INTO files (path, size_bytes, modified_ns, settings_id, is_media, error, "
            "fault, format, mime, duration_us) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?) "
            "ON CONFLICT (path) DO UPDATE SET (size_bytes, modified_ns, settings_id, is_media, "
            "error, fault, format, mime, duration_us) = (excluded.size_bytes, "
            "excluded.modified_ns, "
            "excluded.settings_id, excluded.is_media, excluded.error, excluded.fault, "
            "excluded.format, excluded.mime, excluded.duration_us) RETURNING id"),
      mClearTracks(mConnection, "DELETE FROM tracks WHERE file_id = ?"),
      mClearVerdicts(mConnection, "DELETE FROM verdicts WHERE file_id = ?"),
      mClearTags(mConnection, "DELETE FROM tags WHERE file_id = ?"),
      mTrack(mConnection,
             "INSERT INTO tracks VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      mVerdict(mConnection, "INSERT INTO verdicts VALUES (?, ?, ?, ?, ?, ?, ?)"),
      mTag(mConnection, "INSERT INTO tags VALUES (?, ?, ?, ?)"),
      mKeep(mConnection, "INSERT OR IGNORE INTO seen SELECT id FROM files WHERE path = ?") {}

bool Database::isCurrent(const std::string& path, int64_t sizeBytes, int64_t modifiedNs) {
    const bool isThere = mFind.bind(path, sizeBytes, modifiedNs, mSettings).step();
    mFind.bind();
    return isThere;
}

void Database::putOther(const std::string& path, int64_t sizeBytes, int64_t modifiedNs) {
    FileRow row;
    row.path = path;
    row.sizeBytes = sizeBytes;
    row.modifiedNs = modifiedNs;
    putRow(row, false);
}

void Database::keep(const std::string& path) {
    mKeep.run(path);
}

void Database::putRow(const FileRow& row, bool isMedia) {
    if (mPending.empty()) mPendingSince = Clock::now();
    mPending.push_back({row, isMedia});
    if (mPending.size() >= kBatch || Clock::now() - mPendingSince >= kBatchTime) commit();
}

void Database::commit() {
    if (mPending.empty()) return;
    Transaction transaction(mConnection);
    for (const Pending& each : mPending) write(each);
    transaction.commit();
    mPending.clear();
}

void Database::write(const Pending& pending) {
    const FileRow& row = pending.row;
    mFile.bind(row.path, row.sizeBytes, row.modifiedNs, mSettings, int64_t{pending.isMedia},
               orNull(row.error), orNull(row.fault), orNull(row.format), orNull(row.mime),
               row.durationUs)
            .step();
    const int64_t id = mFile.number(0);
    mFile.step();
    for (Statement* each : {&mClearTracks, &mClearVerdicts, &mClearTags}) each->run(id);
    const auto writePlays = [&](const std::vector<PlayRow>& plays, std::optional<int64_t> track) {
        for (const PlayRow& each : plays) {
            mVerdict.run(id, track, each.device, each.verdict, int64_t{each.plays},
                         orNull(each.reason), orNull(each.decoder));
        }
    };
    writePlays(row.plays, {});
    for (const TrackRow& track : row.tracks) {
        mTrack.run(id, track.index, orNull(track.kind), orNull(track.codec), orNull(track.mime),
                   orNull(track.profile), orNull(track.level), track.durationUs, track.width,
                   track.height, track.frameRate, track.channels, track.sampleRate, track.bitRate,
                   track.bitDepth);
        writePlays(track.plays, track.index);
    }
    for (const TagValue& tag : row.tags) mTag.run(id, tag.kind, tag.name, tag.value);
    mKeep.run(row.path);
}

size_t Database::dropMissing(const std::vector<std::string>& roots) {
    commit();
    size_t count = 0;
    Statement drop(mConnection,
                   "DELETE FROM files WHERE id NOT IN (SELECT file_id FROM seen) AND (path = ?1 "
                   "OR path > ?2 AND path < ?3 "
                   "OR path > CAST(?2 AS BLOB) AND path < CAST(?3 AS BLOB))");
    Transaction transaction(mConnection);
    for (std::string root : roots) {
        if (root.empty()) continue;
        while (root.ends_with('/')) root.pop_back();
        drop.run(root, root + '/', root + '0');  // which follows the slash
        count += static_cast<size_t>(mConnection.changes());
    }
    transaction.commit();
    return count;
}

void Database::forEach(const RowReader& reader) {
    commit();
    readAll(mConnection, reader);
}

void forEachStored(const std::string& path, const RowReader& reader) {
    Connection connection(path, Access::kRead);
    if (!isNew(connection)) readAll(connection, reader);
}

bool isDatabase(const InputFile& file) {
    using namespace std::string_view_literals;
    constexpr std::string_view kMark = "SQLite format 3\0"sv;  // SQLite, Database File Format 1.3.1
    std::array<uint8_t, kMark.size()> head;
    return file.readAt(0, head) == int64_t{kMark.size()} &&
           std::string_view(reinterpret_cast<const char*>(head.data()), head.size()) == kMark;
}

}  // namespace inspect
