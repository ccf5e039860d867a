#include "inspect/collection/Against.h"

#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"
#include "inspect/collection/Database.h"
#include "inspect/report/TextLayout.h"

namespace inspect {
namespace {

constexpr size_t kMaxLineBytes = 64 << 20;
constexpr size_t kMaxNotes = 10;

// One transaction, which is never committed: nobody reads the database but the object.
constexpr const char* kTables = R"sql(
PRAGMA journal_mode = OFF;
BEGIN;
CREATE TABLE before (path, device, plays, verdict, reason, PRIMARY KEY (path, device))
    WITHOUT ROWID;
CREATE TABLE after (path, device, plays, verdict, reason, PRIMARY KEY (path, device))
    WITHOUT ROWID;
)sql";

// A file that was judged for other devices is neither new nor gone.
constexpr const char* kChanges = R"sql(
SELECT b.path, b.device, b.plays, b.verdict, b.reason, a.plays, a.verdict, a.reason
    FROM before b JOIN after a ON a.path = b.path AND a.device = b.device
    WHERE (b.plays, b.verdict, b.reason) <> (a.plays, a.verdict, a.reason)
UNION ALL
SELECT path, device, NULL, NULL, NULL, plays, verdict, reason
    FROM after WHERE NOT EXISTS (SELECT 1 FROM before WHERE before.path = after.path)
UNION ALL
SELECT path, device, plays, verdict, reason, NULL, NULL, NULL
    FROM before WHERE NOT EXISTS (SELECT 1 FROM after WHERE after.path = before.path)
ORDER BY 1, 2
)sql";

struct KindText {
    const char* sign;
    const char* name;
};
constexpr std::array<KindText, kChangeKinds> kKinds = {{
        {"plays", "play now"},
        {"lost", "play no more"},
        {"reason", "other reason"},
        {"new", "new"},
        {"gone", "gone"},
}};

class Lines {
public:
    explicit Lines(const InputFile& file) : mFile(file) {}

    // Whether there was a line; a longer one than allowed comes without its end.
    bool next() {
        mLine.clear();
        mIsWhole = false;
        while (mPosition < mEnd || fill()) {
            const char c = static_cast<char>(mBuffer[mPosition++]);
            mIsWhole = c == '\n';
            if (mIsWhole) return true;
            if (mLine.size() < kMaxLineBytes) mLine += c;
        }
        return !mLine.empty();
    }

    const std::string& line() const { return mLine; }
    bool isWhole() const { return mIsWhole; }

private:
    bool fill() {
        const int64_t sizeBytes = mFile.readAt(mOffset, mBuffer);
        if (sizeBytes < 0) throw FileError(mFile.path() + ": could not be read");
        mOffset += sizeBytes;
        mPosition = 0;
        mEnd = static_cast<size_t>(sizeBytes);
        return mEnd > 0;
    }

    const InputFile& mFile;
    std::vector<uint8_t> mBuffer = std::vector<uint8_t>(64 << 10);
    int64_t mOffset = 0;
    size_t mPosition = 0;
    size_t mEnd = 0;
    std::string mLine;
    bool mIsWhole = false;
};

std::string verdictText(const Statement& statement, int column) {
    const std::string reason = statement.text(column + 1);
    return statement.text(column) + (reason.empty() ? "" : " (" + reason + ")");
}

ChangeKind kindOf(const Statement& statement) {
    if (statement.isNull(2)) return ChangeKind::kNewFile;
    if (statement.isNull(5)) return ChangeKind::kGoneFile;
    if (statement.number(2) == statement.number(5)) return ChangeKind::kOtherReason;
    return statement.number(5) != 0 ? ChangeKind::kPlays : ChangeKind::kPlaysNoMore;
}

InputFile opened(const std::string& path) try {
    return InputFile(path);
} catch (const FileError& error) {
    throw FileError(path + ": " + error.what());
}

Connection& withTables(Connection& connection) {
    connection.run(kTables);
    return connection;
}

}  // namespace

Against::Against(const std::string& path)
    : mConnection("", Connection::Access::kTemporary),
      mBefore(withTables(mConnection), "INSERT OR REPLACE INTO before VALUES (?, ?, ?, ?, ?)"),
      mAfter(mConnection, "INSERT OR REPLACE INTO after VALUES (?, ?, ?, ?, ?)") {
    const InputFile file = opened(path);
    if (isDatabase(file)) {
        forEachStored(path, [this](const FileRow& row) { put(mBefore, row); });
    } else {
        readLines(file);
    }
}

void Against::put(Statement& statement, const FileRow& row) {
    for (const PlayRow& play : row.plays) {
        statement.run(row.path, play.device, int64_t{play.plays}, play.verdict, play.reason);
    }
}

void Against::readLines(const InputFile& file) {
    const std::string& path = file.path();
    size_t good = 0;
    size_t bad = 0;
    Lines lines(file);
    for (size_t number = 1; lines.next(); number++) {
        if (readLine(lines.line())) {
            good++;
        } else if (bad++ < kMaxNotes) {
            mNotes.push_back(path + ": line " + std::to_string(number) +
                             (lines.isWhole() ? " is no line of --jsonl" : " is cut off"));
        }
    }
    if (good == 0) throw FileError(path + ": is neither a database nor made by --jsonl");
    if (bad > kMaxNotes) {
        mNotes.push_back(path + ": " + std::to_string(bad - kMaxNotes) + " more such lines");
    }
}

bool Against::readLine(const std::string& line) {
    const Json json = Json::parse(line, nullptr, false);
    if (!json.is_object()) return false;
    try {
        put(mBefore, rowOf(json));
    } catch (const FileError&) {
        return false;
    }
    return true;
}

void Against::forEach(const std::function<void(const Change&)>& reader) {
    for (Statement statement(mConnection, kChanges); statement.step();) {
        reader({.kind = kindOf(statement),
                .path = statement.text(0),
                .device = statement.text(1),
                .before = statement.isNull(2) ? "" : verdictText(statement, 3),
                .after = statement.isNull(5) ? "" : verdictText(statement, 6)});
    }
}

ChangeCounts sayChanges(const std::function<void(const std::string&)>& say, Against& against,
                        bool areAllKnown) {
    ChangeCounts counts;
    against.forEach([&](const Change& change) {
        if (change.kind == ChangeKind::kGoneFile && !areAllKnown) return;
        const auto kind = static_cast<size_t>(change.kind);
        counts[change.device][kind]++;
        const bool isBoth = !change.before.empty() && !change.after.empty();
        say(padded(kKinds[kind].sign, 8) + escaped(change.path) + "  " + escaped(change.device) +
            ": " + escaped(change.before) + (isBoth ? " -> " : "") + escaped(change.after) + '\n');
    });
    for (const auto& [device, numbers] : counts) {
        std::string text = escaped(device);
        for (size_t i = 0; i < kChangeKinds; i++) {
            text.append(i == 0 ? ": " : ", ").append(std::to_string(numbers[i])).append(" ");
            text += kKinds[i].name;
        }
        say(text + '\n');
    }
    return counts;
}

}  // namespace inspect
